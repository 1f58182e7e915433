// Any curve of any engine: polar scope, Detailed Display, bar diagrams, values per cylinder, register image.

#include "fuzz/machine.h"
#include "fuzz/targets.h"

#include "controls/strip_history.h"
#include "displays/bar_diagram.h"
#include "displays/frmdetailedpic.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "gateway/modbus.h"
#include "gateway/modbus_calc.h"
#include "gateway/register_image.h"
#include "link/calls.h"
#include "link/channel_rec.h"
#include "platform/simulation.h"

#include <cmath>
#include <vector>

namespace tyxo::fuzzing {

namespace {

/// Four digits of a frame, most often small.
i32 word(input& in, i32 usual) {
    const u8 choice = in.byte();
    if (choice < 200) return choice % (usual + 1);
    return in.raw<std::uint16_t>();
}

void take_engine(channel_rec& rec, input& in) {
    const u8 choice = in.byte();
    rec.param_valid = true;
    rec.dcpercent_valid = (choice & 1U) != 0;
    rec.enginetype = (choice & 2U) != 0 ? 4 : word(in, 4);
    rec.cylconf = (choice & 4U) != 0 ? 2 : word(in, 4);
    rec.numzyl = word(in, cylinder_max + 1);
    rec.alarmlevel = word(in, 6);
    rec.dcalarmpercent = word(in, 199);
    rec.overspeed = in.raw<std::uint16_t>();
    rec.fwvers = (choice & 8U) != 0 ? "V2.07" : std::string(in.text(choice % 3));
    const auto cylinders = static_cast<std::size_t>(std::clamp(rec.numzyl, 1, cylinder_max));
    const i32 usual_angle = (choice & 16U) != 0 ? 720 / static_cast<i32>(cylinders) : 199;
    for (std::size_t place = 0; place < cylinders; ++place) {
        rec.firingorder[place] = in.byte();
        rec.firingangle[place] = word(in, usual_angle);
    }
}

/// Samples around a mean, or as they come.
void take_curve(std::array<i32, curve_samples + 1>& samples, input& in) {
    const i32 mean = in.raw<std::uint16_t>();
    const u8 kind = in.byte();
    const i32 step = in.raw<signed char>();
    for (i32 index = 0; index < curve_samples; ++index) {
        i32& sample = samples[static_cast<std::size_t>(index)];
        const i32 wave = (index % 64 - 32) * step;
        sample = kind < 32 ? in.raw<std::uint16_t>() : std::clamp(mean + wave, 0, 65535);
    }
    if (kind >= 128) samples[kind] = in.raw<std::uint16_t>();
}

double scale(input& in) {
    const u8 kind = in.byte();
    if (kind < 200) return kind / 16.0;
    const auto value = in.raw<double>();
    return std::isfinite(value) ? value : 1; // the settings hold no others
}

void process(i16 channel) {
    const auto points = [channel](std::size_t curve) {
        return panels.XYplot[channel].curves[curve].points.size();
    };
    process_thermo(channel); // tells its failures itself
    expect(points(1) == 0 || points(1) == curve_samples, "a curve is drawn whole or not at all");
    const bool failed = fails([channel] { process_angacc(channel); });
    expect(failed || points(2) == 0 || points(2) == curve_samples,
           "one of the acceleration, unless it fails");
}

/// One element of the picture by itself, whatever the others did.
void draw(input& in) {
    using namespace frmdetailedpic;
    constexpr auto elements = std::to_array<void (*)()>(
        {prepare, draw_curves, draw_scale, draw_refcircle, draw_refline, draw_almcircle, draw_almline,
         draw_thermo, draw_thermo_abs, draw_angle, [] { draw_engine(engine_picture::engine); }});
    if (in.flag()) command([&] { resize(in.raw<std::uint16_t>(), in.raw<std::uint16_t>()); });
    state.surface.clear();
    command([&] { at(elements, in.below(static_cast<i32>(elements.size())))(); });
    for (const auto* labels : {&state.Lblzyl, &state.Lblzyl2}) {
        for (const canvas_label& label : *labels)
            expect(std::isfinite(label.Left) && std::isfinite(label.Top), "labels stand somewhere");
    }
}

/// Rows of a strip chart: its line is made of their values, oldest first.
void chart(input& in) {
    strip_window window(at(strip_spans, in.below(4)));
    const i32 columns = in.between(1, 2000);
    strip_row row{.time = in.raw<std::uint32_t>()};
    std::vector<float> values;
    while (!in.empty() && values.size() < 200) {
        const u8 pause = in.byte();
        row.time += pause < 240 ? pause * 20 : in.raw<std::uint32_t>() % 100'000'000;
        row.values[0] = in.raw<i16>();
        values.push_back(row.values[0]);
        window.append(row);
    }
    if (values.empty()) return;
    expect(window.newest_value(0) == values.back(), "the newest value is that of the last row");
    std::vector<strip_point> points;
    window.points(0, columns, points);
    double before = 0;
    for (const strip_point& point : points) {
        if (std::isnan(point.value)) continue;
        expect(point.time >= before && point.time <= static_cast<double>(row.time), "oldest first");
        expect(std::ranges::find(values, point.value) != values.end(), "every point is of a row");
        before = point.time;
    }
    expect(!points.empty() && points.back().value == values.back(), "the line ends with the last row");
}

} // namespace

void curves_and_engines(input in) {
    constexpr i16 channel = 1;
    simulation::fresh_world();
    sensor::sensor_state& state = sensor::state;
    state.max_sensors = channel_count;
    state.adc_offset = static_cast<i16>(in.between(460, 520));
    state.zyl_speed_range = static_cast<i16>(in.between(1, 20));
    state.scale_polar_t = scale(in);
    state.scale_polar_a = scale(in);
    settings.speedbar_mode = in.byte() % 2;
    channel_rec& rec = state.channels[channel];
    take_engine(rec, in);
    take_curve(rec.thermo_data, in);
    take_curve(rec.angacc_data, in);
    const u8 parts = in.byte();
    setup_plot(channel);
    if ((parts & 1U) != 0) {
        frmdetailedpic::resize(294, 164);
        mainfrm::XYplot_click(channel);
    }
    if ((parts & 2U) != 0) {
        command([] { mainfrm::Cmd_diagramm_click(channel); });
        command([] { mainfrm::Cmd_diagramm2_click(channel); });
    }
    if ((parts & 4U) != 0) {
        calls.calc_thermo_cyl = Modbus_calc::calc_thermo_cyl;
        calls.calc_angacc_cyl = Modbus_calc::calc_angacc_cyl;
    }
    process(channel);
    for (const i16 block : std::to_array<i16>({1, 3, 4, 8}))
        if ((parts & 4U) != 0) command([block] { TCP_send(channel, block); });
    if ((parts & 8U) != 0) draw(in);
    if ((parts & 16U) != 0) chart(in);
    check_state();
}

} // namespace tyxo::fuzzing
