#pragma once
// The dialog "Alarm Inhibit Time" on the screen.

#include "widgets/dialog.h"

namespace tyxo {

class frmresetinhtime_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmresetinhtime_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();

  private:
    QLabel* Label1;
    QLabel* channel_; ///< which Evaluator it concerns
    QPushButton* CmdDo;
    QPushButton* CmdCancel;
};

} // namespace tyxo
