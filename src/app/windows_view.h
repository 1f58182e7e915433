#pragma once
// All windows beside the main window.

class QWidget;

namespace tyxo {

class bar_diagram_view;
class frmdetailedpic_view;
class frmscale_polar_view;
class frmselectprint_view;
class frmsetuptcp_view;

/// Makes the windows as children of the main window and keeps them true to the core.
class secondary_windows {
  public:
    explicit secondary_windows(QWidget* parent);

    void show_state();

  private:
    frmdetailedpic_view* frmdetailedpic_;
    bar_diagram_view* frmbarpic_;
    bar_diagram_view* Frmbarpic2_;
    frmscale_polar_view* frmscale_polar_;
    frmselectprint_view* frmselectprint_;
    frmsetuptcp_view* FrmSetupTCP_;
};

} // namespace tyxo
