#pragma once
// The windows as those see them who use the keyboard alone, listen, or need larger print; some of them in
// several states. A new window takes one row.

#include "dialogs/frmabort.h"
#include "dialogs/frmalert.h"
#include "dialogs/frmbrowse.h"
#include "dialogs/frmlog.h"
#include "dialogs/frmpwd.h"
#include "dialogs/frmresetinhtime.h"
#include "dialogs/frmscale_polar.h"
#include "dialogs/frmselectprint.h"
#include "dialogs/frmsplash.h"
#include "dialogs/frmstatustext.h"
#include "dialogs/setup/frmsetup.h"
#include "displays/bar_diagram.h"
#include "displays/frmdetailedpic.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "gateway/frmsetuptcp.h"
#include "link/channel_rec.h"
#include "link/indicators.h"

#include <functional>
#include <string_view>
#include <vector>

namespace tyxo {

inline constexpr const char* accessible_settings = "[tyxo]\r\n"
                                                   "max_sensors= 4\r\n"
                                                   "location 1=Port engine & gear\r\n"
                                                   "location 2=Starboard engine\r\n"
                                                   "location 3=Generator 3\r\n"
                                                   "location 4=Test bed\r\n"
                                                   "passwd=\r\n";

/// As four Evaluators leave the panels that have told everything about their engines.
inline void show_all_controls() {
    for (std::size_t channel = 0; channel < channel_count; ++channel) {
        panels.Frame_message[channel].Visible = false;
        panels.XYplot[channel].Visible = true;
        panels.Cmd_diagramm[channel].Visible = true;
        panels.Cmd_diagramm2[channel].Visible = true;
        indicators.Lbl_alminhibit[channel].Visible = true;
        sensor::state.channels[channel].numzyl = 6;
        sensor::state.channels[channel].param_valid = true;
        sensor::state.channels[channel].status_valid = true;
    }
}

struct accessible_window {
    const char* name; ///< the window's, and behind a blank what is special about it
    std::function<void()> open;
    std::function<void()> close;
    bool grows_with_font; ///< the others scale their print with their size
};

inline void open_setup(i16 tab, bool measuring) {
    sensor::state.measure_running = measuring;
    mainfrm::setup_click();
    frmSetup::SSTab_click(tab);
}

inline void close_setup() {
    frmSetup::cmd_cancel_click();
    sensor::state.measure_running = false;
}

/// As the stop lock stands before an operator who has not answered yet.
inline void show_stop_lock(std::string_view typed) {
    FrmAbort::state.form.Loaded = FrmAbort::state.form.Visible = true;
    FrmAbort::TextPassword_change(typed);
}

/// The alert in one of its phases, which does not change meanwhile.
inline void show_alert(colour phase) {
    FrmAlert::open_alert();
    for (i16 channel = 0; channel < channel_count; ++channel) {
        FrmAlert::show_alert_line(channel);
        FrmAlert::alert_text(channel, sensor::state.channels[channel].location + "  Mainalarm AC");
    }
    while (FrmAlert::state.BackColor != phase)
        FrmAlert::timer_alert_tick();
    FrmAlert::timer_alert.Interval(60'000);
}

inline const std::vector<accessible_window>& windows() {
    static const std::vector<accessible_window> rows{
        {"mainfrm", [] {}, [] {}, false},
        {"FrmSetupTCP", mainfrm::setup_tcp_click, FrmSetupTCP::Cmd_close_click, true},
        {"FrmSetupTCP registers",
         [] {
             mainfrm::setup_tcp_click();
             if (!FrmSetupTCP::state.Reg_content) FrmSetupTCP::Reg_content_click();
         },
         [] {
             FrmSetupTCP::Reg_content_click();
             FrmSetupTCP::Cmd_close_click();
         },
         true},
        {"frmdetailedpic", [] { mainfrm::XYplot_click(0); }, frmdetailedpic::unload, false},
        {"frmbarpic", [] { mainfrm::Cmd_diagramm_click(0); }, [] { bar_form_unload(frmbarpic::state); },
         false},
        {"Frmbarpic2", [] { mainfrm::Cmd_diagramm2_click(0); }, [] { bar_form_unload(Frmbarpic2::state); },
         false},
        {"frmscale_polar", mainfrm::setup_scale_click, frmscale_polar::unload, true},
        {"frmselectprint", mainfrm::prt_click, frmselectprint::cmd_cancel_click, true},
        {"FrmResetInhTime", [] { mainfrm::Lbl_alminhibit_click(1); }, FrmResetInhTime::CmdCancel_click, true},
        {"frmstatustext", mainfrm::Text_status_dblclick, frmstatustext::Cmdclose_click, true},
        {"Frmlog", mainfrm::Lbl_TY_logger_click, Frmlog::Cmd_ok_click, true},
        {"frmSplash", mainfrm::about_click, frmSplash::unload, true},
        {"frmSetup", [] { open_setup(0, false); }, close_setup, true},
        {"frmSetup measuring", [] { open_setup(0, true); }, close_setup, true},
        {"frmSetup tab 1", [] { open_setup(1, false); }, close_setup, true},
        {"frmSetup tab 2 measuring", [] { open_setup(2, true); }, close_setup, true},
        {"frmSetup tab 3", [] { open_setup(3, false); }, close_setup, true},
        {"frmSetup tab 4", [] { open_setup(4, false); }, close_setup, true},
        {"frmbrowse",
         [] {
             open_setup(0, false);
             frmSetup::cmd_browse_path_click(0);
         },
         [] {
             frmbrowse::unload();
             close_setup();
         },
         true},
        {"frmpwd", mainfrm::setup_passwd_click, frmpwd::CmdCancel_click, true},
        {"frmpwd known", [] { mainfrm::setup_passwd_click(), frmpwd::oldpasswd_change(""); },
         frmpwd::CmdCancel_click, true},
        {"FrmAbort", [] { show_stop_lock("x"); }, FrmAbort::unload, true},
        {"FrmAbort known", [] { show_stop_lock(""); }, FrmAbort::unload, true},
        {"FrmAlert red", [] { show_alert(alert_colour::red); }, FrmAlert::unload, true},
        {"FrmAlert light", [] { show_alert(alert_colour::light); }, FrmAlert::unload, true},
    };
    return rows;
}

} // namespace tyxo
