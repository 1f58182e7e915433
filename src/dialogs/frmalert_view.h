#pragma once
// The alarm alert on the screen.

#include <QWidget>

namespace tyxo {

/// A window that belongs to no other, so that no dialog locks it, and that stays in front of all.
class frmalert_view : public QWidget {
    Q_OBJECT

  public:
    frmalert_view();

    /// Shows, hides and fills the window as the core says.
    void show_state();

  protected:
    void closeEvent(QCloseEvent* event) override;
};

} // namespace tyxo
