// The request sequencer, which stays switched off.

#include "link/link_world.h"
#include "link/main_timers.h"
#include "link/start_stop.h"
#include "link/supervision.h"

namespace tyxo::link_testing {
namespace {

class PollSequencer : public link_world {
  protected:
    static std::string sent(i16 channel) {
        std::string text = simulation::sent(channel);
        simulation::sent(channel).clear();
        return text;
    }
};

struct step {
    i16 now;
    const char* sent;
    i16 next;
};

class PollStepOf : public PollSequencer, public testing::WithParamInterface<step> {};

TEST_P(PollStepOf, SendsItsRequestAndGoesOn) {
    open_port(1);
    sensor::state.poll_step = GetParam().now;
    sensor::poll(1);
    EXPECT_EQ(sent(1), GetParam().sent);
    EXPECT_EQ(sensor::state.poll_step, GetParam().next);
}

INSTANTIATE_TEST_SUITE_P(steps, PollStepOf,
                         testing::Values(step{0, ":00a0\r\n", 3}, step{1, "", 2}, step{2, "", 3},
                                         step{3, ":039d\r\n", 4}, step{4, ":049c\r\n", 6},
                                         step{6, ":069a\r\n", 8}, step{8, ":0898\r\n", 0}, step{5, "", 0},
                                         step{7, "", 0}, step{9, "", 0}, step{-1, "", 0}, step{32767, "", 0}),
                         [](const auto& info) {
                             return "step_" + std::to_string(static_cast<std::uint16_t>(info.param.now));
                         });

TEST_F(PollSequencer, HeldChannelIsSkippedAndTheStepStays) {
    open_port(0);
    sensor::state.poll_hold[0] = true;
    sensor::state.poll_step = 3;
    sensor::poll(0);
    EXPECT_EQ(sent(0), "");
    EXPECT_EQ(sensor::state.poll_step, 3);
}

TEST_F(PollSequencer, TwoChannelsTakeTurnsThroughOneSequence) {
    for (const i16 channel : {i16{0}, i16{1}}) {
        start_log_ch(channel);
        mainfrm::timers.Timer_intervall[channel].Enabled(true); // what a polled link would switch on
    }
    simulation::advance(3 * 250 - 1);
    EXPECT_EQ(sent(0), ":00a0\r\n:049c\r\n");
    EXPECT_EQ(sent(1), ":039d\r\n:069a\r\n");
    sensor::state.poll_hold[1] = true;
    simulation::advance(2 * 250);
    EXPECT_EQ(sent(0), ":0898\r\n:00a0\r\n");
    EXPECT_EQ(sent(1), "");
}

TEST_F(PollSequencer, IsArmedWithTheDisplayPeriodAndNeverEnabled) {
    EXPECT_EQ(mainfrm::timers.Timer_intervall[0].Interval(), 0);
    sensor::state.upd_periode = 1000;
    mainfrm::timers.Timer_intervall[0].Enabled(true);
    funct::poll_timer_arm(0);
    EXPECT_EQ(mainfrm::timers.Timer_intervall[0].Interval(), 1000);
    EXPECT_FALSE(mainfrm::timers.Timer_intervall[0].Enabled());
    EXPECT_EQ(mainfrm::timers.Timer_intervall[1].Interval(), 0);
}

TEST_F(PollSequencer, StoppingSwitchesItOff) {
    mainfrm::timers.Timer_intervall[2].Enabled(true);
    funct::poll_timer_stop(2);
    EXPECT_FALSE(mainfrm::timers.Timer_intervall[2].Enabled());
}

TEST_F(PollSequencer, NoRequestReachesTheLineWhileChannelsMeasure) {
    start_log();
    simulation::advance(60000);
    for (i16 channel = 0; channel < channel_count; ++channel) {
        EXPECT_EQ(sent(channel), "");
        EXPECT_FALSE(mainfrm::timers.Timer_intervall[channel].Enabled());
    }
    EXPECT_EQ(sensor::state.poll_step, 0);
}

} // namespace
} // namespace tyxo::link_testing
