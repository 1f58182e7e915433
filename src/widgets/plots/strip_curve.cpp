#include "widgets/plots/strip_curve.h"

#include <algorithm>
#include <cmath>

namespace tyxo {

namespace {

/// From a coordinate of an axis to pixels of the device.
class scale {
  public:
    scale(const QCPAxis& axis, double ratio) : low_(axis.range().lower) {
        start_ = axis.coordToPixel(low_) * ratio;
        per_unit_ = (axis.coordToPixel(axis.range().upper) * ratio - start_) / axis.range().size();
    }
    [[nodiscard]] double operator()(double value) const { return start_ + (value - low_) * per_unit_; }

  private:
    double low_;
    double start_;
    double per_unit_;
};

/// The picture that is painted on, if its pixels are plain words and the painter's are the same.
QImage* plain_picture(const QPainter& painter) {
    QPaintDevice* const device = painter.device();
    if (device->devType() != QInternal::Image) return nullptr;
    auto* const picture = static_cast<QImage*>(device);
    const bool plain = picture->format() == QImage::Format_RGB32 && painter.transform().isIdentity();
    return plain ? picture : nullptr;
}

QRect pixels_of(const curve_area& area) {
    return {QPoint(area.left, area.top), QPoint(area.right - 1, area.bottom - 1)};
}

/// Some thousand times a picture; a painter takes several times as long for each.
void fill(QImage& picture, const QRect& where, QRgb color) {
    const QRect inside = where & picture.rect();
    if (inside.isEmpty()) return;
    const qsizetype line = picture.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb));
    auto* row = reinterpret_cast<QRgb*>(picture.scanLine(inside.top())) + inside.left();
    for (int left = inside.height(); left > 0; --left, row += line)
        std::fill_n(row, inside.width(), color);
}

} // namespace

void strip_curve::draw(QCPPainter* painter) {
    if (painter->modes().testFlag(QCPPainter::pmVectorized)) {
        QCPGraph::draw(painter);
        return;
    }
    const double ratio = parentPlot()->bufferDevicePixelRatio();
    const scale across(*keyAxis(), ratio);
    const scale down(*valueAxis(), ratio);
    corners_.clear();
    for (const QCPGraphData& point : *data())
        corners_.push_back({across(point.key), down(point.value)});

    const QRect clip = keyAxis()->axisRect()->rect();
    const auto pixel = [ratio](int logical) { return static_cast<i32>(std::lround(logical * ratio)); };
    const curve_area area{pixel(clip.left()), pixel(clip.right() + 1), pixel(clip.top()),
                          pixel(clip.bottom() + 1)};
    const i32 thickness = std::max(pixel(1) * pen().width(), 1);
    const auto& strokes = strokes_.strokes(corners_, area, thickness);
    if (QImage* const picture = plain_picture(*painter)) {
        for (const curve_stroke& stroke : strokes)
            fill(*picture, QRect(stroke.left, stroke.top, stroke.width, stroke.height) & pixels_of(area),
                 pen().color().rgb());
        return;
    }
    rectangles_.clear();
    for (const curve_stroke& stroke : strokes)
        rectangles_.emplace_back(stroke.left / ratio, stroke.top / ratio, stroke.width / ratio,
                                 stroke.height / ratio);
    painter->setAntialiasing(false);
    painter->setPen(Qt::NoPen);
    painter->setBrush(pen().color());
    painter->drawRects(rectangles_.data(), static_cast<int>(rectangles_.size()));
}

} // namespace tyxo
