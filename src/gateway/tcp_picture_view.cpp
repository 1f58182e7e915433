#include "gateway/tcp_picture_view.h"

#include <QPainter>

#include <algorithm>
#include <array>

namespace tyxo {

namespace {

// The picture is drawn in these units and scaled to the widget.
constexpr double design_width = 900;
constexpr double design_height = 380;

constexpr QRgb ground_top = 0xFFF6F8FA;
constexpr QRgb ground_bottom = 0xFFDCE3EA;
constexpr QRgb print = 0xFF24292E;
constexpr QRgb edge = 0xFFB4BEC8;
constexpr QRgb casing = 0xFF3A4550;
constexpr QRgb casing_light = 0xFF566472;
constexpr QRgb screen_ground = 0xFF0F2233;
constexpr QRgb trace = 0xFF48C7A0;
constexpr QRgb trace_second = 0xFFF0B040;
constexpr QRgb cable = 0xFF2B6CB0;
constexpr QRgb lamp = 0xFF48C774;

void box(QPainter& painter, const QRectF& area, QRgb fill, double corner = 6) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(fill));
    painter.drawRoundedRect(area, corner, corner);
}

void curve(QPainter& painter, const std::array<QPointF, 7>& points, QRgb colour) {
    painter.setPen(QPen(QColor(colour), 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(points.data(), static_cast<int>(points.size()));
}

void draw_computer(QPainter& painter) {
    box(painter, {70, 80, 230, 160}, casing, 10);
    box(painter, {84, 94, 202, 132}, screen_ground, 4);
    curve(painter, {{{96, 190}, {122, 168}, {150, 180}, {180, 132}, {212, 150}, {244, 116}, {274, 128}}},
          trace);
    curve(painter, {{{96, 208}, {126, 202}, {156, 206}, {188, 184}, {220, 194}, {248, 174}, {274, 178}}},
          trace_second);
    box(painter, {165, 240, 40, 26}, casing_light, 0);
    box(painter, {120, 264, 130, 12}, casing, 6);
}

void draw_controller(QPainter& painter) {
    box(painter, {610, 80, 220, 196}, casing, 10);
    for (int module = 0; module < 4; ++module) {
        const double left = 622 + module * 50;
        box(painter, {left, 94, 46, 168}, casing_light, 4);
        for (int row = 0; row < 4; ++row)
            box(painter, {left + 8, 104.0 + row * 16, 9, 9}, module == 0 && row > 1 ? casing : lamp, 4.5);
        for (int row = 0; row < 4; ++row)
            box(painter, {left + 8, 182.0 + row * 18, 30, 11}, screen_ground, 2);
    }
}

void draw_line(QPainter& painter) {
    painter.setPen(QPen(QColor(cable), 7, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(300, 178), QPointF(610, 178));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(cable));
    painter.drawPolygon(QPolygonF({{470, 160}, {500, 178}, {470, 196}}));
    box(painter, {292, 164, 20, 28}, cable, 4);
    box(painter, {598, 164, 20, 28}, cable, 4);
}

void draw_text(QPainter& painter, const QWidget& widget, const QPointF& centre, const QString& text,
               int height, bool bold) {
    QFont font = widget.font();
    font.setPixelSize(height);
    font.setBold(bold);
    painter.setFont(font);
    painter.setPen(QColor(print));
    painter.drawText(QRectF(centre.x() - 200, centre.y() - height, 400, 2 * height), Qt::AlignCenter, text);
}

} // namespace

tcp_picture::tcp_picture(QWidget* parent) : QWidget(parent) {}

void tcp_picture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient ground(0, 0, 0, height());
    ground.setColorAt(0, QColor(ground_top));
    ground.setColorAt(1, QColor(ground_bottom));
    painter.setPen(QColor(edge));
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);

    const double scale = std::min(width() / design_width, height() / design_height);
    painter.translate((width() - design_width * scale) / 2, (height() - design_height * scale) / 2);
    painter.scale(scale, scale);
    draw_line(painter);
    draw_computer(painter);
    draw_controller(painter);
    draw_text(painter, *this, {185, 310}, tr("Tyxo Data Logger"), 20, true);
    draw_text(painter, *this, {720, 310}, tr("Plant controller"), 20, true);
    draw_text(painter, *this, {455, 138}, tr("Modbus TCP/IP"), 20, false);
}

} // namespace tyxo
