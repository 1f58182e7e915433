// The measured curves of the Detailed Display.

#include "basics/number.h"
#include "displays/frmdetailedpic.h"
#include "displays/polar_geometry.h"
#include "link/cylinder_values.h"

#include <cstdlib>
#include <numeric>

namespace tyxo {

namespace {

using curve_points = std::array<polar::point, curve_samples>;
using percentages = std::array<double, curve_samples>;

constexpr double top = 10; ///< the straight diagram ends here; it has no limit below

/// What sets the three diagrams apart: colour and legend.
struct diagram {
    colour ForeColor;
    double legend_x;
    double legend_y;
    std::string_view legend;
};

constexpr diagram thermo{rgb(255, 0, 0), 106, 5, "Thermosignal rel. to average value"};
constexpr diagram thermo_abs{rgb(255, 255, 0), 106, 9, "Thermosignal in % Alarmlevel"};
constexpr diagram angle{rgb(0, 0, 255), 166, 5, "Angular acceleration rel. to average value"};

/// The closed curve with a radius for each sample, and the legend.
template <class Radius> void draw_round(canvas& surface, const diagram& kind, Radius radius) {
    curve_points points;
    for (i32 k = 0; k < curve_samples; ++k)
        at(points, k) = polar::sample_point(surface, radius(k), k);
    surface.ForeColor = kind.ForeColor;
    polar::draw_outline(surface, points, polar::outline::closed);
    polar::draw_legend(surface, kind.legend_x, kind.legend_y, kind.ForeColor, kind.legend);
}

/// The line with a height above the baseline for each sample.
template <class Height> void draw_straight(canvas& surface, const diagram& kind, Height height) {
    curve_points points;
    const double left = polar::left(surface);
    const double step = polar::span(surface) / 255;
    for (i32 k = 0; k < curve_samples; ++k) {
        double y = height(k);
        if (y < top) y = top;
        at(points, k) = {left + step * k, y};
    }
    surface.ForeColor = kind.ForeColor;
    polar::draw_outline(surface, points, polar::outline::open);
}

void draw_relative(const sensor::curve& samples, double scale, const diagram& kind) {
    // Outwards to the edge of the diagram; inwards past the centre, to its far side.
    constexpr double outmost = 48;
    constexpr double inmost = -80;
    constexpr double mean_radius = 30;
    const double mean = std::accumulate(samples.begin(), samples.end(), 0.0) / 256.0;
    if (mean < 0) return;
    canvas& surface = frmdetailedpic::state.surface;
    draw_round(surface, kind, [&](i32 k) {
        double deviation = (at(samples, k) - mean) * scale;
        if (deviation > outmost) deviation = outmost;
        if (deviation < inmost) deviation = inmost;
        return deviation + mean_radius;
    });
    const double zero = polar::baseline(surface) - round_even<i32>((surface.ScaleHeight - 45) / 2);
    draw_straight(surface, kind, [&](i32 k) { return zero - (at(samples, k) - mean) * scale; });
}

[[nodiscard]] i32 product(std::int64_t one, std::int64_t other) {
    return narrow<i32>(one * other);
}

/// What 100 % of the alarm level is divided by.
[[nodiscard]] double alarm_divisor(const channel_rec& rec) {
    const i32 gain = at(alarm_gain_table, rec.alarmlevel);
    const double divisor = rec.dcpercent_valid ? product(rec.dcalarmpercent, gain) / 100.0 : gain;
    if (divisor == 0) failures::division_by_zero();
    return divisor;
}

[[nodiscard]] percentages alarm_percentages(const channel_rec& rec) {
    const double divisor = alarm_divisor(rec);
    percentages result;
    for (i32 k = 0; k < curve_samples; ++k) {
        const std::int64_t deviation =
            std::int64_t{at(sensor::state.detail_thermo, k)} - sensor::state.adc_offset;
        at(result, k) = product(std::abs(deviation), 100) / divisor;
    }
    return result;
}

} // namespace

void frmdetailedpic::draw_thermo() {
    draw_relative(sensor::state.detail_thermo, sensor::state.scale_polar_t, thermo);
}

void frmdetailedpic::draw_thermo_abs() {
    constexpr double farthest = 70;
    const percentages percent = alarm_percentages(frmdetailedpic::detailed_channel());
    canvas& surface = frmdetailedpic::state.surface;
    draw_round(surface, thermo_abs, [&](i32 k) {
        double radius = at(percent, k) * 50 / 100;
        if (radius > farthest) radius = farthest;
        if (radius < -farthest) radius = -farthest;
        return radius;
    });
    const double zero = polar::baseline(surface);
    draw_straight(surface, thermo_abs, [&](i32 k) { return zero - at(percent, k) * 75 / 100; });
}

void frmdetailedpic::draw_angle() {
    draw_relative(sensor::state.detail_angacc, sensor::state.scale_polar_a, angle);
}

void frmdetailedpic::draw_curves() {
    const frmdetailedpic::window& window = frmdetailedpic::state;
    if (window.Chck_tsrel == 1) frmdetailedpic::draw_thermo();
    if (window.Chck_tsabs == 1) frmdetailedpic::draw_thermo_abs();
    if (window.Chck_aa == 1) frmdetailedpic::draw_angle();
}

} // namespace tyxo
