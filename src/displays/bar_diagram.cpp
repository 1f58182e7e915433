#include "displays/bar_diagram.h"

#include "basics/number_text.h"
#include "link/cylinder_values.h"
#include "link/engine_texts.h"
#include "link/speed_bands.h"
#include "platform/message_box.h"
#include "settings/settings.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tyxo {

namespace {

using cylinder_values::crank_angles;

constexpr colour difference_color = rgb(192, 0, 192);
constexpr std::string_view difference_axis = "diffspeed"; // of both forms
constexpr double bar_width = 0.5;
const Label hidden{{}, 0, false};

void write_speed_bars(channel_rec& rec, const crank_angles& angles) {
    cylinder_values::write_speeds(rec, angles, sensor::state.detail_angacc, sensor::state.zyl_speed_range,
                                  {rec.bar_angacc_val, rec.bar_angacc_diff});
}

void write_thermo_bars(channel_rec& rec, const crank_angles& angles) {
    cylinder_values::write_thermosignals(
        rec, angles, sensor::state.detail_thermo, sensor::state.zyl_speed_range, sensor::state.adc_offset,
        cylinder_values::mean_order::before_values, {rec.bar_thermo_val, rec.bar_thermo_diff});
}

struct span_row {
    i32 below; ///< the row holds overspeeds under this limit; a limit itself belongs to the row above
    double span;
    double increment;
};
constexpr std::array<span_row, 5> speed_spans{{
    {120, 267, 50},
    {400, 1330, 100},
    {1400, 2000, 250},
    {2900, 6650, 500},
    {no_limit, 8000, 500},
}};

span_row speed_span(const channel_rec& rec) {
    return band_of(speed_spans, rec.overspeed);
}

span_row thermo_span(const channel_rec& /*rec*/) {
    return {0, 400, 20};
}

/// What tells the two forms apart.
struct bar_kind {
    bar_form& bars;
    i16& selected; ///< channel number, 0 for none
    std::string_view caption;
    std::string_view title;
    std::string_view value_title;
    colour value_color;
    std::string_view value_axis_title;
    std::string_view difference_title;
    std::string_view difference_axis_title;
    span_row (*span)(const channel_rec& rec);
    void (*write)(channel_rec& rec, const crank_angles& angles);
    std::array<i32, cylinder_max> channel_rec::*value;
    std::array<double, cylinder_max> channel_rec::*difference;
};

const bar_kind speed_kind{
    frmbarpic::state,
    sensor::state.bar_channel_angacc,
    "Speed difference diagram ",
    "Cylinder speed difference diagram",
    "Speed absolut",
    rgb(0, 0, 255),
    "RPM",
    "Speed difference",
    "RPM",
    speed_span,
    write_speed_bars,
    &channel_rec::bar_angacc_val,
    &channel_rec::bar_angacc_diff,
};

const bar_kind thermo_kind{
    Frmbarpic2::state,
    sensor::state.bar_channel_thermo,
    "Thermosignal difference diagram ",
    "Cylinder thermosignal difference diagram",
    "Signal absolut",
    rgb(255, 0, 0),
    "Thermosignal in % Alarmlevel",
    "Signal difference",
    "Thermosignal difference in % to meanvalue",
    thermo_span,
    write_thermo_bars,
    &channel_rec::bar_thermo_val,
    &channel_rec::bar_thermo_diff,
};

const bar_kind& kind_of(const bar_form& bars) {
    return &bars == &frmbarpic::state ? speed_kind : thermo_kind;
}

channel_rec& selected_record(const bar_kind& kind) {
    return sensor::channel_at(static_cast<i16>(kind.selected - 1));
}

void set_up_plot(const bar_kind& kind, const channel_rec& rec) {
    const span_row left = kind.span(rec);
    iPlotX& plot = kind.bars.plot;
    plot = {};
    plot.Title = kind.title;
    plot.XAxis = {.Min = 0, .Span = rec.numzyl + 1.0, .Increment = 1};
    plot.YAxes = {
        {.Title = std::string(kind.value_axis_title),
         .Min = 0,
         .Span = left.span,
         .Increment = left.increment,
         .Color = kind.value_color},
        {.Name = std::string(difference_axis),
         .Title = std::string(kind.difference_axis_title),
         .Min = -60,
         .Span = 80,
         .Color = difference_color},
    };
    plot.series = {
        {.Title = std::string(kind.value_title), .Color = kind.value_color},
        {.Title = std::string(kind.difference_title),
         .Color = difference_color,
         .YAxisName = std::string(difference_axis)},
    };
}

void set_caption(const bar_kind& kind, const channel_rec& rec) {
    kind.bars.form.Caption = std::string(kind.caption) + rec.location;
}

/// Sets plot and axes up once per channel, so that a later `overspeed` does not move them; and once more when
/// they were set up before the channel's parameters were known.
void load(const bar_kind& kind, const channel_rec& rec) {
    bar_form& bars = kind.bars;
    const bool same = bars.form.Loaded && bars.channel == kind.selected;
    if (same && (bars.parameters || !rec.param_valid)) return;
    const bool switched = bars.form.Visible;
    set_up_plot(kind, rec);
    for (Label& label : bars.Lbl_bar)
        label = hidden;
    bars.Lbl_mtyp1 = bars.Lbl_mtyp2 = hidden;
    bars.form.Loaded = true;
    bars.channel = kind.selected;
    bars.parameters = rec.param_valid;
    if (switched) set_caption(kind, rec);
}

/// The text of the label at a place counted from 0; nothing when the label keeps the text that it has.
std::optional<std::string> bar_text(const channel_rec& rec, i32 place) {
    const bool v_type = rec.cylconf == arrangement::v_type;
    const i32 entry = at(rec.firingorder, place);
    if (settings.speedbar_mode != 0) return v_type ? cylinder_text(entry) : plain(entry);
    if (!v_type || rec.firingorder[0] < 101) return plain(place + 1);
    return plain(place / 2 + 1) + (place % 2 == 0 ? 'A' : 'B');
}

std::string stroke_text(const channel_rec& rec) {
    if (rec.enginetype == 2) return "2 stroke engine";
    if (rec.enginetype == 4) return "4 stroke engine";
    return {};
}

/// Puts a label under the middle of each bar, and the axis with it.
void fill_labels(bar_form& bars, const channel_rec& rec) {
    bars.plot.XAxis.Span = rec.numzyl + 1.0;
    for (Label& label : bars.Lbl_bar)
        label.Visible = false;
    for (i32 place = 0; place < rec.numzyl; ++place) {
        const double step = bar_design::axis_width / ((rec.numzyl + 1.0) * 2);
        Label& label = at(bars.Lbl_bar, place);
        bars.Lbl_bar_middle[place] = 2 * (place + 1) * step + bar_design::axis_left;
        label.Visible = true;
        if (auto text = bar_text(rec, place)) label.Caption = std::move(*text);
    }
    bars.Lbl_mtyp1 = {.Caption = stroke_text(rec)};
    bars.Lbl_mtyp2 = {.Caption = arrangement_text(rec)};
}

template <class Value> void draw(bar_series& series, const Value& values, i32 count) {
    series.points.clear();
    for (i32 cylinder = 0; cylinder < count; ++cylinder)
        series.points.push_back({cylinder + 1.0, static_cast<double>(at(values, cylinder)), bar_width});
}

void refresh(const bar_kind& kind) {
    channel_rec& rec = selected_record(kind);
    bar_form& bars = kind.bars;
    load(kind, rec);
    kind.write(rec, settings.speedbar_mode != 0 ? cylinder_values::angles_by_firing_place(rec)
                                                : cylinder_values::angles_by_cylinder(rec));
    draw(bars.plot.series[0], rec.*kind.value, rec.numzyl);
    draw(bars.plot.series[1], rec.*kind.difference, rec.numzyl);
    // Bars and labels belong together, also when engine or order have changed since.
    if (bars.open) fill_labels(bars, rec);
}

void open(const bar_kind& kind, i16 channel) {
    kind.selected = static_cast<i16>(channel + 1);
    if (kind.selected > sensor::state.max_sensors) return;
    const channel_rec& rec = sensor::channel_at(channel);
    if (!rec.param_valid) {
        message_box("       Parameters not loaded from Evaluator !!\r\n"
                    "Please wait until loading is ready, and try it again !!",
                    box_icon::critical, box_buttons::ok, "Message");
        return;
    }
    load(kind, rec);
    set_caption(kind, rec);
    kind.bars.form.Visible = true;
    ++kind.bars.shows;
    bar_form_activate(kind.bars);
}

} // namespace

void mainfrm::Cmd_diagramm_click(i16 channel) {
    open(speed_kind, channel);
}

void mainfrm::Cmd_diagramm2_click(i16 channel) {
    open(thermo_kind, channel);
}

void refresh_speed_bars() {
    refresh(speed_kind);
}

void refresh_thermo_bars() {
    refresh(thermo_kind);
}

void bar_form_activate(bar_form& bars) {
    if (!bars.form.Visible) return;
    const bar_kind& kind = kind_of(bars);
    if (bars.channel == kind.selected) fill_labels(bars, selected_record(kind));
    bars.open = true;
}

void bar_form_unload(bar_form& bars) {
    kind_of(bars).selected = 0;
    bars = {};
}

void frmbarpic::unload() {
    bar_form_unload(frmbarpic::state);
}

void Frmbarpic2::unload() {
    bar_form_unload(Frmbarpic2::state);
}

} // namespace tyxo
