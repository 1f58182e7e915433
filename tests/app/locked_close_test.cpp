// A request to end the program that measures, with the real stop lock before it.

#include "app/started_program.h"

#include "dialogs/lock_operator.h"
#include "gateway/connection.h"
#include "gateway/modbus.h"
#include "link/calls.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tyxo {
namespace {

using namespace simulation;

/// The real stop lock, with the password "Ruhe7", in a program that measures and sends to the plant
/// controller.
class LockedClose : public testing::Test {
  protected:
    void SetUp() override {
        prepare(logging_settings(2, std::string(with_events) + "passwd=Ruhe7\r\nIPAutoC= 1\r\n"
                                                               "IPAdr=10.0.0.5\r\nIPPort= 502\r\n"));
        calls.stop_lock = FrmAbort::stop_lock;
        mainfrm::start_program(1272, 911);
        start_logging(0);
        ASSERT_TRUE(tcp.tcp_connected);
    }
    static std::ptrdiff_t stop_lines() {
        const text_lines lines = event_lines();
        return std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
            return line.ends_with(";Tyxo Data Logger software stopped !");
        });
    }
    static void expect_it_goes_on() {
        EXPECT_FALSE(world().exit_code.has_value());
        EXPECT_TRUE(sensor::state.measure_running);
        EXPECT_TRUE(port(0).open);
        const auto before = logged(0).size();
        feed(0, measured_body());
        EXPECT_EQ(logged(0).size(), before + 1);
    }
};

TEST_F(LockedClose, ThePasswordEndsTheProgramAndStopsNothingFirst) {
    const auto before = logged(0);
    while_asked([] { stop_with("Ruhe7"); });
    EXPECT_TRUE(mainfrm::query_unload());
    EXPECT_EQ(world().exit_code, 0);
    EXPECT_EQ(logged(0), before) << "no closing comment";
    EXPECT_TRUE(port(0).open);
    EXPECT_TRUE(sensor::state.channel_running[0]);
    EXPECT_TRUE(tcp.tcp_connected);
}

TEST_F(LockedClose, TheStopLineIsWrittenBeforeAnybodyIsAsked) {
    while_asked([] {
        EXPECT_EQ(stop_lines(), 1);
        FrmAbort::CmdContinue_click();
    });
    EXPECT_FALSE(mainfrm::query_unload());
    EXPECT_EQ(stop_lines(), 1);
}

TEST_F(LockedClose, ContinueLoggingKeepsTheProgramAndTheLogRunningAndDisconnectsTheGateway) {
    while_asked([] {
        type_password("Ruhe7");
        EXPECT_TRUE(tcp.tcp_connected);
        FrmAbort::CmdContinue_click();
    });
    EXPECT_FALSE(mainfrm::query_unload());
    EXPECT_FALSE(tcp.tcp_connected);
    EXPECT_EQ(gateway.Winsock_A.State(), socket_state::closed);
    expect_it_goes_on();
    EXPECT_TRUE(indicators.Quit.Enabled) << "only a stop command leaves it disabled";
}

TEST_F(LockedClose, TheGatewayDoesNotComeBackByItself) {
    while_asked(FrmAbort::CmdContinue_click);
    EXPECT_FALSE(mainfrm::query_unload());
    advance(120'000);
    EXPECT_FALSE(tcp.tcp_connected);
}

TEST_F(LockedClose, LeavingTheLockByEscapeOrItsFrameIsARefusal) {
    while_asked([] {
        type_password("Ruhe7");
        FrmAbort::unload();
    });
    EXPECT_FALSE(mainfrm::query_unload());
    EXPECT_FALSE(tcp.tcp_connected);
    expect_it_goes_on();
}

TEST_F(LockedClose, FramesAreLoggedAndTheGatewaySendsWhileTheLockIsUp) {
    const auto before = logged(0).size();
    i32 ticks = 0;
    while_asked([&] { ticks = world().do_events_calls; }, 100);
    after(2000, [] { receive(0, closed(measured_body())); });
    after(4000, [] { receive(0, closed(measured_body())); });
    after(5000, [&] {
        EXPECT_TRUE(FrmAbort::state.form.Visible);
        EXPECT_EQ(logged(0).size(), before + 2);
        EXPECT_GT(world().do_events_calls, ticks) << "timers tick";
        FrmAbort::CmdContinue_click();
    });
    EXPECT_FALSE(mainfrm::query_unload());
}

TEST_F(LockedClose, TheWindowClosesThoughTheMenusQuitIsDisabled) {
    while_asked(FrmAbort::CmdContinue_click);
    mainfrm::startstop_click();
    EXPECT_FALSE(indicators.Quit.Enabled);
    while_asked([] { stop_with("Ruhe7"); });
    EXPECT_TRUE(mainfrm::query_unload());
    EXPECT_EQ(world().exit_code, 0);
}

TEST_F(LockedClose, ASecondRequestInsideTheQuestionIsRefusedAndLeavesTheGatewayAlone) {
    while_asked([] {
        EXPECT_FALSE(mainfrm::query_unload());
        EXPECT_EQ(stop_lines(), 2);
        EXPECT_TRUE(tcp.tcp_connected) << "nobody has answered yet";
        EXPECT_FALSE(world().exit_code.has_value());
        stop_with("Ruhe7");
    });
    EXPECT_TRUE(mainfrm::query_unload());
}

TEST_F(LockedClose, ARequestWhileAStopIsAskedEndsNothingThatTheOperatorDidNotGrant) {
    while_asked([] {
        EXPECT_FALSE(mainfrm::query_unload());
        stop_with("Ruhe7");
    });
    mainfrm::start_channel_click(0);
    EXPECT_FALSE(port(0).open) << "the stop was granted";
    EXPECT_FALSE(world().exit_code.has_value()) << "the end was not";
}

// The end of the desktop session.

bool may_ask() {
    return true;
}

TEST_F(LockedClose, TheEndOfTheSessionIsGrantedWithThePassword) {
    while_asked([] {
        EXPECT_EQ(stop_lines(), 1);
        stop_with("Ruhe7");
    });
    EXPECT_TRUE(mainfrm::query_end_session(may_ask));
    EXPECT_EQ(world().exit_code, 0);
}

TEST_F(LockedClose, ContinueLoggingKeepsTheSession) {
    while_asked(FrmAbort::CmdContinue_click);
    EXPECT_FALSE(mainfrm::query_end_session(may_ask));
    EXPECT_EQ(stop_lines(), 1);
    EXPECT_FALSE(tcp.tcp_connected) << "as with every refused close";
    expect_it_goes_on();
}

TEST_F(LockedClose, ASessionThatLetsNobodyAskEndsAndTheLogGoesOnUntilThen) {
    std::ptrdiff_t lines_when_asked_for_leave = 0;
    EXPECT_TRUE(mainfrm::query_end_session([&] {
        lines_when_asked_for_leave = stop_lines();
        return false;
    }));
    EXPECT_EQ(lines_when_asked_for_leave, 1) << "the line comes first";
    EXPECT_EQ(stop_lines(), 1);
    EXPECT_FALSE(FrmAbort::state.form.Visible);
    EXPECT_TRUE(tcp.tcp_connected);
    expect_it_goes_on();
}

TEST_F(LockedClose, TheEndOfTheSessionWhileAStopIsAskedKeepsTheSession) {
    while_asked([] {
        EXPECT_FALSE(mainfrm::query_end_session(may_ask));
        EXPECT_TRUE(tcp.tcp_connected);
        stop_with("Ruhe7");
    });
    mainfrm::start_channel_click(0);
    EXPECT_FALSE(port(0).open);
    EXPECT_FALSE(world().exit_code.has_value());
}

} // namespace
} // namespace tyxo
