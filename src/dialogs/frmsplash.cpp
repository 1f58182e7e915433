#include "dialogs/frmsplash.h"

namespace tyxo {

void about_click() {}
void frmSplash_unload() {}

} // namespace tyxo
