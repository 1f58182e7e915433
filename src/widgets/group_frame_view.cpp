#include "widgets/group_frame_view.h"

#include <QStyleOptionGroupBox>

namespace tyxo {

group_frame::group_frame(QWidget* parent) : QGroupBox(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

/// Colours, font, style, enabled or not: whatever changes the frame's look and the ground of its window. The
/// title comes without an event.
void group_frame::changeEvent(QEvent* event) {
    face_.drop();
    QGroupBox::changeEvent(event);
}

void group_frame::paintEvent(QPaintEvent* event) {
    if (title() != shown_title_) face_.drop();
    shown_title_ = title();
    QPainter painter(this);
    paint_parts(painter, *event, [&](const QRect& /*part*/) {
        face_.show(
            painter, *this, [this](QPainter& onto) { paint_face(onto); }, palette().color(backgroundRole()));
    });
}

void group_frame::paint_face(QPainter& painter) const {
    QStyleOptionGroupBox look;
    initStyleOption(&look);
    // As Qt paints its own widgets.
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setFont(font());
    painter.setPen(palette().color(foregroundRole()));
    style()->drawComplexControl(QStyle::CC_GroupBox, &look, &painter, this);
}

} // namespace tyxo
