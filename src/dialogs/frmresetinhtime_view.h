#pragma once
// The dialog "Alarm Inhibit Time" on the screen.

#include "widgets/dialog.h"

namespace tyxo {

class frmresetinhtime_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmresetinhtime_view(QWidget* parent);

    void show_state() override;

  private:
    QLabel* channel_; ///< which Evaluator it concerns
    QPushButton* CmdDo;
};

} // namespace tyxo
