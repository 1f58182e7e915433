#include "displays/frmscale_polar_view.h"

namespace tyxo {

frmscale_polar_view::frmscale_polar_view(QWidget* parent) : QWidget(parent, Qt::Window) {}

void frmscale_polar_view::show_state() {}

} // namespace tyxo
