#pragma once
// The Detailed Display: one engine cycle as a circle and as a straight diagram, with the places of the
// cylinders.

#include "controls/canvas.h"
#include "link/channel_rec.h"

#include <array>

namespace tyxo {

/// A label on the surface: its upper left corner, in the surface's units.
struct canvas_label {
    double Left = 0;
    double Top = 0;
    std::string Caption;
    bool Visible = false;
    bool operator==(const canvas_label&) const = default;
};

namespace frmdetailedpic {

struct window {
    Form form;
    bool open = false;  ///< from load to unload
    i16 Chck_tsrel = 0; ///< 1 draws the diagram with the next curve
    i16 Chck_tsabs = 0;
    i16 Chck_aa = 0;
    std::array<canvas_label, cylinder_max> Lblzyl;  ///< around the circle, by firing place
    std::array<canvas_label, cylinder_max> Lblzyl2; ///< above the straight diagram
    canvas_label Lbl0deg;
    canvas_label Lblenddeg;
    canvas surface;
};

inline window state;

/// The record of `polar_channel`; the subscript failure when no channel is selected.
[[nodiscard]] const channel_rec& detailed_channel();

/// Loads and shows the window for `polar_channel`.
void show(std::string_view caption);

/// The window was closed: no channel is shown any more. Only the size of the surface is kept.
void unload();

/// The drawing surface has a new size, in its own units. What belongs to the engine and the curves is back
/// with the next curve.
void resize(double width, double height);

/// A new curve of `polar_channel` begins: the picture without measured curves. Failure: firing angles whose
/// sum leaves the circle, more than 24 cylinders, no `polar_channel`.
void prepare();

/// The measured curves, each if its check box asks for it. Failure: an alarm level outside the table, a
/// division by zero, a product beyond 32 bits; the curves after it are not drawn.
void draw_curves();

// The elements of the picture, each drawn onto what is there.

/// Clears the surface; the outer circle, the axes and the reference elements.
void draw_scale();

/// What `draw_engine` and `draw_xygraph` draw.
namespace engine_picture {
inline constexpr i16 frame = 1;  ///< the outer circle and the axes
inline constexpr i16 engine = 2; ///< and the cylinders of `polar_channel`
} // namespace engine_picture

/// The circle diagram with the cylinders around it, then `draw_xygraph` in the same mode. Labels of firing
/// places that the engine does not have are hidden.
void draw_engine(i16 mode);

/// The axes of the straight diagram, the cylinders above it.
void draw_xygraph(i16 mode);

/// The mean of a curve, as the circle of radius 30 and as a line.
void draw_refcircle();
void draw_refline();

/// 100 % of the alarm level, as the circle of radius 50 and as a line.
void draw_almcircle();
void draw_almline();

/// `detail_thermo` around its mean; nothing at all if the mean is negative.
void draw_thermo();

/// `detail_thermo` in percent of the alarm level of `polar_channel`. Failures as `draw_curves`.
void draw_thermo_abs();

/// `detail_angacc` around its mean; nothing at all if the mean is negative.
void draw_angle();

} // namespace frmdetailedpic

} // namespace tyxo
