#pragma once
// A curve as upright strokes, one per pixel column: the same picture as its lines, at a cost that the width
// of the picture bounds.

#include "basics/types.h"

#include <vector>

namespace tyxo {

/// A corner of the curve in pixels, Y downwards; a Y that is no number breaks the curve.
struct curve_corner {
    double x = 0;
    double y = 0;
};

/// Pixels, like `rectangle`.
struct curve_stroke {
    i32 left = 0;
    i32 top = 0;
    i32 width = 0;
    i32 height = 0;
    bool operator==(const curve_stroke&) const = default;
};

/// Pixels that are painted: from the first to before the last. What is above or below ends just outside.
struct curve_area {
    i32 left = 0;
    i32 right = 0;
    i32 top = 0;
    i32 bottom = 0;
};

/// Turns curves into strokes. Keeps its memory between curves.
class curve_painter {
  public:
    /// Corners from left to right. The strokes are the curve's as drawn with a square pen of `thickness`
    /// pixels, left to right; columns of the same extent are one stroke. They stay valid until the next call.
    const std::vector<curve_stroke>& strokes(const std::vector<curve_corner>& corners, const curve_area& area,
                                             i32 thickness);

  private:
    struct extent {
        double top;
        double bottom;
    };
    void extend(i32 column, double y);
    void add_line(const curve_corner& from, const curve_corner& to);
    void collect(i32 thickness);

    curve_area area_;
    std::vector<extent> columns_;
    std::vector<curve_stroke> strokes_;
};

} // namespace tyxo
