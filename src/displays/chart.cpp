#include "displays/chart.h"

#include "link/channel_rec.h"
#include "settings/settings.h"

namespace tyxo {

namespace {

struct curve_row {
    std::string_view title;
    colour color;
    i16 settings_rec::*hidden_by; ///< 0 hides the curve; none when it always shows
};

constexpr std::array<curve_row, 6> curve_rows{{
    {"Tsig %DCA", rgb(255, 0, 0), &settings_rec::xy_tha},
    {"RPM /10", rgb(0, 0, 255), nullptr},
    {"TAlm 100%", rgb(255, 128, 0), nullptr},
    {"TmV x50", rgb(0, 192, 0), &settings_rec::xy_tmv},
    {"Teff %DCA", rgb(192, 0, 192), &settings_rec::xy_theff},
    {"Teff %ACA", rgb(255, 255, 255), &settings_rec::xy_theff_AC},
}};

} // namespace

void opt_res_click(std::size_t index) {
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
    opt_res_click(0);
}

void setup_chart(i16 channel) {
    iStripChartX& chart = at(charts.chart, channel);
    for (const curve_row& row : curve_rows)
        chart.curves.push_back({std::string(row.title), row.color});
    chart.Title = channel_number(channel) + ": " + sensor::channels[channel].location;
}

void hide_curves_by_settings() {
    for (i16 channel = 0; channel < sensor::max_sensors; ++channel) {
        for (std::size_t curve = 0; curve < curve_rows.size(); ++curve) {
            const auto hidden_by = curve_rows[curve].hidden_by;
            if (hidden_by != nullptr && settings.*hidden_by == 0) {
                charts.chart[channel].curves[curve].Visible = false;
            }
        }
    }
}

} // namespace tyxo
