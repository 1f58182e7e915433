#pragma once
// The logs of one engine, whatever files they are in, as one line of time.

#include "xlg/history/measured_log.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tyxo::xlg {

class time_line {
  public:
    explicit time_line(std::string location) : location_(std::move(location)) {}

    /// The name of the engine, in Windows-1252.
    [[nodiscard]] const std::string& location() const { return location_; }

    /// One more log of the engine, which has been read. In any order.
    void add(std::shared_ptr<measured_log> log);
    [[nodiscard]] bool has(const std::string& file) const;

    /// Reads what has been written to the newest logs since. True if there was anything. Failure: that of a
    /// log.
    bool read_on();

    /// In the order of their first times.
    [[nodiscard]] std::span<const std::shared_ptr<measured_log>> logs() const { return logs_; }

    [[nodiscard]] bool any() const { return first_ <= last_; }
    [[nodiscard]] log_seconds first() const { return first_; }
    [[nodiscard]] log_seconds last() const { return last_; }

    /// Calls `take(first second, seconds, extremes)` for steps that are no longer than so many seconds, or
    /// one second, and meet the time from `from` to before `to`; in the order of the logs.
    template <class Take>
    void each_step(double longest_step, log_seconds from, log_seconds to, Take take) const {
        const int level = value_pyramid::level_for(longest_step);
        for (const auto& log : logs_) {
            if (!log->any() || log->last() < from || log->first() >= to) continue;
            log->values().each(level, from, to, [&](log_seconds first, const extremes& values) {
                take(first, value_pyramid::step(level), values);
            });
        }
    }

    /// As those of a log, over all of them. Failure: a file cannot be read any more.
    [[nodiscard]] std::vector<measured_row> rows(log_seconds from, log_seconds to) const;
    [[nodiscard]] logged_cycle cycle_at(log_seconds time) const;
    [[nodiscard]] std::optional<log_seconds> next_curve(log_seconds time) const;
    [[nodiscard]] std::optional<log_seconds> previous_curve(log_seconds time) const;

    /// All comments and notes by their times. They stay where they are until there is another one.
    [[nodiscard]] std::span<const log_mark> marks() const { return marks_; }

    /// The log that holds what was measured at this time: the last one that begins at it or before, else the
    /// first one; none if there is no log at all.
    [[nodiscard]] const measured_log* log_at(log_seconds time) const;

  private:
    void sum_up();

    std::string location_;
    std::vector<std::shared_ptr<measured_log>> logs_;
    std::vector<log_mark> marks_;
    log_seconds first_ = 1;
    log_seconds last_ = 0;
};

} // namespace tyxo::xlg
