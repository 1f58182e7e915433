#pragma once
// The polar scope of each panel, and what happens to a finished curve: it is drawn there and handed on to the
// Detailed Display, the bar diagrams and the gateway.

#include "basics/types.h"

namespace tyxo {

/// The plot of a channel in use: the reference circle "zero" in white, the thermosignal in red, the angular
/// acceleration in blue, both without points yet; both axes from -65 to 65.
void setup_plot(i16 channel);

/// A finished curve of a channel: clears and draws it in the plot around its mean, which lies on the
/// reference circle; fills the buffers of the Detailed Display, the bar diagram and the gateway; then serves
/// these three in this order, the first two if they show the channel. A curve whose mean is not above 0 is
/// only cleared, and the buffers keep what they hold.
///
/// `process_thermo` goes on past failed statements and names the last failure in the debug output. A failure
/// of `process_angacc` ends it and rises: a scale that overflows, or whatever a consumer raises.
void process_thermo(i16 channel);
void process_angacc(i16 channel);

/// Takes both measured curves away: the link is lost. The reference circle stays.
void clear_curves(i16 channel);

namespace mainfrm {

/// Opens the Detailed Display on the channel, if the channel is in use.
void XYplot_click(i16 channel);

} // namespace mainfrm

} // namespace tyxo
