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

    void show_state() override;

  private:
    /// Shows the copy from its last line on.
    void show_text();

    QPlainTextEdit* Text_status;
    std::string shown_; // what the box is filled with
};

} // namespace tyxo
