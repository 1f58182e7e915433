#pragma once
// Is the Evaluator there? The watchdog of each link, its return, the request sequencer, and the timers of
// them all.

#include "basics/per_channel.h"
#include "basics/types.h"
#include "platform/timer.h"

namespace tyxo {

/// The timers of the main window that the link works with.
namespace mainfrm {
inline Timer Timer_chart_upd; ///< the display tick, every `upd_periode` ms while a channel is started
inline per_channel<Timer> Timer_intervall; ///< request sequencers; never enabled
inline per_channel<Timer> Timer_timeout;   ///< link watchdogs
} // namespace mainfrm

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

inline i16 poll_step =
    0; ///< one for all channels: with several channels they take turns through one sequence
inline per_channel<bool> poll_hold{}; ///< skips the sequencer; nothing sets it

/// One step of the request sequencer: sends a request for the step's kind of frame. Failure: that of
/// `serial::frame_send`; the step counts as done.
void poll(i16 channel);

/// The watchdog fired: no complete frame for `link_timeout`. It fires again as long as the silence lasts.
void link_timed_out(i16 channel);

/// Announces the link if it was lost. Runs at the end of every receive event, so any byte counts.
void link_returned(i16 channel);

} // namespace sensor
} // namespace tyxo
