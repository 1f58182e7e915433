// Bytes from all Evaluators through the whole link, into logs, event file, windows, alert and gateway.

#include "fuzz/machine.h"
#include "fuzz/targets.h"

#include "dialogs/frmalert.h"
#include "dialogs/setup/frmsetup.h"
#include "displays/bar_diagram.h"
#include "displays/chart.h"
#include "displays/frmdetailedpic.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "gateway/connection.h"
#include "link/channel_rec.h"
#include "link/start_stop.h"
#include "platform/simulation.h"

namespace tyxo::fuzzing {

namespace {

constexpr i32 most_steps = 20;
constexpr std::int64_t most_time = 10'000; // ms of plant time in one run

/// All channels measure and log, and the windows show the first one. Charts are left out in most runs: making
/// their histories takes longer than all else.
void begin(u8 choice) {
    start_plant([choice](settings_rec& settings) {
        const bool gateway = (choice & 1U) != 0;
        settings.IPAutoC = settings.IPenaTRS = gateway ? 1 : 0;
        settings.IPpolar = settings.IPsysstat = gateway ? 1 : 0;
        if ((choice & 0xF0U) != 0xF0U) sensor::state.upd_periode = 0; // no display tick
        settings.log_mode = settings.speedbar_mode = (choice & 2U) != 0 ? 1 : 0;
    });
    if ((choice & 4U) != 0) return;
    receive_parameters(0);
    if ((choice & 8U) != 0) return;
    mainfrm::XYplot_click(0);
    mainfrm::Cmd_diagramm_click(0);
    mainfrm::Cmd_diagramm2_click(0);
}

void hex_frame(i16 channel, input& in) {
    constexpr auto codes = std::to_array<std::string_view>({"00", "01", "03", "04", "06", "07", "08", "0:"});
    std::string body = ':' + std::string(at(codes, in.below(static_cast<i32>(codes.size()))));
    for (const char byte : in.short_text())
        append_hex(body, static_cast<u8>(byte));
    receive_frame(channel, body);
}

void operate(i16 channel, input& in) {
    constexpr auto commands = std::to_array<void (*)(i16 channel)>({
        [](i16) { FrmAlert::CmdAck_click(); },
        [](i16) { frmSetup::cmd_cancel_click(); },
        [](i16) { frmSetup::cmd_OK_click(); },
        [](i16) { frmdetailedpic::unload(); },
        [](i16) { frmbarpic::unload(); },
        [](i16) { Frmbarpic2::unload(); },
        [](i16) { mainfrm::setup_click(); },
        [](i16) { mainfrm::startstop_click(); },
        mainfrm::Cmd_diagramm2_click,
        mainfrm::Cmd_diagramm_click,
        mainfrm::Label4_click,
        mainfrm::XYplot_click,
        mainfrm::chart_click,
        mainfrm::cmd_zoom_xy_click,
        mainfrm::start_channel_click,
    });
    command([&] { at(commands, in.below(static_cast<i32>(commands.size())))(channel); });
}

void step(input& in) {
    const u8 kind = in.byte();
    const auto channel = static_cast<i16>(kind % channel_count);
    switch (kind / channel_count % 9) {
    case 0:
        simulation::receive(channel, in.short_text());
        break;
    case 1:
        receive_frame(channel, ':' + std::string(in.short_text()));
        break;
    case 2:
        hex_frame(channel, in);
        break;
    case 3:
        receive_curve(channel, in.flag() ? "03" : "04", in.raw<std::uint16_t>(), in.raw<signed char>());
        break;
    case 4:
        if (simulation::world().now_ms < most_time) simulation::advance(in.byte() * 20);
        break;
    case 5:
        update_panel(channel);
        break;
    case 6:
        command(mainfrm::Timer_TCP_tick);
        break;
    case 7:
        operate(channel, in);
        break;
    default:
        simulation::port_event(channel, in.raw<i16>());
    }
}

} // namespace

void received_bytes(input in) {
    begin(in.byte());
    for (i32 left = most_steps; left > 0 && !in.empty(); --left) {
        step(in);
        check_records();
    }
    check_state();
    check_files();
}

} // namespace tyxo::fuzzing
