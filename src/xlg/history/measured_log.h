#pragma once
// A log as a history: what it measured over its whole time, and the way back to each of its lines.

#include "link/channel_rec.h"
#include "xlg/history/value_pyramid.h"
#include "xlg/history/whole_lines.h"
#include "xlg/log_clock.h"
#include "xlg/log_reader.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tyxo::xlg {

/// A comment or a note.
struct log_mark {
    log_seconds time = 0;
    std::string text;   ///< in Windows-1252, as in the log
    bool alarm = false; ///< an alarm begins
    bool operator==(const log_mark&) const = default;
};

/// A record of measured values. Those of the same second are spread over it in their order.
struct measured_row {
    std::int64_t ms = 0; ///< log time in ms
    measured values{};
    bool operator==(const measured_row&) const = default;
};

/// A curve of one engine cycle.
struct logged_curve {
    log_seconds time = 0;
    std::array<i32, curve_samples> samples{};
};

struct logged_cycle {
    std::optional<logged_curve> thermo;
    std::optional<logged_curve> angacc;
};

/// Keeps the extremes of each second and where each minute stands in the file, some 30 bytes a second; rows
/// and curves are read again when they are asked for.
///
/// Lines that are damaged are left out, and so are lines of a time more than a week behind the first one: no
/// log has them. Not to be used by two threads at a time.
class measured_log {
  public:
    static constexpr log_seconds longest = log_seconds{7} * 86'400;

    /// Opens nothing. `on_read` is told each number of bytes that was read; what it raises ends the reading.
    explicit measured_log(std::string name, std::function<void(std::size_t)> on_read = {});
    measured_log(const measured_log&) = delete;
    measured_log& operator=(const measured_log&) = delete;

    /// Reads what has been written since, at first all. True if there was anything. Failure: the file cannot
    /// be opened or read; what was read stays. A file that has become shorter is read anew.
    bool read_on();

    /// In the place of the one before.
    void tell_reading_to(std::function<void(std::size_t)> on_read) { on_read_ = std::move(on_read); }

    [[nodiscard]] const std::string& name() const { return file_.name(); }
    /// As far as it was read.
    [[nodiscard]] const header_lines& header() const { return content_->reader.header(); }
    [[nodiscard]] const value_pyramid& values() const { return content_->values; }
    [[nodiscard]] std::span<const log_mark> marks() const { return content_->marks; }
    [[nodiscard]] std::int64_t left_out() const { return content_->left_out; }
    [[nodiscard]] std::int64_t bytes() const { return content_->place; }

    /// Has a line with a time.
    [[nodiscard]] bool any() const { return content_->first <= content_->last; }
    [[nodiscard]] log_seconds first() const { return content_->first; } ///< the earliest time
    [[nodiscard]] log_seconds last() const { return content_->last; }   ///< the latest

    /// The records from a second to another one, both included, by their times. Failure: the file cannot be
    /// read any more.
    [[nodiscard]] std::vector<measured_row> rows(log_seconds from, log_seconds to) const;

    /// The last curve of each kind at this time or before; none where there is none. Failure: likewise.
    [[nodiscard]] logged_cycle cycle_at(log_seconds time) const;

    /// The time of the nearest curve behind this time, or before it; none if there is none. Failure:
    /// likewise.
    [[nodiscard]] std::optional<log_seconds> next_curve(log_seconds time) const;
    [[nodiscard]] std::optional<log_seconds> previous_curve(log_seconds time) const;

  private:
    /// Lines of the same minute, one behind the other in the file.
    struct stretch {
        std::int64_t minute = 0; ///< of log time
        std::int64_t place = 0;  ///< where its first line begins
        bool thermo = false;     ///< has a curve
        bool angacc = false;
    };

    /// What was found in the file.
    struct found {
        explicit found(byte_source source) : reader(std::move(source)) {}
        log_reader reader;
        log_clock clock;
        std::optional<log_seconds> midnight; ///< of the first day
        value_pyramid values;
        std::vector<log_mark> marks;
        std::vector<stretch> stretches;
        std::int64_t place = 0; ///< where the next line begins
        std::int64_t left_out = 0;
        log_seconds first = 1;
        log_seconds last = 0;
    };

    void begin_again();
    void take(const entry& one);
    void take_timed(const entry& one, log_seconds time);
    /// Calls `take(entry, time)` for all lines of the stretch.
    template <class Take> void each_line(std::size_t index, Take take) const;
    [[nodiscard]] std::optional<logged_curve> last_curve(log_seconds time, bool stretch::*has,
                                                         const record_form& form) const;
    [[nodiscard]] std::int64_t end_of(std::size_t index) const;

    whole_lines file_;
    std::function<void(std::size_t)> on_read_;
    std::unique_ptr<found> content_;
};

/// The measured values of a record's line.
[[nodiscard]] measured values_of_record(std::string_view body);

/// They become those of the record; the rest of it stays.
void take_values(channel_rec& rec, const measured& values);

} // namespace tyxo::xlg
