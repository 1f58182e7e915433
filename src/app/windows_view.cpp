#include "app/windows_view.h"

#include "dialogs/frmabort.h"
#include "dialogs/frmabort_view.h"
#include "dialogs/frmalert_view.h"
#include "dialogs/frmbrowse.h"
#include "dialogs/frmbrowse_view.h"
#include "dialogs/frmlog.h"
#include "dialogs/frmlog_view.h"
#include "dialogs/frmpwd.h"
#include "dialogs/frmpwd_view.h"
#include "dialogs/frmresetinhtime.h"
#include "dialogs/frmresetinhtime_view.h"
#include "dialogs/frmscale_polar.h"
#include "dialogs/frmscale_polar_view.h"
#include "dialogs/frmselectprint.h"
#include "dialogs/frmselectprint_view.h"
#include "dialogs/frmsplash.h"
#include "dialogs/frmsplash_view.h"
#include "dialogs/frmstatustext.h"
#include "dialogs/frmstatustext_view.h"
#include "dialogs/setup/frmsetup.h"
#include "dialogs/setup/frmsetup_view.h"
#include "displays/bar_diagram.h"
#include "displays/bar_diagram_view.h"
#include "displays/frmdetailedpic.h"
#include "displays/frmdetailedpic_view.h"
#include "gateway/frmsetuptcp.h"
#include "gateway/frmsetuptcp_view.h"

namespace tyxo {

template <class Window, class... Arguments>
void secondary_windows::add(const Form& form, Arguments... arguments) {
    windows_.push_back({form, [=] { return std::make_unique<Window>(arguments...); }, nullptr, false});
}

secondary_windows::secondary_windows(QWidget* parent) : alert_(std::make_unique<frmalert_view>()) {
    add<frmdetailedpic_view>(frmdetailedpic::state.form, parent);
    add<bar_diagram_view>(frmbarpic::state.form, std::ref(frmbarpic::state), "frmbarpic", parent);
    add<bar_diagram_view>(Frmbarpic2::state.form, std::ref(Frmbarpic2::state), "Frmbarpic2", parent);
    add<frmscale_polar_view>(frmscale_polar::state.form, parent);
    add<frmselectprint_view>(frmselectprint::state.form, parent);
    add<frmsetuptcp_view>(FrmSetupTCP::state.form, parent);
    add<frmsetup_view>(frmSetup::state.form, parent);
    windows_.push_back(
        {frmbrowse::state.form,
         [parent] { return std::make_unique<frmbrowse_view>(parent->findChild<frmsetup_view*>()); }, nullptr,
         false});
    add<frmpwd_view>(frmpwd::state.form, parent);
    add<frmabort_view>(FrmAbort::state.form, parent);
    add<frmresetinhtime_view>(FrmResetInhTime::state.form, parent);
    add<frmstatustext_view>(frmstatustext::state.form, parent);
    add<frmlog_view>(Frmlog::state.form, parent);
    add<frmsplash_view>(frmSplash::state.form, parent);
}

/// The last one first: the folder browser before the dialog that it stands in front of.
secondary_windows::~secondary_windows() {
    while (!windows_.empty())
        windows_.pop_back();
}

void secondary_windows::show_state() {
    for (row& one : windows_) {
        const bool open = one.form.Visible;
        if (!open && !one.shown) continue;
        if (!one.window) one.window = one.make();
        one.window->show_state();
        one.shown = open;
    }
    alert_->show_state();
}

} // namespace tyxo
