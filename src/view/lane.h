#pragma once
// What stands below each other in the window: one lane for each engine, or one for each day of each engine.

#include "controls/strip_chart.h"
#include "controls/xy_plot.h"
#include "view/history_rows.h"
#include "xlg/history/time_line.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tyxo::view {

using log_list = std::vector<std::shared_ptr<xlg::measured_log>>;

/// Its times are those of the window and `shift` behind them.
struct lane {
    explicit lane(std::string location) : line(std::move(location)) {}
    xlg::time_line line;
    std::int64_t shift = 0; ///< ms; not 0 for days beside each other
    kept_records kept;
    iStripChartX chart;
    iXYPlotX scope;
    bool scope_hidden = true; ///< no curve was measured up to the cursor

    [[nodiscard]] time_range range(const time_range& window) const {
        return {window.from + shift, window.to + shift};
    }
};

/// What stands beside each other.
enum class lane_order {
    engines, ///< each engine is one line of time
    days     ///< each day of an engine is one, and they all begin at the same place
};

/// Lanes by engine, then by time. Logs without any line are in none.
[[nodiscard]] std::vector<std::unique_ptr<lane>> lanes_of(const log_list& logs, lane_order order);

/// From the first to the last record of all lanes, as the window counts; a minute where there are none.
[[nodiscard]] time_range whole_range(const std::vector<std::unique_ptr<lane>>& lanes);

/// What was measured nearest to a time, at most `far` away; the time is log time in ms.
[[nodiscard]] std::optional<xlg::measured_row> values_at(lane& of, std::int64_t ms);
inline constexpr std::int64_t farthest_values = 5000; // ms

} // namespace tyxo::view
