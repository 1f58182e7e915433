#pragma once
// What mutated sources are compiled with: every change of the code is in the binary, and the environment
// variable TYXO_MUTANT says which one is alive. Each function stands for one operator of the original.

#include <cstddef>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace tyxo_mutation {

constexpr int most_mutants = 40'000;

extern int chosen;
extern unsigned char reached[most_mutants];

/// True if the mutant is the chosen one. Leaves word that it was reached, and that it has been compiled.
template <int N> inline bool on() {
    asm volatile(".pushsection tyxo_mutants,\"a\"\n.long %c0\n.popsection" : : "i"(N));
    reached[N] = 1;
    return chosen == N;
}

template <class T> constexpr bool is_number = std::is_arithmetic_v<T> && !std::is_same_v<T, bool>;
template <class A, class B> constexpr bool numbers = is_number<std::decay_t<A>>&& is_number<std::decay_t<B>>;

// N moves the border by one, N + 1 is the opposite.
template <int N, class A, class B> bool less(const A& a, const B& b) {
    return on<N>() ? a <= b : on<N + 1>() ? !(a < b) : a < b;
}
template <int N, class A, class B> bool less_equal(const A& a, const B& b) {
    return on<N>() ? a < b : on<N + 1>() ? !(a <= b) : a <= b;
}
template <int N, class A, class B> bool greater(const A& a, const B& b) {
    return on<N>() ? a >= b : on<N + 1>() ? !(a > b) : a > b;
}
template <int N, class A, class B> bool greater_equal(const A& a, const B& b) {
    return on<N>() ? a > b : on<N + 1>() ? !(a >= b) : a >= b;
}
template <int N, class A, class B> bool equal(const A& a, const B& b) {
    return (a == b) != on<N>();
}
template <int N, class A, class B> bool unequal(const A& a, const B& b) {
    return (a != b) != on<N>();
}

/// A sum becomes a difference, a joined text its first part.
template <int N, class A, class B> auto plus(A&& a, B&& b) {
    using sum = std::decay_t<decltype(a + b)>;
    if constexpr (numbers<A, B>) {
        return on<N>() ? static_cast<sum>(a - b) : static_cast<sum>(a + b);
    } else if constexpr (std::is_same_v<sum, std::string> && std::is_constructible_v<std::string, A>) {
        return on<N>() ? sum(a) : sum(std::forward<A>(a) + std::forward<B>(b));
    } else {
        return std::forward<A>(a) + std::forward<B>(b);
    }
}
template <int N, class A, class B> auto minus(const A& a, const B& b) {
    if constexpr (numbers<A, B>)
        return on<N>() ? a + b : a - b;
    else
        return a - b;
}
template <int N, class A, class B> auto times(const A& a, const B& b) {
    if constexpr (numbers<A, B>)
        return on<N>() ? a / b : a * b;
    else
        return a * b;
}
template <int N, class A, class B> auto divided(const A& a, const B& b) {
    if constexpr (numbers<A, B>)
        return on<N>() ? a * b : a / b;
    else
        return a / b;
}
template <int N, class A, class B> auto modulo(const A& a, const B& b) {
    if constexpr (numbers<A, B>)
        return on<N>() ? a / b : a % b;
    else
        return a % b;
}
template <int N, class A, class B> auto bits_of(const A& a, const B& b) {
    if constexpr (numbers<A, B>)
        return on<N>() ? a | b : a & b;
    else
        return a & b;
}
template <int N, class A, class B> void add_to(A& a, B&& b) {
    if constexpr (numbers<A, B>) {
        if (on<N>()) {
            a -= b;
            return;
        }
    }
    a += std::forward<B>(b);
}
template <int N, class A, class B> void take_from(A& a, const B& b) {
    if (on<N>())
        a += b;
    else
        a -= b;
}
template <int N, class A> A& increment(A& a) {
    return on<N>() ? --a : ++a;
}
template <int N, class A> A& decrement(A& a) {
    return on<N>() ? ++a : --a;
}

// N takes the other operator, N + 1 and N + 2 leave one side away.
template <int N, class A, class B> bool both(const A& a, const B& b) {
    return on<N>() ? a() || b() : on<N + 1>() ? a() : on<N + 2>() ? b() : a() && b();
}
template <int N, class A, class B> bool either(const A& a, const B& b) {
    return on<N>() ? a() && b() : on<N + 1>() ? a() : on<N + 2>() ? b() : a() || b();
}
template <int N, class A> bool inverse(const A& a) {
    return on<N>() ? static_cast<bool>(a) : !a;
}
template <int N, class A> bool condition(const A& a) {
    return on<N>() ? !static_cast<bool>(a) : static_cast<bool>(a);
}

/// One more, and one less behind a literal that is not 0.
template <int N, bool Less, class T> T number(T value) {
    if (on<N>()) return static_cast<T>(value + 1);
    if constexpr (Less)
        if (on<N + 1>()) return static_cast<T>(value - 1);
    return value;
}
template <int N> bool flip(bool value) {
    return value != on<N>();
}
template <int N> char letter(char value) {
    return on<N>() ? static_cast<char>(value + 1) : value;
}
/// A text with another first letter.
template <int N, std::size_t Size> const char (&text(const char (&value)[Size]))[Size] {
    if (!on<N>()) return value;
    static char other[Size];
    std::memcpy(other, value, Size);
    other[0] = value[0] == '~' ? '#' : '~';
    return other;
}

/// What a function gives back: a number one greater, a condition turned round, a text with something behind
/// it, nothing in place of something.
template <class T> struct is_optional : std::false_type {};
template <class T> struct is_optional<std::optional<T>> : std::true_type {};

template <int N, class T> T result(T&& value) {
    using plain = std::decay_t<T>;
    if constexpr (std::is_same_v<plain, bool> || is_number<plain> || std::is_same_v<plain, std::string> ||
                  std::is_same_v<plain, std::string_view> || is_optional<plain>::value) {
        if (on<N>()) {
            static plain other{};
            if constexpr (std::is_same_v<plain, bool>)
                other = !value;
            else if constexpr (is_number<plain>)
                other = static_cast<plain>(value + 1);
            else if constexpr (std::is_same_v<plain, std::string>)
                other = value + '~';
            else if constexpr (std::is_same_v<plain, std::string_view>)
                other = value.empty() ? "~" : value.substr(1);
            else
                other.reset();
            return static_cast<T&&>(other);
        }
    }
    return static_cast<T&&>(value);
}

} // namespace tyxo_mutation
