#include "displays/xy_plot.h"

namespace tyxo {

void setup_plot(i16 /*channel*/) {}

void process_thermo(i16 /*channel*/) {}

void process_angacc(i16 /*channel*/) {}

void clear_curves(i16 /*channel*/) {}

void XYplot_click(i16 /*channel*/) {}

} // namespace tyxo
