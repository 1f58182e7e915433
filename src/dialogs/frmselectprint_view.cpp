#include "dialogs/frmselectprint_view.h"

#include "dialogs/frmselectprint.h"
#include "widgets/show.h"

#include <QBoxLayout>
#include <QPushButton>
#include <QRadioButton>

namespace tyxo {

namespace {

constexpr int gap = 6;
constexpr int least_width = 320; // so that the dialog keeps its size from one choice to the next

/// An ampersand in a location is a letter, no mnemonic.
void double_ampersands(std::string& text) {
    for (auto place = text.find('&'); place != text.npos; place = text.find('&', place + 2))
        text.insert(place, 1, '&');
}

void emphasise(QLabel& label) {
    QFont font = label.font();
    font.setBold(true);
    label.setFont(font);
}

} // namespace

frmselectprint_view::frmselectprint_view(QWidget* parent)
    : modal_dialog(parent, "frmselectprint", cmd_cancel_click), optPrint(this, "optPrint", optPrint_click) {
    auto* const rows = new QVBoxLayout(this);
    Lblprintheader = add_label("Lblprintheader", *rows);
    emphasise(*Lblprintheader);
    rows->addSpacing(gap);
    Frmprint = add_frame("Frmprint", *rows);
    Frmprint->setMinimumWidth(least_width);
    auto* const options = new QVBoxLayout(Frmprint);
    for (std::size_t index = 0; index < frmselectprint.optPrint.size(); ++index)
        options->addWidget(optPrint.add(Frmprint));
    LblPrint = add_label("LblPrint", *rows);
    rows->addSpacing(gap);
    auto* const buttons = new QHBoxLayout;
    rows->addLayout(buttons);
    buttons->addStretch();
    const auto print = [this] {
        hide(); // the printer's own dialog opens before this command has ended
        frmselectprint_Cmd_ok_click();
    };
    Cmd_ok = add_button("Cmd_ok", print, true, *buttons);
    cmd_cancel = add_button("cmd_cancel", cmd_cancel_click, false, *buttons);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

void frmselectprint_view::show_state() {
    const frmselectprint_form& dialog = frmselectprint;
    show_label(*Lblprintheader, dialog.Lblprintheader);
    show_frame(*Frmprint, dialog.Frmprint);
    for (std::size_t index = 0; index < dialog.optPrint.size(); ++index) {
        Command option = dialog.optPrint[index];
        double_ampersands(option.Caption);
        show_button(*optPrint[index], option);
    }
    optPrint.show_selected(dialog.selected);
    show_label(*LblPrint, dialog.LblPrint);
    show_button(*Cmd_ok, dialog.Cmd_ok);
    show_button(*cmd_cancel, dialog.cmd_cancel);
    show_form(dialog.form);
}

} // namespace tyxo
