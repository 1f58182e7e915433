#include "displays/frmselectprint_view.h"

namespace tyxo {

frmselectprint_view::frmselectprint_view(QWidget* parent) : QWidget(parent, Qt::Window) {}

void frmselectprint_view::show_state() {}

} // namespace tyxo
