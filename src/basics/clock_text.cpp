#include "basics/clock_text.h"

#include "basics/number_text.h"

namespace tyxo {

std::string date_text(const local_time& moment) {
    return padded(moment.month, 2) + '-' + padded(moment.day, 2) + '-' + padded(moment.year, 4);
}

void append_time(std::string& text, const local_time& moment) {
    append_padded(text, moment.hour, 2);
    text += ':';
    append_padded(text, moment.minute, 2);
    text += ':';
    append_padded(text, moment.second, 2);
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
