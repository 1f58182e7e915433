#include "widgets/linear_gauge_view.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tyxo {

namespace {

// Lengths at the size that the control is designed for; everything grows and shrinks with the widget.
constexpr double design_width = 52;
constexpr double design_height = 104;
constexpr double margin = 4;
constexpr double bar_width = 10;
constexpr double tick_gap = 1;
constexpr double tick_length = 4;
constexpr double label_gap = 2;
constexpr double bar_label_height = 10;
constexpr double most_pointer = 14;
constexpr double pointer_overlap = 3; ///< of the tip and the bar
constexpr double max_pointer_share = 0.7;

} // namespace

linear_gauge_view::linear_gauge_view(QWidget* parent) : QWidget(parent) {
    setAccessibleName(tr("Bar"));
}

void linear_gauge_view::show_control(const iLinearGaugeX& control) {
    if (control == shown_) return;
    iLinearGaugeX only_moved = control;
    only_moved.Position = shown_.Position;
    only_moved.MaxPosition = shown_.MaxPosition;
    if (only_moved == shown_) {
        move_pointers(control);
        return;
    }
    drop_faces();
    shown_ = control;
    update_part(*this, rect());
}

/// A pointer that moves is painted where it was and where it is.
void linear_gauge_view::move_pointers(const iLinearGaugeX& to) {
    const QRect pointer = pointer_area();
    const QRect max_pointer = max_pointer_area();
    const double share = scale_share(shown_.Position, limits());
    const double max_share = scale_share(shown_.MaxPosition, limits());
    shown_ = to;
    const bool moved = scale_share(shown_.Position, limits()) != share;
    const bool max_moved = shown_.ShowMaxPointer && scale_share(shown_.MaxPosition, limits()) != max_share;
    if (moved || max_moved) gauge_.drop();
    if (max_moved) up_to_max_.drop();
    if (moved) update_part(*this, pointer | pointer_area());
    if (max_moved) update_part(*this, max_pointer | max_pointer_area());
}

void linear_gauge_view::drop_faces() {
    face_.drop();
    up_to_max_.drop();
    gauge_.drop();
}

QString linear_gauge_view::spoken_text() const {
    QString text = QString::fromStdString(tick_text(shown_.Position, shown_.Position));
    if (!shown_.ShowMaxPointer) return text;
    return tr("%1, highest %2")
        .arg(text, QString::fromStdString(tick_text(shown_.MaxPosition, shown_.MaxPosition)));
}

std::optional<spoken_control::scale> linear_gauge_view::spoken_scale() const {
    return scale{shown_.PositionMin, shown_.Position, shown_.PositionMax};
}

void linear_gauge_view::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange || event->type() == QEvent::FontChange) drop_faces();
    QWidget::changeEvent(event);
}

double linear_gauge_view::unit() const {
    return std::min(width() / design_width, height() / design_height);
}

double linear_gauge_view::pointer_length() const {
    return std::clamp(static_cast<double>(shown_.PointerSize), 0.0, most_pointer) * unit();
}

QRectF linear_gauge_view::bar() const {
    const double ratio = devicePixelRatioF();
    const double pointer_room = std::max(pointer_length() - pointer_overlap * unit(), 0.0);
    const double right = (width() + design_width * unit()) / 2 - margin * unit() - pointer_room;
    const double top = snapped((margin + bar_label_height / 2) * unit(), ratio);
    const double left = snapped(right - bar_width * unit(), ratio);
    return {left, top, snapped(right, ratio) - left, std::max(height() - 2 * top, 0.0)};
}

double linear_gauge_view::height_of(double share) const {
    const QRectF area = bar();
    return line_place(share, area.bottom(), area.top());
}

void linear_gauge_view::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // Pointers and face are one picture: a fine line that is cut would look different at its end.
    const auto paint_up_to_max = [this](QPainter& onto) {
        face_.show(onto, *this, [this](QPainter& onto_face) { paint_face(onto_face); });
        if (!shown_.ShowMaxPointer) return;
        paint_max_line(onto);
        paint_pointer(onto, shown_.MaxPosition, qt_colour(shown_.MaxPointerColor),
                      max_pointer_share * pointer_length());
    };
    const auto paint = [&](QPainter& onto) {
        up_to_max_.show(onto, *this, paint_up_to_max);
        paint_pointer(onto, shown_.Position, qt_colour(shown_.PointerColor), pointer_length());
    };
    paint_parts(painter, *event, [&](const QRect& /*part*/) { gauge_.show(painter, *this, paint); });
}

void linear_gauge_view::paint_face(QPainter& painter) const {
    const QRectF area(rect());
    const double corner = std::clamp(3 * unit(), 1.0, 8.0);
    QLinearGradient rim(area.topLeft(), area.bottomLeft());
    rim.setColorAt(0, shaded_ground(QColor(ink::rim_light), *this));
    rim.setColorAt(1, shaded_ground(QColor(ink::rim_dark), *this));
    painter.setPen(Qt::NoPen);
    painter.setBrush(rim);
    painter.drawRoundedRect(area, corner, corner);
    painter.setBrush(shaded_ground(QColor(ink::paper), *this));
    painter.drawRoundedRect(area.adjusted(1, 1, -1, -1), corner - 0.5, corner - 0.5);
    paint_bar(painter);
    paint_scale(painter);
}

void linear_gauge_view::paint_bar(QPainter& painter) const {
    const QRectF area = bar();
    const double ratio = devicePixelRatioF();
    const double rim = snapped(std::max(0.75, 0.75 * unit()), ratio);
    painter.fillRect(area.adjusted(-rim, -rim, rim, rim), shaded(QColor(ink::paper_fine_print), *this));
    painter.fillRect(area, shaded_ground(QColor(ink::paper), *this));
    for (const section_range& section : section_ranges(limits(), shown_.SectionEnd, shown_.SectionCount)) {
        // A bar knows colours for as many sections as it can have at most at design; others keep the last
        // one.
        const auto index =
            std::min(static_cast<std::size_t>(section.colour_index), shown_.SectionColor.size() - 1);
        const double top = snapped(height_of(section.to), ratio);
        const double bottom = snapped(height_of(section.from), ratio);
        painter.fillRect(QRectF(area.left(), top, area.width(), bottom - top),
                         shaded(qt_colour(shown_.SectionColor[index]), *this));
    }
}

void linear_gauge_view::paint_scale(QPainter& painter) const {
    const QRectF area = bar();
    const double ratio = devicePixelRatioF();
    const double right = snapped(area.left() - tick_gap * unit(), ratio);
    const double left = snapped(right - tick_length * unit(), ratio);
    const double thick = std::max(snapped(unit(), ratio), 1 / ratio);
    const std::vector<tick_mark> ticks = tick_marks(limits(), shown_.TickMajorCount, 0);
    for (const tick_mark& tick : ticks) {
        const double top = snapped(height_of(tick.share) - thick / 2, ratio);
        painter.fillRect(QRectF(left, top, right - left, thick), shaded(QColor(ink::paper_print), *this));
    }
    paint_tick_labels(painter, ticks, left - label_gap * unit());
}

void linear_gauge_view::paint_tick_labels(QPainter& painter, const std::vector<tick_mark>& ticks,
                                          double right) const {
    const double room = right - (width() - design_width * unit()) / 2 - margin * unit() / 2;
    const double parts = std::max(shown_.TickMajorCount - 1, 1);
    const double distance = limits().greatest / parts - limits().least / parts;
    QString widest;
    for (const tick_mark& tick : ticks) {
        const QString text = QString::fromStdString(tick_text(tick.value, distance));
        if (text.size() > widest.size()) widest = text;
    }
    const QFont font =
        fitted_font(*this, widest, {room, bar_label_height * unit()}, bar_label_height * unit());
    if (font.pixelSize() < least_label_pixels) return;

    const QFontMetricsF metrics(font);
    const box_size size{room, metrics.capHeight() * 1.35};
    std::vector<label_box> boxes;
    boxes.reserve(ticks.size());
    for (const tick_mark& tick : ticks)
        boxes.push_back({0, height_of(tick.share), size});
    const i32 step = label_step(boxes);
    if (step == 0) return;
    painter.setFont(font);
    painter.setPen(shaded(QColor(ink::paper_print), *this));
    for (std::size_t index = 0; index < ticks.size(); index += static_cast<std::size_t>(step)) {
        const QString text = QString::fromStdString(tick_text(ticks[index].value, distance));
        const double baseline = snapped(boxes[index].y + metrics.capHeight() / 2, devicePixelRatioF());
        painter.drawText(QPointF(right - metrics.horizontalAdvance(text), baseline), text);
    }
}

QPolygonF linear_gauge_view::triangle(double value, double size) const {
    const double y = height_of(scale_share(value, limits()));
    const double tip = bar().right() - pointer_overlap * unit();
    return {{{tip, y}, {tip + size, y - 0.55 * size}, {tip + size, y + 0.55 * size}}};
}

double linear_gauge_view::pointer_rim() const {
    return std::max(0.6, 0.6 * unit());
}

void linear_gauge_view::paint_pointer(QPainter& painter, double value, const QColor& color,
                                      double size) const {
    if (size <= 0) return;
    painter.setPen(QPen(shaded_ground(QColor(ink::paper), *this), pointer_rim()));
    painter.setBrush(shaded(color, *this));
    painter.drawPolygon(triangle(value, size));
}

/// All pixels that the pointer touches.
QRect linear_gauge_view::pointer_area() const {
    const double rim = pointer_rim(); // half of it, and more at the corners
    return touched(triangle(shown_.Position, pointer_length()).boundingRect().adjusted(-rim, -rim, rim, rim));
}

QRectF linear_gauge_view::max_line() const {
    const QRectF area = bar();
    const double ratio = devicePixelRatioF();
    const double thick = std::max(snapped(1.25 * unit(), ratio), 1 / ratio);
    const double top = snapped(height_of(scale_share(shown_.MaxPosition, limits())) - thick / 2, ratio);
    return {area.left(), top, area.width(), thick};
}

void linear_gauge_view::paint_max_line(QPainter& painter) const {
    painter.fillRect(max_line(), shaded(qt_colour(shown_.MaxPointerColor), *this));
}

/// The same of the second pointer and its line; none while it is not shown.
QRect linear_gauge_view::max_pointer_area() const {
    if (!shown_.ShowMaxPointer) return {};
    const double rim = pointer_rim();
    const QRectF pointer = triangle(shown_.MaxPosition, max_pointer_share * pointer_length()).boundingRect();
    return touched(pointer.adjusted(-rim, -rim, rim, rim) | max_line());
}

} // namespace tyxo

#include "moc_linear_gauge_view.cpp"
