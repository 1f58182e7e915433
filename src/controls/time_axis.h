#pragma once
// The clock labels of a time axis: at round times of the local clock, so that they move with a curve that
// moves on, and neither jump nor touch.

#include "basics/clock_text.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo {

/// The local time of a moment of `running_ms`, such as `local_at`.
using local_clock = std::function<local_time(std::int64_t)>;

/// A piece of a time axis, in ms of `running_ms`, and what it asks of its labels.
struct time_axis {
    std::int64_t from = 0;
    std::int64_t to = 0;
    std::int64_t least_distance = 0; ///< ms between two labels
    int minor_count = 0;             ///< ticks between two labels
    std::string_view format = "d/m hh:nn:ss";
};

struct time_label {
    std::int64_t time = 0; ///< ms of `running_ms`
    std::string text;
    bool operator==(const time_label&) const = default;
};

struct time_ticks {
    std::vector<time_label> labels;
    std::vector<std::int64_t> minor; ///< between the labels
};

/// The least round time between labels that is at least `least_distance`, in ms: a second to a week.
[[nodiscard]] std::int64_t label_step(std::int64_t least_distance);

/// Labels and ticks from `from` to `to`, oldest first. Where the local clock is put forward a label too near
/// to the one before is left out. At most a hundred labels.
[[nodiscard]] time_ticks ticks_of(const time_axis& axis, const local_clock& clock);

/// A moment in a format of d, m, yy, h, n (minutes) and s; a letter standing twice asks for two digits, every
/// other character stands for itself.
[[nodiscard]] std::string formatted(std::string_view format, const local_time& moment);

} // namespace tyxo
