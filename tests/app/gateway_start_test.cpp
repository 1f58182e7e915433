// The gateway in the running program: its start, the refused close request, and measuring while it waits.

#include "app/started_program.h"

#include "gateway/connection.h"
#include "gateway/frmsetuptcp.h"
#include "gateway/modbus.h"
#include "link/calls.h"
#include "link/main_timers.h"
#include "link/supervision.h"
#include "settings/settings.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

constexpr std::string_view gateway_on =
    "IPAutoC=1\r\nIPAdr=10.1.2.3\r\nIPPort=502\r\nREGBase=1000\r\nIPenaTRS=1\r\n";

class GatewayStart : public testing::Test {
  protected:
    ~GatewayStart() override { fresh_world(); }

    static void prepare_gateway(std::string_view more = "") {
        prepare(logging_settings(2, std::string(gateway_on) + std::string(more)));
        // The boxes of the window, whoever fills them.
        FrmSetupTCP::state.Txt_IPadr = "10.1.2.3";
        FrmSetupTCP::state.Txt_IPport = "502";
    }
    static void be_silent() {
        world().plant.answers = [](const std::string&) { return reply{}; };
    }
};

TEST_F(GatewayStart, ConnectsBeforeTheStartHasReturned) {
    prepare_gateway();
    mainfrm::start_program(1280, 960);
    ASSERT_EQ(world().plant.attempts.size(), 1U);
    EXPECT_EQ(world().plant.attempts[0].host, "10.1.2.3");
    EXPECT_EQ(world().plant.attempts[0].port, 502);
    EXPECT_TRUE(tcp.tcp_connected);
    EXPECT_TRUE(world().plant.frames.empty());
    EXPECT_TRUE(mainfrm::timers.Timer_TCP.Enabled());
    advance(605);
    EXPECT_EQ(world().plant.frames.size(), 1U);
}

TEST_F(GatewayStart, SetsItsTimersAsDesigned) {
    prepare_gateway("IPRefresh=7\r\n");
    mainfrm::start_program(1280, 960);
    EXPECT_EQ(mainfrm::timers.Timer_TCP.Interval(), 300);
    EXPECT_EQ(gateway.Timer_reconnect.Interval(), 40'000);
    EXPECT_FALSE(gateway.Timer_reconnect.Enabled());
    EXPECT_EQ(gateway.Timer1.Interval(), 1);
    EXPECT_FALSE(gateway.Timer1.Enabled());
    EXPECT_FALSE(FrmSetupTCP::state.slow || FrmSetupTCP::state.medium || FrmSetupTCP::state.fast);
}

TEST_F(GatewayStart, WithTheAutomaticOffConnectsNothingAndStopsTheCycle) {
    for (const char* value : {"IPAutoC=0\r\n", "IPAutoC=2\r\n", ""}) {
        prepare(logging_settings(2, "IPAdr=10.1.2.3\r\nIPRefresh=1\r\n" + std::string(value)));
        mainfrm::start_program(1280, 960);
        advance(5000);
        EXPECT_TRUE(world().plant.attempts.empty()) << value;
        EXPECT_FALSE(mainfrm::timers.Timer_TCP.Enabled());
        EXPECT_EQ(mainfrm::timers.Timer_TCP.Interval(), 450);
        EXPECT_EQ(FrmSetupTCP::state.Text5.Text, "Disconnected");
    }
}

TEST_F(GatewayStart, WaitsHalfASecondForAControllerThatIsNotThere) {
    prepare_gateway("IPRefresh=2\r\n");
    world().plant.connects = connecting::unanswered;
    mainfrm::start_program(1280, 960);
    EXPECT_GE(world().now_ms, 500);
    EXPECT_LT(world().now_ms, 520);
    EXPECT_EQ(FrmSetupTCP::state.Text5.Text, "Can't connect to 10.1.2.3  State: 6");
    EXPECT_NE(mainfrm::state.Caption, "");
    EXPECT_FALSE(world().exit_code.has_value());
}

TEST_F(GatewayStart, MeasuringIsUnderWayBeforeTheConnection) {
    prepare_gateway("autostart=1\r\n");
    world().plant.connect_ms = 200;
    bool measuring = false;
    after(100, [&] {
        measuring = sensor::state.measure_running && gateway.Winsock_A.State() == socket_state::connecting;
    });
    mainfrm::start_program(1280, 960);
    EXPECT_TRUE(measuring);
    EXPECT_TRUE(tcp.tcp_connected);
}

TEST_F(GatewayStart, ARefusedCloseRequestDisconnectsForGood) {
    prepare_gateway();
    mainfrm::start_program(1280, 960);
    start_logging(0);
    advance(2000);
    calls.stop_lock = [](std::string_view) {
        EXPECT_EQ(gateway.Winsock_A.State(), socket_state::connected) << "the answer comes first";
        return false;
    };
    EXPECT_FALSE(mainfrm::query_unload());
    EXPECT_EQ(gateway.Winsock_A.State(), socket_state::closed);
    EXPECT_FALSE(tcp.tcp_connected);
    EXPECT_EQ(FrmSetupTCP::state.Text5, (status_box{"Disconnected", 255}));
    const std::size_t before = world().plant.frames.size();
    advance(600'000);
    EXPECT_EQ(world().plant.frames.size(), before);
    EXPECT_EQ(world().plant.attempts.size(), 1U);
    EXPECT_TRUE(sensor::state.measure_running);
}

TEST_F(GatewayStart, AGrantedOrIdleCloseRequestLeavesTheConnection) {
    prepare_gateway();
    mainfrm::start_program(1280, 960);
    EXPECT_TRUE(mainfrm::query_unload());
    EXPECT_EQ(gateway.Winsock_A.State(), socket_state::connected);
    start_logging(0);
    calls.stop_lock = [](std::string_view) { return true; };
    EXPECT_TRUE(mainfrm::query_unload());
    EXPECT_EQ(gateway.Winsock_A.State(), socket_state::connected);
    EXPECT_TRUE(tcp.tcp_connected);
}

TEST_F(GatewayStart, AFrameThatArrivesDuringAWaitIsDecoded) {
    prepare_gateway();
    mainfrm::start_program(1280, 960);
    start_logging(0);
    be_silent();
    i32 speed = 0;
    bool waiting = false;
    after(20, [&] {
        waiting = transaction_open();
        feed(0, measured_body());
        speed = sensor::state.channels[0].speed;
    });
    FC16MB_write(0, 1);
    EXPECT_TRUE(waiting);
    EXPECT_EQ(speed, 1480);
    EXPECT_EQ(logged(0).size(), 1U);
    EXPECT_EQ(FrmSetupTCP::state.Text5.Text, "Modbus Time Out");
}

TEST_F(GatewayStart, TheWatchdogAndTheChartTickDuringAnAttempt) {
    prepare_gateway();
    mainfrm::start_program(1280, 960);
    start_logging(0);
    feed(0, measured_body());
    advance(2700);
    TCP_disconnect();
    world().plant.connects = connecting::unanswered;
    ASSERT_TRUE(sensor::state.channels[0].connected);
    i32 speed_before = -1;
    i32 speed_behind = -1;
    after(290, [&] { speed_before = sensor::state.channels[0].speed; });
    after(310, [&] { speed_behind = sensor::state.channels[0].speed; });
    TCP_connect(1);
    EXPECT_EQ(speed_before, 1480);
    EXPECT_EQ(speed_behind, 0);
    EXPECT_FALSE(sensor::state.channels[0].connected);
}

TEST_F(GatewayStart, ARestOfARecordIsSentWhenTheLinkIsLost) {
    prepare_gateway();
    mainfrm::start_program(1280, 960);
    start_logging(0);
    feed(0, measured_body());
    advance(1300); // two blocks have gone out, one of each channel
    const std::string& frame = world().plant.frames.at(0).bytes;
    EXPECT_EQ(static_cast<unsigned char>(frame[17]) * 256 + static_cast<unsigned char>(frame[18]), 1480);
    advance(5000);
    const std::string& later = world().plant.frames.back().bytes;
    EXPECT_EQ(later.substr(17, 2), std::string(2, '\0'));
}

} // namespace
} // namespace tyxo
