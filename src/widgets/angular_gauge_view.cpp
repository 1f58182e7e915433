#include "widgets/angular_gauge_view.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tyxo {

namespace {

// Shares of the dial's radius.
constexpr double band_outer = 0.925;
constexpr double band_inner = 0.845;
constexpr double major_tick_inner = 0.76;
constexpr double minor_tick_inner = 0.795;
constexpr double label_outer = 0.72;
constexpr double label_height = 0.175;
constexpr double caption_place = 0.31;
constexpr double caption_height = 0.155;
constexpr double needle_length = 0.80;
constexpr double needle_tail = 0.18;
constexpr double needle_width = 0.09;
constexpr double hub_radius = 0.115;
constexpr double most_label_shrink = 0.78;

QPointF on_circle(double angle, double radius) {
    const double radians = angle * std::numbers::pi / 180;
    return {radius * std::cos(radians), -radius * std::sin(radians)};
}

/// A part of a ring around the origin, clockwise from one angle to another.
QPainterPath ring_part(double from, double to, double outer, double inner) {
    QPainterPath path;
    path.arcMoveTo(QRectF(-outer, -outer, 2 * outer, 2 * outer), from);
    path.arcTo(QRectF(-outer, -outer, 2 * outer, 2 * outer), from, to - from);
    path.arcTo(QRectF(-inner, -inner, 2 * inner, 2 * inner), to, from - to);
    path.closeSubpath();
    return path;
}

struct scale_label {
    QString text;
    label_box box;
};

} // namespace

angular_gauge_view::angular_gauge_view(QWidget* parent) : QWidget(parent) {
    setAccessibleName(tr("Dial"));
}

void angular_gauge_view::show_control(const iAngularGaugeX& control) {
    if (control == shown_) return;
    iAngularGaugeX only_moved = control;
    only_moved.Position = shown_.Position;
    if (only_moved == shown_) {
        move_needle(control.Position);
        return;
    }
    drop_faces();
    shown_ = control;
    if (accessibleDescription() != label_1_text()) setAccessibleDescription(label_1_text()); // the unit
    update_part(*this, rect());
}

/// Where it was and where it is are painted, if that differs.
void angular_gauge_view::move_needle(double position) {
    const double angle = needle_angle();
    const QRect area = needle_area();
    shown_.Position = position;
    if (needle_angle() == angle) return;
    dial_.drop();
    update_part(*this, area | needle_area());
}

void angular_gauge_view::drop_faces() {
    face_.drop();
    dial_.drop();
}

QString angular_gauge_view::spoken_text() const {
    const QString text = QString::fromStdString(tick_text(shown_.Position, shown_.Position));
    return shown_.Label1Text.empty() ? text : text + ' ' + label_1_text();
}

std::optional<spoken_control::scale> angular_gauge_view::spoken_scale() const {
    return scale{shown_.PositionMin, shown_.Position, shown_.PositionMax};
}

void angular_gauge_view::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange || event->type() == QEvent::FontChange) drop_faces();
    QWidget::changeEvent(event);
}

double angular_gauge_view::radius() const {
    return std::min(width(), height()) / 2.0;
}

double angular_gauge_view::angle_of(double share) const {
    return arc_angle(share, shown_.ArcStartDegrees, shown_.ArcRangeDegrees);
}

QRect angular_gauge_view::digit_area() const {
    const double r = radius();
    const QPointF middle = QRectF(rect()).center();
    return QRectF(middle.x() - 0.45 * r, middle.y() + 0.595 * r, 0.90 * r, 0.325 * r).toRect();
}

void angular_gauge_view::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // Needle and face are one picture: a fine line that is cut would look different at its end.
    const auto paint = [this](QPainter& onto) {
        face_.show(onto, *this, [this](QPainter& onto_face) { paint_face(onto_face); });
        paint_needle(onto);
    };
    paint_parts(painter, *event, [&](const QRect& /*part*/) { dial_.show(painter, *this, paint); });
}

void angular_gauge_view::paint_face(QPainter& painter) const {
    const double r = radius();
    painter.save();
    painter.translate(QRectF(rect()).center());
    painter.setPen(Qt::NoPen);

    QLinearGradient rim(0, -r, 0, r);
    rim.setColorAt(0, shaded_ground(QColor(ink::rim_light), *this));
    rim.setColorAt(1, shaded_ground(QColor(ink::rim_dark), *this));
    painter.setBrush(rim);
    painter.drawEllipse(QPointF(), r, r);

    const double dial = std::max(r - std::max(1.5, 0.025 * r), 0.0);
    QLinearGradient glaze(0, -r, 0, r);
    glaze.setColorAt(0, shaded_ground(QColor(ink::dial_light), *this));
    glaze.setColorAt(1, shaded_ground(QColor(ink::dial_dark), *this));
    painter.setBrush(glaze);
    painter.drawEllipse(QPointF(), dial, dial);

    const std::vector<tick_mark> ticks = tick_marks(limits(), shown_.TickMajorCount, shown_.TickMinorCount);
    paint_sections(painter);
    paint_ticks(painter, ticks);
    paint_tick_labels(painter, ticks);
    paint_caption(painter);
    painter.restore();
}

void angular_gauge_view::paint_sections(QPainter& painter) const {
    const double r = radius();
    painter.setPen(Qt::NoPen);
    for (const section_range& section : section_ranges(limits(), shown_.SectionEnd, shown_.SectionCount)) {
        const colour painted = shown_.SectionColor[static_cast<std::size_t>(section.colour_index)];
        painter.setBrush(shaded(qt_colour(painted), *this));
        painter.drawPath(
            ring_part(angle_of(section.from), angle_of(section.to), band_outer * r, band_inner * r));
    }
}

void angular_gauge_view::paint_ticks(QPainter& painter, const std::vector<tick_mark>& ticks) const {
    const double r = radius();
    const QPen major(shaded(QColor(ink::dial_print), *this), std::max(1.0, 0.02 * r), Qt::SolidLine,
                     Qt::FlatCap);
    const QPen minor(shaded(QColor(ink::dial_fine_print), *this), std::max(0.8, 0.012 * r), Qt::SolidLine,
                     Qt::FlatCap);
    for (const tick_mark& tick : ticks) {
        const double angle = angle_of(tick.share);
        painter.setPen(tick.major ? major : minor);
        painter.drawLine(on_circle(angle, band_inner * r),
                         on_circle(angle, (tick.major ? major_tick_inner : minor_tick_inner) * r));
    }
}

void angular_gauge_view::paint_tick_labels(QPainter& painter, const std::vector<tick_mark>& ticks) const {
    const double r = radius();
    const double distance = limits().greatest / std::max(shown_.TickMajorCount - 1, 1) -
                            limits().least / std::max(shown_.TickMajorCount - 1, 1);
    if (label_height * r < 0.75 * least_label_pixels) return;
    const int wanted = std::max(static_cast<int>(std::lround(label_height * r)), least_label_pixels);
    const int least = std::max(static_cast<int>(most_label_shrink * wanted), least_label_pixels);

    // The largest print at which every label can stand, else the largest print with the labels it allows.
    std::vector<scale_label> chosen;
    i32 chosen_step = 0;
    QFont chosen_font;
    for (int pixels = wanted; pixels >= least; --pixels) {
        const QFont font = print_font(*this, pixels);
        const QFontMetricsF metrics(font);
        std::vector<scale_label> labels;
        std::vector<label_box> boxes;
        for (const tick_mark& tick : ticks) {
            if (!tick.major) continue;
            const QString text = QString::fromStdString(tick_text(tick.value, distance));
            const box_size size{metrics.horizontalAdvance(text) + 0.12 * pixels, metrics.capHeight() + 1};
            boxes.push_back(arc_label(angle_of(tick.share), label_outer * r, size));
            labels.push_back({text, boxes.back()});
        }
        const i32 step = label_step(boxes);
        if (step == 0 || (chosen_step != 0 && step != 1)) continue;
        chosen = std::move(labels);
        chosen_step = step;
        chosen_font = font;
        if (step == 1) break;
    }
    if (chosen_step == 0) return;

    painter.setFont(chosen_font);
    painter.setPen(shaded(QColor(ink::dial_print), *this));
    const double cap_height = QFontMetricsF(chosen_font).capHeight();
    for (std::size_t index = 0; index < chosen.size(); index += static_cast<std::size_t>(chosen_step)) {
        const scale_label& label = chosen[index];
        const double wide = QFontMetricsF(chosen_font).horizontalAdvance(label.text);
        painter.drawText(QPointF(label.box.x - wide / 2, label.box.y + cap_height / 2), label.text);
    }
}

void angular_gauge_view::paint_caption(QPainter& painter) const {
    const double r = radius();
    const double pixels = caption_height * r;
    if (pixels < least_label_pixels * 0.9) return;
    QString text = label_1_text();
    if (shown_.Label2Text != shown_.Label1Text && !shown_.Label2Text.empty()) text += ' ' + label_2_text();
    const QFont font = fitted_font(*this, text, {0.72 * r, r}, std::max<double>(pixels, least_label_pixels));
    const QFontMetricsF metrics(font);
    painter.setFont(font);
    painter.setPen(shaded(QColor(ink::dial_fine_print), *this));
    painter.drawText(
        QPointF(-metrics.horizontalAdvance(text) / 2, caption_place * r + metrics.capHeight() / 2), text);
}

double angular_gauge_view::needle_angle() const {
    return angle_of(scale_share(shown_.Position, limits()));
}

double angular_gauge_view::needle_rim() const {
    return std::max(0.5, 0.008 * radius());
}

double angular_gauge_view::hub_rim() const {
    return std::max(0.75, 0.015 * radius());
}

/// Along the axis to the right.
QPolygonF angular_gauge_view::needle() const {
    const double r = radius();
    const double half = std::max(needle_width * r, 2.5) / 2;
    const double tip = std::max(0.014 * r, 0.6);
    return {{{-needle_tail * r, -half},
             {needle_length * r, -tip},
             {needle_length * r, tip},
             {-needle_tail * r, half}}};
}

/// All pixels that needle and hub touch.
QRect angular_gauge_view::needle_area() const {
    const QPointF middle = QRectF(rect()).center();
    const double hub = hub_radius * radius() + hub_rim() / 2;
    const double rim = needle_rim(); // half of it, and more at the corners
    const QRectF moved = QTransform().rotate(-needle_angle()).map(needle()).boundingRect();
    const QRectF area = moved.adjusted(-rim, -rim, rim, rim) | QRectF(-hub, -hub, 2 * hub, 2 * hub);
    return touched(area.translated(middle));
}

void angular_gauge_view::paint_needle(QPainter& painter) const {
    const double r = radius();
    painter.save();
    painter.translate(QRectF(rect()).center());
    painter.rotate(-needle_angle());
    painter.setPen(QPen(shaded(QColor(ink::hub), *this), needle_rim()));
    painter.setBrush(shaded(QColor(ink::needle), *this));
    painter.drawPolygon(needle());
    painter.setPen(QPen(shaded(QColor(ink::dial_fine_print), *this), hub_rim()));
    painter.setBrush(shaded(QColor(ink::hub), *this));
    painter.drawEllipse(QPointF(), hub_radius * r, hub_radius * r);
    painter.restore();
}

} // namespace tyxo

#include "moc_angular_gauge_view.cpp"
