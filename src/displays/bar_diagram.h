#pragma once
// The bar diagrams: speed and thermosignal cylinder by cylinder, with their differences to the mean.

#include "link/channel_rec.h"
#include "platform/bar_plot.h"

#include <array>

namespace tyxo {

struct bar_form {
    Form form;
    bool open = false; ///< the operator has opened it
    iPlotX plot;
    std::array<Label, cylinder_max> Lbl_bar;
    std::array<i32, cylinder_max> Lbl_bar_left{}; ///< pixels of the design
    Label Lbl_zyl{"Cylinder"};
    Label Lbl_mtyp1;
    Label Lbl_mtyp2;
};

inline bar_form frmbarpic;  ///< speed
inline bar_form Frmbarpic2; ///< thermosignal

/// The panel's buttons "Speed difference" and "Thermosignal difference".
void Cmd_diagramm_click(i16 channel);
void Cmd_diagramm2_click(i16 channel);

/// A new curve of the diagram's channel has come: its bars. Failure: an alarm level outside the table, a
/// division by zero.
void refresh_speed_bars();
void refresh_thermo_bars();

/// The window was closed: no channel is shown any more.
void frmbarpic_unload();
void Frmbarpic2_unload();

} // namespace tyxo
