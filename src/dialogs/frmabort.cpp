#include "dialogs/frmabort.h"

namespace tyxo {

void SetPassword(std::string_view /*password*/) {}
i16 GetStatus() {
    return -1;
}
bool stop_lock() {
    return true;
}
void TextPassword_change(std::string_view /*text*/) {}
void CmdStop_click() {}
void CmdContinue_click() {}
void FrmAbort_unload() {}

} // namespace tyxo
