#include "dialogs/frmselectprint_view.h"

#include "dialogs/frmselectprint.h"
#include "widgets/show.h"

#include <QBoxLayout>
#include <QPushButton>
#include <QRadioButton>

namespace tyxo {

namespace {

constexpr int print_gap = 6;
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
    : modal_dialog(parent, "frmselectprint", frmselectprint::state.form, frmselectprint::cmd_cancel_click),
      optPrint(this, "optPrint", frmselectprint::optPrint_click) {
    auto* const rows = new QVBoxLayout(this);
    emphasise(*add_label("Lblprintheader", frmselectprint::state.Lblprintheader, *rows));
    rows->addSpacing(print_gap);
    QGroupBox* const Frmprint = add_frame("Frmprint", frmselectprint::state.Frmprint, *rows);
    Frmprint->setMinimumWidth(least_width);
    auto* const options = new QVBoxLayout(Frmprint);
    for (std::size_t index = 0; index < frmselectprint::state.optPrint.size(); ++index)
        options->addWidget(optPrint.add(Frmprint));
    bind(&optPrint, frmselectprint::state.selected);
    add_label("LblPrint", frmselectprint::state.LblPrint, *rows);
    rows->addSpacing(print_gap);
    auto* const buttons = new QHBoxLayout;
    rows->addLayout(buttons);
    buttons->addStretch();
    const auto print = [this] {
        hide(); // the printer's own dialog opens before this command has ended
        frmselectprint::Cmd_ok_click();
    };
    add_button("Cmd_ok", frmselectprint::state.Cmd_ok, print, true, *buttons);
    add_button("cmd_cancel", frmselectprint::state.cmd_cancel, frmselectprint::cmd_cancel_click, false,
               *buttons);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

void frmselectprint_view::show_state() {
    for (std::size_t index = 0; index < frmselectprint::state.optPrint.size(); ++index) {
        Command option = frmselectprint::state.optPrint[index];
        double_ampersands(option.Caption);
        show_on(*optPrint[index], option);
    }
    modal_dialog::show_state();
}

} // namespace tyxo

#include "moc_frmselectprint_view.cpp"
