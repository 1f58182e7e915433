#include "displays/xy_plot.h"

#include "basics/number.h"
#include "displays/bar_diagram.h"
#include "displays/frmdetailedpic.h"
#include "displays/panel.h"
#include "link/calls.h"
#include "link/channel_rec.h"
#include "platform/debug_output.h"

#include <cmath>

namespace tyxo {

namespace {

using sensor::channel_at;

// Looks like a mistake and stays: both are a hair short of the real angles, and sample 255 lies at the angle
// of sample 0 (Curves.AreDrawnClockwiseFromTheTopAroundTheirMean).
constexpr double sample_angle = 0.024639215686274512; // 2 x 3.1415 / 255
constexpr double top_angle = 3.1415 / 2;

constexpr double mean_radius = 30;
constexpr plot_axis scope_axis{-65, 130};

// Curve 0 is the reference circle.
constexpr std::size_t thermo_curve = 1;
constexpr std::size_t angacc_curve = 2;

/// What tells the two kinds of curve apart.
struct curve_kind {
    std::array<i32, curve_samples + 1> channel_rec::*data;
    std::size_t plot_curve;
    double& scale;
    sensor::curve& detail;
    i16& bar_channel;
    void (*refresh_bars)();
    std::array<sensor::curve, 7>& mb;
    std::function<void(i16)> link_calls::*calc;
};

// clang-format off
const curve_kind thermosignal{&channel_rec::thermo_data, thermo_curve, sensor::state.scale_polar_t,
                              sensor::state.detail_thermo, sensor::state.bar_channel_thermo, refresh_thermo_bars,
                              sensor::state.mb_thermo, &link_calls::calc_thermo_cyl};
const curve_kind acceleration{&channel_rec::angacc_data, angacc_curve, sensor::state.scale_polar_a,
                              sensor::state.detail_angacc, sensor::state.bar_channel_angacc, refresh_speed_bars,
                              sensor::state.mb_angacc, &link_calls::calc_angacc_cyl};
// clang-format on

void clear_curve(i16 channel, std::size_t curve) {
    auto& curves = panels.XYplot[channel].curves;
    if (curve < curves.size()) curves[curve].points.clear();
}

void show_curve(i16 channel, std::size_t curve) {
    auto& curves = panels.XYplot[channel].curves;
    if (curve < curves.size()) curves[curve].Visible = true;
}

/// Looks like a mistake and stays: a channel that came into use after the start has a plot without curves,
/// which remains empty (Curves.OfAChannelThatCameIntoUseAfterTheStartAreServedWithoutADrawing).
void add_point(i16 channel, std::size_t curve, const plot_point& point) {
    auto& curves = panels.XYplot[channel].curves;
    if (curve < curves.size()) curves[curve].points.push_back(point);
}

void set_axes(i16 channel) {
    iXYPlotX& plot = panels.XYplot[channel];
    plot.XAxis = scope_axis;
    plot.YAxis = scope_axis;
}

/// The value itself; an overflow failure for one that no double can hold.
double in_range(double value) {
    if (!std::isfinite(value)) failures::overflow();
    return value;
}

/// Runs statements and goes on past those that fail.
struct going_on {
    std::optional<std::string> last_failure;

    template <class... Step> void operator()(Step&&... step) {
        if (auto why = attempt(step...)) last_failure = std::move(why);
    }
};

/// Runs statements up to the first that fails.
struct giving_up {
    template <class... Step> void operator()(Step&&... step) const { (step(), ...); }
};

/// Draws a finished curve and hands it on. Each step given to `run` is one statement.
template <class Run> void process(i16 channel, const curve_kind& kind, Run& run) {
    const i32 number = channel + 1;
    const auto sample = [&](i32 index) { return at(channel_at(channel).*kind.data, index); };

    run([&] { clear_curve(channel, kind.plot_curve); }, [&] { show_curve(channel, kind.plot_curve); },
        [&] {
            if (number == sensor::state.polar_channel) frmdetailedpic::prepare();
        });

    double sum = 0;
    for (i32 index = 0; index < curve_samples; ++index)
        run([&] { sum += sample(index); });
    const double mean = sum / curve_samples;
    if (!(mean > 0)) return;

    // Looks like a mistake and stays: a statement that fails leaves the value of the sample before
    // (ThermoFailures.OfASampleSkipItsRadiusAndReportTheLastFailureAtTheEnd).
    double radius = 0;
    plot_point point;
    for (i32 index = 0; index < curve_samples; ++index) {
        const double angle = top_angle - index * sample_angle;
        run([&] { radius = in_range((sample(index) - mean) * kind.scale + mean_radius); },
            [&] {
                point = {std::cos(angle) * radius, std::sin(angle) * radius};
            },
            [&] { add_point(channel, kind.plot_curve, point); },
            [&] {
                if (number == sensor::state.polar_channel) at(kind.detail, index) = sample(index);
            },
            [&] {
                if (number == kind.bar_channel) at(kind.detail, index) = sample(index);
            },
            [&] { at(at(kind.mb, channel), index) = sample(index); });
    }
    run([&] { set_axes(channel); },
        [&] {
            if (number == sensor::state.polar_channel) frmdetailedpic::draw_curves();
        },
        [&] {
            if (number == kind.bar_channel) kind.refresh_bars();
        },
        [&] { (calls.*kind.calc)(channel); });
}

plot_curve reference_circle() {
    plot_curve circle{"zero", rgb(255, 255, 255), true, {}};
    for (i32 index = 0; index < curve_samples; ++index) {
        const double angle = index * sample_angle;
        // Looks like a mistake and stays: only y is rounded, the circle is slightly stepped
        // (XYPlot.RoundsOnlyYOfTheReferenceCircle).
        circle.points.push_back({mean_radius * std::cos(angle),
                                 static_cast<double>(round_even<i32>(mean_radius * std::sin(angle)))});
    }
    return circle;
}

} // namespace

void setup_plot(i16 channel) {
    auto& curves = panels.XYplot[channel].curves;
    curves.clear();
    curves.push_back(reference_circle());
    curves.push_back({"", rgb(255, 0, 0), true, {}});
    curves.push_back({"", rgb(0, 0, 255), true, {}});
    set_axes(channel);
}

void process_thermo(i16 channel) {
    going_on run;
    process(channel, thermosignal, run);
    if (run.last_failure) debug_output("error: disp thermosignal " + *run.last_failure);
}

/// Looks like a mistake and stays: unlike the thermosignal it gives up at the first failed statement
/// (AngaccFailures.EndTheDrawingWhereTheyHappenAndRise).
void process_angacc(i16 channel) {
    giving_up run;
    process(channel, acceleration, run);
}

void clear_curves(i16 channel) {
    for (const std::size_t curve : {thermo_curve, angacc_curve})
        clear_curve(channel, curve);
}

void mainfrm::XYplot_click(i16 channel) {
    sensor::state.polar_channel = static_cast<i16>(channel + 1);
    if (sensor::state.polar_channel > sensor::state.max_sensors) return;
    frmdetailedpic::show("Detailed Display " + channel_at(channel).location);
}

} // namespace tyxo
