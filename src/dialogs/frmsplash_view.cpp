#include "dialogs/frmsplash_view.h"

#include "dialogs/frmsplash.h"
#include "widgets/picture_view.h"
#include "widgets/show.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>

namespace tyxo {

namespace {

constexpr int margin = 24;
constexpr int gap = 28;
constexpr int picture_side = 144;
constexpr double product_name_size = 1.8; ///< of the usual text

/// Held down on the way to another key, to another window perhaps.
bool is_modifier(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_AltGr ||
           key == Qt::Key_Meta;
}

} // namespace

frmsplash_view::frmsplash_view(QWidget* parent)
    : modal_dialog(parent, "frmSplash", frmSplash_unload, desktop::source::view) {
    auto* const rows = new QVBoxLayout(this);
    Frame1 = add_frame("Frame1", *rows);
    auto* const row = new QHBoxLayout(Frame1);
    row->setContentsMargins(margin, margin, margin, margin);
    row->setSpacing(gap);
    auto* const picture = new picture_view(Frame1, "Image1", "tyxo", picture_side);
    picture->setAccessibleName(tr("Picture of the Tyxo Data Logger"));
    row->addWidget(picture);
    auto* const texts = new QVBoxLayout;
    row->addLayout(texts);
    texts->addStretch();
    lblProductName = add_label("lblProductName", *texts);
    lblVersion = add_label("lblVersion", *texts);
    texts->addSpacing(gap / 2);
    lbllogo = add_label("lbllogo", *texts);
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

void frmsplash_view::show_state() {
    const frmsplash_form& window = frmSplash;
    show_frame(*Frame1, window.Frame1);
    show_label(*lblVersion, window.lblVersion);
    show_label(*lblProductName, window.lblProductName);
    show_label(*lbllogo, window.lbllogo);
    show_form(window.form);
}

} // namespace tyxo
