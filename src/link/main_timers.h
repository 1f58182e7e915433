#pragma once
// The timers of the main window.

#include "basics/per_channel.h"
#include "platform/timer.h"

namespace tyxo::mainfrm {

struct main_timers {
    Timer Timer_chart_upd; ///< the display tick, every `upd_periode` ms while a channel is started
    per_channel<Timer> Timer_intervall; ///< request sequencers; never enabled
    per_channel<Timer> Timer_timeout;   ///< link watchdogs
    per_channel<Timer> Timer_chartres;  ///< ticks each minute while the chart is frozen
    Timer Timer_TCP;                    ///< the send cycle
};

inline main_timers timers;

} // namespace tyxo::mainfrm
