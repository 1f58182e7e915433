#include "app/windows_view.h"

#include "dialogs/frmabort_view.h"
#include "dialogs/frmalert_view.h"
#include "dialogs/frmbrowse_view.h"
#include "dialogs/frmlog_view.h"
#include "dialogs/frmpwd_view.h"
#include "dialogs/frmresetinhtime_view.h"
#include "dialogs/frmscale_polar_view.h"
#include "dialogs/frmselectprint_view.h"
#include "dialogs/frmsplash_view.h"
#include "dialogs/frmstatustext_view.h"
#include "dialogs/setup/frmsetup_view.h"
#include "displays/bar_diagram_view.h"
#include "displays/frmdetailedpic_view.h"
#include "gateway/frmsetuptcp_view.h"

#include <utility>

namespace tyxo {

template <class Window, class... Arguments> Window* secondary_windows::add(Arguments&&... arguments) {
    auto window = std::make_unique<Window>(std::forward<Arguments>(arguments)...);
    Window* const made = window.get();
    windows_.push_back(std::move(window));
    return made;
}

secondary_windows::secondary_windows(QWidget* parent) {
    add<frmdetailedpic_view>(parent);
    add<bar_diagram_view>(frmbarpic::state, "frmbarpic", parent);
    add<bar_diagram_view>(Frmbarpic2::state, "Frmbarpic2", parent);
    add<frmscale_polar_view>(parent);
    add<frmselectprint_view>(parent);
    add<frmsetuptcp_view>(parent);
    QWidget* const setup = add<frmsetup_view>(parent);
    add<frmbrowse_view>(setup);
    add<frmpwd_view>(parent);
    add<frmabort_view>(parent);
    add<frmresetinhtime_view>(parent);
    add<frmstatustext_view>(parent);
    add<frmlog_view>(parent);
    add<frmsplash_view>(parent);
    add<frmalert_view>();
}

/// The last one first: the folder browser before the dialog that it stands in front of.
secondary_windows::~secondary_windows() {
    while (!windows_.empty())
        windows_.pop_back();
}

void secondary_windows::show_state() {
    for (const auto& window : windows_)
        window->show_state();
}

} // namespace tyxo
