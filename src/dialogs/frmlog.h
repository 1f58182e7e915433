#pragma once
// The software's identity.

#include "controls/controls.h"

namespace tyxo::Frmlog {

struct window {
    Form form{.Caption = "Software info "};
    Label headline{.Caption = "Quarvo / Tyxo Data Logger Info"};
    Label Lbllogtype;
    Label Lblversion;
    Label Lbldate;
    Label Lbldev;
    Label Lblprog;
    Command Cmd_ok{.Caption = "ok"};
};

inline window state;

/// Also every other way of closing it.
void Cmd_ok_click();

} // namespace tyxo::Frmlog

namespace tyxo::mainfrm {

/// A click on the program's name in the main window.
void Lbl_TY_logger_click();

} // namespace tyxo::mainfrm
