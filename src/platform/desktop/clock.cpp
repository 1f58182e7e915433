// The clock of the machine.

#include "platform/clock.h"

#include <cstdint>
#include <ctime>

namespace tyxo {

namespace {

local_time local_of(std::time_t moment) {
    std::tm parts{};
    localtime_r(&moment, &parts);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

std::int64_t nanoseconds_of(clockid_t clock) {
    std::timespec now{};
    clock_gettime(clock, &now);
    return std::int64_t{1'000'000'000} * now.tv_sec + now.tv_nsec;
}

std::int64_t milliseconds_of(clockid_t clock) {
    return nanoseconds_of(clock) / 1'000'000;
}

} // namespace

local_time local_now() {
    return local_of(std::time(nullptr));
}

double seconds_of_day() {
    const std::int64_t now = milliseconds_of(CLOCK_REALTIME);
    const local_time time = local_of(static_cast<std::time_t>(now / 1000));
    return 3600.0 * time.hour + 60.0 * time.minute + time.second + static_cast<double>(now % 1000) / 1000;
}

std::int64_t running_ms() {
    return milliseconds_of(CLOCK_BOOTTIME);
}

local_time local_at(std::int64_t running) {
    // Not from milliseconds: cut off twice, their difference would be one more in some readings. And not
    // each time anew: a clock that follows another one is set by a little all the time, and a chart drawn
    // twice would not be the same.
    constexpr std::int64_t unseen = 20'000'000; // ns
    static std::int64_t ahead = 0;
    const std::int64_t now = nanoseconds_of(CLOCK_REALTIME) - nanoseconds_of(CLOCK_BOOTTIME);
    if (now > ahead + unseen || now < ahead - unseen) ahead = now;
    const std::int64_t moment = running + (ahead + 500'000) / 1'000'000;
    return local_of(static_cast<std::time_t>((moment + 500) / 1000));
}

} // namespace tyxo
