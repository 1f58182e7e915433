#include "dialogs/frmalert.h"

#include "basics/clock_text.h"
#include "basics/failure.h"
#include "displays/bar_diagram.h"
#include "displays/frmdetailedpic.h"
#include "link/channel_rec.h"
#include "platform/awake.h"
#include "platform/clock.h"
#include "platform/sound.h"

#include <string>

namespace tyxo::FrmAlert {

namespace {

constexpr int phase_ms = 600;
constexpr std::size_t path_room = 260; ///< characters of the longest path

std::string alert_sound_path() {
    std::string path(path_room, ' ');
    GetShortPathNameA(alert_sound, path);
    return path;
}

void dark_phase() {
    state.Lbl_relay.ForeColor = state.Lbl_attention.ForeColor = alert_colour::black;
    state.BackColor = alert_colour::light;
    state.Image1_visible = state.Image2_visible = false;
}

void red_phase(const std::string& sound) {
    state.Lbl_relay.ForeColor = state.Lbl_attention.ForeColor = alert_colour::red;
    wake_screen();
    beep();
    state.BackColor = alert_colour::red;
    state.Image1_visible = state.Image2_visible = true;
    PlaySoundA(sound, snd_filename | snd_nodefault | snd_async);
}

/// The views that hide the alarm's surroundings. They stay loaded, and nothing shows them again but the
/// operator.
void hide_diagrams() {
    if (frmbarpic::state.open) frmbarpic::state.form.Visible = false;
    if (Frmbarpic2::state.open) Frmbarpic2::state.form.Visible = false;
    if (frmdetailedpic::state.open) frmdetailedpic::state.form.Visible = false;
}

void load() {
    state = {};
    state.form.show();
    timer_alert.Interval(phase_ms);
    timer_alert.Enabled(true);
    sensor::state.alert_open = true;
}

} // namespace

void open_alert() {
    hide_diagrams();
    load();
    timer_alert_tick(); // an alarm is seen and heard at once, not 600 ms later
}

void show_alert_line(i16 channel) {
    state.lbl_inst[channel].Visible = true;
    state.lbl_inst1[channel].Visible = true;
}

void alert_text(i16 channel, std::string_view text) {
    state.lbl_inst1[channel].Caption = text;
}

void timer_alert_tick() {
    const std::string sound = alert_sound_path();
    if (state.Lbl_relay.ForeColor == alert_colour::red) {
        dark_phase();
    } else {
        red_phase(sound);
    }
}

void activate() {
    if (!state.form.Visible) return; // it was closed while the command waited
    timer_alert.Enabled(true);
}

void CmdAck_click() {
    unload();
}

void unload() {
    if (!state.form.Loaded) return; // the second of two quick clicks
    state = {};
    const local_time now = local_now();
    indicators.Text_status.append(stamp_text(now, ' ') + " Mainalarm confirmed by operator!\r\n");
    indicators.Text_status.caret_to_end();
    timer_alert.Enabled(false);
    sensor::state.alert_open = false;
}

} // namespace tyxo::FrmAlert
