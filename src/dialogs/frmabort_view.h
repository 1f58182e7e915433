#pragma once
// The stop lock on the screen.

#include "basics/types.h"
#include "widgets/dialog.h"

namespace tyxo {

class edit_box;

class frmabort_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmabort_view(QWidget* parent);

    void show_state() override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void make_question(QBoxLayout& place);
    void come_to_front();

    QLabel* Label1 = nullptr;
    edit_box* TextPassword = nullptr;
    QPushButton* CmdStop = nullptr;
    QPushButton* CmdContinue = nullptr;
    i32 CmdStop_focused_ = 0; // as shown
};

} // namespace tyxo
