#include "app/windows_view.h"

#include "displays/bar_diagram_view.h"
#include "displays/frmdetailedpic_view.h"
#include "displays/frmscale_polar_view.h"
#include "displays/frmselectprint_view.h"
#include "gateway/frmsetuptcp_view.h"

namespace tyxo {

secondary_windows::secondary_windows(QWidget* parent)
    : frmdetailedpic_(new frmdetailedpic_view(parent)),
      frmbarpic_(new bar_diagram_view(frmbarpic, "frmbarpic", parent)),
      Frmbarpic2_(new bar_diagram_view(Frmbarpic2, "Frmbarpic2", parent)),
      frmscale_polar_(new frmscale_polar_view(parent)), frmselectprint_(new frmselectprint_view(parent)),
      FrmSetupTCP_(new frmsetuptcp_view(parent)) {}

void secondary_windows::show_state() {
    frmdetailedpic_->show_state();
    frmbarpic_->show_state();
    Frmbarpic2_->show_state();
    frmscale_polar_->show_state();
    frmselectprint_->show_state();
    FrmSetupTCP_->show_state();
}

} // namespace tyxo
