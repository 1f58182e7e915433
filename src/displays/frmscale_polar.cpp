#include "displays/frmscale_polar.h"

namespace tyxo {

void setup_scale_click() {}

} // namespace tyxo
