#pragma once
// The rows of a strip chart out of logs: any piece of their time, at what it costs to draw it.

#include "controls/strip_history.h"
#include "xlg/history/time_line.h"

#include <cstdint>
#include <map>
#include <vector>

namespace tyxo::view {

/// A piece of time, in ms of log time; the end does not belong to it.
struct time_range {
    std::int64_t from = 0;
    std::int64_t to = 1;
    [[nodiscard]] std::int64_t span() const { return to - from; }
    bool operator==(const time_range&) const = default;
};

/// The chart counts days.
inline constexpr double ms_per_day = 86'400'000;

/// Longer ranges are drawn from the extremes of their times, shorter ones from each single record.
inline constexpr std::int64_t longest_of_records = 900'000; // ms

/// The records of one line of time that were read last, minute by minute, so that a chart that is moved
/// reads what comes into sight.
class kept_records {
  public:
    /// Those of the minutes that meet the range, oldest first. Failure: a log cannot be read.
    [[nodiscard]] std::vector<xlg::measured_row> meeting(const xlg::time_line& line, const time_range& range);

    /// The records from this time on have changed.
    void forget_from(xlg::log_seconds time);

  private:
    std::map<std::int64_t, std::vector<xlg::measured_row>> minutes_;
};

/// A window of the chart that ends with the range. The speed is drawn to the scale of the engine.
/// Failure: a log cannot be read.
[[nodiscard]] strip_window rows_of(const xlg::time_line& line, kept_records& kept, const time_range& range);

} // namespace tyxo::view
