#include "dialogs/frmabort_view.h"

#include "dialogs/frmabort.h"
#include "widgets/edit_box.h"
#include "widgets/picture_view.h"
#include "widgets/show.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QPushButton>

#include <utility>

namespace tyxo {

namespace {

constexpr int hand_side = 88; // px
constexpr int key_side = 40;

} // namespace

frmabort_view::frmabort_view(QWidget* parent)
    : modal_dialog(parent, "FrmAbort", FrmAbort::state.form, FrmAbort::unload) {
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(dialog_margin, dialog_margin, dialog_margin, dialog_margin);
    rows->setSpacing(dialog_gap);
    auto* const upper = new QHBoxLayout;
    upper->setSpacing(dialog_margin);
    rows->addLayout(upper);
    auto* const hand = new picture_view(this, "Image1", "stop_hand", hand_side);
    hand->setAccessibleName(tr("Raised hand"));
    upper->addWidget(hand, 0, Qt::AlignCenter);
    make_question(*upper);
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(dialog_gap);
    rows->addLayout(buttons);
    buttons->addStretch();
    CmdStop = add_button("CmdStop", FrmAbort::state.CmdStop, FrmAbort::CmdStop_click, false, *buttons);
    CmdContinue =
        add_button("CmdContinue", FrmAbort::state.CmdContinue, FrmAbort::CmdContinue_click, false, *buttons);
    for (QPushButton* const button : {CmdStop, CmdContinue}) // a dialog makes one of those its default
        button->setAutoDefault(false);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    setAttribute(Qt::WA_KeyboardFocusChange); // the focus is always shown: it says what Enter will do
}

void frmabort_view::make_question(QBoxLayout& place) {
    auto* const question = new QVBoxLayout;
    place.addLayout(question, 1);
    question->addStretch();
    QLabel* const Lbl_what = add_label("Lbl_what", FrmAbort::state.Lbl_what, *question);
    Lbl_what->setFont(headline_font(font(), 1.1));
    Label1 = add_label("Label1", FrmAbort::state.Label1, *question);
    auto* const line = new QHBoxLayout;
    question->addLayout(line);
    question->addStretch();
    auto* const key = new picture_view(this, "Image2", "stop_key", key_side);
    key->setAccessibleName(tr("Key"));
    key->setFixedSize(key->sizeHint());
    line->addWidget(key);
    TextPassword = new edit_box(this, "TextPassword", [this](std::string_view text) {
        FrmAbort::TextPassword_change(text);
        show_state(); // at once: the next key belongs to the button if the password is right
    });
    bind(TextPassword, FrmAbort::state.TextPassword);
    Label1->setBuddy(TextPassword);
    line->addWidget(TextPassword, 1);
}

void frmabort_view::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        modal_dialog::keyPressEvent(event);
        return;
    }
    // No button is the default: Enter in the text box must neither stop a log nor throw the question away.
    if (auto* const focused = qobject_cast<QPushButton*>(focusWidget())) focused->click();
}

/// The question must be seen, wherever the request came from.
void frmabort_view::come_to_front() {
    TextPassword->setFocus();
    if (parentWidget()->isMinimized())
        parentWidget()->setWindowState(parentWidget()->windowState() & ~Qt::WindowMinimized);
    show_form();
    raise();
    activateWindow();
}

void frmabort_view::show_state() {
    show_bound();
    show_name(*TextPassword, Label1->text());
    if (opens()) come_to_front();
    show_form();
    if (std::exchange(CmdStop_focused_, FrmAbort::state.CmdStop_focused) != FrmAbort::state.CmdStop_focused)
        CmdStop->setFocus();
}

} // namespace tyxo

#include "moc_frmabort_view.cpp"
