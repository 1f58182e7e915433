#include "dialogs/frmstatustext.h"

#include "link/indicators.h"

namespace tyxo::frmstatustext {

void Cmdrefresh_click() {
    state.Text_status.Text = indicators.Text_status.text();
}

void Cmdclose_click() {
    state.form.unload();
}

} // namespace tyxo::frmstatustext

namespace tyxo {

void mainfrm::Text_status_dblclick() {
    frmstatustext::state = {};
    frmstatustext::Cmdrefresh_click();
    frmstatustext::state.form.show();
}

} // namespace tyxo
