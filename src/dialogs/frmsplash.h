#pragma once
// The window "About".

#include "controls/controls.h"

namespace tyxo {

struct frmsplash_form {
    Form form{.Caption = "About"};
    Frame Frame1;
    Label lblVersion;
    Label lblProductName;
    Label lbllogo;
};

inline frmsplash_form frmSplash;

/// The menu entry.
void about_click();

/// A key was pressed, or the window was clicked, or closed in another way.
void frmSplash_unload();

} // namespace tyxo
