#include "link/supervision.h"
#include "link/main_timers.h"

#include "link/calls.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "link/serial.h"
#include "link/status_update.h"

namespace tyxo {

namespace funct {

namespace {

void arm(Timer& timer, int interval, bool enabled) {
    timer.Interval(interval);
    timer.Enabled(enabled);
}

} // namespace

void chart_timer_start() {
    sensor::state.chart_timer_on = true;
    arm(mainfrm::timers.Timer_chart_upd, sensor::state.upd_periode, true);
}

void chart_timer_stop() {
    sensor::state.chart_timer_on = false;
    mainfrm::timers.Timer_chart_upd.Enabled(false);
}

void poll_timer_arm(i16 channel) {
    // Looks like a mistake and stays: the timer is never enabled
    // (PollSequencer.IsArmedWithTheDisplayPeriodAndNeverEnabled).
    arm(mainfrm::timers.Timer_intervall[channel], sensor::state.upd_periode, false);
}

void poll_timer_stop(i16 channel) {
    mainfrm::timers.Timer_intervall[channel].Enabled(false);
}

void timeout_timer_start(i16 channel) {
    arm(mainfrm::timers.Timer_timeout[channel], link_timeout, true);
}

void timeout_timer_stop(i16 channel) {
    mainfrm::timers.Timer_timeout[channel].Enabled(false);
}

} // namespace funct

namespace sensor {

namespace {

struct poll_row {
    i16 step;
    std::string_view request; ///< empty: nothing is sent in this step
    i16 next;
};

// Looks like a mistake and stays: steps 1 and 2 are not reached from the other rows
// (PollStepOf.SendsItsRequestAndGoesOn).
constexpr std::array<poll_row, 7> poll_rows{{
    {0, ":00", 3},
    {1, "", 2},
    {2, "", 3},
    {3, ":03", 4},
    {4, ":04", 6},
    {6, ":06", 8},
    {8, ":08", 0},
}};

} // namespace

void poll(i16 channel) {
    if (state.poll_hold[channel]) return;
    for (const poll_row& row : poll_rows) {
        if (row.step != state.poll_step) continue;
        state.poll_step = row.next;
        if (!row.request.empty()) serial::frame_send(row.request, channel);
        return;
    }
    state.poll_step = 0;
}

void link_timed_out(i16 channel) {
    channel_rec& rec = channel_at(channel);
    indicators.StatusBar = "Sensor " + channel_number(channel) + " not connected";
    rec.tsignal = 0;
    rec.speed = 0;
    if (rec.connected) {
        rec.connected = false;
        status_update(channel);
    }
    calls.clear_curves(channel);
    indicators.drehzahl[channel].Position = 0;
    indicators.dig_drehzahl[channel].Value = 0;
    indicators.digi_Thermo[channel].Value = 0;
    indicators.t_mv[channel].Value = 0;
    // Looks like a mistake and stays: the lamps go dark while the alarms remain latched
    // (Supervision.ATimeoutLeavesAlarmsLatched).
    indicators.LED_Alarm[channel].Active = false;
    indicators.LED_prealarm[channel].Active = false;
    indicators.LED_Rdy[channel].Active = false;
}

void link_returned(i16 channel) {
    channel_rec& rec = channel_at(channel);
    if (rec.connected) return;
    rec.connected = true;
    const std::string text = "Evaluator " + channel_number(channel) + " connected";
    raise_event(channel, {' ' + text, "Evaluator connected", text});
    status_update(channel);
}

} // namespace sensor
} // namespace tyxo
