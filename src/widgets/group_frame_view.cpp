#include "widgets/group_frame_view.h"

#include <QStylePainter>

namespace tyxo {

group_frame::group_frame(QWidget* parent) : QGroupBox(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void group_frame::changeEvent(QEvent* event) {
    face_.drop(); // of font, style and whatever else
    QGroupBox::changeEvent(event);
}

/// Not every change is an event.
bool group_frame::looks_as(const QStyleOptionGroupBox& look) const {
    return look.text == look_.text && look.state == look_.state && look.palette == look_.palette &&
           look.direction == look_.direction && look.textAlignment == look_.textAlignment;
}

void group_frame::paintEvent(QPaintEvent* event) {
    QStyleOptionGroupBox look;
    initStyleOption(&look);
    if (!looks_as(look)) {
        face_.drop();
        look_ = look;
    }
    const auto paint = [this, &look](QPainter& onto) {
        onto.setRenderHint(QPainter::Antialiasing, false);
        onto.setRenderHint(QPainter::SmoothPixmapTransform); // as a QStylePainter does
        onto.setFont(font());
        onto.setPen(palette().color(foregroundRole()));
        style()->drawComplexControl(QStyle::CC_GroupBox, &look, &onto, this);
    };
    QPainter painter(this);
    paint_parts(painter, *event, [&](const QRect& /*part*/) {
        face_.show(painter, *this, paint, palette().color(backgroundRole()));
    });
}

} // namespace tyxo
