#include "dialogs/frmlog_view.h"

#include "dialogs/frmlog.h"
#include "widgets/picture_view.h"
#include "widgets/show.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QPushButton>

namespace tyxo {

namespace {

constexpr int log_picture_side = 128;
constexpr double headline_size = 1.35; ///< of the usual text

} // namespace

frmlog_view::frmlog_view(QWidget* parent)
    : modal_dialog(parent, "Frmlog", Frmlog::state.form, Frmlog::Cmd_ok_click, desktop::source::view) {
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(dialog_margin, dialog_margin, dialog_margin, dialog_margin);
    rows->setSpacing(dialog_margin);
    QLabel* const headline = add_label("headline", Frmlog::state.headline, *rows);
    headline->setAlignment(Qt::AlignCenter);
    headline->setFont(headline_font(headline->font(), headline_size));

    auto* const middle = new QHBoxLayout;
    middle->setSpacing(dialog_margin);
    rows->addLayout(middle);
    auto* const picture = new picture_view(this, "Image1", "tyxo", log_picture_side);
    picture->setAccessibleName(tr("Picture of the Tyxo Data Logger"));
    middle->addWidget(picture);
    auto* const pairs = new QGridLayout;
    pairs->setHorizontalSpacing(dialog_margin);
    pairs->setColumnStretch(1, 1);
    middle->addLayout(pairs);
    add_pair("Type:", "Lbllogtype", Frmlog::state.Lbllogtype, *pairs);
    add_pair("Version:", "Lblversion", Frmlog::state.Lblversion, *pairs);
    add_pair("Date:", "Lbldate", Frmlog::state.Lbldate, *pairs);
    add_pair("developed by:", "Lbldev", Frmlog::state.Lbldev, *pairs);
    add_pair("programmed by:", "Lblprog", Frmlog::state.Lblprog, *pairs);

    auto* const buttons = new QHBoxLayout;
    rows->addLayout(buttons);
    buttons->addStretch();
    add_button("Cmd_ok", Frmlog::state.Cmd_ok, Frmlog::Cmd_ok_click, true, *buttons);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

void frmlog_view::add_pair(const QString& title, const char* name, const Label& state, QGridLayout& pairs) {
    const int row = pairs.rowCount();
    auto* const fixed = new QLabel(title, this);
    auto* const value = new QLabel(this);
    value->setObjectName(name);
    value->setTextFormat(Qt::PlainText);
    fixed->setBuddy(value);
    pairs.addWidget(fixed, row, 0);
    pairs.addWidget(value, row, 1);
    bind(value, state);
}

} // namespace tyxo

#include "moc_frmlog_view.cpp"
