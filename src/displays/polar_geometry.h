#pragma once
// Where things stand on the surface of the Detailed Display: the circle diagram on its left, the straight
// diagram on its right. All lengths are units of the surface, whose size is read anew with every call.

#include "basics/types.h"
#include "controls/canvas.h"

#include <span>

namespace tyxo::polar {

/// Radians per degree and per step of a 256-step circle; negative, so that positions run clockwise.
inline constexpr double per_degree = -0.017453292519943278;
inline constexpr double per_step = -0.024543692606170234;
inline constexpr double quarter_turn = 3.14159265358979 / 2;

inline constexpr i32 steps = 256;

struct point {
    double x = 0;
    double y = 0;
};

[[nodiscard]] point centre(const canvas& surface);

/// Point `k` of a circle that is drawn in 256 steps. It begins at the right: only closed circles of one
/// radius are drawn this way. Failure: `k` outside 0 to 255.
[[nodiscard]] point step_point(const canvas& surface, double radius, i32 k);

/// The point at an angle in radians from the top; a negative angle lies clockwise, a negative radius on the
/// far side of the centre.
[[nodiscard]] point turned_point(const canvas& surface, double radius, double angle);

/// The place of sample `k`: the same at `k` steps from the top. Failure: `k` outside 0 to 255.
[[nodiscard]] point sample_point(const canvas& surface, double radius, i32 k);

/// The straight diagram: its left end, its length, and the height of its axis.
[[nodiscard]] double left(const canvas& surface);
[[nodiscard]] double span(const canvas& surface);
[[nodiscard]] double baseline(const canvas& surface);

/// One segment between each two points in their order, in the fore colour, and with `closed` one from the
/// last to the first.
enum class outline { open, closed };
void draw_outline(canvas& surface, std::span<const point> points, outline kind);

/// A circle of 256 steps in the fore colour.
void draw_circle(canvas& surface, double radius);

/// The key of a curve: a short line in its colour from (x, y), and behind it its name in black. The fore
/// colour is black afterwards.
void draw_legend(canvas& surface, double x, double y, colour line, std::string_view name);

} // namespace tyxo::polar
