#pragma once
// The dialog "Select print" on the screen.

#include "widgets/dialog.h"

namespace tyxo {

class frmselectprint_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmselectprint_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();

  private:
    QLabel* Lblprintheader = nullptr;
    QGroupBox* Frmprint = nullptr;
    option_array optPrint;
    QLabel* LblPrint = nullptr;
    QPushButton* Cmd_ok = nullptr;
    QPushButton* cmd_cancel = nullptr;
};

} // namespace tyxo
