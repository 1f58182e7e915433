#include "view/time_cursor_view.h"

#include "platform/desktop/text.h"
#include "view/time_texts.h"
#include "widgets/paint_view.h"

#include <QApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace tyxo::view {

namespace {

constexpr int mark_width = 9; // pixels
constexpr int mark_height = 7;
constexpr double wheel_step = 120; // of a usual wheel
constexpr double zoom_of_step = 1.25;
constexpr QRgb alarm_mark = 0xFFE00000;
constexpr QRgb quiet_mark = 0xFF505050;
constexpr QRgb cursor_line = 0xFF000000;

} // namespace

time_cursor_view::time_cursor_view(std::function<QRect()> field, QWidget* parent)
    : QWidget(parent), field_(std::move(field)) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
}

void time_cursor_view::show_time(const time_range& range, std::int64_t cursor,
                                 std::span<const xlg::log_mark> marks) {
    range_ = range;
    cursor_ = cursor;
    marks_ = marks;
    update();
}

std::int64_t time_cursor_view::time_at(double x) const {
    const QRect field = field_();
    const double share = std::clamp((x - field.left()) / std::max(field.width(), 1), 0.0, 1.0);
    return range_.from + std::llround(share * static_cast<double>(range_.span()));
}

double time_cursor_view::place_of(std::int64_t ms) const {
    const QRect field = field_();
    return field.left() + field.width() * static_cast<double>(ms - range_.from) /
                              static_cast<double>(std::max<std::int64_t>(range_.span(), 1));
}

std::span<const xlg::log_mark> time_cursor_view::marks_in_sight() const {
    const auto first = std::ranges::lower_bound(marks_, range_.from / 1000, {}, &xlg::log_mark::time);
    const auto last = std::ranges::upper_bound(marks_, range_.to / 1000, {}, &xlg::log_mark::time);
    return {first, last};
}

void time_cursor_view::paintEvent(QPaintEvent* /*event*/) {
    const QRect field = field_();
    QPainter painter(this);
    paint_marks(painter, field);
    if (cursor_ >= range_.from && cursor_ <= range_.to) {
        const int x = static_cast<int>(std::lround(place_of(cursor_)));
        painter.setPen(QPen(QColor(cursor_line), 1, Qt::DashLine));
        painter.drawLine(x, field.top(), x, field.bottom());
    }
    if (hasFocus()) paint_focus_rim(painter, rect());
}

/// A triangle that hangs from the upper edge, in the pixels of this widget.
QPixmap time_cursor_view::mark_picture(QRgb colour) const {
    const double ratio = devicePixelRatioF();
    QPixmap picture(QSize(mark_width + 1, mark_height + 1) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::white, 1));
    painter.setBrush(QColor(colour));
    const QPointF tip((mark_width + 1) / 2.0, mark_height);
    painter.drawPolygon(QPolygonF{
        {tip, tip - QPointF(mark_width / 2.0, mark_height), tip - QPointF(-mark_width / 2.0, mark_height)}});
    return picture;
}

/// Alarms stand above all others; what would stand on the same pixels is painted once.
void time_cursor_view::paint_marks(QPainter& painter, const QRect& field) const {
    for (const bool alarms : {false, true}) {
        const QPixmap picture = mark_picture(alarms ? alarm_mark : quiet_mark);
        int last = field.left() - mark_width;
        for (const xlg::log_mark& mark : marks_in_sight()) {
            if (mark.alarm != alarms) continue;
            const int x = static_cast<int>(std::lround(place_of(mark.time * 1000)));
            if (x - last < 2) continue;
            last = x;
            painter.drawPixmap(QPointF(x - mark_width / 2.0, field.top()), picture);
        }
    }
}

void time_cursor_view::mousePressEvent(QMouseEvent* event) {
    emit chosen();
    if (event->button() != Qt::LeftButton) return;
    pressed_at_ = event->position().x();
    dragging_ = false;
}

void time_cursor_view::mouseMoveEvent(QMouseEvent* event) {
    const double x = event->position().x();
    if ((event->buttons() & Qt::LeftButton) == 0) {
        emit pointed(time_at(x));
        return;
    }
    if (!dragging_ && std::abs(x - pressed_at_) < QApplication::startDragDistance()) return;
    if (!dragging_) setCursor(Qt::ClosedHandCursor);
    dragging_ = true;
    const double pixels = std::max(field_().width(), 1);
    const auto by = std::llround((pressed_at_ - x) / pixels * static_cast<double>(range_.span()));
    pressed_at_ = x;
    emit dragged(by);
}

void time_cursor_view::mouseReleaseEvent(QMouseEvent* event) {
    if (dragging_) setCursor(Qt::CrossCursor);
    dragging_ = false;
    emit pointed(time_at(event->position().x()));
}

void time_cursor_view::mouseDoubleClickEvent(QMouseEvent* event) {
    constexpr double much = 4;
    emit zoomed(much, time_at(event->position().x()));
}

/// The wheel zooms, sideways or with the shift key it moves.
void time_cursor_view::wheelEvent(QWheelEvent* event) {
    const QPoint turned = event->angleDelta();
    if (turned.x() != 0) emit scrolled(-turned.x() / wheel_step / 10);
    if (turned.y() != 0 && (event->modifiers() & Qt::ShiftModifier) != 0)
        emit scrolled(-turned.y() / wheel_step / 10);
    else if (turned.y() != 0)
        emit zoomed(std::pow(zoom_of_step, turned.y() / wheel_step), time_at(event->position().x()));
    event->accept();
}

void time_cursor_view::focusInEvent(QFocusEvent* event) {
    emit chosen();
    QWidget::focusInEvent(event);
}

void time_cursor_view::focusOutEvent(QFocusEvent* event) {
    update();
    QWidget::focusOutEvent(event);
}

/// A mark's text stands in a tool tip.
bool time_cursor_view::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    QStringList texts;
    for (const xlg::log_mark& mark : marks_in_sight()) {
        if (std::abs(place_of(mark.time * 1000) - help->pos().x()) > mark_width / 2.0) continue;
        if (texts.size() == 10) {
            texts.push_back(tr("..."));
            break;
        }
        texts.push_back(clock_text(mark.time * 1000) + "  " + qt_text(mark.text));
    }
    const bool on_marks = std::abs(help->pos().y() - field_().top()) <= 2 * mark_height;
    if (texts.isEmpty() || !on_marks)
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), texts.join('\n'), this);
    return true;
}

} // namespace tyxo::view

#include "moc_time_cursor_view.cpp"
