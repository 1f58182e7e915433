#include "dialogs/frmabort_view.h"

#include "dialogs/frmabort.h"

namespace tyxo {

frmabort_view::frmabort_view(QWidget* parent) : modal_dialog(parent, "FrmAbort", FrmAbort_unload) {}

void frmabort_view::show_state() {
    show_form(FrmAbort.form);
}

} // namespace tyxo
