#include "displays/frmdetailedpic_view.h"

namespace tyxo {

frmdetailedpic_view::frmdetailedpic_view(QWidget* parent) : QWidget(parent, Qt::Window) {}

void frmdetailedpic_view::show_state() {}

} // namespace tyxo
