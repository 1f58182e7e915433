#include "dialogs/frmsplash_view.h"

#include "dialogs/frmsplash.h"
#include "widgets/picture_view.h"
#include "widgets/show.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>

namespace tyxo {

namespace {

constexpr int splash_margin = 24;
constexpr int splash_gap = 28;
constexpr int splash_picture_side = 144;
constexpr double product_name_size = 1.8; ///< of the usual text

/// Held down on the way to another key, to another window perhaps.
bool is_modifier(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_AltGr ||
           key == Qt::Key_Meta;
}

} // namespace

frmsplash_view::frmsplash_view(QWidget* parent)
    : modal_dialog(parent, "frmSplash", frmSplash::state.form, frmSplash::unload, desktop::source::view) {
    auto* const rows = new QVBoxLayout(this);
    Frame1 = add_frame("Frame1", frmSplash::state.Frame1, *rows);
    auto* const row = new QHBoxLayout(Frame1);
    row->setContentsMargins(splash_margin, splash_margin, splash_margin, splash_margin);
    row->setSpacing(splash_gap);
    auto* const picture = new picture_view(Frame1, "Image1", "tyxo", splash_picture_side);
    picture->setAccessibleName(tr("Picture of the Tyxo Data Logger"));
    row->addWidget(picture);
    auto* const texts = new QVBoxLayout;
    row->addLayout(texts);
    texts->addStretch();
    QLabel* const lblProductName = add_label("lblProductName", frmSplash::state.lblProductName, *texts);
    add_label("lblVersion", frmSplash::state.lblVersion, *texts);
    texts->addSpacing(splash_gap / 2);
    add_label("lbllogo", frmSplash::state.lbllogo, *texts);
    texts->addStretch();
    lblProductName->setFont(headline_font(lblProductName->font(), product_name_size));
    setAccessibleDescription(tr("Any key or a click closes this window"));
    Frame1->setToolTip(accessibleDescription());
    Frame1->setAccessibleName(tr("Program"));
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

void frmsplash_view::keyPressEvent(QKeyEvent* event) {
    if (!is_modifier(event->key())) reject();
}

void frmsplash_view::mouseReleaseEvent(QMouseEvent* event) {
    if (Frame1->geometry().contains(event->position().toPoint())) reject();
}

} // namespace tyxo

#include "moc_frmsplash_view.cpp"
