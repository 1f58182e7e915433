#pragma once
// What a fuzzer is fed with, taken from its front bit by bit, and what it says when a rule is broken.

#include "basics/failure.h"
#include "basics/types.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace tyxo::fuzzing {

/// Behind its end an input is all zeros.
class input {
  public:
    input(const u8* data, std::size_t size) : text_(reinterpret_cast<const char*>(data), size) {}

    [[nodiscard]] bool empty() const { return text_.empty(); }

    /// A number or an enumeration of bytes, as they come.
    template <class Value> Value raw() {
        std::array<char, sizeof(Value)> bytes{};
        const std::string_view part = text(bytes.size());
        std::copy(part.begin(), part.end(), bytes.begin());
        Value value{};
        std::memcpy(&value, bytes.data(), bytes.size());
        return value;
    }
    u8 byte() { return raw<u8>(); }
    bool flag() { return byte() % 2 != 0; }
    i32 below(i32 limit) { return (limit <= 256 ? byte() : raw<std::uint16_t>()) % limit; }
    i32 between(i32 least, i32 greatest) { return least + below(greatest - least + 1); }

    /// So many bytes, or all that is left.
    std::string_view text(std::size_t length) {
        const std::string_view part = text_.substr(0, length);
        text_.remove_prefix(part.size());
        return part;
    }
    /// Up to 255 bytes behind their number.
    std::string_view short_text() { return text(byte()); }
    std::string_view rest() { return text(text_.size()); }

  private:
    std::string_view text_;
};

/// A rule of the system; a broken one is told and ends the process.
inline void expect(bool holds, const char* rule) {
    if (holds) return;
    std::fprintf(stderr, "Broken: %s\n", rule);
    std::abort();
}

/// Whether a step fails, as only a `failure` is one.
template <class Step> [[nodiscard]] bool fails(const Step& step) {
    return attempt(step).has_value();
}

} // namespace tyxo::fuzzing
