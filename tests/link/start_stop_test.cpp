// Measuring starts and stops.

#include "link/main_timers.h"
#include "link/start_stop.h"

#include "link/frames.h"
#include "link/link_world.h"
#include "link/supervision.h"

namespace tyxo::link_testing {
namespace {

class StartStop : public link_world {
  protected:
    static bool runs(i16 channel) {
        const bool marked = sensor::state.channel_running[channel];
        EXPECT_EQ(simulation::port(channel).open, marked) << channel;
        EXPECT_EQ(mainfrm::timers.Timer_timeout[channel].Enabled(), marked) << channel;
        EXPECT_EQ(indicators.start_channel[channel].Caption,
                  (marked ? "Stop channel " : "Start channel ") + channel_number(channel));
        return marked;
    }
    /// The channels that run, by their numbers.
    static std::string running() {
        std::string numbers;
        for (i16 channel = 0; channel < channel_count; ++channel) {
            if (runs(channel)) numbers += channel_number(channel);
        }
        EXPECT_EQ(simulation::world().awake, !numbers.empty()) << "the machine stays awake while one runs";
        return numbers;
    }
    static bool chart_ticks() {
        EXPECT_EQ(mainfrm::timers.Timer_chart_upd.Enabled(), sensor::state.chart_timer_on);
        return sensor::state.chart_timer_on;
    }
    static void make_busy(i16 channel) {
        simulation::world().ports[sensor::state.comport[channel]].refuses_to_open = true;
    }
    static lines box_texts() {
        lines texts;
        for (const auto& shown : simulation::world().boxes)
            texts.push_back(shown.text);
        return texts;
    }
    static std::string box_line(i16 channel, const char* what) {
        return std::string(box_clock) + " KVD Engine " + channel_number(channel) + " ## Measure " + what +
               " \r\n";
    }
    static std::string event(i16 channel, const char* what) {
        return "event_line " + std::string(file_clock) + "KVD Engine " + channel_number(channel) +
               " ## Measure " + what + ' ';
    }
};

TEST_F(StartStop, BeforeAnyStartNothingRuns) {
    EXPECT_EQ(running(), "");
    EXPECT_FALSE(chart_ticks());
    EXPECT_EQ(indicators.startstop.Caption, "Start all channels");
}

TEST_F(StartStop, StartingOneChannel) {
    start_log_ch(2);
    EXPECT_EQ(running(), "3");
    EXPECT_TRUE(chart_ticks());
    EXPECT_EQ(mainfrm::timers.Timer_chart_upd.Interval(), 250);
    EXPECT_EQ(mainfrm::timers.Timer_timeout[2].Interval(), 3000);
    EXPECT_EQ(mainfrm::timers.Timer_intervall[2].Interval(), 250);
    EXPECT_FALSE(mainfrm::timers.Timer_intervall[2].Enabled());
    EXPECT_EQ(simulation::port(2).number, 13);
    EXPECT_EQ(record(2).log_state, log_states::wanted);
    EXPECT_EQ(box(), box_line(2, "started"));
    EXPECT_EQ(said, lines{event(2, "started")});
    EXPECT_EQ(indicators.startstop.Caption, "Start all channels");
    EXPECT_TRUE(simulation::world().boxes.empty());
}

TEST_F(StartStop, StoppingOneChannel) {
    start_log_ch(2);
    said.clear();
    indicators.Text_status = {};
    sensor::state.channel_running[2] = false; // the menu has done so
    record(2).log_state = log_states::open;
    stop_log_ch(2);
    EXPECT_EQ(running(), "");
    EXPECT_FALSE(chart_ticks());
    EXPECT_EQ(record(2).log_state, log_states::open);
    EXPECT_EQ(box(), box_line(2, "stopped"));
    EXPECT_EQ(said, (lines{"close_log 3", event(2, "stopped")}));
}

TEST_F(StartStop, TheLogIsClosedAfterThePortAndWhileTheChannelIsMarkedAsRunning) {
    start_log_ch(0);
    std::string seen;
    calls.close_log = [&](i16) {
        seen = simulation::port(0).open ? "open" : "closed";
        seen += sensor::state.channel_running[0] ? " running" : " stopped";
        seen += mainfrm::timers.Timer_timeout[0].Enabled() ? " watched" : " unwatched";
    };
    stop_log_ch(0);
    EXPECT_EQ(seen, "closed running unwatched");
}

TEST_F(StartStop, StartingAllChannelsInOrder) {
    sensor::state.max_sensors = 3;
    start_log();
    EXPECT_EQ(running(), "123");
    EXPECT_TRUE(chart_ticks());
    EXPECT_EQ(indicators.startstop.Caption, "Stop all channels");
    EXPECT_EQ(said, (lines{event(0, "started"), event(1, "started"), event(2, "started")}));
    EXPECT_EQ(box(), box_line(0, "started") + box_line(1, "started") + box_line(2, "started"));
    EXPECT_EQ(record(3).log_state, log_states::none);
}

TEST_F(StartStop, StoppingAllChannelsInOrder) {
    sensor::state.max_sensors = 2;
    start_log();
    said.clear();
    stop_log();
    EXPECT_EQ(running(), "");
    EXPECT_FALSE(chart_ticks());
    EXPECT_EQ(indicators.startstop.Caption, "Start all channels");
    EXPECT_EQ(said, (lines{"close_log 1", event(0, "stopped"), "close_log 2", event(1, "stopped")}));
}

TEST_F(StartStop, StoppingAllTellsOfChannelsThatDidNotRunToo) {
    sensor::state.max_sensors = 2;
    start_log_ch(1);
    said.clear();
    stop_log();
    EXPECT_EQ(said, (lines{"close_log 1", event(0, "stopped"), "close_log 2", event(1, "stopped")}));
}

TEST_F(StartStop, ABusyPortEndsTheStartOfAllAtItsChannel) {
    sensor::state.max_sensors = 3;
    make_busy(1);
    start_log();
    EXPECT_EQ(running(), "1");
    EXPECT_EQ(box_texts(), lines{"no Comport configurated for sensor nr. 2"});
    EXPECT_EQ(simulation::world().boxes[0].icon, box_icon::critical);
    EXPECT_EQ(simulation::world().boxes[0].buttons, box_buttons::ok);
    EXPECT_EQ(record(0).log_state, log_states::wanted);
    EXPECT_EQ(record(1).log_state, log_states::none);
    EXPECT_EQ(record(2).log_state, log_states::none);
    EXPECT_EQ(simulation::port(2).opened, 0);
    EXPECT_EQ(indicators.startstop.Caption, "Stop all channels");
    EXPECT_TRUE(chart_ticks());
    EXPECT_EQ(said, (lines{event(0, "started"), "close_log 2", event(1, "stopped")}));
}

TEST_F(StartStop, ABusyFirstPortLeavesTheCaptionAndTheDisplayTickAsTheyAre) {
    make_busy(0);
    start_log();
    EXPECT_EQ(running(), "");
    EXPECT_EQ(indicators.startstop.Caption, "Start all channels");
    EXPECT_TRUE(chart_ticks());
}

TEST_F(StartStop, ABusyPortOfASingleStartLeavesTheDisplayTickOn) {
    make_busy(3);
    start_log_ch(3);
    EXPECT_EQ(running(), "");
    EXPECT_TRUE(chart_ticks());
    EXPECT_EQ(box_texts(), lines{"no Comport configurated for sensor nr. 4"});
    EXPECT_EQ(record(3).log_state, log_states::none);
    EXPECT_EQ(box(), box_line(3, "stopped"));
}

TEST_F(StartStop, TheFailedChannelIsStillMarkedAsRunningWhileItsBoxIsUp) {
    make_busy(0);
    bool marked = false;
    i16 state = -1;
    simulation::world().during_box = [&] {
        marked = sensor::state.channel_running[0];
        state = record(0).log_state;
    };
    start_log_ch(0);
    EXPECT_TRUE(marked);
    EXPECT_EQ(state, log_states::wanted);
}

TEST_F(StartStop, APortNumberThatIsNoneGetsTheSameWordsAndLeavesNoPortOpen) {
    sensor::state.comport[1] = 0;
    start_log_ch(1);
    EXPECT_EQ(box_texts(), lines{"no Comport configurated for sensor nr. 2"});
    EXPECT_FALSE(simulation::port(1).open);
    EXPECT_EQ(running(), "");
}

TEST_F(StartStop, EachStartAsksForANewLogWithTheNextParameters) {
    start_log_ch(0);
    receive(parameters(1500));
    EXPECT_EQ(record(0).log_state, log_states::open);
    stop_log_ch(0);
    EXPECT_EQ(record(0).log_state, log_states::open);
    start_log_ch(0);
    EXPECT_EQ(record(0).log_state, log_states::wanted);
    receive(measured({}));
    EXPECT_EQ(told("createlog").size(), 1U);
    receive(parameters(1500));
    EXPECT_EQ(told("createlog"), (lines{"1", "1"}));
}

TEST_F(StartStop, ValuesAndFlagsStayOverStopAndStart) {
    start_log_ch(0);
    receive(parameters(1500) + measured({.tsignal = 33768, .speed = 9000}) + status({}));
    stop_log_ch(0);
    start_log_ch(0);
    EXPECT_EQ(record(0).speed, 900);
    EXPECT_EQ(record(0).tsignal, 100);
    EXPECT_EQ(record(0).overspeed, 1500);
    EXPECT_TRUE(record(0).param_valid && record(0).status_valid && record(0).connected);
}

TEST_F(StartStop, ASecondChannelLeavesTheRunningDisplayTickAlone) {
    start_log_ch(0);
    sensor::state.upd_periode = 1000;
    start_log_ch(1);
    EXPECT_EQ(mainfrm::timers.Timer_chart_upd.Interval(), 250);
}

TEST_F(StartStop, TheDisplayTickEndsWithTheLastChannel) {
    start_log_ch(0);
    start_log_ch(1);
    sensor::state.channel_running[0] = false;
    stop_log_ch(0);
    EXPECT_TRUE(chart_ticks());
    sensor::state.channel_running[1] = false;
    stop_log_ch(1);
    EXPECT_FALSE(chart_ticks());
}

} // namespace
} // namespace tyxo::link_testing
