#pragma once
// The window "About" on the screen.

#include "widgets/dialog.h"

namespace tyxo {

class frmsplash_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmsplash_view(QWidget* parent);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    QGroupBox* Frame1;
};

} // namespace tyxo
