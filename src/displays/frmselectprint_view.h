#pragma once
// The dialog "Select print" on the screen.

#include <QWidget>

namespace tyxo {

class frmselectprint_view : public QWidget {
    Q_OBJECT

  public:
    explicit frmselectprint_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();
};

} // namespace tyxo
