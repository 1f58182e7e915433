#pragma once
// The window "Software info" on the screen.

#include "widgets/dialog.h"

class QGridLayout;

namespace tyxo {

class frmlog_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmlog_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();

  private:
    QLabel* add_pair(const QString& title, const char* name);

    QLabel* headline;
    QGridLayout* pairs_;
    QLabel* Lbllogtype;
    QLabel* Lblversion;
    QLabel* Lbldate;
    QLabel* Lbldev;
    QLabel* Lblprog;
    QPushButton* Cmd_ok;
};

} // namespace tyxo
