#include "dialogs/frmstatustext.h"

namespace tyxo {

void Text_status_dblclick() {}
void Cmdrefresh_click() {}
void Cmdclose_click() {}

} // namespace tyxo
