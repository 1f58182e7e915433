#include "displays/polar_geometry.h"

#include "basics/failure.h"

#include <array>
#include <cmath>

namespace tyxo::polar {

namespace {

struct direction {
    double cosine;
    double sine;
};
using directions = std::array<direction, steps>;

directions directions_from(double start) {
    directions all;
    for (i32 k = 0; k < steps; ++k) {
        const double angle = start + k * per_step;
        at(all, k) = {std::cos(angle), std::sin(angle)};
    }
    return all;
}

} // namespace

point centre(const canvas& surface) {
    return {surface.ScaleWidth / 5 + 5, surface.ScaleHeight / 2};
}

point step_point(const canvas& surface, double radius, i32 k) {
    static const directions all = directions_from(0);
    const direction& to = at(all, k);
    return {surface.ScaleWidth / 5 + radius * to.cosine + 5, surface.ScaleHeight / 2 + radius * to.sine};
}

point turned_point(const canvas& surface, double radius, double angle) {
    return {surface.ScaleWidth / 5 + radius * std::cos(quarter_turn + angle) + 5,
            surface.ScaleHeight / 2 - radius * std::sin(quarter_turn + angle)};
}

point sample_point(const canvas& surface, double radius, i32 k) {
    static const directions all = directions_from(quarter_turn);
    const direction& to = at(all, k);
    return {surface.ScaleWidth / 5 + radius * to.cosine + 5, surface.ScaleHeight / 2 - radius * to.sine};
}

double left(const canvas& surface) {
    return surface.ScaleWidth / 2 - 10;
}

double span(const canvas& surface) {
    return surface.ScaleWidth - 5 - left(surface);
}

double baseline(const canvas& surface) {
    return surface.ScaleHeight - 15;
}

void draw_outline(canvas& surface, std::span<const point> points, outline kind) {
    if (points.empty()) return;
    const auto join = [&surface](const point& from, const point& to) {
        surface.line(from.x, from.y, to.x, to.y);
    };
    for (std::size_t k = 1; k < points.size(); ++k)
        join(points[k - 1], points[k]);
    if (kind == outline::closed) join(points.back(), points.front());
}

void draw_circle(canvas& surface, double radius) {
    std::array<point, steps> points;
    for (i32 k = 0; k < steps; ++k)
        at(points, k) = step_point(surface, radius, k);
    draw_outline(surface, points, outline::closed);
}

void draw_legend(canvas& surface, double x, double y, colour line, std::string_view name) {
    constexpr double length = 5;
    constexpr double to_name = 7;
    constexpr double half_text = 2;
    surface.ForeColor = line;
    surface.line(x, y, x + length, y);
    surface.ForeColor = rgb(0, 0, 0);
    surface.CurrentX = x + to_name;
    surface.CurrentY = y - half_text;
    surface.print(name);
}

} // namespace tyxo::polar
