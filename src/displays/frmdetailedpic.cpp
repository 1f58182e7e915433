#include "displays/frmdetailedpic.h"

namespace tyxo {

void show_frmdetailedpic(std::string_view /*caption*/) {}

void frmdetailedpic_unload() {}

void frmdetailedpic_resize(double /*width*/, double /*height*/) {}

void prepare_frmdetailedpic() {}

} // namespace tyxo
