#include "xlg/log_clock.h"

#include "basics/number_text.h"

#include <chrono>

namespace tyxo::xlg {

namespace {

constexpr int seconds_of_day = 86'400;

int number_at(std::string_view digits, std::size_t at, std::size_t length) {
    int value = 0;
    for (const char digit : digits.substr(at, length))
        value = 10 * value + (digit - '0');
    return value;
}

std::chrono::year_month_day calendar(const local_time& date) {
    return {std::chrono::year(date.year), std::chrono::month(static_cast<unsigned>(date.month)),
            std::chrono::day(static_cast<unsigned>(date.day))};
}

} // namespace

clock_step log_clock::take(int seconds) {
    clock_step step;
    if (last_ >= 0) step.seconds = seconds - last_;
    if (step.seconds < -seconds_of_day / 2) {
        step.seconds += seconds_of_day;
        step.midnight = true;
        ++day_;
    }
    last_ = seconds;
    return step;
}

std::optional<local_time> date_of_digits(std::string_view digits) {
    if (digits.size() != 8 || digits.find_first_not_of("0123456789") != digits.npos) return std::nullopt;
    const local_time date{number_at(digits, 0, 4), number_at(digits, 4, 2), number_at(digits, 6, 2)};
    if (!calendar(date).ok()) return std::nullopt;
    return date;
}

std::optional<local_time> date_of_name(std::string_view path) {
    const auto slash = path.find_last_of("/\\");
    const std::string_view name = slash == path.npos ? path : path.substr(slash + 1);
    const auto end = name.find("Qu_");
    if (end != 8 && end != 10) return std::nullopt;
    return date_of_digits(name.substr(0, 8));
}

std::int64_t midnight_of(const local_time& date) {
    return std::int64_t{seconds_of_day} * std::chrono::sys_days(calendar(date)).time_since_epoch().count();
}

std::string iso_date(std::int64_t time) {
    const auto days = std::chrono::floor<std::chrono::days>(std::chrono::seconds(time));
    const std::chrono::year_month_day day{std::chrono::sys_days(days)};
    std::string text;
    append_padded(text, static_cast<int>(day.year()), 4);
    text += '-';
    append_padded(text, static_cast<int>(static_cast<unsigned>(day.month())), 2);
    text += '-';
    append_padded(text, static_cast<int>(static_cast<unsigned>(day.day())), 2);
    return text;
}

std::string iso_time(const std::optional<local_time>& date, int days, int seconds) {
    std::string text;
    if (date) text = iso_date(midnight_of(*date) + std::int64_t{seconds_of_day} * days) + 'T';
    append_time(text, {0, 0, 0, seconds / 3600, seconds / 60 % 60, seconds % 60});
    return text;
}

} // namespace tyxo::xlg
