#include "dialogs/frmlog.h"

#include "logging/log_header.h"

namespace tyxo {

void Lbl_TY_logger_click() {
    Frmlog = {};
    Frmlog.Lbllogtype.Caption = "four systems";
    Frmlog.Lblversion.Caption = log::version;
    Frmlog.Lbldate.Caption = log::version_date;
    Frmlog.Lbldev.Caption = "Quarvo engine diagnostics";
    Frmlog.Lblprog.Caption = "Quarvo software engineering";
    Frmlog.form.show();
}

void Frmlog_Cmd_ok_click() {
    Frmlog.form.unload();
}

} // namespace tyxo
