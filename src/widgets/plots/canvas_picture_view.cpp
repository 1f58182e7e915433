#include "widgets/plots/canvas_picture_view.h"

#include "platform/desktop/text.h"
#include "widgets/colour.h"
#include "widgets/paint_view.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

namespace tyxo {

namespace {

constexpr double usual_unit = 4;     // pixels; pens have their full width from here on
constexpr double thinnest_pen = 0.6; // of the full width
constexpr double thickest_pen = 2;

/// How a colour is drawn: yellow, hard to see on the grey, gets a dark seam.
struct pen_style {
    double width;
    bool seam;
};

constexpr double widest_pen = 2.4;
constexpr double least_pen = 1.1;  // pixels; hair lines of many pieces look ragged
constexpr double seam_width = 0.7; // pixels at either side
constexpr QRgb seam_colour = 0xFF606060;

constexpr double beside_a_text = 2; // pixels; smooth edges of letters may leave their box

// What changes from picture to picture are the curves of one kind. The next picture has others of the same
// kind, or of the other one, which is drawn behind it: two places where pictures begin to differ.
constexpr std::size_t most_layers = 2;

pen_style style_of(colour value) {
    switch (value) {
    case rgb(255, 255, 0):
        return {widest_pen, true};
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

QRect widened(const QRectF& area, double by) {
    return area.adjusted(-by, -by, by, by).toAlignedRect();
}

/// Takes over the pixels of an area from a picture of the same size.
void copy_part(const QRegion& area, const QImage& from, QImage& to) {
    const double ratio = to.devicePixelRatio();
    for (const QRect& part : area) {
        const QRectF wide(QPointF(part.topLeft()) * ratio, QSizeF(part.size()) * ratio);
        const QRect pixels = wide.toAlignedRect() & to.rect();
        for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
            const auto* const begin = reinterpret_cast<const QRgb*>(from.constScanLine(y)) + pixels.left();
            std::copy_n(begin, pixels.width(), reinterpret_cast<QRgb*>(to.scanLine(y)) + pixels.left());
        }
    }
}

} // namespace

QRegion canvas_picture::renew(const canvas& surface, const canvas_look& look) {
    if (look_ != look) begin_anew(look);
    passes_ = surface.passes;

    const QRectF visible(QPointF(), look.size);
    auto lines = canvas_lines(surface.strokes, {look.origin.x(), look.origin.y(), look.unit, visible});
    const auto same = static_cast<std::size_t>(std::ranges::mismatch(lines_, lines).in1 - lines_.begin());
    if (same > 0 && same < lines_.size()) add_layer(same);
    const layer* below = nullptr; // the highest that is right as it is
    for (const layer& one : layers_)
        if (one.valid && one.lines <= same) below = &one;
    const std::size_t lines_below = below == nullptr ? 0 : below->lines;

    QRegion area = lines_area(lines_below);
    lines_ = std::move(lines);
    area = below == nullptr ? QRegion(visible.toRect()) : area | lines_area(lines_below);
    if (texts_ != surface.texts) {
        area |= texts_area_;
        texts_ = surface.texts;
        texts_area_ = texts_area();
        area |= texts_area_;
    }
    const bool touches_texts = area.intersects(texts_area_);
    if (touches_texts) area |= texts_area_;

    if (below == nullptr) {
        image_.fill(look.ground);
    } else {
        copy_part(area, below->image, image_);
    }
    paint_lines_above(below, area);
    if (touches_texts) paint_texts();
    return area;
}

void canvas_picture::begin_anew(const canvas_look& look) {
    *this = {};
    look_ = look;
    const QSizeF device = QSizeF(look.size) * look.ratio;
    image_ = QImage(static_cast<int>(std::ceil(device.width())), static_cast<int>(std::ceil(device.height())),
                    QImage::Format_RGB32);
    image_.setDevicePixelRatio(look.ratio);
}

/// The lines behind have changed, and may do so again.
void canvas_picture::add_layer(std::size_t lines) {
    auto found = std::ranges::find(layers_, lines, &layer::lines);
    if (found == layers_.end()) {
        if (layers_.size() == most_layers) layers_.erase(std::ranges::min_element(layers_, {}, &layer::met));
        found = layers_.insert(std::ranges::upper_bound(layers_, lines, {}, &layer::lines), {lines});
    }
    found->met = passes_;
}

/// All of them lie in the area; on their way they renew the layers that they belong to.
void canvas_picture::paint_lines_above(const layer* below, const QRegion& area) {
    std::size_t painted = below == nullptr ? 0 : below->lines;
    for (layer& next : layers_) {
        if (next.lines <= painted) continue;
        if (next.lines > lines_.size()) {
            next.valid = false;
            continue;
        }
        paint_lines(painted, next.lines);
        painted = next.lines;
        if (!next.valid) next.image = below == nullptr ? image_.copy() : below->image.copy();
        copy_part(area, image_, next.image);
        next.valid = true;
    }
    paint_lines(painted, lines_.size());
}

void canvas_picture::paint(QPainter& painter, const canvas& surface, const canvas_look& look) {
    const QRectF visible(QPointF(), look.size);
    canvas_picture once;
    once.look_ = look;
    // There may be no clipping.
    once.lines_ = canvas_lines(surface.strokes, {look.origin.x(), look.origin.y(), look.unit, visible, 0});
    once.texts_ = surface.texts;
    painter.fillRect(visible, look.ground);
    once.paint_lines(painter, 0, once.lines_.size());
    once.paint_texts(painter);
}

void canvas_picture::paint_lines(std::size_t from, std::size_t to) {
    QPainter painter(&image_);
    paint_lines(painter, from, to);
}

void canvas_picture::paint_lines(QPainter& painter, std::size_t from, std::size_t to) const {
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = pen_scale();
    for (const line_run& run : std::span(lines_).subspan(from, to - from)) {
        const pen_style style = style_of(run.ForeColor);
        const double width = std::max(style.width * scale, least_pen);
        if (style.seam)
            paint_line(painter, run.points, QColor(seam_colour), width + 2 * seam_width, Qt::FlatCap);
        paint_line(painter, run.points, qt_colour(run.ForeColor), width, Qt::SquareCap);
    }
}

double canvas_picture::pen_scale() const {
    return std::clamp(look_.unit / usual_unit, thinnest_pen, thickest_pen);
}

/// Nothing for a text that stands outside or nowhere.
std::optional<QPointF> canvas_picture::text_place(const canvas_text& text) const {
    const QPointF corner = look_.origin + QPointF(text.x, text.y) * look_.unit;
    const bool somewhere = std::isfinite(corner.x()) && std::isfinite(corner.y());
    if (!somewhere || !QRectF(QPointF(), look_.size).contains(corner)) return std::nullopt;
    return corner + QPointF(0, QFontMetricsF(look_.text_font).ascent());
}

void canvas_picture::paint_texts() {
    QPainter painter(&image_);
    paint_texts(painter);
}

/// Narrow letters, which files of lines do not know, are made of usual ones there.
void canvas_picture::paint_text(QPainter& painter, const QPointF& place, const QString& text) const {
    if (!paints_lines(painter)) {
        painter.drawText(place, text);
        return;
    }
    QFont usual = look_.text_font;
    usual.setStretch(QFont::Unstretched);
    const double wide = QFontMetricsF(usual).horizontalAdvance(text);
    const double narrow = QFontMetricsF(look_.text_font).horizontalAdvance(text);
    painter.save();
    painter.setFont(usual);
    painter.translate(place);
    if (wide > 0) painter.scale(narrow / wide, 1);
    painter.drawText(QPointF(), text);
    painter.restore();
}

void canvas_picture::paint_texts(QPainter& painter) const {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(look_.text_font);
    for (const canvas_text& text : texts_) {
        const auto place = text_place(text);
        if (!place) continue;
        painter.setPen(qt_colour(text.ForeColor));
        paint_text(painter, *place, qt_text(text.text));
    }
}

/// Where the lines from this one on are.
QRegion canvas_picture::lines_area(std::size_t from) const {
    constexpr double corner = std::numbers::sqrt2; // of the end of a slanting line, to half of its width
    constexpr double smooth_edge = 1;
    const double reach = (widest_pen * pen_scale() / 2 + seam_width) * corner + smooth_edge;
    QRegion area;
    for (const line_run& run : std::span(lines_).subspan(from))
        area |= widened(run.points.boundingRect(), reach);
    return area;
}

QRegion canvas_picture::texts_area() const {
    const QFontMetricsF metrics(look_.text_font);
    QRegion area;
    for (const canvas_text& text : texts_)
        if (const auto place = text_place(text))
            area |= widened(metrics.boundingRect(qt_text(text.text)).translated(*place), beside_a_text);
    return area;
}

} // namespace tyxo
