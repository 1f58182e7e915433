#include "dialogs/frmsplash.h"

#include "logging/log_header.h"

namespace tyxo::frmSplash {

void unload() {
    state.form.unload();
}

} // namespace tyxo::frmSplash

namespace tyxo {

void mainfrm::about_click() {
    frmSplash::state = {};
    frmSplash::state.lblVersion.Caption = std::string(log::version) + "    " + std::string(log::version_date);
    frmSplash::state.lblProductName.Caption = "Quarvo / Tyxo Data Logger";
    frmSplash::state.lbllogo.Caption = "Watches up to four engines, day and night";
    frmSplash::state.form.show();
}

} // namespace tyxo
