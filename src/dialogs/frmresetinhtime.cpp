#include "dialogs/frmresetinhtime.h"

#include "basics/failure.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "link/serial.h"
#include "platform/debug_output.h"

namespace tyxo::FrmResetInhTime {

namespace {

constexpr std::string_view restart_command = ":8009";

void record_restart(i16 channel) {
    const std::string text =
        "KVD " + sensor::state.channels[channel].location + " ## Restart Alarm Inhibit Time";
    raise_event(channel, {.box = ' ' + text, .comment = text, .file = text});
}

} // namespace

void CmdDo_click() {
    if (!state.form.Loaded) return; // the second of two quick clicks, or behind "Cancel"
    const i16 channel = sensor::state.inhibit_reset_channel;
    // What the operator did is recorded, and the dialog closes, whether the command reached the line or not.
    const auto why = attempt([&] { serial::frame_send(restart_command, channel); },
                             [&] { record_restart(channel); }, CmdCancel_click);
    if (why) debug_output(*why);
}

void CmdCancel_click() {
    state.form.unload();
}

} // namespace tyxo::FrmResetInhTime

namespace tyxo {

void mainfrm::Lbl_alminhibit_click(i16 channel) {
    sensor::state.inhibit_reset_channel = channel;
    FrmResetInhTime::state = {};
    FrmResetInhTime::state.form.show();
}

} // namespace tyxo
