#include "controls/curve_strokes.h"

#include "basics/number.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tyxo {

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr i32 beyond = 8; // pixels above and below the area, where no stroke is seen any more

} // namespace

const std::vector<curve_stroke>& curve_painter::strokes(const std::vector<curve_corner>& corners,
                                                        const curve_area& area, i32 thickness) {
    area_ = area;
    strokes_.clear();
    if (area.right <= area.left || area.bottom <= area.top || thickness < 1) return strokes_;
    columns_.assign(static_cast<std::size_t>(area.right - area.left), {infinite, -infinite});
    const curve_corner* before = nullptr;
    for (const curve_corner& corner : corners) {
        if (std::isnan(corner.x) || std::isnan(corner.y)) {
            before = nullptr;
            continue;
        }
        add_line(before != nullptr ? *before : corner, corner);
        before = &corner;
    }
    collect(thickness);
    return strokes_;
}

void curve_painter::extend(i32 column, double y) {
    extent& of = columns_[static_cast<std::size_t>(column - area_.left)];
    const double seen =
        std::clamp(y, static_cast<double>(area_.top) - beyond, static_cast<double>(area_.bottom) + beyond);
    of.top = std::min(of.top, seen);
    of.bottom = std::max(of.bottom, seen);
}

void curve_painter::add_line(const curve_corner& from, const curve_corner& to) {
    const auto left = static_cast<double>(area_.left);
    const auto right = static_cast<double>(area_.right);
    if (!(to.x >= left && from.x < right && to.x >= from.x)) return;
    const auto first = static_cast<i32>(std::floor(std::max(from.x, left)));
    const auto last = std::min(static_cast<i32>(std::floor(std::min(to.x, right))), area_.right - 1);
    if (first == last && from.x >= left && to.x <= right) {
        extend(first, from.y);
        extend(first, to.y);
        return;
    }
    const double slope = (to.y - from.y) / (to.x - from.x);
    const auto height = [&](double x) {
        if (x <= from.x) return from.y;
        return x >= to.x ? to.y : from.y + slope * (x - from.x);
    };
    for (i32 column = first; column <= last; ++column) {
        extend(column, height(column));
        extend(column, height(column + 1));
    }
}

void curve_painter::collect(i32 thickness) {
    for (i32 column = area_.left; column < area_.right; ++column) {
        const extent& of = columns_[static_cast<std::size_t>(column - area_.left)];
        if (of.bottom < of.top) continue;
        const double half = static_cast<double>(thickness) / 2;
        const i32 top = round_even<i32>(std::floor(of.top - half + 0.5));
        const i32 bottom = round_even<i32>(std::floor(of.bottom - half + 0.5)) + thickness;
        if (!strokes_.empty()) {
            curve_stroke& last = strokes_.back();
            const bool touches = last.left + last.width - (thickness - 1) == column;
            if (touches && last.top == top && last.height == bottom - top) {
                ++last.width;
                continue;
            }
        }
        strokes_.push_back({column, top, thickness, bottom - top});
    }
}

} // namespace tyxo
