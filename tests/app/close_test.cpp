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

class Close : public testing::Test {
  protected:
    void SetUp() override {
        prepare(logging_settings(2, with_events));
        start_program(1272, 911);
        answer(true);
    }
    /// The stop lock from now on.
    void answer(bool granted) {
        calls.stop_lock = [this, granted](std::string_view what) {
            ++asked_;
            asked_what_ = what;
            events_when_asked_ = event_lines();
            return granted;
        };
    }
    int asked_ = 0;
    std::string asked_what_;
    text_lines events_when_asked_;
};

TEST_F(Close, WhileIdleWritesTheStopLineAndEndsAtOnce) {
    const auto before = world().files;
    EXPECT_TRUE(query_unload());
    EXPECT_EQ(world().exit_code, 0);
    EXPECT_EQ(asked_, 0);
    EXPECT_EQ(event_lines(), (text_lines{std::string(start_line), std::string(stop_line)}));
    auto after = world().files;
    after[std::string(events_path)] = before.at(std::string(events_path));
    EXPECT_EQ(after, before) << "nothing else happens on the disk";
    EXPECT_TRUE(world().boxes.empty());
}

TEST_F(Close, WhileMeasuringAsksTheStopLockBehindTheStopLine) {
    start_logging(0);
    EXPECT_TRUE(query_unload());
    EXPECT_EQ(asked_, 1);
    EXPECT_EQ(asked_what_, "Stops all channels and ends the program");
    ASSERT_FALSE(events_when_asked_.empty());
    EXPECT_EQ(events_when_asked_.back(), stop_line);
}

TEST_F(Close, WhileMeasuringAndGrantedEndsWithoutStoppingAnything) {
    start_logging(0);
    feed(0, measured_body());
    const std::string log_before = file(log_path(0));
    const std::string box_before(indicators.Text_status.text());
    EXPECT_TRUE(query_unload());
    EXPECT_EQ(world().exit_code, 0);
    EXPECT_EQ(file(log_path(0)), log_before) << "no closing comment";
    EXPECT_EQ(indicators.Text_status.text(), box_before);
    EXPECT_EQ(event_lines().back(), stop_line);
    EXPECT_TRUE(port(0).open);
    EXPECT_EQ(sent(0), "");
    EXPECT_TRUE(sensor::channel_running[0]);
}

TEST_F(Close, WhileMeasuringAndRefusedGoesOnMeasuringWithAStopLineWritten) {
    start_logging(0);
    answer(false);
    EXPECT_FALSE(query_unload());
    EXPECT_FALSE(world().exit_code.has_value());
    EXPECT_EQ(event_lines().back(), stop_line);
    EXPECT_TRUE(sensor::measure_running);
    EXPECT_TRUE(port(0).open);
    feed(0, measured_body());
    EXPECT_EQ(logged(0), text_lines{"<REC1> 13:05:09 51 1480 1234 48 7 </REC1>"});
}

TEST_F(Close, EveryRefusedRequestWritesItsOwnLine) {
    start_logging(0);
    answer(false);
    for (int request = 0; request < 3; ++request)
        EXPECT_FALSE(query_unload());
    EXPECT_EQ(asked_, 3);
    const text_lines lines = event_lines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), std::string(stop_line)), 3);
}

TEST_F(Close, BehindAStopOfAllChannelsIsIdleAgain) {
    start_logging(0);
    mainfrm::start_channel_click(0);
    const int before = asked_;
    answer(false);
    EXPECT_TRUE(query_unload());
    EXPECT_EQ(asked_, before);
    EXPECT_EQ(world().exit_code, 0);
}

TEST_F(Close, SavesNoSettings) {
    const std::string before = file("tyxo.ini");
    sensor::upd_periode = 100;
    query_unload();
    EXPECT_EQ(file("tyxo.ini"), before);
}

TEST_F(Close, WithABrokenEventFileEndsAllTheSame) {
    world().unwritable.insert(std::string(events_path));
    EXPECT_TRUE(query_unload());
    EXPECT_EQ(world().boxes.size(), 1U);
    EXPECT_EQ(world().exit_code, 0);
}

TEST_F(Close, ByTheMachineWritesTheStopLineAndAsksNobody) {
    start_logging(0);
    end_without_question(0);
    EXPECT_EQ(asked_, 0);
    EXPECT_EQ(world().exit_code, 0);
    EXPECT_EQ(event_lines().back(), stop_line);
    EXPECT_EQ(file(log_path(0)).find("Measure Stopped"), std::string::npos) << "no closing comment";
}

TEST_F(Close, ByTheMachineWhileTheStopLockAsksEndsAllTheSame) {
    start_logging(0);
    calls.stop_lock = [](std::string_view) {
        end_without_question(0);
        return false;
    };
    query_unload();
    EXPECT_EQ(world().exit_code, 0);
}

TEST(CloseBeforeTheStart, ByTheMachineWritesNoStopLine) {
    prepare(logging_settings(1, with_events));
    world().screen = {640, 480};
    text_lines at_end{"not ended"};
    world().during_box = [&] {
        end_without_question(0);
        at_end = event_lines();
    };
    start_program(1272, 911);
    EXPECT_EQ(at_end, text_lines{}) << "no start line, no stop line";
}

TEST_F(Close, IsGrantedWhileNoStopLockIsThere) {
    calls.stop_lock = link_calls{}.stop_lock;
    start_logging(0);
    EXPECT_TRUE(query_unload());
    EXPECT_EQ(world().exit_code, 0);
}

/// The real stop lock, with the password "Ruhe7", in a program that measures and sends to the plant
/// controller.
class LockedClose : public testing::Test {
  protected:
    void SetUp() override {
        prepare(logging_settings(2, std::string(with_events) + "passwd=Ruhe7\r\nIPAutoC= 1\r\n"
                                                               "IPAdr=10.0.0.5\r\nIPPort= 502\r\n"));
        calls.stop_lock = stop_lock;
        start_program(1272, 911);
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
        EXPECT_TRUE(sensor::measure_running);
        EXPECT_TRUE(port(0).open);
        const auto before = logged(0).size();
        feed(0, measured_body());
        EXPECT_EQ(logged(0).size(), before + 1);
    }
};

TEST_F(LockedClose, ThePasswordEndsTheProgramAndStopsNothingFirst) {
    const auto before = logged(0);
    while_asked([] { stop_with("Ruhe7"); });
    EXPECT_TRUE(query_unload());
    EXPECT_EQ(world().exit_code, 0);
    EXPECT_EQ(logged(0), before) << "no closing comment";
    EXPECT_TRUE(port(0).open);
    EXPECT_TRUE(sensor::channel_running[0]);
    EXPECT_TRUE(tcp.tcp_connected);
}

TEST_F(LockedClose, TheStopLineIsWrittenBeforeAnybodyIsAsked) {
    while_asked([] {
        EXPECT_EQ(stop_lines(), 1);
        CmdContinue_click();
    });
    EXPECT_FALSE(query_unload());
    EXPECT_EQ(stop_lines(), 1);
}

TEST_F(LockedClose, ContinueLoggingKeepsTheProgramAndTheLogRunningAndDisconnectsTheGateway) {
    while_asked([] {
        type_password("Ruhe7");
        EXPECT_TRUE(tcp.tcp_connected);
        CmdContinue_click();
    });
    EXPECT_FALSE(query_unload());
    EXPECT_FALSE(tcp.tcp_connected);
    EXPECT_EQ(Winsock_A.State(), socket_state::closed);
    expect_it_goes_on();
    EXPECT_TRUE(indicators.Quit.Enabled) << "only a stop command leaves it disabled";
}

TEST_F(LockedClose, TheGatewayDoesNotComeBackByItself) {
    while_asked(CmdContinue_click);
    EXPECT_FALSE(query_unload());
    advance(120'000);
    EXPECT_FALSE(tcp.tcp_connected);
}

TEST_F(LockedClose, LeavingTheLockByEscapeOrItsFrameIsARefusal) {
    while_asked([] {
        type_password("Ruhe7");
        FrmAbort_unload();
    });
    EXPECT_FALSE(query_unload());
    EXPECT_FALSE(tcp.tcp_connected);
    expect_it_goes_on();
}

TEST_F(LockedClose, FramesAreLoggedAndTheGatewaySendsWhileTheLockIsUp) {
    const auto before = logged(0).size();
    i32 ticks = 0;
    while_asked([&] { ticks = world().do_events_calls; }, 100);
    after(2000, [] { receive(0, framed(measured_body())); });
    after(4000, [] { receive(0, framed(measured_body())); });
    after(5000, [&] {
        EXPECT_TRUE(FrmAbort.form.Visible);
        EXPECT_EQ(logged(0).size(), before + 2);
        EXPECT_GT(world().do_events_calls, ticks) << "timers tick";
        CmdContinue_click();
    });
    EXPECT_FALSE(query_unload());
}

TEST_F(LockedClose, TheWindowClosesThoughTheMenusQuitIsDisabled) {
    while_asked(CmdContinue_click);
    mainfrm::startstop_click();
    EXPECT_FALSE(indicators.Quit.Enabled);
    while_asked([] { stop_with("Ruhe7"); });
    EXPECT_TRUE(query_unload());
    EXPECT_EQ(world().exit_code, 0);
}

TEST_F(LockedClose, ASecondRequestInsideTheQuestionIsRefusedAndLeavesTheGatewayAlone) {
    while_asked([] {
        EXPECT_FALSE(query_unload());
        EXPECT_EQ(stop_lines(), 2);
        EXPECT_TRUE(tcp.tcp_connected) << "nobody has answered yet";
        EXPECT_FALSE(world().exit_code.has_value());
        stop_with("Ruhe7");
    });
    EXPECT_TRUE(query_unload());
}

TEST_F(LockedClose, ARequestWhileAStopIsAskedEndsNothingThatTheOperatorDidNotGrant) {
    while_asked([] {
        EXPECT_FALSE(query_unload());
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
    EXPECT_TRUE(query_end_session(may_ask));
    EXPECT_EQ(world().exit_code, 0);
}

TEST_F(LockedClose, ContinueLoggingKeepsTheSession) {
    while_asked(CmdContinue_click);
    EXPECT_FALSE(query_end_session(may_ask));
    EXPECT_EQ(stop_lines(), 1);
    EXPECT_FALSE(tcp.tcp_connected) << "as with every refused close";
    expect_it_goes_on();
}

TEST_F(LockedClose, ASessionThatLetsNobodyAskEndsAndTheLogGoesOnUntilThen) {
    std::ptrdiff_t lines_when_asked_for_leave = 0;
    EXPECT_TRUE(query_end_session([&] {
        lines_when_asked_for_leave = stop_lines();
        return false;
    }));
    EXPECT_EQ(lines_when_asked_for_leave, 1) << "the line comes first";
    EXPECT_EQ(stop_lines(), 1);
    EXPECT_FALSE(FrmAbort.form.Visible);
    EXPECT_TRUE(tcp.tcp_connected);
    expect_it_goes_on();
}

TEST_F(LockedClose, TheEndOfTheSessionWhileAStopIsAskedKeepsTheSession) {
    while_asked([] {
        EXPECT_FALSE(query_end_session(may_ask));
        EXPECT_TRUE(tcp.tcp_connected);
        stop_with("Ruhe7");
    });
    mainfrm::start_channel_click(0);
    EXPECT_FALSE(port(0).open);
    EXPECT_FALSE(world().exit_code.has_value());
}

TEST_F(Close, TheEndOfTheSessionWhileIdleEndsTheProgramWithoutAsking) {
    int leaves = 0;
    EXPECT_TRUE(query_end_session([&] { return ++leaves > 0; }));
    EXPECT_EQ(leaves, 0);
    EXPECT_EQ(asked_, 0);
    EXPECT_EQ(event_lines().back(), stop_line);
    EXPECT_EQ(world().exit_code, 0);
}

} // namespace
} // namespace tyxo
