#include "widgets/paint_view.h"

#include <QFontMetricsF>
#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace tyxo {

namespace {

constexpr QRgb muted = 0xFF94989C;

QSize device_size(const QWidget& widget) {
    const double ratio = widget.devicePixelRatioF();
    return {static_cast<int>(std::ceil(widget.width() * ratio)),
            static_cast<int>(std::ceil(widget.height() * ratio))};
}

} // namespace

QColor mixed(const QColor& from, const QColor& to, double share) {
    const auto mix = [share](int one, int other) {
        return static_cast<int>(std::lround(one + share * (other - one)));
    };
    return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue()),
            mix(from.alpha(), to.alpha())};
}

QColor shaded(const QColor& color, const QWidget& widget) {
    return widget.isEnabled() ? color : mixed(color, QColor(muted), 0.5);
}

QColor shaded_ground(const QColor& color, const QWidget& widget) {
    return widget.isEnabled() ? color : mixed(color, QColor(muted), 0.25);
}

bool paints_lines(const QPainter& painter) {
    const QPaintEngine::Type type = painter.paintEngine()->type();
    return type == QPaintEngine::SVG || type == QPaintEngine::Pdf;
}

void paint_focus_rim(QPainter& painter, const QRectF& place) {
    constexpr double half_pen = 1;
    painter.setPen(QPen(QColor(ink::focus), 2 * half_pen, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(place.adjusted(half_pen, half_pen, -half_pen, -half_pen));
}

double snapped(double length, double device_pixel_ratio) {
    return std::round(length * device_pixel_ratio) / device_pixel_ratio;
}

QRect touched(const QRectF& area) {
    return area.toAlignedRect().adjusted(-1, -1, 1, 1);
}

QFont print_font(const QWidget& widget, double pixels, bool bold) {
    QFont font = widget.font();
    font.setPixelSize(std::max(static_cast<int>(std::lround(pixels)), 1));
    font.setStretch(QFont::SemiCondensed);
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferVerticalHinting);
    return font;
}

QFont fitted_font(const QWidget& widget, const QString& text, const QSizeF& box, double pixels, bool bold) {
    QFont font = print_font(widget, pixels, bold);
    const QFontMetricsF metrics(font);
    const double wide = metrics.horizontalAdvance(text);
    const double high = metrics.capHeight();
    double share = 1;
    if (wide > box.width()) share = std::min(share, box.width() / wide);
    if (high > box.height()) share = std::min(share, box.height() / high);
    return share < 1 ? print_font(widget, std::floor(pixels * share), bold) : font;
}

QRectF glass_inside(const QWidget& widget) {
    return QRectF(widget.rect()).adjusted(1, 1, -1, -1);
}

void paint_glass(QPainter& painter, const QWidget& widget) {
    const double side = std::min(widget.width(), widget.height());
    const double corner = std::clamp(side * 0.12, 1.0, 6.0);
    const QRectF area(widget.rect());
    QLinearGradient rim(area.topLeft(), area.bottomLeft());
    rim.setColorAt(0, shaded_ground(QColor(ink::rim_dark), widget));
    rim.setColorAt(1, shaded_ground(QColor(ink::glass_edge), widget));
    painter.setPen(Qt::NoPen);
    painter.setBrush(rim);
    painter.drawRoundedRect(area, corner, corner);
    painter.setBrush(shaded_ground(QColor(ink::glass), widget));
    painter.drawRoundedRect(glass_inside(widget), corner - 0.5, corner - 0.5);
}

void update_part(QWidget& widget, const QRect& part) {
    if (!widget.isVisible()) return;
    if (widget.isWindow()) {
        widget.update(part);
    } else {
        widget.parentWidget()->update((part & widget.rect()).translated(widget.pos()));
    }
}

bool face_cache::cacheable(const QWidget& widget) {
    return !widget.size().isEmpty() && widget.width() <= most_pixels / widget.height();
}

bool face_cache::stale(const QWidget& widget) const {
    return picture_.size() != device_size(widget) ||
           !qFuzzyCompare(picture_.devicePixelRatio(), widget.devicePixelRatioF());
}

QPixmap face_cache::blank_picture(const QWidget& widget, const QColor& ground) {
    QPixmap picture(device_size(widget));
    picture.setDevicePixelRatio(widget.devicePixelRatioF());
    picture.fill(ground);
    return picture;
}

} // namespace tyxo
