// Printing on Qt.

#include "platform/printer.h"

namespace tyxo {

void print_chart(const iStripChartX& /*chart*/, const strip_window& /*rows*/) {}

} // namespace tyxo
