#include "widgets/seven_segment_view.h"

#include <QEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>

namespace tyxo {

namespace {

using digit_form = seven_segment_view::digit_form;

constexpr double digits_margin_of_height = 0.10;
constexpr double digit_of_pitch = 0.71;  ///< the rest of a place is for the point
constexpr double narrowest_pitch = 0.55; ///< of the digit's height; below that the digits get smaller
constexpr double thickness_of_height = 0.14;
constexpr double unlit_of_thickness = 0.6;
constexpr double least_pointed_pixels = 5;  ///< device pixels
constexpr double joint_of_thickness = 0.09; ///< what a segment's end keeps away from its corner

/// A segment between two corners of a digit, square at both ends, the corners included.
QPolygonF plain_bar(QPointF from, QPointF to, double thickness) {
    const double half = thickness / 2;
    const bool level = from.y() == to.y();
    const QPointF along = level ? QPointF(half, 0) : QPointF(0, half);
    const QPointF across = level ? QPointF(0, half) : QPointF(-half, 0);
    return {{from - along - across, to + along - across, to + along + across, from - along + across}};
}

/// The same, pointed at both ends.
QPolygonF pointed_bar(QPointF from, QPointF to, double thickness) {
    const double half = thickness / 2;
    const double joint = joint_of_thickness * thickness;
    if (from.y() == to.y()) {
        const double left = from.x() + joint;
        const double right = to.x() - joint;
        return {{{left, from.y()},
                 {left + half, from.y() - half},
                 {right - half, from.y() - half},
                 {right, from.y()},
                 {right - half, from.y() + half},
                 {left + half, from.y() + half}}};
    }
    const double top = from.y() + joint;
    const double bottom = to.y() - joint;
    return {{{from.x(), top},
             {from.x() + half, top + half},
             {from.x() + half, bottom - half},
             {from.x(), bottom},
             {from.x() - half, bottom - half},
             {from.x() - half, top + half}}};
}

/// An unlit segment is thinner, so that shape tells what is lit where the two colours are alike. Slanted
/// edges would blur what is a few pixels thick.
QPolygonF bar_between(QPointF from, QPointF to, const digit_form& form, bool lit) {
    const double thickness = lit ? form.thickness : unlit_of_thickness * form.thickness;
    const bool pointed = form.thickness * form.ratio >= least_pointed_pixels;
    return pointed ? pointed_bar(from, to, thickness) : plain_bar(from, to, thickness);
}

void add_digit(QPainterPath& lit, QPainterPath& unlit, const digit_form& form, char symbol) {
    const double half = form.thickness / 2;
    const double left = half;
    const double right = form.size.width() - half;
    const double top = half;
    const double bottom = form.size.height() - half;
    const double middle = form.middle;
    struct segment_place {
        u8 bit;
        QPointF from;
        QPointF to;
    };
    const std::array<segment_place, 7> places{{
        {segment::top, {left, top}, {right, top}},
        {segment::upper_right, {right, top}, {right, middle}},
        {segment::lower_right, {right, middle}, {right, bottom}},
        {segment::bottom, {left, bottom}, {right, bottom}},
        {segment::lower_left, {left, middle}, {left, bottom}},
        {segment::upper_left, {left, top}, {left, middle}},
        {segment::middle, {left, middle}, {right, middle}},
    }};
    const u8 bits = segment_bits(symbol);
    for (const segment_place& place : places) {
        const bool is_lit = (bits & place.bit) != 0;
        (is_lit ? lit : unlit).addPolygon(bar_between(place.from, place.to, form, is_lit));
    }
    if ((bits & segment::upright_of_plus) != 0) {
        const double across = left + (right - left) / 2;
        const double reach = (bottom - top) * 0.36;
        lit.addPolygon(bar_between({across, middle - reach}, {across, middle + reach}, form, true));
    }
}

} // namespace

seven_segment_view::seven_segment_view(QWidget* parent) : QWidget(parent) {
    setAccessibleName(tr("Digits"));
    write();
}

void seven_segment_view::show_control(const iSevenSegmentAnalogX& control) {
    if (control == shown_) return;
    iSevenSegmentAnalogX only_value = control;
    only_value.Value = shown_.Value;
    const bool same_look = only_value == shown_;
    if (!same_look) digits_.clear();
    shown_ = control;
    const std::string before = text_;
    write();
    if (!same_look || text_ != before) update_part(*this, rect());
}

void seven_segment_view::write() {
    text_ = signed_display_text(shown_.Value, shown_.Precision, shown_.ShowSign);
}

void seven_segment_view::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange) {
        glass_.drop();
        digits_.clear();
    }
    QWidget::changeEvent(event);
}

void seven_segment_view::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paint_parts(painter, *event, [&](const QRect& /*part*/) { paint_display(painter); });
}

void seven_segment_view::paint_display(QPainter& painter) {
    glass_.show(painter, *this, [this](QPainter& onto) { paint_glass(onto, *this); });
    const QRectF glass = glass_inside(*this);
    const double ratio = devicePixelRatioF();
    const double margin =
        snapped(std::min(digits_margin_of_height * glass.height(), glass.width() / 6), ratio);
    const QRectF room = glass.adjusted(margin, margin, -margin, -margin);
    if (room.width() <= 0 || room.height() <= 0) return;

    const std::vector<digit_place> places = digit_places(text_, shown_.DigitCount);
    const auto count = static_cast<i32>(places.size());
    const double pitch = digit_pitch(count, room.width(), room.height());
    const double height = snapped(std::min(room.height(), pitch / narrowest_pitch), ratio);
    const double width = snapped(digit_of_pitch * pitch, ratio);
    const double top = snapped(room.center().y() - height / 2, ratio);
    const double thickness = std::max(snapped(thickness_of_height * height, ratio), 1 / ratio);
    const double middle = snapped(top + (height - thickness) / 2, ratio) + thickness / 2 - top;
    show_form({{width, height}, middle, thickness, ratio});

    const bool all_dark = shown_.SegmentColor == shown_.SegmentOffColor;
    for (i32 index = 0; index < count; ++index) {
        const digit_place& place = places[static_cast<std::size_t>(index)];
        const double left = snapped(room.right() - (count - index) * pitch, ratio);
        painter.drawPixmap(QPointF(left, top), digit(all_dark ? ' ' : place.symbol));
        if (place.point && !all_dark) {
            const double gap = pitch - width;
            const double side = std::max(snapped(std::min(thickness, 0.65 * gap), ratio), 1 / ratio);
            const QPointF corner(snapped(left + width + (gap - side) / 2, ratio), top + height - side);
            painter.fillRect({corner, QSizeF(side, side)}, shaded(qt_colour(shown_.SegmentColor), *this));
        }
    }
}

/// From now on digits have this form.
void seven_segment_view::show_form(const digit_form& form) {
    if (form == form_) return;
    form_ = form;
    digits_.clear();
}

/// The picture of a digit, with the glass behind it.
const QPixmap& seven_segment_view::digit(char symbol) {
    QPixmap& picture = digits_[symbol];
    if (!picture.isNull()) return picture;
    const QColor ground = shaded_ground(QColor(ink::glass), *this);
    picture = QPixmap((form_.size * form_.ratio).toSize().expandedTo({1, 1}));
    picture.setDevicePixelRatio(form_.ratio);
    picture.fill(ground);
    QPainterPath lit;
    QPainterPath unlit;
    lit.setFillRule(Qt::WindingFill);
    unlit.setFillRule(Qt::WindingFill);
    add_digit(lit, unlit, form_, symbol);
    QColor off = shaded_ground(qt_colour(shown_.SegmentOffColor), *this);
    if (!isEnabled()) off = mixed(off, ground, 0.5);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(unlit, off);
    painter.fillPath(lit, shaded(qt_colour(shown_.SegmentColor), *this));
    return picture;
}

} // namespace tyxo

#include "moc_seven_segment_view.cpp"
