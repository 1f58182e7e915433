#pragma once
// A wired gateway with a plant controller that answers, four channels, and nothing connected yet.

#include "app/wiring.h"
#include "gateway/connection.h"
#include "gateway/frmsetuptcp.h"
#include "gateway/modbus.h"
#include "gateway/register_image.h"
#include "link/channel_rec.h"
#include "link/main_timers.h"
#include "platform/simulation.h"
#include "settings/settings.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo {

inline void PrintTo(const status_box& box, std::ostream* out) {
    *out << '"' << box.Text << "\" on " << box.BackColor;
}

} // namespace tyxo

namespace tyxo::gateway_testing {

using simulation::advance;
using simulation::after;
using simulation::connecting;
using simulation::reply;
using simulation::world;

inline const status_box written{"Registers written", 65280};
inline const status_box refused{"Error writting registers", 255};
inline const status_box wrong_answer{"Error writting registers feedback", 255};
inline const status_box timed_out{"Modbus Time Out", 255};
inline const status_box registers_read{"Registers read", 65280};
inline const status_box connected{"Connected", 65280};
inline const status_box disconnected{"Disconnected", 255};
inline const status_box locked{"Connection locked", 65535};
inline const status_box auto_reset{"TCP IP connection auto reset!", 65280};

inline std::string bytes_of(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values)
        text += static_cast<char>(value);
    return text;
}

/// The bytes of a frame as numbers, for comparing.
inline std::vector<int> numbers(std::string_view bytes) {
    std::vector<int> result;
    for (const char byte : bytes)
        result.push_back(static_cast<unsigned char>(byte));
    return result;
}

inline int word(std::string_view bytes, std::size_t index) {
    return static_cast<unsigned char>(bytes[index]) * 256 + static_cast<unsigned char>(bytes[index + 1]);
}

/// "1230x50": where a write goes and how many registers it has.
inline std::string target(std::string_view frame) {
    return std::to_string(word(frame, 8)) + "x" + std::to_string(word(frame, 10));
}

/// The answer of a read: its registers' bytes behind a count.
inline std::string read_answer(int count, std::string_view registers) {
    return bytes_of({0, 0, 0, 0, 0, 3, 1, 3, count}) + std::string(registers);
}

class gateway_world : public testing::Test {
  protected:
    gateway_world() {
        simulation::fresh_world();
        wire();
        sensor::state.max_sensors = channel_count;
        settings.REGBase = 1000;
        settings.IPAdr = FrmSetupTCP::state.Txt_IPadr = "10.1.2.3";
        settings.IPport = 502;
        FrmSetupTCP::state.Txt_IPport = "502";
        start_gateway();
    }
    ~gateway_world() override { simulation::fresh_world(); }

    static simulation::controller& plant() { return world().plant; }
    static const status_box& status() { return FrmSetupTCP::state.Text5; }
    static std::size_t frames() { return plant().frames.size(); }
    static const std::string& last_frame() { return plant().frames.back().bytes; }
    static std::string& box(std::size_t index) { return FrmSetupTCP::state.Text4[index]; }

    static void connect() {
        TCP_connect(1);
        ASSERT_EQ(gateway.Winsock_A.State(), socket_state::connected);
    }

    static void answer_with(const reply& wanted) {
        plant().answers = [wanted](const std::string&) { return wanted; };
    }
    static void answer_with(const std::string& bytes) { answer_with(reply{{{5, bytes}}, false}); }
    static void be_silent() { answer_with(reply{}); }
    static void be_right() { plant() = {}; }

    /// How many milliseconds a call takes.
    template <class Call> static std::int64_t lasting(Call call) {
        const std::int64_t start = world().now_ms;
        call();
        return world().now_ms - start;
    }
    static void write_one() { FC16MB_write(2000, 1); }

    static void automatic(int linear, int state, int differential) {
        settings.IPAutoC = 1;
        settings.IPenaTRS = static_cast<u8>(linear);
        settings.IPsysstat = static_cast<i16>(state);
        settings.IPpolar = static_cast<i16>(differential);
        mainfrm::timers.Timer_TCP.Enabled(true);
    }
};

} // namespace tyxo::gateway_testing
