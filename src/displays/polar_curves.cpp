// The measured curves of the Detailed Display.

#include "displays/frmdetailedpic.h"

namespace tyxo {

void draw_curves() {}

} // namespace tyxo
