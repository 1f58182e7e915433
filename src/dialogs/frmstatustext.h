#pragma once
// A large copy of the status text. It stands still until it is refreshed.

#include "controls/controls.h"

namespace tyxo::frmstatustext {

struct window {
    Form form{.Caption = "Status window"};
    TextBox Text_status;
    Command Cmdrefresh{.Caption = "Refresh"};
    Command Cmdclose{.Caption = "Close"};
};

inline window state;

void Cmdrefresh_click();

/// Also every other way of closing it.
void Cmdclose_click();

} // namespace tyxo::frmstatustext

namespace tyxo::mainfrm {

/// A double click on the status text of the main window.
void Text_status_dblclick();

} // namespace tyxo::mainfrm
