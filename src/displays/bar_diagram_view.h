#pragma once
// A bar diagram on the screen.

#include "displays/bar_diagram.h"

#include <QWidget>

namespace tyxo {

class bar_diagram_view : public QWidget {
    Q_OBJECT

  public:
    bar_diagram_view(bar_form& form, const char* name, QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();

  private:
    bar_form& form_;
};

} // namespace tyxo
