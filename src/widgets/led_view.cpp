#include "widgets/led_view.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace tyxo {

led_view::led_view(QWidget* parent) : QWidget(parent) {
    setAccessibleName(tr("Lamp"));
    describe();
}

void led_view::show_control(const iLedRoundX& control) {
    if (control == shown_) return;
    iLedRoundX only_switched = control;
    only_switched.Active = shown_.Active;
    if (only_switched != shown_) drop_faces();
    shown_ = control;
    describe();
    update_part(*this, rect());
}

void led_view::describe() {
    const QString state = led_view::spoken_text();
    if (state != accessibleDescription()) setAccessibleDescription(state);
}

void led_view::drop_faces() {
    lit_.drop();
    dark_.drop();
}

void led_view::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange) drop_faces();
    QWidget::changeEvent(event);
}

void led_view::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    face_cache& face = shown_.Active ? lit_ : dark_;
    paint_parts(painter, *event, [&](const QRect& /*part*/) {
        face.show(painter, *this, [this](QPainter& onto) { paint_face(onto); });
    });
}

void led_view::paint_face(QPainter& painter) const {
    const double r = std::min(width(), height()) / 2.0;
    painter.setPen(Qt::NoPen);
    painter.translate(QRectF(rect()).center());

    QLinearGradient rim(0, -r, 0, r);
    rim.setColorAt(0, shaded_ground(QColor(ink::rim_dark), *this));
    rim.setColorAt(1, shaded_ground(QColor(ink::glass_edge), *this));
    painter.setBrush(rim);
    painter.drawEllipse(QPointF(), r, r);

    const double ring = r - std::clamp(0.09 * r, 0.75, 6.0);
    painter.setBrush(shaded(QColor(ink::hub), *this));
    painter.drawEllipse(QPointF(), std::max(ring, 0.0), std::max(ring, 0.0));

    const double lens = std::max(ring - std::clamp(0.08 * r, 0.75, 5.0), 0.0);
    const QColor body = shaded(qt_colour(shown_.Active ? shown_.ActiveColor : shown_.InactiveColor), *this);
    QRadialGradient glow(QPointF(), lens > 0 ? lens : 1);
    glow.setColorAt(0, body);
    glow.setColorAt(0.55, body);
    glow.setColorAt(1, mixed(body, Qt::black, shown_.Active ? 0.25 : 0.40));
    painter.setBrush(glow);
    painter.drawEllipse(QPointF(), lens, lens);

    // The gloss of the glass stays in the upper half, clear of the middle.
    QLinearGradient gloss(0, -0.85 * lens, 0, -0.15 * lens);
    gloss.setColorAt(0, QColor(255, 255, 255, shown_.Active ? 130 : 80));
    gloss.setColorAt(1, QColor(255, 255, 255, 0));
    painter.setBrush(gloss);
    painter.drawEllipse(QPointF(0, -0.48 * lens), 0.58 * lens, 0.36 * lens);
}

} // namespace tyxo

#include "moc_led_view.cpp"
