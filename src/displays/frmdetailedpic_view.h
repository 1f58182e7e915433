#pragma once
// The Detailed Display on the screen.

#include <QWidget>

namespace tyxo {

class frmdetailedpic_view : public QWidget {
    Q_OBJECT

  public:
    explicit frmdetailedpic_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();
};

} // namespace tyxo
