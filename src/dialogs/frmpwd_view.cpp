#include "dialogs/frmpwd_view.h"

#include "dialogs/frmpwd.h"
#include "widgets/edit_box.h"
#include "widgets/show.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QPushButton>

namespace tyxo {

namespace {

constexpr int password_margin = 16;
constexpr int password_gap = 12;
constexpr int box_width = 220; // px, at least

} // namespace

frmpwd_view::frmpwd_view(QWidget* parent)
    : modal_dialog(parent, "frmpwd", frmpwd::state.form, frmpwd::CmdCancel_click) {
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(password_margin, password_margin, password_margin, password_margin);
    rows->setSpacing(password_gap);
    Frame1 = add_frame("Frame1", frmpwd::state.Frame1, *rows);
    auto* const grid = new QGridLayout(Frame1);
    grid->setContentsMargins(password_margin, password_margin, password_margin, password_margin);
    grid->setHorizontalSpacing(password_margin);
    grid->setVerticalSpacing(password_gap);
    oldpasswd = add_box("oldpasswd", tr("Enter old password"), frmpwd::state.oldpasswd,
                        frmpwd::oldpasswd_change, *grid);
    add_box("newpasswd", tr("Enter new password"), frmpwd::state.newpasswd, frmpwd::newpasswd_change, *grid);
    add_box("newpasswd2", tr("Confirm new password"), frmpwd::state.newpasswd2, frmpwd::newpasswd2_change,
            *grid);
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(password_gap);
    rows->addLayout(buttons);
    buttons->addStretch();
    add_button("CmdOK", frmpwd::state.CmdOK, frmpwd::CmdOK_click, true, *buttons);
    add_button("CmdCancel", frmpwd::state.CmdCancel, frmpwd::CmdCancel_click, false, *buttons);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

edit_box* frmpwd_view::add_box(const char* name, const QString& label, const TextBox& state,
                               void (*change)(std::string_view), QGridLayout& grid) {
    auto* const box = new edit_box(Frame1, name, change);
    bind(box, state);
    box->setMinimumWidth(box_width);
    box->setAccessibleName(label);
    auto* const beside = new QLabel(label, Frame1);
    beside->setBuddy(box);
    const int row = grid.rowCount();
    grid.addWidget(beside, row, 0);
    grid.addWidget(box, row, 1);
    return box;
}

void frmpwd_view::show_state() {
    show_bound();
    if (opens()) oldpasswd->setFocus();
    show_form();
}

} // namespace tyxo

#include "moc_frmpwd_view.cpp"
