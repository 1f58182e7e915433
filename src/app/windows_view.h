#pragma once
// All windows beside the main window.

#include <memory>

class QWidget;

namespace tyxo {

class bar_diagram_view;
class frmabort_view;
class frmalert_view;
class frmbrowse_view;
class frmdetailedpic_view;
class frmlog_view;
class frmpwd_view;
class frmresetinhtime_view;
class frmscale_polar_view;
class frmselectprint_view;
class frmsetup_view;
class frmsetuptcp_view;
class frmsplash_view;
class frmstatustext_view;

/// Makes the windows as children of the main window, the alert alone for itself, and keeps them true to the
/// core.
class secondary_windows {
  public:
    explicit secondary_windows(QWidget* parent);
    ~secondary_windows();
    secondary_windows(const secondary_windows&) = delete;
    secondary_windows& operator=(const secondary_windows&) = delete;

    void show_state();

  private:
    frmdetailedpic_view* frmdetailedpic_;
    bar_diagram_view* frmbarpic_;
    bar_diagram_view* Frmbarpic2_;
    frmscale_polar_view* frmscale_polar_;
    frmselectprint_view* frmselectprint_;
    frmsetuptcp_view* FrmSetupTCP_;
    frmsetup_view* frmSetup_;
    frmbrowse_view* frmbrowse_;
    frmpwd_view* frmpwd_;
    frmabort_view* FrmAbort_;
    frmresetinhtime_view* FrmResetInhTime_;
    frmstatustext_view* frmstatustext_;
    frmlog_view* Frmlog_;
    frmsplash_view* frmSplash_;
    std::unique_ptr<frmalert_view> FrmAlert_;
};

} // namespace tyxo
