#include "dialogs/frmabort.h"

#include "platform/program.h"

#include <utility>

namespace tyxo {

namespace {

constexpr int wait_step = 1000; // ms; whatever happens ends a step at once

void load(std::string_view what) {
    frmabort_form fresh;
    fresh.CmdStop_focused = FrmAbort.CmdStop_focused;
    fresh.asking = FrmAbort.asking;
    fresh.stop_password = std::move(FrmAbort.stop_password);
    fresh.Lbl_what.Caption = what;
    FrmAbort = std::move(fresh);
    FrmAbort.CmdStop.Enabled = FrmAbort.TextPassword.Text == FrmAbort.stop_password;
    FrmAbort.form.show();
}

} // namespace

void SetPassword(std::string_view password) {
    FrmAbort.stop_password = password;
}

i16 GetStatus() {
    return FrmAbort.stop_result ? -1 : 0;
}

bool stop_lock(std::string_view what) {
    if (FrmAbort.asking) return false; // the answer belongs to the request that asks
    FrmAbort.asking = true;
    load(what);
    while (FrmAbort.form.Visible)
        wait_events(wait_step);
    FrmAbort.asking = false;
    return GetStatus() != 0;
}

// A command may arrive late, when the window has got its answer already: the first answer counts.

void TextPassword_change(std::string_view text) {
    if (!FrmAbort.form.Loaded) return;
    FrmAbort.TextPassword.Text = text;
    FrmAbort.CmdStop.Enabled = text == FrmAbort.stop_password;
    if (FrmAbort.CmdStop.Enabled) ++FrmAbort.CmdStop_focused;
}

void CmdStop_click() {
    if (!FrmAbort.form.Loaded || !FrmAbort.CmdStop.Enabled) return;
    FrmAbort.stop_result = true;
    FrmAbort_unload();
}

void CmdContinue_click() {
    if (!FrmAbort.form.Loaded) return;
    FrmAbort.stop_result = false;
    FrmAbort_unload();
}

void FrmAbort_unload() {
    FrmAbort.form.unload();
}

} // namespace tyxo
