#include "displays/chart.h"

#include "displays/panel.h"
#include "link/channel_rec.h"
#include "link/main_timers.h"
#include "link/speed_bands.h"
#include "platform/clock.h"
#include "settings/settings.h"

#include <algorithm>
#include <cmath>

namespace tyxo {

namespace {

float speed_line(const channel_rec& rec) {
    if (!rec.param_valid) return no_value;
    return static_cast<float>(static_cast<double>(rec.speed) / band_of(speed_bands, rec.overspeed).divisor);
}

/// Without parameters the curve keeps its title.
std::string_view speed_title(const channel_rec& rec) {
    return rec.param_valid ? band_of(speed_bands, rec.overspeed).title : std::string_view();
}

struct curve_row {
    std::string_view title;
    colour color;
    i16 settings_rec::*hidden_by; ///< 0 hides the curve; none when it always shows
    float (*value)(const channel_rec&);
    std::string_view (*new_title)(const channel_rec&) = nullptr; ///< asked with each row; none to keep it
};

constexpr auto curve_rows = std::to_array<curve_row>({
    {"Tsig %DCA", rgb(255, 0, 0), &settings_rec::xy_tha,
     [](const channel_rec& rec) { return static_cast<float>(rec.tsignal); }},
    {"RPM /10", rgb(0, 0, 255), nullptr, speed_line, speed_title},
    {"TAlm 100%", rgb(255, 128, 0), nullptr, [](const channel_rec&) { return 100.0F; }},
    {"TmV x50", rgb(0, 192, 0), &settings_rec::xy_tmv,
     [](const channel_rec& rec) { return static_cast<float>(rec.tvoltage / 2.0); }},
    {"Teff %DCA", rgb(192, 0, 192), &settings_rec::xy_theff,
     [](const channel_rec& rec) { return static_cast<float>(rec.teff_dc); }},
    {"Teff %ACA", rgb(255, 255, 255), &settings_rec::xy_theff_AC,
     [](const channel_rec& rec) { return static_cast<float>(rec.teff_ac); }},
});
static_assert(curve_rows.size() == strip_curves);

constexpr i16 longest_freeze = 10; // minutes
constexpr double ms_per_day = 86'400'000;

const strip_window& live_rows(i16 channel) {
    const double span = charts.chart[channel].XAxisSpan * ms_per_day;
    return charts.rows[channel].window(static_cast<std::int64_t>(std::llround(span)));
}

/// The height of a chart that is not enlarged.
i32 small_height() {
    const window_layout& form = charts.layout;
    return (form.client_height - form.Text_status.height - 2 * form.quadrants[0].Frame_sensor.height - 40) /
           2;
}

void enlarge(i16 channel) {
    iStripChartX& chart = charts.chart[channel];
    if (!stands_left(channel)) chart.Left = 20;
    chart.Width = charts.layout.client_width - 25;
    chart.Height = small_height() + 125;
}

void reduce(i16 channel) {
    iStripChartX& chart = charts.chart[channel];
    const i32 half = charts.layout.client_width / 2;
    if (!stands_left(channel)) chart.Left = half;
    chart.Width = half - 4;
    chart.Height = small_height();
}

void thaw(i16 channel) {
    charts.chart[channel].Frozen = false;
    charts.frozen[channel].reset();
    mainfrm::timers.Timer_chartres[channel].Enabled(false);
}

} // namespace

std::vector<chart_curve> chart_curves() {
    std::vector<chart_curve> curves;
    curves.reserve(curve_rows.size());
    for (const curve_row& row : curve_rows)
        curves.push_back({std::string(row.title), row.color});
    return curves;
}

strip_row chart_row(const channel_rec& rec, std::int64_t time) {
    strip_row row;
    row.time = time;
    std::ranges::transform(curve_rows, row.values.begin(),
                           [&rec](const curve_row& curve) { return curve.value(rec); });
    return row;
}

void name_curves(iStripChartX& chart, const channel_rec& rec) {
    for (std::size_t curve = 0; curve < chart.curves.size(); ++curve) {
        const auto new_title = curve_rows[curve].new_title;
        if (new_title == nullptr) continue;
        const std::string_view title = new_title(rec);
        if (!title.empty()) chart.curves[curve].Title = title;
    }
}

void mainfrm::opt_res_click(std::size_t index) {
    charts.opt_res = index;
    for (const time_resolution& choice : time_resolutions) {
        if (choice.caption != at(charts.Lbl_opt_res, static_cast<i32>(index)).Caption) continue;
        for (iStripChartX& chart : charts.chart) {
            chart.XAxisMin = 0;
            chart.XAxisSpan = choice.span;
        }
    }
}

void setup_time_resolution() {
    for (std::size_t index = 0; index < time_resolutions.size(); ++index) {
        charts.Lbl_opt_res[index].Caption = time_resolutions[index].caption;
    }
    mainfrm::opt_res_click(0);
}

void setup_chart(i16 channel) {
    iStripChartX& chart = charts.chart[channel];
    chart.curves = chart_curves();
    chart.Title = channel_number(channel) + ": " + sensor::state.channels[channel].location;
}

void add_chart_row(i16 channel) {
    iStripChartX& chart = charts.chart[channel];
    const channel_rec& rec = sensor::state.channels[channel];
    name_curves(chart, rec);
    charts.last_row[channel] = charts.rows[channel].append(chart_row(rec, running_ms()));
}

void mainfrm::chart_click(i16 channel) {
    iStripChartX& chart = charts.chart[channel];
    Timer& minutes = mainfrm::timers.Timer_chartres[channel];
    if (chart.Frozen) {
        thaw(channel);
        return;
    }
    charts.frozen[channel] = live_rows(channel);
    chart.Frozen = true;
    minutes.Interval(60'000);
    minutes.Enabled(true);
}

void mainfrm::Timer_chartres_tick(i16 channel) {
    i16& minutes = charts.frozen_minutes[channel];
    ++minutes;
    if (minutes < longest_freeze) return;
    minutes = 0;
    charts.chart[channel].FrozenMode = 0;
    thaw(channel);
}

void mainfrm::cmd_zoom_xy_click(i16 channel) {
    // The neighbour's state is its own: with both flags set, the last command decides which chart is seen.
    iStripChartX& neighbour = charts.chart[row_neighbour(channel)];
    bool& enlarged = sensor::state.channels[channel].xy_zoom_state;
    if (!enlarged) {
        enlarge(channel);
        neighbour.Visible = false;
        charts.chart[channel].Visible = true;
        enlarged = true;
        panels.cmd_zoom_xy[channel].Caption = "Reduce XY graph";
    } else {
        reduce(channel);
        neighbour.Visible = true;
        enlarged = false;
        panels.cmd_zoom_xy[channel].Caption = "Enlarge XY graph";
    }
}

void place_charts(const window_layout& layout) {
    charts.layout = layout;
    for (i16 channel = 0; channel < channel_count; ++channel) {
        const rectangle& place = layout.quadrants[channel].chart;
        iStripChartX& chart = charts.chart[channel];
        chart.Left = place.left;
        chart.Top = place.top;
        chart.Width = place.width;
        chart.Height = place.height;
        if (sensor::state.channels[channel].xy_zoom_state) enlarge(channel);
    }
}

bool fills_row(i16 channel) {
    return sensor::state.channels[channel].xy_zoom_state && charts.chart[channel].Visible;
}

rectangle row_place(i16 channel) {
    const quadrant_layout& quadrant = charts.layout.quadrants[channel];
    const rectangle& frame = quadrant.Frame_sensor;
    const i32 top = quadrant.chart.top;
    return {0, top, charts.layout.client_width, frame.top + frame.height - top};
}

rectangle zoom_button_place(i16 channel) {
    const i16 neighbour = row_neighbour(channel);
    const iStripChartX& chart = charts.chart[fills_row(neighbour) ? neighbour : channel];
    return zoom_button({chart.Left, chart.Top, chart.Width, chart.Height}, channel, charts.layout.print);
}

const strip_window& shown_rows(i16 channel) {
    const auto& frozen = charts.frozen[channel];
    return frozen ? *frozen : live_rows(channel);
}

void show_curves_by_settings() {
    for (i16 channel = 0; channel < sensor::state.max_sensors; ++channel) {
        // A channel that came into use after the start has a chart without curves.
        show_curves_by_settings(charts.chart[channel]);
    }
}

void show_curves_by_settings(iStripChartX& chart) {
    for (std::size_t curve = 0; curve < chart.curves.size(); ++curve) {
        const auto hidden_by = curve_rows[curve].hidden_by;
        if (hidden_by != nullptr) chart.curves[curve].Visible = settings.*hidden_by != 0;
    }
}

} // namespace tyxo
