#include "dialogs/frmpwd.h"

#include "platform/message_box.h"
#include "settings/ini.h"

namespace tyxo::frmpwd {

void oldpasswd_change(std::string_view text) {
    state.oldpasswd.Text = text;
    state.CmdOK.Enabled = Ini::ini_read("passwd") == text;
}

void newpasswd_change(std::string_view text) {
    state.newpasswd.Text = text;
}

void newpasswd2_change(std::string_view text) {
    state.newpasswd2.Text = text;
}

void CmdOK_click() {
    // A click may arrive late, behind a change of the old password or when the dialog has closed.
    if (!state.form.Loaded || !state.CmdOK.Enabled) return;
    if (state.newpasswd.Text != state.newpasswd2.Text) {
        message_box("New password inputs different !! \r\nPlease enter password again ! ",
                    box_icon::critical);
        return;
    }
    // Looks like a mistake and stays: the stop lock keeps the old one until the program starts anew
    // (StopLock.AChangedPasswordIsValidOnlyAfterTheRestart).
    Ini::ini_write("passwd", state.newpasswd.Text);
    CmdCancel_click();
}

void CmdCancel_click() {
    state.form.unload();
}

} // namespace tyxo::frmpwd

namespace tyxo {

void mainfrm::setup_passwd_click() {
    frmpwd::state = {};
    frmpwd::state.CmdOK.Enabled = false;
    frmpwd::state.form.show();
}

} // namespace tyxo
