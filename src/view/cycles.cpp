#include "view/cycles.h"

#include "displays/bar_diagram.h"
#include "displays/frmdetailedpic.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "link/channel_rec.h"
#include "platform/debug_output.h"
#include "xlg/log_record.h"

#include <algorithm>

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

/// The plant has one channel, which is this engine.
void become(const lane& of, std::int64_t ms, bool selected) {
    sensor::state.max_sensors = 1;
    channel_rec& rec = sensor::channel_at(the_channel);
    const xlg::measured_log* const log = of.line.log_at(second_of(ms));
    rec = log == nullptr ? channel_rec() : xlg::record_of(log->header(), of.line.location());
    sensor::state.polar_channel = selected && frmdetailedpic::state.form.Loaded ? its_number : i16{0};
    sensor::state.bar_channel_angacc = selected && frmbarpic::state.open ? its_number : i16{0};
    sensor::state.bar_channel_thermo = selected && Frmbarpic2::state.open ? its_number : i16{0};
}

/// What a curve's own drawing cannot do, as with an alarm level that no Evaluator has, leaves it away.
void put(std::array<i32, curve_samples + 1>& into, const xlg::logged_curve& curve, void (*process)(i16)) {
    std::ranges::copy(curve.samples, into.begin());
    if (const auto why = attempt([process] { process(the_channel); })) debug_output(*why);
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
        if (const auto why = attempt(frmdetailedpic::prepare)) debug_output(*why);
    }
    if (cycle.thermo) put(rec.thermo_data, *cycle.thermo, process_thermo);
    if (cycle.angacc) put(rec.angacc_data, *cycle.angacc, process_angacc);
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
