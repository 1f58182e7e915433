#pragma once
// The dialog "Setup scales": scale of the polar curves, refresh time of the charts, period of the log files.

#include "platform/controls.h"

namespace tyxo {

struct frmscale_polar_form {
    Form form;
};

inline frmscale_polar_form frmscale_polar;

/// The menu entry.
void setup_scale_click();

} // namespace tyxo
