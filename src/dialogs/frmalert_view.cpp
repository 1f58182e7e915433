#include "dialogs/frmalert_view.h"

#include "dialogs/frmalert.h"
#include "platform/desktop/handlers.h"

#include <QCloseEvent>

namespace tyxo {

frmalert_view::frmalert_view() : QWidget(nullptr, Qt::Window | Qt::WindowStaysOnTopHint) {
    setObjectName("FrmAlert");
}

void frmalert_view::show_state() {
    if (isVisible() != FrmAlert.form.Visible) setVisible(FrmAlert.form.Visible);
}

void frmalert_view::closeEvent(QCloseEvent* event) {
    event->ignore();
    desktop::run_handler(desktop::source::operator_, FrmAlert_unload);
}

} // namespace tyxo
