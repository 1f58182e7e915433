#include "dialogs/frmstatustext.h"

#include "link/indicators.h"

namespace tyxo {

void Text_status_dblclick() {
    frmstatustext = {};
    Cmdrefresh_click();
    frmstatustext.form.show();
}

void Cmdrefresh_click() {
    frmstatustext.Text_status.Text = indicators.Text_status.text();
}

void Cmdclose_click() {
    frmstatustext.form.unload();
}

} // namespace tyxo
