#pragma once
// The one run-time failure of the system, and going on past it.

#include <array>
#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>

namespace tyxo {

/// A step that could not be done: a number that does not fit its type, a division by zero, a subscript
/// outside its array, a text that is no number, a file or port that cannot be used. `what()` is the
/// description that goes to the debug output or into a message box.
class failure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

namespace failures {
[[noreturn]] void overflow();
[[noreturn]] void division_by_zero();
[[noreturn]] void subscript();
[[noreturn]] void type_mismatch();
} // namespace failures

/// The element of a control array or table, or the subscript failure when there is no such element.
template <class T, std::size_t N, class Index> [[nodiscard]] T& at(std::array<T, N>& items, Index index) {
    if (index < 0 || static_cast<std::size_t>(index) >= N) failures::subscript();
    return items[static_cast<std::size_t>(index)];
}

template <class T, std::size_t N, class Index>
[[nodiscard]] const T& at(const std::array<T, N>& items, Index index) {
    if (index < 0 || static_cast<std::size_t>(index) >= N) failures::subscript();
    return items[static_cast<std::size_t>(index)];
}

/// Runs the steps in their order; a step that fails is given up and the next one runs.
/// The result is the description of the last failure, or nothing when every step went well.
template <class... Step> std::optional<std::string> attempt(Step&&... step) {
    std::optional<std::string> last;
    const auto run = [&last](auto& one) { // cppcheck-suppress constParameter
        try {
            one();
        } catch (const failure& why) {
            last = why.what();
        }
    };
    (run(step), ...);
    return last;
}

} // namespace tyxo
