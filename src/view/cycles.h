#pragma once
// The engine cycle under the cursor, shown by what shows a measured one: polar scope, Detailed Display, bars.

#include "view/lane.h"

#include <cstdint>
#include <optional>

namespace tyxo::view {

/// When the curves of a cycle were logged.
struct cycle_times {
    std::optional<xlg::log_seconds> thermo;
    std::optional<xlg::log_seconds> angacc;
};

/// Draws the scope of the lane with the last curves up to this log time, in ms. For the lane that is selected
/// the Detailed Display and the bar diagrams are drawn too, as far as they are open: there the lane is the
/// only channel of the plant. Failure: a log cannot be read.
cycle_times show_cycle(lane& of, std::int64_t ms, bool selected);

/// Opens them on the lane that was drawn as the selected one. An engine whose header has no parameters has a
/// message box instead.
void open_detailed_display();
void open_speed_bars();
void open_thermo_bars();

} // namespace tyxo::view
