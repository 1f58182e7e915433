#pragma once
// The bar diagrams: speed and thermosignal cylinder by cylinder, with their differences to the mean.

#include "controls/bar_plot.h"
#include "link/channel_rec.h"

#include <array>

namespace tyxo {

struct bar_form {
    Form form;
    bool open = false;       ///< the operator has opened it
    unsigned shows = 0;      ///< counts up when the window is to come to the front
    i16 channel = 0;         ///< channel number that plot and texts were set up for, 0 for none
    bool parameters = false; ///< its parameters were known then
    iPlotX plot;
    std::array<Label, cylinder_max> Lbl_bar;
    std::array<double, cylinder_max> Lbl_bar_middle{}; ///< from the left, pixels of the design
    Label Lbl_zyl{"Cylinder"};
    Label Lbl_mtyp1;
    Label Lbl_mtyp2;
};

/// Speed.
namespace frmbarpic {
inline bar_form state;
/// The window was closed: no channel is shown any more.
void unload();
} // namespace frmbarpic

/// Thermosignal.
namespace Frmbarpic2 {
inline bar_form state;
void unload();
} // namespace Frmbarpic2

/// Places of the design, in pixels of the window's client area.
namespace bar_design {
inline constexpr double width = 800;
inline constexpr double height = 500;
inline constexpr double axis_left = 142; ///< the plot's X axis
inline constexpr double axis_width = 602;
inline constexpr double texts_top = 454; ///< the engine texts
inline constexpr double mtyp1_left = 8;
inline constexpr double mtyp2_left = 100;
} // namespace bar_design

/// A new curve of the diagram's channel has come: its bars. The form is loaded when it is not, and stays
/// hidden. Failure: as told in link/cylinder_values.h; the plot keeps its last bars.
void refresh_speed_bars();
void refresh_thermo_bars();

/// The window came to the front: the labels. Failure: more cylinders than labels.
void bar_form_activate(bar_form& bars);

/// The window was closed: no channel is shown any more.
void bar_form_unload(bar_form& bars);

namespace mainfrm {

/// The panel's buttons "Speed difference" and "Thermosignal difference": select the channel and show the
/// window, or a message box that waits while the channel's parameters are unknown; the channel stays selected
/// then.
void Cmd_diagramm_click(i16 channel);
void Cmd_diagramm2_click(i16 channel);

} // namespace mainfrm

} // namespace tyxo
