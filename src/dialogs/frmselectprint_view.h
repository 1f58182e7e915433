#pragma once
// The dialog "Select print" on the screen.

#include "widgets/dialog.h"

namespace tyxo {

class frmselectprint_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmselectprint_view(QWidget* parent);

    void show_state() override;

  private:
    option_array optPrint;
};

} // namespace tyxo
