#include "platform/desktop/strip_curve.h"

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
    rectangles_.clear();
    for (const curve_stroke& stroke : strokes_.strokes(corners_, area, thickness))
        rectangles_.emplace_back(stroke.left / ratio, stroke.top / ratio, stroke.width / ratio,
                                 stroke.height / ratio);
    painter->setAntialiasing(false);
    painter->setPen(Qt::NoPen);
    painter->setBrush(pen().color());
    painter->drawRects(rectangles_.data(), static_cast<int>(rectangles_.size()));
}

} // namespace tyxo
