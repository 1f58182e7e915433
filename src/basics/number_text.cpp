#include "basics/number_text.h"

#include "basics/failure.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace tyxo {

namespace {

constexpr int significant_digits = 15;

struct decimal {
    std::string digits; // without trailing zeros, the point behind the first
    int exponent = 0;
};

decimal split(double magnitude) {
    std::array<char, 40> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), magnitude,
                                   std::chars_format::scientific, significant_digits - 1)
                         .ptr;
    const std::string_view whole(text.data(), static_cast<std::size_t>(end - text.data()));
    const auto mark = whole.find('e');
    decimal result;
    result.digits = whole.substr(0, 1);
    result.digits += whole.substr(2, mark - 2);
    result.digits.erase(result.digits.find_last_not_of('0') + 1);
    const bool negative = whole[mark + 1] == '-';
    std::from_chars(text.data() + mark + 2, end, result.exponent);
    if (negative) result.exponent = -result.exponent;
    return result;
}

std::string exponent_form(const decimal& number) {
    std::string text = number.digits.substr(0, 1);
    if (number.digits.size() > 1) text += '.' + number.digits.substr(1);
    text += number.exponent < 0 ? "E-" : "E+";
    append_padded(text, std::abs(number.exponent), 2);
    return text;
}

bool digit(std::string_view text, std::size_t index) {
    return index < text.size() && text[index] >= '0' && text[index] <= '9';
}

/// True if the decimal number, given without sign, is below 1.
bool below_one(std::string_view number) {
    const auto mark = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, mark);
    std::int64_t exponent = 0;
    if (mark < number.size()) {
        std::string_view digits = number.substr(mark + 1);
        if (digits.starts_with('+')) digits.remove_prefix(1);
        const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
        if (result.ec != std::errc()) return digits.starts_with('-');
    }
    const auto point = static_cast<std::int64_t>(std::min(mantissa.find('.'), mantissa.size()));
    const auto leading = mantissa.find_first_of("123456789");
    if (leading == mantissa.npos) return true;
    const auto place = static_cast<std::int64_t>(leading);
    // Compared, not added: the exponent may fill its type.
    return exponent < (place < point ? place + 1 - point : place - point);
}

} // namespace

void append_plain(std::string& text, i32 value) {
    append_padded(text, value, 0);
}

std::string plain(i32 value) {
    std::string text;
    append_plain(text, value);
    return text;
}

void append_padded(std::string& text, i32 value, int width) {
    std::array<char, 12> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    const auto length = static_cast<std::size_t>(end - digits.data());
    const auto wanted = static_cast<std::size_t>(width);
    if (length < wanted) text.append(wanted - length, '0');
    text.append(digits.data(), length);
}

std::string padded(i32 value, int width) {
    std::string text;
    append_padded(text, value, width);
    return text;
}

std::string signed_form(double value) {
    if (!std::isfinite(value)) failures::overflow();
    if (value == 0) return " 0";
    const std::string sign = value < 0 ? "-" : " ";
    const decimal number = split(std::fabs(value));
    const int length = static_cast<int>(number.digits.size());
    const int places = length - 1 - number.exponent; // digits behind the point in plain decimals
    if (number.exponent >= significant_digits || places > significant_digits) {
        return sign + exponent_form(number);
    }
    if (number.exponent < 0) {
        return sign + '.' + std::string(static_cast<std::size_t>(-number.exponent - 1), '0') + number.digits;
    }
    if (places <= 0) return sign + number.digits + std::string(static_cast<std::size_t>(-places), '0');
    const auto point = static_cast<std::size_t>(number.exponent) + 1;
    return sign + number.digits.substr(0, point) + '.' + number.digits.substr(point);
}

std::string plain_number(double value) {
    std::string text = signed_form(value);
    if (text[0] == ' ') text.erase(0, 1);
    const std::size_t first = text[0] == '-' ? 1 : 0;
    if (text[first] == '.') text.insert(first, 1, '0');
    return text;
}

double leading_number(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    if (text.starts_with('+') && (digit(text, 1) || text.substr(1).starts_with('.'))) text.remove_prefix(1);
    const std::size_t first = text.starts_with('-') ? 1 : 0;
    if (!digit(text, first) && !(first < text.size() && text[first] == '.' && digit(text, first + 1)))
        return 0;
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        const auto end = static_cast<std::size_t>(result.ptr - text.data());
        if (!below_one(text.substr(first, end - first))) failures::overflow();
        return 0; // too small for a double
    }
    return value;
}

} // namespace tyxo
