#pragma once
// The strip charts: their settings, and the time window that they share.

#include "link/indicators.h"
#include "platform/strip_chart.h"

#include <array>
#include <cstddef>
#include <string_view>

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
};

inline chart_controls charts;

/// Selects a time window for all four charts, by the caption beside the option.
void opt_res_click(std::size_t index);

/// Gives the options their captions and selects the first.
void setup_time_resolution();

/// Sets up the chart of a channel in use: six curves, Y from 0 to 150.
void setup_chart(i16 channel);

/// Hides the curves whose keys in the settings are 0.
void hide_curves_by_settings();

} // namespace tyxo
