#include "dialogs/frmabort.h"

#include "platform/program.h"

#include <utility>

namespace tyxo::FrmAbort {

namespace {

constexpr int wait_step = 1000; // ms; whatever happens ends a step at once

void load(std::string_view what) {
    window fresh;
    fresh.CmdStop_focused = state.CmdStop_focused;
    fresh.asking = state.asking;
    fresh.stop_password = std::move(state.stop_password);
    fresh.Lbl_what.Caption = what;
    state = std::move(fresh);
    state.CmdStop.Enabled = state.TextPassword.Text == state.stop_password;
    state.form.show();
}

} // namespace

void SetPassword(std::string_view password) {
    state.stop_password = password;
}

i16 GetStatus() {
    return state.stop_result ? -1 : 0;
}

bool stop_lock(std::string_view what) {
    if (state.asking) return false; // the answer belongs to the request that asks
    state.asking = true;
    load(what);
    while (state.form.Visible)
        wait_events(wait_step);
    state.asking = false;
    return GetStatus() != 0;
}

// A command may arrive late, when the window has got its answer already: the first answer counts.

void TextPassword_change(std::string_view text) {
    if (!state.form.Loaded) return;
    state.TextPassword.Text = text;
    state.CmdStop.Enabled = text == state.stop_password;
    if (state.CmdStop.Enabled) ++state.CmdStop_focused;
}

void CmdStop_click() {
    if (!state.form.Loaded || !state.CmdStop.Enabled) return;
    state.stop_result = true;
    unload();
}

void CmdContinue_click() {
    if (!state.form.Loaded) return;
    state.stop_result = false;
    unload();
}

void unload() {
    state.form.unload();
}

} // namespace tyxo::FrmAbort
