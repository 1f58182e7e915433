#include "dialogs/frmsetup_view.h"

#include "dialogs/frmsetup.h"

namespace tyxo {

frmsetup_view::frmsetup_view(QWidget* parent) : modal_dialog(parent, "frmSetup", frmSetup_cmd_cancel_click) {}

void frmsetup_view::show_state() {
    show_form(frmSetup.form);
}

} // namespace tyxo
