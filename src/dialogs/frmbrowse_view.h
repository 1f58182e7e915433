#pragma once
// The folder browser on the screen.

#include "platform/desktop/dialog.h"

namespace tyxo {

class frmbrowse_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmbrowse_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();
};

} // namespace tyxo
