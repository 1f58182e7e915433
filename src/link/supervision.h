#pragma once
// Is the Evaluator there? The watchdog of each link, its return, and the request sequencer.

#include "basics/types.h"

namespace tyxo {

namespace funct {

/// A link is lost after this time without a complete frame, in ms.
inline constexpr int link_timeout = 3000;

void chart_timer_start();
void chart_timer_stop();
/// Sets the sequencer's interval and leaves it disabled: this is the switch that keeps the sequencer off.
void poll_timer_arm(i16 channel);
void poll_timer_stop(i16 channel);
void timeout_timer_start(i16 channel);
void timeout_timer_stop(i16 channel);

} // namespace funct

namespace sensor {

/// One step of the request sequencer: sends a request for the step's kind of frame. Failure: that of
/// `serial::frame_send`; the step counts as done.
void poll(i16 channel);

/// The watchdog fired: no complete frame for `link_timeout`. It fires again as long as the silence lasts.
void link_timed_out(i16 channel);

/// Announces the link if it was lost. Runs at the end of every receive event, so any byte counts.
void link_returned(i16 channel);

} // namespace sensor
} // namespace tyxo
