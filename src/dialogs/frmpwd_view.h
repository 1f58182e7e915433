#pragma once
// The dialog "Setup Password" on the screen.

#include "platform/desktop/dialog.h"

namespace tyxo {

class frmpwd_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmpwd_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();
};

} // namespace tyxo
