#pragma once
// The window "About".

#include "controls/controls.h"

namespace tyxo::frmSplash {

struct window {
    Form form{.Caption = "About"};
    Frame Frame1;
    Label lblVersion;
    Label lblProductName;
    Label lbllogo;
};

inline window state;

/// A key was pressed, or the window was clicked, or closed in another way.
void unload();

} // namespace tyxo::frmSplash

namespace tyxo::mainfrm {

/// The menu entry.
void about_click();

} // namespace tyxo::mainfrm
