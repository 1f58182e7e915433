#include "link/hex.h"

#include "basics/failure.h"
#include "basics/number.h"

#include <array>
#include <charconv>

namespace tyxo::funct {

namespace {

constexpr std::string_view upper_digits = "0123456789ABCDEF";
constexpr std::string_view lower_digits = "0123456789abcdef";

/// The value of a hexadecimal digit of either case by its character, -1 for any other character.
constexpr std::array<short, 256> digit_values = []() {
    std::array<short, 256> values{};
    values.fill(-1);
    for (std::size_t value = 0; value < upper_digits.size(); ++value) {
        values[static_cast<unsigned char>(upper_digits[value])] = static_cast<short>(value);
        values[static_cast<unsigned char>(lower_digits[value])] = static_cast<short>(value);
    }
    return values;
}();

std::string upper_hex(std::uint32_t value, std::size_t width) {
    std::array<char, 8> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, 16).ptr;
    std::string text(digits.data(), end);
    for (char& letter : text)
        letter = upper_digits[lower_digits.find(letter)];
    if (text.size() < width) text.insert(0, width - text.size(), '0');
    return text;
}

std::array<char, 2> check_digits(std::string_view body) {
    unsigned sum = 0;
    for (const char letter : body.substr(body.empty() ? 0 : 1))
        sum += static_cast<unsigned char>(letter);
    const unsigned check = (256U - (sum & 0xFFU)) & 0xFFU;
    return {lower_digits[check >> 4U], lower_digits[check & 0xFU]};
}

} // namespace

std::string hex2(i16 value) {
    return upper_hex(static_cast<std::uint16_t>(value), 2);
}

std::string hex4(i32 value) {
    return upper_hex(static_cast<std::uint32_t>(value), 4);
}

i32 hex_to_long(std::string_view text) {
    if (text.empty()) failures::type_mismatch();
    std::int64_t value = 0;
    for (const char letter : text) {
        const short digit = digit_values[static_cast<unsigned char>(letter)];
        if (digit < 0) failures::type_mismatch();
        value = value * 16 + digit;
        if (value > std::numeric_limits<i32>::max()) failures::overflow();
    }
    return static_cast<i32>(value);
}

i16 hex_to_int(std::string_view text) {
    const i32 value = hex_to_long(text);
    if (value > 0xFFFF) failures::overflow();
    return static_cast<i16>(value); // the upper half of the range is the negative numbers
}

std::string frame_lrc(std::string_view body) {
    const auto digits = check_digits(body);
    return {digits.begin(), digits.end()};
}

bool frame_lrc_ok(std::string_view frame) {
    constexpr std::size_t tail = 4; // check and CR LF
    if (frame.size() <= tail) return false;
    const auto digits = check_digits(frame.substr(0, frame.size() - tail));
    return frame.substr(frame.size() - tail, 2) == std::string_view(digits.data(), digits.size());
}

std::string_view frame_trim(std::string_view frame) {
    const auto end = frame.find("\r\n");
    return end == frame.npos ? frame : frame.substr(0, end + 2);
}

} // namespace tyxo::funct
