// The rules of a timer that both platforms share.

#include "platform/simulation.h"
#include "platform/timer.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using simulation::advance;

class TimerRules : public testing::Test {
  protected:
    TimerRules() {
        simulation::fresh_world();
        timer_.on_tick([this] { ++ticks_; });
        timer_.Interval(100);
        timer_.Enabled(true);
        advance(60);
    }

    Timer timer_;
    int ticks_ = 0;
};

TEST_F(TimerRules, EnablingOneThatIsEnabledLeavesItsPeriod) {
    for (int time = 0; time < 4; ++time) {
        timer_.Enabled(true);
        advance(10);
    }
    EXPECT_EQ(ticks_, 1);
}

TEST_F(TimerRules, EnablingOneThatWasDisabledStartsAWholePeriod) {
    timer_.Enabled(false);
    timer_.Enabled(true);
    advance(99);
    EXPECT_EQ(ticks_, 0);
    advance(1);
    EXPECT_EQ(ticks_, 1);
}

TEST_F(TimerRules, DisablingOneThatIsDisabledLeavesItSo) {
    timer_.Enabled(false);
    timer_.Enabled(false);
    advance(1000);
    EXPECT_EQ(ticks_, 0);
}

TEST_F(TimerRules, SettingTheIntervalStartsTheRunningPeriodAnew) {
    timer_.Interval(100);
    advance(99);
    EXPECT_EQ(ticks_, 0);
    advance(1);
    EXPECT_EQ(ticks_, 1);
}

TEST_F(TimerRules, ATickThatEnablesItsTimerKeepsItsPace) {
    timer_.on_tick([this] {
        ++ticks_;
        timer_.Enabled(true);
    });
    advance(1000);
    EXPECT_EQ(ticks_, 10);
}

} // namespace
} // namespace tyxo
