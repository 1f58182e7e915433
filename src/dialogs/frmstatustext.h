#pragma once
// A large copy of the status text. It stands still until it is refreshed.

#include "controls/controls.h"

namespace tyxo {

struct frmstatustext_form {
    Form form{.Caption = "Status window"};
    TextBox Text_status;
    Command Cmdrefresh{.Caption = "Refresh"};
    Command Cmdclose{.Caption = "Close"};
};

inline frmstatustext_form frmstatustext;

/// A double click on the status text of the main window.
void Text_status_dblclick();

void Cmdrefresh_click();

/// Also every other way of closing it.
void Cmdclose_click();

} // namespace tyxo
