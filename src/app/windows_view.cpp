#include "app/windows_view.h"

#include "dialogs/frmabort_view.h"
#include "dialogs/frmalert_view.h"
#include "dialogs/frmbrowse_view.h"
#include "dialogs/frmlog_view.h"
#include "dialogs/frmpwd_view.h"
#include "dialogs/frmresetinhtime_view.h"
#include "dialogs/frmscale_polar_view.h"
#include "dialogs/frmselectprint_view.h"
#include "dialogs/frmsplash_view.h"
#include "dialogs/frmstatustext_view.h"
#include "dialogs/setup/frmsetup_view.h"
#include "displays/bar_diagram_view.h"
#include "displays/frmdetailedpic_view.h"
#include "gateway/frmsetuptcp_view.h"

namespace tyxo {

secondary_windows::secondary_windows(QWidget* parent)
    : frmdetailedpic_(new frmdetailedpic_view(parent)),
      frmbarpic_(new bar_diagram_view(frmbarpic, "frmbarpic", parent)),
      Frmbarpic2_(new bar_diagram_view(Frmbarpic2, "Frmbarpic2", parent)),
      frmscale_polar_(new frmscale_polar_view(parent)), frmselectprint_(new frmselectprint_view(parent)),
      FrmSetupTCP_(new frmsetuptcp_view(parent)), frmSetup_(new frmsetup_view(parent)),
      frmbrowse_(new frmbrowse_view(frmSetup_)), frmpwd_(new frmpwd_view(parent)),
      FrmAbort_(new frmabort_view(parent)), FrmResetInhTime_(new frmresetinhtime_view(parent)),
      frmstatustext_(new frmstatustext_view(parent)), Frmlog_(new frmlog_view(parent)),
      frmSplash_(new frmsplash_view(parent)), FrmAlert_(std::make_unique<frmalert_view>()) {}

secondary_windows::~secondary_windows() = default;

void secondary_windows::show_state() {
    frmdetailedpic_->show_state();
    frmbarpic_->show_state();
    Frmbarpic2_->show_state();
    frmscale_polar_->show_state();
    frmselectprint_->show_state();
    FrmSetupTCP_->show_state();
    frmSetup_->show_state();
    frmbrowse_->show_state();
    frmpwd_->show_state();
    FrmAbort_->show_state();
    FrmResetInhTime_->show_state();
    frmstatustext_->show_state();
    Frmlog_->show_state();
    frmSplash_->show_state();
    FrmAlert_->show_state();
}

} // namespace tyxo
