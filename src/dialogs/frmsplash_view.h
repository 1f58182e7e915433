#pragma once
// The window "About" on the screen.

#include "widgets/dialog.h"

namespace tyxo {

class frmsplash_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmsplash_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    QGroupBox* Frame1;
    QLabel* lblVersion;
    QLabel* lblProductName;
    QLabel* lbllogo;
};

} // namespace tyxo
