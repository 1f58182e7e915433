#include "widgets/analog_display_view.h"

#include "controls/gauge_geometry.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace tyxo {

namespace {

constexpr double font_of_height = 0.82;
constexpr double margin_of_height = 0.18;

} // namespace

analog_display_view::analog_display_view(QWidget* parent) : QWidget(parent) {
    setAccessibleName(tr("Number"));
    line_.setCacheEnabled(true); // keeps the places of the letters
    write();
}

void analog_display_view::show_control(const iAnalogDisplayX& control) {
    if (control == shown_) return;
    const bool recoloured = control.ForeColor != shown_.ForeColor;
    const QString before = text_;
    shown_ = control;
    write();
    if (text_ != before) line_.setText({});
    if (recoloured || text_ != before) update_part(*this, rect());
}

void analog_display_view::write() {
    text_ = QString::fromStdString(display_text(shown_.Value, shown_.Precision));
    if (!shown_.UnitsText.empty()) text_ += ' ' + units_text();
}

void analog_display_view::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange) glass_.drop();
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LayoutDirectionChange)
        line_.setText({});
    QWidget::changeEvent(event);
}

void analog_display_view::resizeEvent(QResizeEvent* event) {
    line_.setText({});
    QWidget::resizeEvent(event);
}

/// Lays out the text in letters of a size. Returns what the line takes.
QSizeF analog_display_view::set_line(double pixels) {
    QFont font = print_font(*this, pixels, true);
    font.setStyleStrategy(QFont::PreferNoShaping); // digits need none
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(layoutDirection());
    line_.setText(text_);
    line_.setFont(font);
    line_.setTextOption(option);
    line_.beginLayout();
    QTextLine line = line_.createLine();
    line.setLineWidth(QWIDGETSIZE_MAX);
    line_.endLayout();
    return {line.horizontalAdvance(), QFontMetricsF(font).capHeight()};
}

/// The same, in letters that fit into the room, as `fitted_font` chooses them.
void analog_display_view::fit_line(const QRectF& room, double pixels) {
    const QSizeF size = set_line(pixels);
    const double share = std::min({1.0, room.width() / size.width(), room.height() / size.height()});
    if (share < 1) set_line(std::floor(pixels * share));
}

void analog_display_view::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paint_parts(painter, *event, [&](const QRect& part) { paint_display(painter, part); });
}

void analog_display_view::paint_display(QPainter& painter, const QRect& part) {
    glass_.show(painter, *this, [this](QPainter& onto) { paint_glass(onto, *this); });
    const QRectF glass = glass_inside(*this);
    const double margin = std::min(margin_of_height * glass.height(), glass.width() / 4);
    const QRectF room = glass.adjusted(margin, 1, -margin, -1);
    if (room.width() <= 1 || room.height() <= 1) return;

    if (line_.text().isEmpty()) fit_line(room, font_of_height * glass.height());
    const QTextLine line = line_.lineAt(0);
    const double cap_height = QFontMetricsF(line_.font()).capHeight();
    const double baseline = snapped(room.center().y() + cap_height / 2, devicePixelRatioF());
    painter.setPen(shaded(qt_colour(shown_.ForeColor), *this));
    painter.setClipRect(part & room.toAlignedRect()); // at a few pixels, where no font is small enough
    line.draw(&painter, {room.right() - line.horizontalAdvance(), baseline - line.ascent()});
}

} // namespace tyxo

#include "moc_analog_display_view.cpp"
