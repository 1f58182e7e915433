#include "dialogs/frmsplash.h"

#include "logging/log_header.h"

namespace tyxo {

void about_click() {
    frmSplash = {};
    frmSplash.lblVersion.Caption = std::string(log::version) + "    " + std::string(log::version_date);
    frmSplash.lblProductName.Caption = "Quarvo / Tyxo Data Logger";
    frmSplash.lbllogo.Caption = "Watches up to four engines, day and night";
    frmSplash.form.show();
}

void frmSplash_unload() {
    frmSplash.form.unload();
}

} // namespace tyxo
