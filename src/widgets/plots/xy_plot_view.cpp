#include "widgets/plots/xy_plot_view.h"

#include "controls/xy_plot_geometry.h"
#include "widgets/show.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>

namespace tyxo {

namespace {

/// The ground of charts and of the Detailed Display too: the only one on which pure blue, red and white all
/// stand out.
constexpr QRgb scope_ground = 0xFFC0C0C0;
constexpr QRgb scope_cross = 0xFFA4A7AA;

constexpr double frame = 2;
constexpr double pen_share = 0.0125; ///< of the side
constexpr double thinnest_curve = 1.25;
constexpr double thickest_curve = 3;

/// Shorter steps than this, in pixels, are not seen.
constexpr double least_step = 0.5;

/// The reference circle: it never changes and is part of the face.
std::span<const plot_curve> reference(const iXYPlotX& control) {
    return std::span(control.curves).first(std::min<std::size_t>(control.curves.size(), 1));
}

bool far_apart(const QPointF& one, const QPointF& other) {
    return std::abs(one.x() - other.x()) + std::abs(one.y() - other.y()) >= least_step;
}

} // namespace

xy_plot_view::xy_plot_view(QWidget* parent) : clickable(parent) {
    setAccessibleName(tr("Polar scope"));
    setToolTip(tr("Thermosignal red, angular acceleration blue.\nA click opens the Detailed Display."));
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
}

void xy_plot_view::show_control(const iXYPlotX& control) {
    if (control == shown_) return;
    const bool same_axes = control.XAxis == shown_.XAxis && control.YAxis == shown_.YAxis;
    const auto differs = std::ranges::mismatch(control.curves, shown_.curves).in1;
    const auto first = static_cast<std::size_t>(differs - control.curves.begin());
    shown_ = control;
    pictures_.resize(std::max<std::size_t>(shown_.curves.size(), 1));
    drop_pictures(same_axes ? first : 0);
    for (std::size_t index = first; index < shown_.curves.size(); ++index)
        describe(index);
    if (isVisibleTo(parentWidget()) != control.Visible) setVisible(control.Visible);
    update();
}

void xy_plot_view::drop_pictures(std::size_t first) {
    for (std::size_t index = first; index < pictures_.size(); ++index)
        pictures_[index].drop();
}

void xy_plot_view::describe(std::size_t index) {
    const plot_curve& curve = shown_.curves[index];
    const auto tell = [&](const char* array, const QVariant& value) {
        setProperty(element(array, static_cast<int>(index)).toLatin1(), value);
    };
    tell("CurveTitle", qt_text(curve.Title));
    tell("CurveVisible", curve.Visible);
    tell("CurveColor", curve.Color);
    tell("CurvePoints", static_cast<int>(curve.points.size()));
}

QString xy_plot_view::spoken_text() const {
    // The curves bear no titles. The first one is the circle that the others are seen against.
    const std::array names{QString(), tr("Thermosignal"), tr("Angular acceleration")};
    const auto radius = [](const plot_point& point) { return std::hypot(point.x, point.y); };
    QStringList words;
    for (std::size_t index = 1; index < std::min(names.size(), shown_.curves.size()); ++index) {
        const plot_curve& curve = shown_.curves[index];
        const std::vector<plot_point>& circle = shown_.curves.front().points;
        if (!curve.Visible || curve.points.empty() || circle.empty()) continue;
        const auto percent = [&radius, unit = radius(circle.front()) / 100](const plot_point& point) {
            return QString::number(radius(point) / unit, 'f', 0);
        };
        const auto [least, greatest] = std::ranges::minmax(curve.points, {}, radius);
        words.push_back(
            tr("%1: %2 to %3 % of the circle").arg(names[index], percent(least), percent(greatest)));
    }
    return words.isEmpty() ? tr("no curve yet") : words.join(", ");
}

QRectF xy_plot_view::square() const {
    const double side = std::min(width(), height());
    return {std::floor((width() - side) / 2), std::floor((height() - side) / 2), side, side};
}

QRectF xy_plot_view::area() const {
    return square().adjusted(frame, frame, -frame, -frame);
}

QPointF xy_plot_view::on_screen(const plot_point& point) const {
    const QRectF place = area();
    return {place.left() + (point.x - shown_.XAxis.Min) / shown_.XAxis.Span * place.width(),
            place.bottom() - (point.y - shown_.YAxis.Min) / shown_.YAxis.Span * place.height()};
}

void xy_plot_view::paintEvent(QPaintEvent* /*event*/) {
    if (area().width() < 1) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    show_curves(painter, pictures_.size() - 1);
    if (hasFocus()) paint_focus_rim(painter, square());
}

/// The face with the curves up to the last one.
void xy_plot_view::show_curves(QPainter& painter, std::size_t last) {
    pictures_[last].show(painter, *this, [&](QPainter& onto) {
        if (last == 0) {
            paint_face(onto);
        } else {
            show_curves(onto, last - 1);
            paint_curve(onto, shown_.curves[last]);
        }
    });
}

void xy_plot_view::paint_face(QPainter& painter) const {
    const QRectF outside = square();
    QLinearGradient rim(outside.topLeft(), outside.bottomLeft());
    rim.setColorAt(0, shaded_ground(QColor(ink::rim_dark), *this));
    rim.setColorAt(1, shaded_ground(QColor(ink::glass_edge), *this));
    painter.setPen(Qt::NoPen);
    painter.setBrush(rim);
    painter.drawRoundedRect(outside, 2 * frame, 2 * frame);
    painter.fillRect(area(), shaded_ground(QColor(scope_ground), *this));

    // The cross of the axes, where 0 of both is.
    const double ratio = devicePixelRatioF();
    const QPointF centre = on_screen({});
    const double x = snapped(centre.x(), ratio);
    const double y = snapped(centre.y(), ratio);
    if (std::isfinite(x) && std::isfinite(y) && area().contains(QPointF(x, y))) {
        const QColor cross = shaded(QColor(scope_cross), *this);
        painter.fillRect(QRectF(x, area().top(), 1, area().height()), cross);
        painter.fillRect(QRectF(area().left(), y, area().width(), 1), cross);
    }
    for (const plot_curve& circle : reference(shown_))
        paint_curve(painter, circle);
}

void xy_plot_view::paint_curve(QPainter& painter, const plot_curve& curve) const {
    if (!curve.Visible) return;
    painter.save();
    painter.setClipRect(area());
    // Single short lines with square ends paint several times faster than one joined line.
    const double pen = std::clamp(pen_share * square().width(), thinnest_curve, thickest_curve);
    painter.setPen(QPen(shaded(qt_colour(curve.Color), *this), pen, Qt::SolidLine, Qt::SquareCap));
    QList<QLineF> lines;
    lines.reserve(static_cast<qsizetype>(curve.points.size()));
    QPointF begin; // where the next line begins, if it goes on from `end_of_last`
    std::optional<plot_point> end_of_last;
    for (std::size_t index = 1; index < curve.points.size(); ++index) {
        const auto line =
            visible_part({curve.points[index - 1], curve.points[index]}, shown_.XAxis, shown_.YAxis);
        if (!line) continue;
        if (line->from != end_of_last) begin = on_screen(line->from);
        end_of_last = line->to;
        const QPointF end = on_screen(line->to);
        if (!far_apart(begin, end) && index + 1 < curve.points.size()) continue;
        lines.append({begin, end});
        begin = end;
    }
    painter.drawLines(lines);
    painter.restore();
}

void xy_plot_view::focusInEvent(QFocusEvent* event) {
    renew_description(*this);
    QWidget::focusInEvent(event);
}

void xy_plot_view::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange) drop_pictures();
    QWidget::changeEvent(event);
}

void xy_plot_view::mouseDoubleClickEvent(QMouseEvent* event) {
    event->accept(); // its first half was the click
}

} // namespace tyxo

#include "moc_xy_plot_view.cpp"
