#include "view/cycles.h"

#include "displays/bar_diagram.h"
#include "displays/frmdetailedpic.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "link/channel_rec.h"
#include "xlg/log_record.h"

#include <algorithm>
#include <array>
#include <string>

namespace tyxo::view {

namespace {

constexpr i16 the_channel = 0;
constexpr i16 its_number = 1;

std::int64_t second_of(std::int64_t ms) {
    return ms / 1000 - (ms % 1000 < 0 ? 1 : 0);
}

/// While it lives, the plant's one channel may be any engine; then it is again what it was before.
class lent_channel {
  public:
    lent_channel() = default;
    ~lent_channel() {
        sensor::channel_at(the_channel) = record_;
        sensor::state.polar_channel = polar_;
        sensor::state.bar_channel_angacc = angacc_;
        sensor::state.bar_channel_thermo = thermo_;
    }
    lent_channel(const lent_channel&) = delete;
    lent_channel& operator=(const lent_channel&) = delete;

  private:
    channel_rec record_ = sensor::channel_at(the_channel);
    i16 polar_ = sensor::state.polar_channel;
    i16 angacc_ = sensor::state.bar_channel_angacc;
    i16 thermo_ = sensor::state.bar_channel_thermo;
};

/// Whose cycles the other windows showed last: the log's name.
std::string engine_shown;

/// The diagrams begin anew with another engine; within one they keep their axes.
void show_engine(const channel_rec& rec, const std::string& log) {
    if (log == engine_shown) return;
    engine_shown = log;
    if (frmdetailedpic::state.form.Loaded)
        frmdetailedpic::state.form.Caption = "Detailed Display " + rec.location;
    frmbarpic::state.channel = Frmbarpic2::state.channel = 0;
}

/// The plant has one channel, which is this engine.
void become(const lane& of, std::int64_t ms, bool selected) {
    sensor::state.max_sensors = 1;
    channel_rec& rec = sensor::channel_at(the_channel);
    const xlg::measured_log* const log = of.line.log_at(second_of(ms));
    rec = log == nullptr ? channel_rec() : xlg::record_of(log->header(), of.line.location());
    if (selected) show_engine(rec, log == nullptr ? std::string() : log->name());
    sensor::state.polar_channel = selected && frmdetailedpic::state.form.Loaded ? its_number : i16{0};
    sensor::state.bar_channel_angacc = selected && frmbarpic::state.open ? its_number : i16{0};
    sensor::state.bar_channel_thermo = selected && Frmbarpic2::state.open ? its_number : i16{0};
}

/// While it lives, the Detailed Display leaves away what this cycle does not have: it keeps the curves of the
/// cycle before.
class measured_curves_only {
  public:
    explicit measured_curves_only(const xlg::logged_cycle& cycle) {
        frmdetailedpic::window& window = frmdetailedpic::state;
        if (!cycle.thermo) window.Chck_tsrel = window.Chck_tsabs = 0;
        if (!cycle.angacc) window.Chck_aa = 0;
    }
    ~measured_curves_only() {
        frmdetailedpic::window& window = frmdetailedpic::state;
        window.Chck_tsrel = checked_[0];
        window.Chck_tsabs = checked_[1];
        window.Chck_aa = checked_[2];
    }
    measured_curves_only(const measured_curves_only&) = delete;
    measured_curves_only& operator=(const measured_curves_only&) = delete;

  private:
    std::array<i16, 3> checked_{frmdetailedpic::state.Chck_tsrel, frmdetailedpic::state.Chck_tsabs,
                                frmdetailedpic::state.Chck_aa};
};

void clear_bars(bar_form& bars) {
    for (bar_series& series : bars.plot.series)
        series.points.clear();
}

/// What a curve's own drawing cannot do, as with an alarm level that no Evaluator has, leaves it away.
void put(std::array<i32, curve_samples + 1>& into, const xlg::logged_curve& curve, void (*process)(i16)) {
    std::ranges::copy(curve.samples, into.begin());
    attempt([process] { process(the_channel); });
}

} // namespace

cycle_times show_cycle(lane& of, std::int64_t ms, bool selected) {
    std::optional<lent_channel> lent;
    if (!selected) lent.emplace();
    const xlg::logged_cycle cycle = of.line.cycle_at(second_of(ms));
    become(of, ms, selected);
    setup_plot(the_channel);
    channel_rec& rec = sensor::channel_at(the_channel);
    if (sensor::state.polar_channel != 0) {
        attempt(frmdetailedpic::prepare);
    }
    if (selected && !cycle.angacc) clear_bars(frmbarpic::state);
    if (selected && !cycle.thermo) clear_bars(Frmbarpic2::state);
    {
        const measured_curves_only shown(cycle);
        if (cycle.thermo) put(rec.thermo_data, *cycle.thermo, process_thermo);
        if (cycle.angacc) put(rec.angacc_data, *cycle.angacc, process_angacc);
    }
    of.scope = panels.XYplot[the_channel];
    cycle_times times;
    if (cycle.thermo) times.thermo = cycle.thermo->time;
    if (cycle.angacc) times.angacc = cycle.angacc->time;
    return times;
}

void open_detailed_display() {
    mainfrm::XYplot_click(the_channel);
}

void open_speed_bars() {
    mainfrm::Cmd_diagramm_click(the_channel);
}

void open_thermo_bars() {
    mainfrm::Cmd_diagramm2_click(the_channel);
}

} // namespace tyxo::view
