#include "link/parameter_frame.h"

#include "basics/failure.h"
#include "basics/number.h"
#include "link/hex.h"
#include "link/serial.h"

#include <charconv>
#include <string_view>

namespace tyxo::funct {

namespace {

std::string_view without_blanks(std::string_view text) {
    constexpr std::string_view blanks = " \t";
    const auto first = text.find_first_not_of(blanks);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The whole of a text as a number, a fraction rounded to even. A text that only begins with one is none.
template <class To> To whole_number(std::string_view text) {
    std::string_view number = without_blanks(text);
    if (number.starts_with('+') && !number.starts_with("+-")) number.remove_prefix(1);
    const auto first_digit = number.find_first_not_of("-.");
    if (first_digit == number.npos || number[first_digit] < '0' || number[first_digit] > '9')
        failures::type_mismatch(); // names of numbers, like "inf", among them
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (end != number.data() + number.size()) failures::type_mismatch();
    if (error != std::errc()) failures::overflow();
    return round_even<To>(value);
}

} // namespace

void parameter_frame_send(i16 channel, const parameter_texts& texts) {
    std::string frame = ":07";
    for (const std::string* text : {&texts.alarmlevel, &texts.ratedspeed, &texts.overspeed, &texts.num_cyl})
        frame += hex4(whole_number<i32>(*text));
    for (const std::string& text : texts.firingorder)
        frame += hex2(whole_number<i16>(text));
    frame += hex4(whole_number<i32>(texts.prealarmlevel));
    serial::frame_send(frame, channel);
}

} // namespace tyxo::funct
