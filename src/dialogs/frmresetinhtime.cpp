#include "dialogs/frmresetinhtime.h"

namespace tyxo {

void Lbl_alminhibit_click(i16 /*channel*/) {}
void CmdDo_click() {}
void FrmResetInhTime_CmdCancel_click() {}

} // namespace tyxo
