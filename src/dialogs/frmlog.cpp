#include "dialogs/frmlog.h"

#include "logging/log_header.h"

namespace tyxo::Frmlog {

void Cmd_ok_click() {
    state.form.unload();
}

} // namespace tyxo::Frmlog

namespace tyxo {

void mainfrm::Lbl_TY_logger_click() {
    Frmlog::state = {};
    Frmlog::state.Lbllogtype.Caption = "four systems";
    Frmlog::state.Lblversion.Caption = log::version;
    Frmlog::state.Lbldate.Caption = log::version_date;
    Frmlog::state.Lbldev.Caption = "Quarvo engine diagnostics";
    Frmlog::state.Lblprog.Caption = "Quarvo software engineering";
    Frmlog::state.form.show();
}

} // namespace tyxo
