#include "dialogs/frmpwd.h"

namespace tyxo {

void setup_passwd_click() {}
void oldpasswd_change(std::string_view /*text*/) {}
void newpasswd_change(std::string_view /*text*/) {}
void newpasswd2_change(std::string_view /*text*/) {}
void frmpwd_CmdOK_click() {}
void frmpwd_CmdCancel_click() {}

} // namespace tyxo
