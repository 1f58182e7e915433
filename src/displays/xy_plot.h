#pragma once
// The polar scope of each panel, and what happens to a finished curve: it is drawn there and handed on to the
// Detailed Display, the bar diagrams and the gateway.

#include "basics/types.h"

namespace tyxo {

/// The plot of a channel in use: its three curves, the reference circle, the axes.
void setup_plot(i16 channel);

/// A finished curve of a channel. `process_thermo` goes on past failures and reports the last one;
/// a failure of `process_angacc` ends it and rises.
void process_thermo(i16 channel);
void process_angacc(i16 channel);

/// Takes both measured curves away: the link is lost.
void clear_curves(i16 channel);

/// Opens the Detailed Display on the channel.
void XYplot_click(i16 channel);

} // namespace tyxo
