#include "displays/bar_diagram_view.h"

namespace tyxo {

bar_diagram_view::bar_diagram_view(bar_form& form, const char* name, QWidget* parent)
    : QWidget(parent, Qt::Window), form_(form) {
    setObjectName(name);
}

void bar_diagram_view::show_state() {
    setVisible(form_.form.Visible);
}

} // namespace tyxo
