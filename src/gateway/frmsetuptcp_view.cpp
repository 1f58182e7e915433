#include "gateway/frmsetuptcp_view.h"

#include "gateway/frmsetuptcp.h"

namespace tyxo {

frmsetuptcp_view::frmsetuptcp_view(QWidget* parent) : QMainWindow(parent) {
    setObjectName("FrmSetupTCP");
}

void frmsetuptcp_view::show_state() {
    setVisible(FrmSetupTCP.form.Visible);
}

} // namespace tyxo
