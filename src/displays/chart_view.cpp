#include "displays/chart_view.h"

#include "displays/show_view.h"

#include <QPainter>

namespace tyxo {

namespace {

constexpr int title_height = 24;
constexpr int scale_width = 40;
constexpr int margin = 14;

} // namespace

void chart_view::show_control(const iStripChartX& control) {
    if (control == shown_) return;
    shown_ = control;
    setAccessibleName(title());
    update();
}

QString chart_view::title() const {
    return qt_text(shown_.Title);
}

void chart_view::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), qt_colour(shown_.BackGroundColor));
    painter.setPen(qt_colour(shown_.AxisGridColor));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));

    painter.setPen(qt_colour(shown_.TitleFontColor));
    painter.drawText(QRect(0, 0, width(), title_height), Qt::AlignCenter, title());

    const QRect area = rect().adjusted(scale_width, title_height, -margin, -margin);
    painter.fillRect(area, qt_colour(shown_.GridBackGroundColor));
    const QPen grid(qt_colour(shown_.AxisGridColor), 0, Qt::DotLine);
    for (int tick = 0; tick < shown_.XAxisTickMajorCount; ++tick) {
        const int x = area.left() + tick * area.width() / (shown_.XAxisTickMajorCount - 1);
        painter.setPen(grid);
        painter.drawLine(x, area.top(), x, area.bottom());
    }
    for (int tick = 0; tick < shown_.YAxisTickMajorCount; ++tick) {
        const double part = static_cast<double>(tick) / (shown_.YAxisTickMajorCount - 1);
        const int y = area.bottom() - static_cast<int>(part * area.height());
        painter.setPen(grid);
        painter.drawLine(area.left(), y, area.right(), y);
        painter.setPen(qt_colour(shown_.YAxisLabelFontColor));
        const double value = shown_.YAxisMin + part * (shown_.YAxisMax - shown_.YAxisMin);
        painter.drawText(QRect(0, y - 8, scale_width - 6, 16), Qt::AlignRight | Qt::AlignVCenter,
                         QString::number(value, 'f', 0));
    }
}

} // namespace tyxo
