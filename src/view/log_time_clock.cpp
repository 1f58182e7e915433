// The clock of whoever reads logs: a moment is a log time in ms, and nothing runs.

#include "platform/clock.h"

#include <chrono>

namespace tyxo {

local_time local_at(std::int64_t ms) {
    using namespace std::chrono;
    const auto date = floor<days>(milliseconds(ms));
    const year_month_day day{sys_days(date)};
    const auto seconds = static_cast<i32>(floor<std::chrono::seconds>(milliseconds(ms) - date).count());
    return {static_cast<int>(day.year()),
            static_cast<i32>(static_cast<unsigned>(day.month())),
            static_cast<i32>(static_cast<unsigned>(day.day())),
            seconds / 3600,
            seconds / 60 % 60,
            seconds % 60};
}

std::int64_t running_ms() {
    return 0;
}

local_time local_now() {
    return local_at(running_ms());
}

double seconds_of_day() {
    return 0;
}

} // namespace tyxo
