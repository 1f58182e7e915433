#include "dialogs/frmlog_view.h"

#include "dialogs/frmlog.h"

namespace tyxo {

frmlog_view::frmlog_view(QWidget* parent) : modal_dialog(parent, "Frmlog", Frmlog_Cmd_ok_click) {}

void frmlog_view::show_state() {
    show_form(Frmlog.form);
}

} // namespace tyxo
