#pragma once
// The gateway's window on the screen.

#include <QMainWindow>

namespace tyxo {

class frmsetuptcp_view : public QMainWindow {
    Q_OBJECT

  public:
    explicit frmsetuptcp_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();
};

} // namespace tyxo
