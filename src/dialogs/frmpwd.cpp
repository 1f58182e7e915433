#include "dialogs/frmpwd.h"

#include "platform/message_box.h"
#include "settings/ini.h"

namespace tyxo {

void setup_passwd_click() {
    frmpwd = {};
    frmpwd.CmdOK.Enabled = false;
    frmpwd.form.show();
}

void oldpasswd_change(std::string_view text) {
    frmpwd.oldpasswd.Text = text;
    frmpwd.CmdOK.Enabled = Ini::ini_read("passwd") == text;
}

void newpasswd_change(std::string_view text) {
    frmpwd.newpasswd.Text = text;
}

void newpasswd2_change(std::string_view text) {
    frmpwd.newpasswd2.Text = text;
}

void frmpwd_CmdOK_click() {
    // A click may arrive late, behind a change of the old password or when the dialog has closed.
    if (!frmpwd.form.Loaded || !frmpwd.CmdOK.Enabled) return;
    if (frmpwd.newpasswd.Text != frmpwd.newpasswd2.Text) {
        message_box("New password inputs different !! \r\nPlease enter password again ! ",
                    box_icon::critical);
        return;
    }
    // Looks like a mistake and stays: the stop lock keeps the old one until the program starts anew
    // (StopLock.AChangedPasswordIsValidOnlyAfterTheRestart).
    Ini::ini_write("passwd", frmpwd.newpasswd.Text);
    frmpwd_CmdCancel_click();
}

void frmpwd_CmdCancel_click() {
    frmpwd.form.unload();
}

} // namespace tyxo
