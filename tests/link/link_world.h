#pragma once
// A fresh simulated machine with four wired Evaluator lines, and a memory of every call that leaves the link.

#include "app/wiring.h"
#include "basics/number_text.h"
#include "link/calls.h"
#include "link/channel_rec.h"
#include "link/frame_dispatch.h"
#include "link/indicators.h"
#include "link/serial.h"
#include "platform/simulation.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace tyxo::link_testing {

using lines = std::vector<std::string>;

/// "07-02-2026 13:05:09", what the machine's clock shows unless a test moves it.
inline constexpr std::string_view box_clock = "07-02-2026 13:05:09";
inline constexpr std::string_view file_clock = "07-02-2026;13:05:09;";

class link_world : public testing::Test {
  protected:
    link_world() {
        simulation::fresh_world();
        wire();
        record_calls();
        sensor::state.max_sensors = channel_count;
        sensor::state.upd_periode = 250;
        for (i16 channel = 0; channel < channel_count; ++channel) {
            channel_rec& rec = sensor::state.channels[channel];
            rec.connected = true;
            rec.location = "Engine " + channel_number(channel);
            sensor::state.comport[channel] = static_cast<i16>(11 + channel);
        }
    }
    ~link_world() override { simulation::fresh_world(); }

    static channel_rec& record(i16 channel) { return sensor::state.channels[channel]; }
    static const lines& debug() { return simulation::world().debug; }
    static std::string box() { return std::string(indicators.Text_status.text()); }

    static void open_port(i16 channel) {
        ASSERT_FALSE(serial::port_open(channel, sensor::state.comport[channel])) << channel;
    }

    /// The frame goes straight to the dispatcher.
    static void dispatch(std::string_view frame, i16 channel = 0) { sensor::frame_dispatch(frame, channel); }

    /// The bytes come over the line, as one receive event; the port is opened when it is closed.
    static void receive(std::string_view bytes, i16 channel = 0) {
        if (!simulation::port(channel).open) open_port(channel);
        simulation::receive(channel, bytes);
    }

    /// The calls of one kind, what stands behind the kind: "1 Testsignal OFF" of "log_note".
    [[nodiscard]] lines told(std::string_view kind) const {
        lines found;
        for (const std::string& line : said) {
            if (line == kind) found.emplace_back();
            if (line.starts_with(std::string(kind) + ' ')) found.push_back(line.substr(kind.size() + 1));
        }
        return found;
    }

    /// Every call in its order: the name, the channel's number, the text.
    lines said;
    bool lock_grants = true; ///< what the stop lock answers

  private:
    void say(std::string_view call) { said.emplace_back(call); }
    void say(std::string_view call, i16 channel) {
        said.push_back(std::string(call) + ' ' + channel_number(channel));
    }
    void say(std::string_view call, i16 channel, std::string_view text) {
        said.push_back(std::string(call) + ' ' + channel_number(channel) + ' ' + std::string(text));
    }

    void record_calls() {
        calls = {};
        calls.createlog = [this](i16 channel) { say("createlog", channel); };
        calls.close_log = [this](i16 channel) { say("close_log", channel); };
        calls.log_record = [this](i16 channel, std::string_view kind) { say("log_record", channel, kind); };
        calls.log_note = [this](i16 channel, std::string_view text) { say("log_note", channel, text); };
        calls.log_comment = [this](i16 channel, std::string_view text) { say("log_comment", channel, text); };
        calls.event_line = [this](std::string_view text) { say("event_line " + std::string(text)); };
        calls.process_thermo = [this](i16 channel) { say("process_thermo", channel); };
        calls.process_angacc = [this](i16 channel) { say("process_angacc", channel); };
        calls.clear_curves = [this](i16 channel) { say("clear_curves", channel); };
        calls.open_alert = [this] {
            say("open_alert");
            sensor::state.alert_open = true;
        };
        calls.show_alert_line = [this](i16 channel) { say("show_alert_line", channel); };
        calls.alert_text = [this](i16 channel, std::string_view text) { say("alert_text", channel, text); };
        calls.stop_lock = [this](std::string_view what) {
            said.push_back("stop_lock " + std::string(what));
            return lock_grants;
        };
    }
};

} // namespace tyxo::link_testing
