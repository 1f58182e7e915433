#pragma once
// For the tests of strip charts on screen and paper: a chart with six curves, and rows for it.

#include "controls/strip_chart.h"
#include "controls/strip_history.h"
#include "platform/clock.h"

#include <array>

namespace tyxo {

inline constexpr std::array<colour, strip_curves> curve_colours{
    rgb(255, 0, 0), rgb(0, 0, 255), rgb(255, 128, 0), rgb(0, 192, 0), rgb(192, 0, 192), rgb(255, 255, 255)};

inline constexpr double two_minutes = 1.0 / 720; // in days

inline iStripChartX engine_chart(double span = two_minutes) {
    iStripChartX chart;
    chart.Title = "1: Engine 1";
    chart.YAxisMax = 150;
    chart.XAxisSpan = span;
    chart.XAxisDateTimeFormatString = "d/m hh:nn:ss";
    const std::array<const char*, strip_curves> titles{"Tsig %DCA", "RPM /10",   "TAlm 100%",
                                                       "TmV x50",   "Teff %DCA", "Teff %ACA"};
    for (std::size_t curve = 0; curve < strip_curves; ++curve)
        chart.curves.push_back({titles[curve], curve_colours[curve]});
    return chart;
}

/// Level curves at 125, 110, 95, 80, 65 and 50.
inline float level(std::size_t curve) {
    return 125 - 15 * static_cast<float>(curve);
}

inline strip_row level_row(std::int64_t time) {
    strip_row row;
    row.time = time;
    for (std::size_t curve = 0; curve < strip_curves; ++curve)
        row.values[curve] = level(curve);
    return row;
}

/// Rows every 100 ms for `length` ms, up to now.
inline strip_window level_rows(std::int64_t length = strip_spans[0], std::int64_t span = strip_spans[0]) {
    strip_window window(span);
    const std::int64_t now = running_ms();
    for (std::int64_t time = now - length; time <= now; time += 100)
        window.append(level_row(time));
    return window;
}

} // namespace tyxo
