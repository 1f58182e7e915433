#pragma once
// The status window on the screen.

#include "widgets/dialog.h"

#include <string>

class QPlainTextEdit;

namespace tyxo {

class frmstatustext_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmstatustext_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();

  private:
    /// Shows the copy from its last line on.
    void show_text();

    QPlainTextEdit* Text_status;
    QPushButton* Cmdrefresh;
    QPushButton* Cmdclose;
    std::string shown_; // what the box is filled with
};

} // namespace tyxo
