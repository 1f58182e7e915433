#pragma once
// The panels of the main window: one per channel, four of them two by two, refreshed by the display tick.

#include "basics/per_channel.h"
#include "controls/controls.h"
#include "controls/xy_plot.h"
#include "link/indicators.h"

namespace tyxo {

/// The panel's controls that the link does not write; the others are in `indicators`.
struct panel_controls {
    per_channel<Frame> Frame_sensor;
    per_channel<iLinearGaugeX> Gauge_thermo;
    per_channel<Label> Label4; ///< name of the value that the thermo gauge shows; a click toggles it
    per_channel<iSevenSegmentAnalogX> dig_sens;
    per_channel<iSevenSegmentAnalogX> dig_sens2;
    per_channel<Label> lbl_aimplevel;
    per_channel<Label> Lbl_dc_percent;
    per_channel<Frame> Frame_message; ///< stands in the place of the plot when its data is missing
    per_channel<Label> Lbl_dama;
    per_channel<iXYPlotX> XYplot;
    per_channel<Command> Cmd_diagramm;
    per_channel<Command> Cmd_diagramm2;
    per_channel<Command> cmd_zoom_xy;
};

inline panel_controls panels;

/// Gives all controls of all panels the values that they are designed with.
void design_panels();

/// The steps of the start, in its order: the thermo gauge's look; what stays hidden until its data is there;
/// the value that the gauge shows; the look of a channel in use; the look of one that is not.
void setup_thermo_gauge(i16 channel);
void hide_until_data(i16 channel);
void setup_relay_captions(i16 channel);
void show_thermo_choice(i16 channel);
void setup_panel(i16 channel);
void setup_missing_panel(i16 channel);

/// Writes the record's values into the panel of a channel.
void update_panel(i16 channel);

namespace mainfrm {

/// Toggles the value on the thermo gauge, `tsignal` or `teff_dc`, and keeps the choice in the settings.
void Label4_click(i16 channel);
/// The tick of `Timer_chart_upd`: all started channels, in order. Then the event loop goes on once, inside
/// it.
void Timer_chart_upd_tick();

} // namespace mainfrm

} // namespace tyxo
