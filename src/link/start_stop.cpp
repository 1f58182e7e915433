#include "link/start_stop.h"

#include "link/calls.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "link/serial.h"
#include "link/supervision.h"
#include "platform/awake.h"
#include "platform/message_box.h"

#include <algorithm>

namespace tyxo {

namespace {

constexpr std::string_view start_all = "Start all channels";
constexpr std::string_view stop_all = "Stop all channels";

bool any_running() {
    return std::ranges::find(sensor::state.channel_running, true) != sensor::state.channel_running.end();
}

/// "Measure started" and "Measure stopped": the box and the event file, no comment in the log.
void raise_measure_event(i16 channel, std::string_view text) {
    const std::string line = "KVD " + sensor::state.channels[channel].location + std::string(text);
    raise_event(channel, {' ' + line, "", line});
}

/// True if the channel's port is open and the channel measures.
bool start_one(i16 channel) {
    channel_rec& rec = sensor::channel_at(channel);
    sensor::state.channel_running[channel] = true;
    if (!sensor::state.chart_timer_on) funct::chart_timer_start();
    rec.log_state = log_states::wanted;
    funct::poll_timer_arm(channel);
    funct::timeout_timer_start(channel);
    if (serial::port_open(channel, sensor::state.comport[channel])) {
        message_box("no Comport configurated for sensor nr. " + channel_number(channel), box_icon::critical);
        stop_log_ch(channel);
        rec.log_state = log_states::none;
        return false;
    }
    keep_awake(true);
    indicators.start_channel[channel].Caption = "Stop channel " + channel_number(channel);
    raise_measure_event(channel, " ## Measure started ");
    return true;
}

void stop_one(i16 channel) {
    funct::poll_timer_stop(channel);
    funct::timeout_timer_stop(channel);
    serial::port_close(channel);
    calls.close_log(channel);
    sensor::state.channel_running[channel] = false;
    keep_awake(any_running());
    indicators.start_channel[channel].Caption = "Start channel " + channel_number(channel);
    raise_measure_event(channel, " ## Measure stopped ");
}

std::string stops_channel(i16 channel) {
    const std::string& location = sensor::state.channels[channel].location;
    return "Stops channel " + channel_number(channel) + (location.empty() ? "" : ": " + location);
}

/// Looks like a mistake and stays: "configurated", here and where a port does not open
/// (StartMenu.WithoutSensorsBothEntriesSaySo,
/// StartMenu.ABusyPortInTheMiddleOfAStartOfAllKeepsTheFirstChannels).
void say_no_sensor() {
    message_box("No sensor configurated\r\nPlease setup first", box_icon::critical);
}

/// Asks the stop lock; the menu's `Quit` is left as the answer was.
bool stop_granted(std::string_view what) {
    indicators.Quit.Enabled = calls.stop_lock(what);
    return indicators.Quit.Enabled;
}

} // namespace

void start_log() {
    funct::chart_timer_start();
    for (i16 channel = 0; channel < sensor::state.max_sensors; ++channel) {
        // Looks like a mistake and stays: a port that does not open ends the start of all, the channels
        // behind it are not tried (StartMenu.ABusyPortInTheMiddleOfAStartOfAllKeepsTheFirstChannels).
        if (!start_one(channel)) return;
        indicators.startstop.Caption = stop_all;
    }
}

void start_log_ch(i16 channel) {
    start_one(channel);
}

void stop_log() {
    funct::chart_timer_stop();
    for (i16 channel = 0; channel < sensor::state.max_sensors; ++channel)
        stop_one(channel);
    indicators.startstop.Caption = start_all;
}

void stop_log_ch(i16 channel) {
    // Looks like a mistake and stays: a channel whose port did not open is still marked as running here, so
    // the display tick goes on (StartStop.ABusyPortOfASingleStartLeavesTheDisplayTickOn).
    if (!any_running()) funct::chart_timer_stop();
    stop_one(channel);
}

namespace mainfrm {

void startstop_click() {
    if (sensor::state.max_sensors == 0) {
        say_no_sensor();
    } else if (!sensor::state.measure_running) {
        sensor::state.measure_running = true;
        start_log();
    } else if (stop_granted("Stops all channels")) {
        sensor::state.measure_running = false;
        stop_log();
    }
}

void start_channel_click(i16 channel) {
    if (channel + 1 > sensor::state.max_sensors) {
        say_no_sensor();
    } else if (!sensor::state.channel_running[channel]) {
        sensor::state.channel_running[channel] = true;
        if (!sensor::state.measure_running) {
            sensor::state.measure_running = true;
            indicators.startstop.Caption = stop_all;
        }
        start_log_ch(channel);
    } else if (stop_granted(stops_channel(channel))) {
        sensor::state.channel_running[channel] = false;
        if (!any_running()) {
            sensor::state.measure_running = false;
            indicators.startstop.Caption = start_all;
        }
        stop_log_ch(channel);
    }
}

} // namespace mainfrm
} // namespace tyxo
