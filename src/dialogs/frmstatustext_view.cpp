#include "dialogs/frmstatustext_view.h"

#include "dialogs/frmstatustext.h"
#include "widgets/show.h"

#include <QBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>

namespace tyxo {

namespace {

constexpr QSize usual_status_size(900, 600);

} // namespace

frmstatustext_view::frmstatustext_view(QWidget* parent)
    : modal_dialog(parent, "frmstatustext", frmstatustext::state.form, frmstatustext::Cmdclose_click,
                   desktop::source::view),
      Text_status(new QPlainTextEdit(this)) {
    auto* const rows = new QVBoxLayout(this);
    Text_status->setObjectName("Text_status");
    Text_status->setAccessibleName(tr("Copy of the status text"));
    Text_status->setReadOnly(true);
    Text_status->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    Text_status->setUndoRedoEnabled(false);
    Text_status->setLineWrapMode(QPlainTextEdit::NoWrap);
    rows->addWidget(Text_status, 1);
    auto* const buttons = new QHBoxLayout;
    rows->addLayout(buttons);
    buttons->addStretch();
    add_button("Cmdrefresh", frmstatustext::state.Cmdrefresh, frmstatustext::Cmdrefresh_click, false,
               *buttons);
    add_button("Cmdclose", frmstatustext::state.Cmdclose, frmstatustext::Cmdclose_click, true, *buttons);
    setSizeGripEnabled(true);
    resize(usual_status_size);
}

void frmstatustext_view::show_text() {
    shown_ = frmstatustext::state.Text_status.Text;
    Text_status->setPlainText(qt_text(shown_));
    Text_status->moveCursor(QTextCursor::End);
    Text_status->verticalScrollBar()->setValue(Text_status->verticalScrollBar()->maximum());
}

void frmstatustext_view::show_state() {
    const frmstatustext::window& window = frmstatustext::state;
    const bool opened = opens();
    modal_dialog::show_state();
    if (opened) Text_status->setFocus();
    if (opened || (window.form.Visible && window.Text_status.Text != shown_)) show_text();
}

} // namespace tyxo

#include "moc_frmstatustext_view.cpp"
