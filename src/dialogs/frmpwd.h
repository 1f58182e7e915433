#pragma once
// The dialog that changes the password. The stop lock keeps the old one until the program starts anew.

#include "controls/controls.h"

#include <string_view>

namespace tyxo::frmpwd {

struct window {
    Form form{.Caption = "Setup Password"};
    Frame Frame1{.Caption = "Change password"};
    TextBox oldpasswd;
    TextBox newpasswd;
    TextBox newpasswd2;
    Command CmdOK{.Caption = "OK"};
    Command CmdCancel{.Caption = "Cancel"};
};

inline window state;

void oldpasswd_change(std::string_view text);
void newpasswd_change(std::string_view text);
void newpasswd2_change(std::string_view text);

/// Stores the new password and closes the dialog, or says that the two inputs differ, in a message box that
/// waits. A settings file that cannot be written is not noticed here.
void CmdOK_click();

/// Also every other way of closing it.
void CmdCancel_click();

} // namespace tyxo::frmpwd

namespace tyxo::mainfrm {

/// The menu entry: loads the dialog and shows it.
void setup_passwd_click();

} // namespace tyxo::mainfrm
