#include "displays/bar_diagram.h"

namespace tyxo {

void Cmd_diagramm_click(i16 /*channel*/) {}

void Cmd_diagramm2_click(i16 /*channel*/) {}

void refresh_speed_bars() {}

void refresh_thermo_bars() {}

void frmbarpic_unload() {}

void Frmbarpic2_unload() {}

} // namespace tyxo
