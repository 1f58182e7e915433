#include "dialogs/frmresetinhtime_view.h"

#include "dialogs/frmresetinhtime.h"
#include "link/channel_rec.h"
#include "widgets/show.h"

#include <QBoxLayout>
#include <QPushButton>

namespace tyxo {

namespace {

/// "2: Port engine", as the channel's frame in the main window is called.
QString channel_title(i16 channel) {
    return QString("%1: %2").arg(channel + 1).arg(qt_text(sensor::state.channels[channel].location));
}

} // namespace

frmresetinhtime_view::frmresetinhtime_view(QWidget* parent)
    : modal_dialog(parent, "FrmResetInhTime", FrmResetInhTime::state.form, FrmResetInhTime::CmdCancel_click) {
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(dialog_margin, dialog_margin, dialog_margin, dialog_gap);
    rows->setSpacing(dialog_gap);
    QLabel* const Label1 = add_label("Label1", FrmResetInhTime::state.Label1, *rows);
    channel_ = add_label("Lbl_channel", *rows);
    for (QLabel* label : {Label1, channel_})
        label->setAlignment(Qt::AlignCenter);
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(dialog_gap);
    rows->addLayout(buttons);
    CmdDo = add_button("CmdDo", FrmResetInhTime::state.CmdDo, FrmResetInhTime::CmdDo_click, true, *buttons);
    add_button("CmdCancel", FrmResetInhTime::state.CmdCancel, FrmResetInhTime::CmdCancel_click, false,
               *buttons);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

void frmresetinhtime_view::show_state() {
    const bool opened = opens();
    if (opened) channel_->setText(channel_title(sensor::state.inhibit_reset_channel));
    modal_dialog::show_state();
    if (opened) CmdDo->setFocus();
}

} // namespace tyxo

#include "moc_frmresetinhtime_view.cpp"
