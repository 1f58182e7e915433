#include "gateway/frmsetuptcp.h"

namespace tyxo {

void load_frmsetuptcp() {}

void setup_tcp_click() {}

} // namespace tyxo
