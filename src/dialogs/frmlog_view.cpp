#include "dialogs/frmlog_view.h"

#include "dialogs/frmlog.h"
#include "widgets/picture_view.h"
#include "widgets/show.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QPushButton>

namespace tyxo {

namespace {

constexpr int margin = 20;
constexpr int gap = 20;
constexpr int picture_side = 128;
constexpr double headline_size = 1.35; ///< of the usual text

} // namespace

frmlog_view::frmlog_view(QWidget* parent)
    : modal_dialog(parent, "Frmlog", Frmlog_Cmd_ok_click, desktop::source::view) {
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(margin, margin, margin, margin);
    rows->setSpacing(gap);
    headline = add_label("headline", *rows);
    headline->setAlignment(Qt::AlignCenter);
    headline->setFont(headline_font(headline->font(), headline_size));

    auto* const middle = new QHBoxLayout;
    middle->setSpacing(gap);
    rows->addLayout(middle);
    auto* const picture = new picture_view(this, "Image1", "tyxo", picture_side);
    picture->setAccessibleName(tr("Picture of the Tyxo Data Logger"));
    middle->addWidget(picture);
    pairs_ = new QGridLayout;
    pairs_->setHorizontalSpacing(gap);
    pairs_->setColumnStretch(1, 1);
    middle->addLayout(pairs_);
    Lbllogtype = add_pair("Type:", "Lbllogtype");
    Lblversion = add_pair("Version:", "Lblversion");
    Lbldate = add_pair("Date:", "Lbldate");
    Lbldev = add_pair("developed by:", "Lbldev");
    Lblprog = add_pair("programmed by:", "Lblprog");

    auto* const buttons = new QHBoxLayout;
    rows->addLayout(buttons);
    buttons->addStretch();
    Cmd_ok = add_button("Cmd_ok", Frmlog_Cmd_ok_click, true, *buttons);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

QLabel* frmlog_view::add_pair(const QString& title, const char* name) {
    const int row = pairs_->rowCount();
    auto* const fixed = new QLabel(title, this);
    auto* const value = new QLabel(this);
    value->setObjectName(name);
    value->setTextFormat(Qt::PlainText);
    fixed->setBuddy(value);
    pairs_->addWidget(fixed, row, 0);
    pairs_->addWidget(value, row, 1);
    return value;
}

void frmlog_view::show_state() {
    const frmlog_form& window = Frmlog;
    show_label(*headline, window.headline);
    show_label(*Lbllogtype, window.Lbllogtype);
    show_label(*Lblversion, window.Lblversion);
    show_label(*Lbldate, window.Lbldate);
    show_label(*Lbldev, window.Lbldev);
    show_label(*Lblprog, window.Lblprog);
    show_button(*Cmd_ok, window.Cmd_ok);
    show_form(window.form);
}

} // namespace tyxo
