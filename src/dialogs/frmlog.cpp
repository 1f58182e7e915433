#include "dialogs/frmlog.h"

namespace tyxo {

void Lbl_TY_logger_click() {}
void Frmlog_Cmd_ok_click() {}

} // namespace tyxo
