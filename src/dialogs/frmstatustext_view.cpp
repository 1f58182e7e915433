#include "dialogs/frmstatustext_view.h"

#include "dialogs/frmstatustext.h"

namespace tyxo {

frmstatustext_view::frmstatustext_view(QWidget* parent)
    : modal_dialog(parent, "frmstatustext", Cmdclose_click) {}

void frmstatustext_view::show_state() {
    show_form(frmstatustext.form);
}

} // namespace tyxo
