// What the operator does: the handlers of the windows, as the desktop calls them.

#include "plant.h"

#include "app/mainfrm.h"
#include "dialogs/frmabort.h"
#include "dialogs/frmalert.h"
#include "dialogs/frmlog.h"
#include "dialogs/frmpwd.h"
#include "dialogs/frmresetinhtime.h"
#include "dialogs/frmscale_polar.h"
#include "dialogs/frmselectprint.h"
#include "dialogs/frmsplash.h"
#include "dialogs/frmstatustext.h"
#include "dialogs/setup/frmsetup.h"
#include "displays/bar_diagram.h"
#include "displays/chart.h"
#include "displays/frmdetailedpic.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "gateway/frmsetuptcp.h"
#include "link/channel_rec.h"
#include "link/start_stop.h"
#include "settings/settings.h"

namespace months {

using namespace tyxo;
using simulation::world;
using enum act_kind;

/// The stop lock comes up in what follows; the operator answers it.
void plant::unlock_with(std::string password, std::int64_t after_ms) {
    right_password_ = password == password_;
    simulation::after(after_ms, [password = std::move(password)] {
        if (!FrmAbort::state.form.Visible) return;
        for (std::size_t length = 1; length <= password.size(); ++length)
            FrmAbort::TextPassword_change(password.substr(0, length));
        if (FrmAbort::state.CmdStop.Enabled)
            FrmAbort::CmdStop_click();
        else
            FrmAbort::CmdContinue_click();
    });
}

/// Mostly the right password.
std::string plant::typed(chance& dice) const {
    return dice.once_in(6) ? "x" + password_ : password_;
}

void plant::by_operator(const act& what, chance& dice) {
    const auto channel = static_cast<i16>(what.channel);
    const bool in_use = what.channel < used_;
    switch (what.kind) {
    case start_all:
        if (!sensor::state.measure_running) start_channels(-1);
        break;
    case start_or_stop_one:
        if (!in_use) break;
        if (sensor::state.channel_running[channel])
            stop_channels(what.channel, typed(dice), dice.between(500, 30'000));
        else
            start_channels(what.channel);
        break;
    case stop_all:
        if (sensor::state.measure_running) stop_channels(-1, typed(dice), dice.between(500, 30'000));
        if (dice.once_in(4)) { // and turns the machine off
            simulation::after(dice.between(500, 4000), [this] {
                carry_out({world().now_ms, power_cut, 0, 0});
            });
        }
        // Nobody leaves a plant unwatched for long.
        simulation::after(dice.between(60'000, 4 * 3'600'000), [this] {
            carry_out({world().now_ms, start_all, 0, 0});
        });
        break;
    case confirm:
        if (!sensor::state.alert_open) break;
        checker_.alert_confirmed();
        FrmAlert::CmdAck_click();
        break;
    case open_windows:
        show_windows(what.channel, dice);
        break;
    case close_windows:
        hide_windows();
        break;
    case wrong_password:
        if (!sensor::state.measure_running) break;
        stop_channels(-1, "ruhe7", dice.between(500, 20'000));
        break;
    case change_password:
        new_password(dice);
        break;
    case reset_inhibit:
        if (!in_use) break;
        mainfrm::Lbl_alminhibit_click(channel);
        if (dice.once_in(3)) {
            FrmResetInhTime::CmdCancel_click();
        } else {
            checker_.inhibit_reset(what.channel);
            const simulation::port_behaviour& port = world().ports[static_cast<i16>(what.channel + 1)];
            const bool open = simulation::port(channel).open;
            // What the port does not take is recorded as if it had.
            if (open ? port.refuses_output : port.refuses_to_open || port.refuses_output)
                checker_.sent_to_line(what.channel, ":80092f\r\n");
            FrmResetInhTime::CmdDo_click();
        }
        break;
    case freeze_chart:
        mainfrm::chart_click(channel);
        break;
    case change_resolution: {
        const std::size_t choice = dice.below(4);
        checker_.setting("resolution", std::to_string(choice));
        mainfrm::opt_res_click(choice);
        break;
    }
    case change_scales:
        new_scales(dice);
        break;
    case change_setup:
        new_setup(dice);
        break;
    case gateway_settings:
        new_gateway(dice);
        break;
    case gateway_by_hand:
        mainfrm::setup_tcp_click();
        FrmSetupTCP::Txt_sendbase_change(std::to_string(dice.below(70'000)));
        FrmSetupTCP::Txt_regnumber_change(std::to_string(dice.below(140)));
        FrmSetupTCP::Text4_change(dice.below(123), std::to_string(dice.below(70'000)));
        checker_.controller_disturbed();
        by_hand_ = true;
        world().ticks_running = 1; // its wait is that of a handler
        if (dice.once_in(2))
            FrmSetupTCP::Cmd_read_R_click();
        else
            FrmSetupTCP::Cmd_write_R_click();
        world().ticks_running = 0;
        by_hand_ = false;
        FrmSetupTCP::Cmd_close_click();
        break;
    case print_chart:
        mainfrm::prt_click();
        if (in_use) frmselectprint::optPrint_click(static_cast<std::size_t>(what.channel));
        frmselectprint::Cmd_ok_click();
        break;
    case look_at_status:
        mainfrm::Text_status_dblclick();
        frmstatustext::Cmdrefresh_click();
        frmstatustext::Cmdclose_click();
        mainfrm::Lbl_TY_logger_click();
        Frmlog::Cmd_ok_click();
        mainfrm::about_click();
        frmSplash::unload();
        break;
    default:
        break;
    }
}

void plant::show_windows(int channel, chance& dice) {
    const auto number = static_cast<i16>(channel);
    if (channel >= used_) return;
    if (dice.once_in(2)) mainfrm::XYplot_click(number);
    if (dice.once_in(2)) mainfrm::Cmd_diagramm_click(number);
    if (dice.once_in(2)) mainfrm::Cmd_diagramm2_click(number);
    if (frmdetailedpic::state.open) {
        frmdetailedpic::state.Chck_tsrel = static_cast<i16>(dice.below(2));
        frmdetailedpic::state.Chck_tsabs = static_cast<i16>(dice.below(2));
        frmdetailedpic::state.Chck_aa = static_cast<i16>(dice.below(2));
    }
    if (dice.once_in(4)) mainfrm::cmd_zoom_xy_click(number);
    if (dice.once_in(4)) {
        checker_.setting("th_dig_val " + std::to_string(channel + 1),
                         sensor::state.channels[number].th_dig_val != 1 ? "1" : "0");
        mainfrm::Label4_click(number);
    }
}

void plant::hide_windows() {
    if (frmdetailedpic::state.open) frmdetailedpic::unload();
    if (frmbarpic::state.open) frmbarpic::unload();
    if (Frmbarpic2::state.open) Frmbarpic2::unload();
}

void plant::new_password(chance& dice) {
    // What is in the file is the old one: an earlier change counts here at once, at the stop lock not.
    mainfrm::setup_passwd_click();
    frmpwd::oldpasswd_change(dice.once_in(3) ? "wrong" : setting_in_file("passwd"));
    const std::string fresh = dice.once_in(2) ? "Neu 1" : "Ruhe7";
    frmpwd::newpasswd_change(fresh);
    frmpwd::newpasswd2_change(dice.once_in(4) ? "else" : fresh);
    if (frmpwd::state.CmdOK.Enabled) frmpwd::CmdOK_click();
    frmpwd::CmdCancel_click();
}

void plant::new_scales(chance& dice) {
    mainfrm::setup_scale_click();
    const bool only_looked_at = sensor::state.measure_running;
    if (!only_looked_at) {
        const std::size_t period = dice.below(log_period_choices.size());
        frmscale_polar::Opt_logtime_click(period);
        checker_.setting("log_mode", std::to_string(log_period_choices.at(period).value));
        const std::size_t scale_a = dice.below(scale_choices.size());
        const std::size_t scale_t = dice.below(scale_choices.size());
        checker_.setting("scale_polar_a", std::to_string(scale_choices.at(scale_a).value));
        checker_.setting("scale_polar_t", std::to_string(scale_choices.at(scale_t).value));
        frmscale_polar::Opt_scale_click(scale_a);
        frmscale_polar::Opt_scale_t_click(scale_t);
        const std::size_t refresh = dice.below(refresh_choices.size());
        checker_.setting("upd_periode", std::to_string(refresh_choices.at(refresh).value));
        frmscale_polar::Opt_refr_click(refresh);
    }
    if (dice.once_in(3))
        frmscale_polar::unload();
    else
        frmscale_polar::Cmd_ok_click();
}

void plant::new_setup(chance& dice) {
    mainfrm::setup_click();
    if (sensor::state.measure_running) {
        frmSetup::cmd_cancel_click();
        return;
    }
    const auto row = static_cast<i16>(dice.below(static_cast<std::size_t>(used_)));
    const std::string name = "Engine " + std::to_string(dice.below(1000));
    frmSetup::Text_sensor_loc_change(row, name);
    if (dice.once_in(3)) {
        frmSetup::cmd_cancel_click();
        return;
    }
    checker_.setting("location " + std::to_string(row + 1), name);
    frmSetup::cmd_OK_click();
}

void plant::new_gateway(chance& dice) {
    mainfrm::setup_tcp_click();
    const auto toggle = [&](const char* key, void (*click)(), const i16& box) {
        if (!dice.once_in(3)) return;
        click();
        checker_.setting(key, std::to_string(box));
    };
    toggle("IPenaTRS", FrmSetupTCP::Check2_click, FrmSetupTCP::state.Check2);
    toggle("IPpolar", FrmSetupTCP::Check3_click, FrmSetupTCP::state.Check3);
    toggle("IPsysstat", FrmSetupTCP::Check4_click, FrmSetupTCP::state.Check4);
    checker_.controller_disturbed();
    world().ticks_running = 1; // commands wait while this one waits for the controller
    if (dice.once_in(3)) FrmSetupTCP::Cmd_save_click();
    if (dice.once_in(3)) FrmSetupTCP::res_con_click();
    world().ticks_running = 0;
    FrmSetupTCP::Cmd_close_click();
}

/// The ports are opened in their order, until the first that does not open.
void plant::tell_start(int channel) {
    checker_.time(world().now_ms, wall());
    for (int each = 0; each < used_; ++each) {
        if (channel >= 0 && each != channel) continue;
        const bool opens = !world().ports[static_cast<i16>(each + 1)].refuses_to_open;
        checker_.start_asked(each, opens);
        if (!opens) break;
    }
}

void plant::start_channels(int channel) {
    tell_start(channel);
    if (channel < 0)
        mainfrm::startstop_click();
    else
        mainfrm::start_channel_click(static_cast<i16>(channel));
}

/// A request while another one waits is refused; the lock goes on asking about the other one.
void plant::stop_channels(int channel, const std::string& password, std::int64_t answered_after) {
    if (!FrmAbort::state.asking) {
        unlock_with(password, answered_after);
        stopping_ = channel;
    }
    if (channel < 0)
        mainfrm::startstop_click();
    else
        mainfrm::start_channel_click(static_cast<i16>(channel));
}

} // namespace months
