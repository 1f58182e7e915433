// A request to end the program, and who is asked about it.

#include "app/started_program.h"

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
        mainfrm::start_program(1272, 911);
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
    EXPECT_TRUE(mainfrm::query_unload());
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
    EXPECT_TRUE(mainfrm::query_unload());
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
    EXPECT_TRUE(mainfrm::query_unload());
    EXPECT_EQ(world().exit_code, 0);
    EXPECT_EQ(file(log_path(0)), log_before) << "no closing comment";
    EXPECT_EQ(indicators.Text_status.text(), box_before);
    EXPECT_EQ(event_lines().back(), stop_line);
    EXPECT_TRUE(port(0).open);
    EXPECT_EQ(sent(0), "");
    EXPECT_TRUE(sensor::state.channel_running[0]);
}

TEST_F(Close, WhileMeasuringAndRefusedGoesOnMeasuringWithAStopLineWritten) {
    start_logging(0);
    answer(false);
    EXPECT_FALSE(mainfrm::query_unload());
    EXPECT_FALSE(world().exit_code.has_value());
    EXPECT_EQ(event_lines().back(), stop_line);
    EXPECT_TRUE(sensor::state.measure_running);
    EXPECT_TRUE(port(0).open);
    feed(0, measured_body());
    EXPECT_EQ(logged(0), text_lines{"<REC1> 13:05:09 51 1480 1234 48 7 </REC1>"});
}

TEST_F(Close, EveryRefusedRequestWritesItsOwnLine) {
    start_logging(0);
    answer(false);
    for (int request = 0; request < 3; ++request)
        EXPECT_FALSE(mainfrm::query_unload());
    EXPECT_EQ(asked_, 3);
    const text_lines lines = event_lines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), std::string(stop_line)), 3);
}

TEST_F(Close, BehindAStopOfAllChannelsIsIdleAgain) {
    start_logging(0);
    mainfrm::start_channel_click(0);
    const int before = asked_;
    answer(false);
    EXPECT_TRUE(mainfrm::query_unload());
    EXPECT_EQ(asked_, before);
    EXPECT_EQ(world().exit_code, 0);
}

TEST_F(Close, SavesNoSettings) {
    const std::string before = file("tyxo.ini");
    sensor::state.upd_periode = 100;
    mainfrm::query_unload();
    EXPECT_EQ(file("tyxo.ini"), before);
}

TEST_F(Close, WithABrokenEventFileEndsAllTheSame) {
    world().unwritable.insert(std::string(events_path));
    EXPECT_TRUE(mainfrm::query_unload());
    EXPECT_EQ(world().boxes.size(), 1U);
    EXPECT_EQ(world().exit_code, 0);
}

TEST_F(Close, ByTheMachineWritesTheStopLineAndAsksNobody) {
    start_logging(0);
    mainfrm::end_without_question(0);
    EXPECT_EQ(asked_, 0);
    EXPECT_EQ(world().exit_code, 0);
    EXPECT_EQ(event_lines().back(), stop_line);
    EXPECT_EQ(file(log_path(0)).find("Measure Stopped"), std::string::npos) << "no closing comment";
}

TEST_F(Close, ByTheMachineWhileTheStopLockAsksEndsAllTheSame) {
    start_logging(0);
    calls.stop_lock = [](std::string_view) {
        mainfrm::end_without_question(0);
        return false;
    };
    mainfrm::query_unload();
    EXPECT_EQ(world().exit_code, 0);
}

TEST(CloseBeforeTheStart, ByTheMachineWritesNoStopLine) {
    prepare(logging_settings(1, with_events));
    world().screen = {640, 480};
    text_lines at_end{"not ended"};
    world().during_box = [&] {
        mainfrm::end_without_question(0);
        at_end = event_lines();
    };
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(at_end, text_lines{}) << "no start line, no stop line";
}

TEST_F(Close, IsGrantedWhileNoStopLockIsThere) {
    calls.stop_lock = link_calls{}.stop_lock;
    start_logging(0);
    EXPECT_TRUE(mainfrm::query_unload());
    EXPECT_EQ(world().exit_code, 0);
}

TEST_F(Close, TheEndOfTheSessionWhileIdleEndsTheProgramWithoutAsking) {
    int leaves = 0;
    EXPECT_TRUE(mainfrm::query_end_session([&] { return ++leaves > 0; }));
    EXPECT_EQ(leaves, 0);
    EXPECT_EQ(asked_, 0);
    EXPECT_EQ(event_lines().back(), stop_line);
    EXPECT_EQ(world().exit_code, 0);
}

} // namespace
} // namespace tyxo
