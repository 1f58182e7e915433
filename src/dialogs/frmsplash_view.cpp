#include "dialogs/frmsplash_view.h"

#include "dialogs/frmsplash.h"

namespace tyxo {

frmsplash_view::frmsplash_view(QWidget* parent) : modal_dialog(parent, "frmSplash", frmSplash_unload) {}

void frmsplash_view::show_state() {
    show_form(frmSplash.form);
}

} // namespace tyxo
