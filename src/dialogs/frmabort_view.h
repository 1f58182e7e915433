#pragma once
// The stop lock on the screen.

#include "platform/desktop/dialog.h"

namespace tyxo {

class frmabort_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmabort_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();
};

} // namespace tyxo
