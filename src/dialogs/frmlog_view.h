#pragma once
// The window "Software info" on the screen.

#include "platform/desktop/dialog.h"

namespace tyxo {

class frmlog_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmlog_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();
};

} // namespace tyxo
