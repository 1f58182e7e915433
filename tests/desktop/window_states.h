#pragma once
// States of windows beside that in which they open, for those who look at all of them.

#include "app/mainfrm.h"
#include "dialogs/frmabort.h"
#include "dialogs/frmalert.h"
#include "dialogs/setup/frmsetup.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "link/channel_rec.h"
#include "link/indicators.h"

#include <string>
#include <string_view>

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

} // namespace tyxo
