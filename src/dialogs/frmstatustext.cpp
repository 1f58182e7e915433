#include "dialogs/frmstatustext.h"

#include "link/indicators.h"

namespace tyxo {

void Text_status_dblclick() {
    frmstatustext = {};
    Cmdrefresh_click();
    frmstatustext.form.Loaded = true;
    frmstatustext.form.Visible = true;
}

void Cmdrefresh_click() {
    frmstatustext.Text_status.Text = indicators.Text_status.text();
}

void Cmdclose_click() {
    frmstatustext.form.Visible = false;
    frmstatustext.form.Loaded = false;
}

} // namespace tyxo
