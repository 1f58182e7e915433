#pragma once
// The status window on the screen.

#include "platform/desktop/dialog.h"

namespace tyxo {

class frmstatustext_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmstatustext_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();
};

} // namespace tyxo
