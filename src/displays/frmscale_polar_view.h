#pragma once
// The dialog "Setup scales" on the screen.

#include <QWidget>

namespace tyxo {

class frmscale_polar_view : public QWidget {
    Q_OBJECT

  public:
    explicit frmscale_polar_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();
};

} // namespace tyxo
