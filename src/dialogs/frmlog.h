#pragma once
// The software's identity.

#include "controls/controls.h"

namespace tyxo {

struct frmlog_form {
    Form form{.Caption = "Software info "};
    Label headline{.Caption = "Quarvo / Tyxo Data Logger Info"};
    Label Lbllogtype;
    Label Lblversion;
    Label Lbldate;
    Label Lbldev;
    Label Lblprog;
    Command Cmd_ok{.Caption = "ok"};
};

inline frmlog_form Frmlog;

/// A click on the program's name in the main window.
void Lbl_TY_logger_click();

/// Also every other way of closing it.
void Frmlog_Cmd_ok_click();

} // namespace tyxo
