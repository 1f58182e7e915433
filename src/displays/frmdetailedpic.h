#pragma once
// The Detailed Display: one engine cycle as a circle and as a straight diagram, with the places of the
// cylinders.

#include "displays/canvas.h"
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

struct frmdetailedpic_form {
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

inline frmdetailedpic_form frmdetailedpic;

/// Loads and shows the window for `polar_channel`.
void show_frmdetailedpic(std::string_view caption);

/// The window was closed: no channel is shown any more.
void frmdetailedpic_unload();

/// The drawing surface has a new size, in its own units.
void frmdetailedpic_resize(double width, double height);

/// A new curve of `polar_channel` begins: the picture without measured curves. Failure: firing angles whose
/// sum leaves the circle.
void prepare_frmdetailedpic();

/// The measured curves, each if its check box asks for it. Failure: an alarm level outside the table, a
/// division by zero.
void draw_curves();

} // namespace tyxo
