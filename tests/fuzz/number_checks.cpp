// Numbers: rounding, narrowing, decimal and hexadecimal texts, clock texts.

#include "fuzz/numbers_and_texts.h"

#include "basics/clock_text.h"
#include "basics/number.h"
#include "basics/number_text.h"
#include "link/hex.h"

#include <cmath>
#include <optional>
#include <utility>

namespace tyxo::fuzzing {

namespace {

/// The result of a step; nothing when it fails.
template <class Step> auto result_of(const Step& step) {
    std::optional<decltype(step())> result;
    const bool failed = fails([&] { result = step(); });
    expect(failed != result.has_value(), "a step either fails or has a result");
    return result;
}

void decimal_texts(input& in) {
    const auto value = in.raw<double>();
    const auto text = result_of([&] { return signed_form(value); });
    const auto other = result_of([&] { return plain_number(value); });
    expect(text.has_value() == std::isfinite(value), "every finite number has a text");
    expect(text.has_value() == other.has_value(), "both forms fail alike");
    if (!text || std::abs(value) > 1.797693134862e308) return; // rounded up it could be none
    expect(text->front() == ' ' || text->front() == '-', "a sign or a blank is in front");
    const double back = leading_number(*text);
    expect(std::abs(back - value) <= 6e-15 * std::abs(value) + 1e-323, "15 digits are right");
    expect(leading_number(*other) == back, "both forms are the same number");
    expect(std::abs(value) < 1e-290 || signed_form(back) == *text, "a text is its own number's text");
    expect(text->starts_with(" 0") == (value == 0), "no zero before the point");
    expect(other->find_first_of("0123456789") == (value < 0 ? 1U : 0U), "a digit is in front");
}

/// What a text begins with as a number, for `strtod`.
std::string number_in_front(std::string_view text) {
    const auto blanks = text.find_first_not_of(" \t");
    text.remove_prefix(std::min(blanks, text.size()));
    const auto digits_from = [&text](std::size_t at) {
        while (at < text.size() && text[at] >= '0' && text[at] <= '9')
            ++at;
        return at;
    };
    const std::size_t begin = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
    std::size_t end = digits_from(begin);
    std::size_t digits = end - begin;
    if (end < text.size() && text[end] == '.') {
        const std::size_t point = end;
        end = digits_from(point + 1);
        digits += end - point - 1;
    }
    if (digits == 0) return "0";
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        const bool sign = end + 1 < text.size() && (text[end + 1] == '-' || text[end + 1] == '+');
        const std::size_t exponent = end + (sign ? 2 : 1);
        if (digits_from(exponent) > exponent) end = digits_from(exponent);
    }
    return std::string(text.substr(0, end));
}

void leading_numbers(input& in) {
    const std::string_view text = in.rest();
    const auto number = result_of([&] { return leading_number(text); });
    const double reference = std::strtod(number_in_front(text).c_str(), nullptr);
    expect(number.has_value() == std::isfinite(reference), "only a number beyond all doubles fails");
    expect(!number || *number == reference, "a text begins with the number that strtod sees");
}

template <class To> void rounding(double value) {
    const auto whole = result_of([&] { return round_even<To>(value); });
    const double below = std::floor(value);
    const double part = value - below;
    const bool up = part > 0.5 || (part == 0.5 && std::fmod(below, 2) != 0);
    const double reference = up ? below + 1 : below;
    const bool fits =
        reference >= std::numeric_limits<To>::min() && reference <= std::numeric_limits<To>::max();
    expect(whole.has_value() == fits, "what fits is rounded, and nothing else");
    expect(!whole || *whole == reference, "a half goes to the even neighbour");
}

void roundings(input& in) {
    const auto value = in.flag() ? in.raw<double>() : in.raw<i32>() / 4.0;
    rounding<i16>(value);
    rounding<i32>(value);
    rounding<u8>(value);
}

template <class To> void narrowing(std::int64_t value) {
    const auto narrowed = result_of([&] { return narrow<To>(value); });
    expect(narrowed.has_value() == std::in_range<To>(value), "what fits is narrowed, and nothing else");
    expect(!narrowed || *narrowed == value, "a narrowed number is the same");
}

void narrowings(input& in) {
    const auto value = in.raw<std::int64_t>();
    narrowing<i16>(value);
    narrowing<i32>(value);
    narrowing<u8>(value);
    const i32 dividend = in.raw<i32>() & std::numeric_limits<i32>::max();
    const i32 divisor = in.raw<i32>() & std::numeric_limits<i32>::max();
    const auto quotient = result_of([&] { return divide_even(dividend, divisor); });
    expect(quotient.has_value() == (divisor != 0), "only a division by zero fails");
    if (!quotient) return;
    const auto rest = std::int64_t{dividend} - std::int64_t{*quotient} * divisor;
    expect(2 * std::abs(rest) <= divisor, "the nearest quotient");
    expect(2 * std::abs(rest) < divisor || *quotient % 2 == 0, "of two the even one");
}

void whole_texts(input& in) {
    const auto value = in.raw<i32>();
    expect(plain(value) == std::to_string(value), "plain decimals");
    expect(leading_number(plain(value)) == value, "plain decimals are read back");
    if (value < 0) return;
    const int width = in.below(20);
    const std::string digits = padded(value, width);
    expect(digits.size() >= static_cast<std::size_t>(width), "padded to its width");
    expect(digits.ends_with(plain(value)) && leading_number(digits) == value, "padded with zeros");
}

void hex_numbers(input& in) {
    const auto value = in.raw<i32>();
    const auto word = static_cast<i16>(value);
    expect(funct::hex4(value).size() >= 4 && funct::hex2(word).size() >= 2, "padded to its width");
    const auto back = result_of([&] { return funct::hex_to_long(funct::hex4(value)); });
    expect(back.has_value() == (value >= 0), "32 bits of a negative number are beyond the range");
    expect(!back || *back == value, "32 bits are read back");
    expect(funct::hex_to_int(funct::hex2(word)) == word, "16 bits are read back");
}

void hex_texts(input& in) {
    const std::string text(in.rest());
    const auto value = result_of([&] { return funct::hex_to_long(text); });
    const bool digits =
        !text.empty() && text.find_first_not_of("0123456789ABCDEFabcdef") == std::string::npos;
    const auto first = std::min(text.find_first_not_of('0'), text.size());
    const bool short_enough = text.size() - first < 8 || (text.size() - first == 8 && text[first] < '8');
    expect(value.has_value() == (digits && short_enough), "hexadecimal digits of 31 bits, and nothing else");
    expect(!value || *value == std::strtol(text.c_str(), nullptr, 16), "the number that strtol sees");
    const auto word = result_of([&] { return funct::hex_to_int(text); });
    expect(word.has_value() == (value && *value <= 0xFFFF), "16 bits at most");
}

void frame_checks(input& in) {
    const std::string body = ":" + std::string(in.rest());
    const std::string frame = body + funct::frame_lrc(body) + "\r\n";
    expect(funct::frame_lrc_ok(frame), "a frame with its own check is right");
    unsigned sum = 0;
    for (const char letter : body.substr(1))
        sum += static_cast<unsigned char>(letter);
    sum += static_cast<unsigned>(funct::hex_to_long(funct::frame_lrc(body)));
    expect(sum % 256 == 0, "the characters and their check add up to nothing");
    const std::string_view trimmed = funct::frame_trim(frame);
    expect(frame.starts_with(trimmed) && trimmed.ends_with("\r\n"), "a frame ends with its first CR LF");
    expect(trimmed.find("\r\n") == trimmed.size() - 2, "and with no other");
    static_cast<void>(funct::frame_lrc_ok(body));
}

void clock_texts(input& in) {
    const local_time moment{in.between(1, 9999), in.between(1, 12), in.between(1, 31),
                            in.below(24),        in.below(60),      in.below(60)};
    const std::string text = stamp_text(moment, ';');
    local_time back;
    const int fields = std::sscanf(text.c_str(), "%2d-%2d-%4d;%2d:%2d:%2d", &back.month, &back.day,
                                   &back.year, &back.hour, &back.minute, &back.second);
    expect(fields == 6 && back == moment && text.size() == 19, "a moment is read back");
    expect(date_text(moment) + ';' + time_text(moment) == text, "date and time make a moment");
    expect(leading_number(date_digits(moment)) == moment.year * 10000 + moment.month * 100 + moment.day,
           "the digits of a date");
}

} // namespace

void check_numbers(input& in) {
    constexpr auto checks =
        std::to_array<void (*)(input&)>({decimal_texts, leading_numbers, roundings, narrowings, whole_texts,
                                         hex_numbers, hex_texts, frame_checks, clock_texts});
    at(checks, in.below(static_cast<i32>(checks.size())))(in);
}

} // namespace tyxo::fuzzing
