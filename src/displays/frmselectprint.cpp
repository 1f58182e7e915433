#include "displays/frmselectprint.h"

namespace tyxo {

void prt_click() {}

} // namespace tyxo
