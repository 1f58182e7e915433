#include "basics/clock_text.h"

#include "basics/number_text.h"

namespace tyxo {

namespace {

void append_two_digits(std::string& text, i32 value) {
    text += static_cast<char>('0' + value / 10);
    text += static_cast<char>('0' + value % 10);
}

} // namespace

std::string date_text(const local_time& moment) {
    return padded(moment.month, 2) + '-' + padded(moment.day, 2) + '-' + padded(moment.year, 4);
}

void append_time(std::string& text, const local_time& moment) {
    append_two_digits(text, moment.hour);
    text += ':';
    append_two_digits(text, moment.minute);
    text += ':';
    append_two_digits(text, moment.second);
}

std::string time_text(const local_time& moment) {
    std::string text;
    append_time(text, moment);
    return text;
}

std::string stamp_text(const local_time& moment, char between) {
    std::string text = date_text(moment) + between;
    append_time(text, moment);
    return text;
}

std::string date_digits(const local_time& moment) {
    return padded(moment.year, 4) + padded(moment.month, 2) + padded(moment.day, 2);
}

} // namespace tyxo
