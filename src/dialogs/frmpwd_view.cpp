#include "dialogs/frmpwd_view.h"

#include "dialogs/frmpwd.h"

namespace tyxo {

frmpwd_view::frmpwd_view(QWidget* parent) : modal_dialog(parent, "frmpwd", frmpwd_CmdCancel_click) {}

void frmpwd_view::show_state() {
    show_form(frmpwd.form);
}

} // namespace tyxo
