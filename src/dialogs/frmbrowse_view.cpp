#include "dialogs/frmbrowse_view.h"

#include "dialogs/frmbrowse.h"

namespace tyxo {

frmbrowse_view::frmbrowse_view(QWidget* parent) : modal_dialog(parent, "frmbrowse", frmbrowse_unload) {}

void frmbrowse_view::show_state() {
    show_form(frmbrowse.form);
}

} // namespace tyxo
