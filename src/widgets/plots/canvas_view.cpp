#include "widgets/plots/canvas_view.h"

#include "widgets/paint_view.h"
#include "widgets/plots/canvas_lines_view.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tyxo {

namespace {

constexpr double text_height = 3.4;  // units; legends stand 4 units apart
constexpr int legible_pixels = 9;    // smaller letters are rather made narrower
constexpr int narrowest = 75;        // % of their width
constexpr double usual_unit = 4;     // pixels; pens have their full width from here on
constexpr double thinnest_pen = 0.6; // of the full width
constexpr double thickest_pen = 2;

/// How a colour is drawn: yellow, hard to see on the grey, gets a dark seam.
struct pen_style {
    double width;
    bool seam;
};

constexpr double least_pen = 1.1;  // pixels; hair lines of many pieces look ragged
constexpr double seam_width = 0.7; // pixels at either side
constexpr QRgb seam_colour = 0xFF606060;

pen_style style_of(colour value) {
    switch (value) {
    case rgb(255, 255, 0):
        return {2.4, true};
    case rgb(0, 0, 0):
        return {1.3, false};
    default:
        return {2.0, false};
    }
}

/// An upright or level line as a crisp bar.
void paint_bar(QPainter& painter, const QLineF& line, const QColor& color, double width) {
    const double pixel = 1 / painter.device()->devicePixelRatioF();
    const double thick = std::max(std::round(width / pixel), 1.0) * pixel;
    const auto edge = [&](double middle) { return snapped(middle - thick / 2, 1 / pixel); };
    const QRectF bar =
        line.dx() == 0 ? QRectF(edge(line.x1()), std::min(line.y1(), line.y2()), thick, std::abs(line.dy()))
                       : QRectF(std::min(line.x1(), line.x2()), edge(line.y1()), std::abs(line.dx()), thick);
    painter.fillRect(bar, color);
}

/// Single lines paint several times faster than the outline of a long curve; square ends close its corners,
/// and a seam needs none closed.
void paint_line(QPainter& painter, const QPolygonF& points, const QColor& color, double width,
                Qt::PenCapStyle cap) {
    QList<QLineF> lines;
    lines.reserve(points.size());
    for (qsizetype k = 1; k < points.size(); ++k)
        lines.append(QLineF(points[k - 1], points[k]));
    if (lines.size() == 1 && (lines[0].dx() == 0 || lines[0].dy() == 0)) {
        paint_bar(painter, lines[0], color, width);
        return;
    }
    painter.setPen(QPen(color, width, Qt::SolidLine, cap, Qt::BevelJoin));
    painter.drawLines(lines);
}

} // namespace

canvas_view::canvas_view(const canvas& surface, const design& size, QWidget* parent)
    : QWidget(parent), surface_(surface), design_(size) {}

void canvas_view::set_widest_text(const QString& text, double room) {
    widest_text_ = text;
    widest_text_room_ = room;
    text_font_ = fitting_font();
}

void canvas_view::show_state() {
    if (surface_.passes == shown_passes_) return;
    shown_passes_ = surface_.passes;
    update();
}

double canvas_view::unit() const {
    return std::min(width() / (design_.room_left + design_.width + design_.room_right),
                    height() / design_.height);
}

QPointF canvas_view::place(double x, double y) const {
    const double scale = unit();
    const double wide = (design_.room_left + design_.width + design_.room_right) * scale;
    return {(width() - wide) / 2 + (design_.room_left + x) * scale,
            (height() - design_.height * scale) / 2 + y * scale};
}

QFont canvas_view::fitting_font() const {
    const auto fits = [this](const QFont& font) {
        return QFontMetricsF(font).horizontalAdvance(widest_text_) <= widest_text_room_ * unit();
    };
    QFont font = print_font(*this, text_height * unit());
    while (font.pixelSize() > legible_pixels && !fits(font))
        font.setPixelSize(font.pixelSize() - 1);
    for (int stretch = font.stretch(); stretch > narrowest && !fits(font); stretch -= 5)
        font.setStretch(stretch);
    while (font.pixelSize() > 1 && !fits(font))
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

void canvas_view::paint_strokes(QPainter& painter) const {
    const double scale = std::clamp(unit() / usual_unit, thinnest_pen, thickest_pen);
    const QPointF origin = place(0, 0);
    const auto runs = canvas_lines(surface_.strokes, {origin.x(), origin.y(), unit(), QRectF(rect())});
    for (const line_run& run : runs) {
        const pen_style style = style_of(run.ForeColor);
        const double width = std::max(style.width * scale, least_pen);
        if (style.seam)
            paint_line(painter, run.points, QColor(seam_colour), width + 2 * seam_width, Qt::FlatCap);
        paint_line(painter, run.points, qt_colour(run.ForeColor), width, Qt::SquareCap);
    }
}

void canvas_view::paint_texts(QPainter& painter) const {
    painter.setFont(text_font());
    const double ascent = QFontMetricsF(painter.font()).ascent();
    for (const canvas_text& text : surface_.texts) {
        const QPointF corner = place(text.x, text.y);
        if (!QRectF(rect()).contains(corner)) continue; // no number is nowhere
        painter.setPen(qt_colour(text.ForeColor));
        painter.drawText(corner + QPointF(0, ascent), qt_text(text.text));
    }
}

QString canvas_view::spoken_text() const {
    QStringList texts;
    for (const canvas_text& text : surface_.texts)
        texts.push_back(qt_text(text.text).trimmed());
    texts.removeAll(QString());
    return texts.join("; ");
}

void canvas_view::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paint_strokes(painter);
    paint_texts(painter);
}

void canvas_view::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    text_font_ = fitting_font();
    emit resized();
}

} // namespace tyxo

#include "moc_canvas_view.cpp"
