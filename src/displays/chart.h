#pragma once
// The strip charts: their settings, and the time window that they share.

#include "basics/per_channel.h"
#include "controls/strip_chart.h"
#include "controls/strip_history.h"
#include "displays/layout.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "platform/timer.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tyxo {

/// A choice of `frame_resolution`.
struct time_resolution {
    std::string_view caption;
    double span; ///< days
};

inline constexpr std::array<time_resolution, 4> time_resolutions{{
    {"2 min", 1.0 / 720},
    {"15 min", 1.0 / 96},
    {"1 h", 1.0 / 24},
    {"24 h", 1.0},
}};

struct chart_controls {
    per_channel<iStripChartX> chart;
    std::array<Label, time_resolutions.size()> Lbl_opt_res;
    std::size_t opt_res = 0; ///< the selected option
    window_layout layout = layout_window(design_client_width, design_client_height, false);
    per_channel<strip_history> rows;
    per_channel<std::optional<strip_window>> frozen; ///< what a frozen chart goes on showing
    per_channel<i32> last_row{};                     ///< index of the row that was added last
    per_channel<i16> frozen_minutes{}; ///< counted while frozen; a thaw by click keeps the count
};

inline chart_controls charts;

/// The curves of a chart, all of them visible.
[[nodiscard]] std::vector<chart_curve> chart_curves();

/// The values of a record as a row of the chart.
[[nodiscard]] strip_row chart_row(const channel_rec& rec, std::int64_t time);

/// The titles of the curves that depend on the engine. A chart without curves keeps none.
void name_curves(iStripChartX& chart, const channel_rec& rec);

/// Gives the options their captions and selects the first.
void setup_time_resolution();

/// Adds the record's values to the chart of a channel as one row, stamped with the time.
void add_chart_row(i16 channel);

/// The channel whose chart stands in the same row.
[[nodiscard]] constexpr i16 row_neighbour(i16 channel) {
    const quadrant_place own = quadrant_places[channel];
    for (i16 other = 0; other < channel_count; ++other)
        if (other != channel && quadrant_places[other].row == own.row) return other;
    return channel;
}

/// The main window has this layout now: charts in their places, enlarged ones in the whole width.
void place_charts(const window_layout& layout);

/// Whether the chart of a channel takes its whole row.
[[nodiscard]] bool fills_row(i16 channel);

/// What lies under the chart that takes the whole row of a channel: the row down to the frames' lower edge.
[[nodiscard]] rectangle row_place(i16 channel);

/// Where the zoom button of a channel stands: in its own chart, or in its neighbour's that covers that.
[[nodiscard]] rectangle zoom_button_place(i16 channel);

/// The rows that the chart shows: those of its time window, or those of the moment when it was frozen.
[[nodiscard]] const strip_window& shown_rows(i16 channel);

/// Sets up the chart of a channel in use: its curves, Y from 0 to 150.
void setup_chart(i16 channel);

/// Hides the curves whose keys in the settings are 0, on the charts of all channels in use, and shows the
/// others.
void show_curves_by_settings();
void show_curves_by_settings(iStripChartX& chart); ///< of one chart

namespace mainfrm {

/// Selects a time window for all four charts, by the caption beside the option.
void opt_res_click(std::size_t index);
/// Freezes the chart or lets it go on.
void chart_click(i16 channel);
/// A frozen chart goes on by itself at the tenth minute.
void Timer_chartres_tick(i16 channel);
/// `cmd_zoom_xy`: gives the chart the whole width of its row and hides its neighbour, or takes that back.
void cmd_zoom_xy_click(i16 channel);

} // namespace mainfrm

} // namespace tyxo
