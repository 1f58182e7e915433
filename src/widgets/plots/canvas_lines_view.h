#pragma once
// The strokes of a drawing surface as few long lines in pixels, which paint many times faster.

#include "controls/canvas.h"

#include <QPolygonF>
#include <QRectF>

#include <span>
#include <vector>

namespace tyxo {

struct line_run {
    colour ForeColor = 0;
    QPolygonF points;
    bool operator==(const line_run& other) const; ///< to the last bit, where QPointF knows nearly the same
};

/// From units to pixels.
struct canvas_place {
    double x; ///< pixels of the point (0, 0)
    double y;
    double unit; ///< pixels
    QRectF visible;
    double overhang = 50; ///< pixels beyond it, so that caps and joins of cut lines stay out of sight
};

/// Joins strokes of one colour that continue each other, in their order; points on a straight way are
/// dropped. Strokes with an end that is not finite are left out; what lies far outside of `visible` is cut
/// off. A long run that comes again later is only there once.
[[nodiscard]] std::vector<line_run> canvas_lines(std::span<const stroke> strokes, const canvas_place& place);

} // namespace tyxo
