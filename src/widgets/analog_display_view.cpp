#include "widgets/analog_display_view.h"

#include "controls/gauge_geometry.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace tyxo {

namespace {

constexpr double font_of_height = 0.82;
constexpr double margin_of_height = 0.18;

} // namespace

analog_display_view::analog_display_view(QWidget* parent) : QWidget(parent) {
    setAccessibleName(tr("Number"));
    write();
}

void analog_display_view::show_control(const iAnalogDisplayX& control) {
    if (control == shown_) return;
    shown_ = control;
    write();
    update();
}

void analog_display_view::write() {
    text_ = QString::fromStdString(display_text(shown_.Value, shown_.Precision));
    if (!shown_.UnitsText.empty()) text_ += ' ' + units_text();
}

void analog_display_view::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF glass = paint_glass(painter, *this);
    const double margin = std::min(margin_of_height * glass.height(), glass.width() / 4);
    const QRectF room = glass.adjusted(margin, 1, -margin, -1);
    if (room.width() <= 1 || room.height() <= 1) return;

    const QFont font = fitted_font(*this, text_, room.size(), font_of_height * glass.height(), true);
    const QFontMetricsF metrics(font);
    const double baseline = snapped(room.center().y() + metrics.capHeight() / 2, devicePixelRatioF());
    painter.setFont(font);
    painter.setPen(shaded(qt_colour(shown_.ForeColor), *this));
    painter.setClipRect(room); // at a few pixels, where no font is small enough
    painter.drawText(QPointF(room.right() - metrics.horizontalAdvance(text_), baseline), text_);
}

} // namespace tyxo

#include "moc_analog_display_view.cpp"
