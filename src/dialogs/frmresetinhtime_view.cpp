#include "dialogs/frmresetinhtime_view.h"

#include "dialogs/frmresetinhtime.h"

namespace tyxo {

frmresetinhtime_view::frmresetinhtime_view(QWidget* parent)
    : modal_dialog(parent, "FrmResetInhTime", FrmResetInhTime_CmdCancel_click) {}

void frmresetinhtime_view::show_state() {
    show_form(FrmResetInhTime.form);
}

} // namespace tyxo
