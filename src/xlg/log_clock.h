#pragma once
// The day and time of a log's lines, which tell the time alone.

#include "basics/clock_text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tyxo::xlg {

/// From one line to the next.
struct clock_step {
    std::int64_t seconds = 0; ///< less than 0: the clock was set back
    bool midnight = false;    ///< a day has begun between them
};

/// Goes along the lines of a log. A step back by more than twelve hours is one over midnight, a smaller one
/// is a clock that was set back.
class log_clock {
  public:
    /// The first time is no step.
    clock_step take(int seconds);
    /// Days since the first line.
    [[nodiscard]] int day() const { return day_; }

  private:
    int last_ = -1; ///< seconds since midnight
    int day_ = 0;
};

/// The date that the name of a log begins with, folders left out: "20260702Qu_Engine 1.xlg", and in hourly
/// mode the hour.
[[nodiscard]] std::optional<local_time> date_of_name(std::string_view path);

/// The date of eight digits, "20260702".
[[nodiscard]] std::optional<local_time> date_of_digits(std::string_view digits);

/// The date's midnight in seconds since 1970-01-01 00:00, as if there were no time zones.
[[nodiscard]] std::int64_t midnight_of(const local_time& date);

/// "2026-07-02T13:05:09", so many days behind the date. Without a date it is the time alone.
[[nodiscard]] std::string iso_time(const std::optional<local_time>& date, int days, int seconds);

/// "2026-07-02" of a time in seconds since 1970-01-01 00:00, as if there were no time zones.
[[nodiscard]] std::string iso_date(std::int64_t time);

} // namespace tyxo::xlg
