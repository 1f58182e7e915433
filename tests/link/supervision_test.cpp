// The watchdog of a link, its return, and the timers.

#include "link/main_timers.h"
#include "link/supervision.h"

#include "basics/failure.h"
#include "link/frames.h"
#include "link/link_world.h"
#include "link/start_stop.h"

#include <algorithm>

namespace tyxo::link_testing {
namespace {

class Supervision : public link_world {
  protected:
    /// Starts the channels and forgets what was written about it.
    void start(std::initializer_list<i16> channels_to_start) {
        for (const i16 channel : channels_to_start)
            start_log_ch(channel);
        said.clear();
        indicators.Text_status = {};
    }
    static std::string not_connected_line(i16 channel) {
        return std::string(box_clock).substr(0, 11) + "13:05:12 Evaluator " + channel_number(channel) +
               " not connected\r\n";
    }
    static void show_values(i16 channel) {
        record(channel).tsignal = 80;
        record(channel).speed = 1500;
        record(channel).teff_dc = 70;
        indicators.drehzahl[channel].Position = 1500;
        indicators.dig_drehzahl[channel].Value = 1500;
        indicators.digi_Thermo[channel].Value = 80;
        indicators.t_mv[channel].Value = 2;
        for (auto* lamps : {&indicators.LED_Alarm, &indicators.LED_prealarm, &indicators.LED_Rdy})
            (*lamps)[channel].Active = true;
    }
    static void expect_values_gone(i16 channel) {
        EXPECT_EQ(record(channel).tsignal, 0);
        EXPECT_EQ(record(channel).speed, 0);
        EXPECT_EQ(record(channel).teff_dc, 70);
        EXPECT_EQ(indicators.drehzahl[channel].Position, 0);
        EXPECT_EQ(indicators.dig_drehzahl[channel].Value, 0);
        EXPECT_EQ(indicators.digi_Thermo[channel].Value, 0);
        EXPECT_EQ(indicators.t_mv[channel].Value, 0);
        for (auto* lamps : {&indicators.LED_Alarm, &indicators.LED_prealarm, &indicators.LED_Rdy})
            EXPECT_FALSE((*lamps)[channel].Active);
    }
    [[nodiscard]] std::ptrdiff_t firings(i16 channel) const {
        return std::ranges::count(said, "clear_curves " + channel_number(channel));
    }
};

TEST_F(Supervision, FiresAfter3000MsOfSilenceAndNotBefore) {
    start({0});
    show_values(0);
    simulation::advance(2999);
    EXPECT_EQ(record(0).speed, 1500);
    EXPECT_TRUE(record(0).connected);
    simulation::advance(1);
    expect_values_gone(0);
    EXPECT_FALSE(record(0).connected);
    EXPECT_EQ(indicators.StatusBar, "Sensor 1 not connected");
}

TEST_F(Supervision, NineSecondsOfSilenceFireThreeTimesAndWriteOneLine) {
    start({0});
    for (const int firing : {1, 2, 3}) {
        show_values(0);
        indicators.StatusBar.clear();
        simulation::advance(3000);
        expect_values_gone(0);
        EXPECT_EQ(indicators.StatusBar, "Sensor 1 not connected");
        EXPECT_EQ(firings(0), firing);
    }
    EXPECT_EQ(box(), not_connected_line(0));
    EXPECT_EQ(told("log_comment"), lines{"1 Evaluator not connected"});
    EXPECT_EQ(told("event_line"), lines{"07-02-2026;13:05:12;Evaluator 1 not connected"});
}

TEST_F(Supervision, TheStepsOfAFiringKeepTheirOrder) {
    record(1).status_alarm = 0x00A0;
    show_values(1);
    std::vector<std::string> order;
    calls.event_line = [&](std::string_view) {
        order.push_back("event: " + indicators.StatusBar + ' ' + std::to_string(record(1).tsignal) +
                        (record(1).connected ? " connected" : " lost"));
    };
    calls.clear_curves = [&](i16) {
        order.push_back("clear: " + std::to_string(indicators.drehzahl[1].Position > 0) +
                        (indicators.LED_Alarm[1].Active ? " lamp on" : " lamp off"));
    };
    sensor::link_timed_out(1);
    EXPECT_EQ(order, (lines{"event: Sensor 2 not connected 0 lost", "clear: 1 lamp on"}));
    expect_values_gone(1); // the lamps that the status machine lit are off again
    EXPECT_TRUE(record(1).status_alarm == 0x00A0);
}

TEST_F(Supervision, ATimeoutLeavesAlarmsLatched) {
    start({0});
    receive(status({.alarm = 0x8000}));
    simulation::advance(3000);
    EXPECT_TRUE(record(0).lat_main_alarm);
    said.clear();
    receive(status({.alarm = 0x8000}));
    EXPECT_EQ(std::ranges::count(said, "log_comment 1 KVD Main ALARM ON"), 0);
}

TEST_F(Supervision, EveryCompleteFrameStartsThe3000MsAnew) {
    start({0});
    for (int count = 0; count < 5; ++count) {
        simulation::advance(2999);
        receive(measured({.speed = 1000}));
    }
    EXPECT_EQ(firings(0), 0);
    simulation::advance(3000);
    EXPECT_EQ(firings(0), 1);
}

TEST_F(Supervision, FramesWithAWrongCheckKeepTheLinkAliveAndStoreNothing) {
    start({0});
    for (int count = 0; count < 5; ++count) {
        simulation::advance(2000);
        receive(":0183E83A98zz\r\n");
    }
    EXPECT_EQ(firings(0), 0);
    EXPECT_EQ(record(0).speed, 0);
    EXPECT_TRUE(record(0).connected);
    EXPECT_EQ(debug().size(), 5U);
}

TEST_F(Supervision, FramesThatAllFailToDecodeKeepTheLinkAlive) {
    start({0});
    for (int count = 0; count < 5; ++count) {
        simulation::advance(2000);
        receive(closed(":01XXXX"));
    }
    EXPECT_EQ(debug(), lines(5, "mscomm: Type mismatch"));
    EXPECT_EQ(firings(0), 0);
    EXPECT_TRUE(record(0).connected);
    simulation::advance(2999);
    EXPECT_EQ(firings(0), 0);
    simulation::advance(1);
    EXPECT_EQ(firings(0), 1);
}

TEST_F(Supervision, AnOpenFrameDoesNotKeepTheLinkAlive) {
    start({0});
    simulation::advance(2000);
    receive(":01");
    simulation::advance(1000);
    EXPECT_EQ(firings(0), 1);
}

TEST_F(Supervision, BytesAfterATimeoutAnnounceTheLinkOnce) {
    start({0});
    simulation::advance(3000);
    said.clear();
    indicators.Text_status = {};
    receive("x");
    EXPECT_TRUE(record(0).connected);
    EXPECT_EQ(box(), "07-02-2026 13:05:12 Evaluator 1 connected\r\n");
    EXPECT_EQ(said, (lines{"log_comment 1 Evaluator connected",
                           "event_line 07-02-2026;13:05:12;Evaluator 1 connected"}));
    receive("y" + measured({}));
    EXPECT_EQ(told("log_comment").size(), 1U);
}

TEST_F(Supervision, ALinkThatAnswersAtOnceIsNotAnnounced) {
    start({0});
    receive(status({}));
    EXPECT_EQ(box(), "");
    EXPECT_TRUE(said.empty());
}

TEST_F(Supervision, TheStatusMachineRunsAtTheReturn) {
    start({0});
    receive(status({.alarm = 0x0020}));
    simulation::advance(3000);
    EXPECT_FALSE(indicators.LED_Rdy[0].Active);
    receive("x");
    EXPECT_TRUE(indicators.LED_Rdy[0].Active);
}

TEST_F(Supervision, TheReturnIsAnnouncedBehindTheBytesOfItsEvent) {
    start({0});
    simulation::advance(3000);
    said.clear();
    receive(measured({.speed = 100}) + measured({.speed = 200}));
    EXPECT_EQ(said, (lines{"log_record 1 1", "log_record 1 1", "log_comment 1 Evaluator connected",
                           "event_line 07-02-2026;13:05:12;Evaluator 1 connected"}));
}

TEST_F(Supervision, AStatusFrameAsFirstSignSaysNotConnectedOnceMore) {
    start({0});
    simulation::advance(3000);
    said.clear();
    receive(status({}));
    EXPECT_EQ(told("log_comment"), (lines{"1 Evaluator not connected", "1 Evaluator connected"}));
    EXPECT_EQ(told("event_line"), (lines{"07-02-2026;13:05:12;Evaluator 1 not connected",
                                         "07-02-2026;13:05:12;Evaluator 1 connected"}));
}

TEST_F(Supervision, TheReturnIsAnnouncedWhenAFrameFails) {
    start({0});
    simulation::advance(3000);
    receive(closed(":01XXXX"));
    EXPECT_TRUE(record(0).connected);
    EXPECT_EQ(debug(), lines{"mscomm: Type mismatch"});
}

TEST_F(Supervision, TheReturnIsAnnouncedWhenTheReadFails) {
    start({0});
    simulation::advance(3000);
    simulation::world().ports[11].refuses_input = true;
    receive("x");
    EXPECT_TRUE(record(0).connected);
    EXPECT_EQ(debug(), lines{"mscomm: Device unavailable"});
}

TEST_F(Supervision, TheDescriptionOfTheLastFailureIsReported) {
    start({0});
    simulation::advance(3000);
    calls.event_line = [](std::string_view) { failures::overflow(); };
    receive(closed(":01XXXX"));
    EXPECT_EQ(debug(), lines{"mscomm: Overflow"});
    EXPECT_TRUE(record(0).connected);
}

TEST_F(Supervision, ALineOfNoiseSaysConnectedAndNotConnectedInTurn) {
    start({0});
    for (int count = 0; count < 70; ++count) {
        receive("noise");
        simulation::advance(100);
    }
    EXPECT_EQ(told("log_comment"), (lines{"1 Evaluator not connected", "1 Evaluator connected",
                                          "1 Evaluator not connected", "1 Evaluator connected"}));
    EXPECT_EQ(firings(0), 2);
}

TEST_F(Supervision, AGoodFrameOfAnotherChannelEmptiesTheStatusBar) {
    start({0, 1});
    for (int round = 0; round < 3; ++round) {
        simulation::advance(1500);
        receive(measured({}), 0);
        EXPECT_EQ(indicators.StatusBar, "");
        simulation::advance(1500);
        EXPECT_EQ(indicators.StatusBar, "Sensor 2 not connected");
        receive(":02A0\r\n", 0); // a wrong check
        EXPECT_EQ(indicators.StatusBar, "Sensor 2 not connected");
        receive(measured({}), 0);
        EXPECT_EQ(indicators.StatusBar, "");
    }
    EXPECT_EQ(firings(0), 0);
    EXPECT_EQ(firings(1), 3);
}

TEST_F(Supervision, AStoppedChannelFiresNoWatchdog) {
    start({0, 1});
    simulation::advance(1000);
    stop_log_ch(0);
    said.clear();
    simulation::advance(10000);
    EXPECT_EQ(firings(0), 0);
    EXPECT_EQ(firings(1), 3);
    EXPECT_TRUE(record(0).connected);
}

TEST_F(Supervision, ALostLinkKeepsItsStateOverStopAndStart) {
    start({0});
    simulation::advance(3000);
    stop_log_ch(0);
    start({0});
    EXPECT_FALSE(record(0).connected);
    simulation::advance(3000);
    EXPECT_EQ(told("log_comment"), lines{}); // no second "not connected"
    receive("x");
    EXPECT_EQ(told("log_comment"), lines{"1 Evaluator connected"});
}

TEST_F(Supervision, ChannelsLoseTheirLinksForThemselves) {
    start({0, 1, 2, 3});
    simulation::advance(1000);
    receive(measured({}), 2);
    simulation::advance(2000);
    for (const i16 channel : {i16{0}, i16{1}, i16{3}})
        EXPECT_FALSE(record(channel).connected) << channel;
    EXPECT_TRUE(record(2).connected);
    EXPECT_EQ(indicators.StatusBar, "Sensor 4 not connected");
    simulation::advance(1000);
    EXPECT_FALSE(record(2).connected);
}

TEST_F(Supervision, AChannelThatDoesNotExistIsAFailure) {
    for (const i16 channel : {i16{-1}, channel_count}) {
        EXPECT_THROW(sensor::link_timed_out(channel), failure);
        EXPECT_THROW(sensor::link_returned(channel), failure);
        EXPECT_THROW(sensor::poll(channel), failure);
        EXPECT_THROW(funct::timeout_timer_start(channel), failure);
        EXPECT_THROW(funct::poll_timer_arm(channel), failure);
    }
}

TEST_F(Supervision, ChartTimerTicksAtTheDisplayPeriod) {
    sensor::state.upd_periode = 500;
    funct::chart_timer_start();
    EXPECT_TRUE(sensor::state.chart_timer_on);
    EXPECT_TRUE(mainfrm::timers.Timer_chart_upd.Enabled());
    EXPECT_EQ(mainfrm::timers.Timer_chart_upd.Interval(), 500);
    funct::chart_timer_stop();
    EXPECT_FALSE(sensor::state.chart_timer_on);
    EXPECT_FALSE(mainfrm::timers.Timer_chart_upd.Enabled());
}

TEST_F(Supervision, WatchdogTimerHasIts3000MsAndLeavesTheOthersAlone) {
    funct::timeout_timer_start(1);
    EXPECT_EQ(mainfrm::timers.Timer_timeout[1].Interval(), 3000);
    EXPECT_TRUE(mainfrm::timers.Timer_timeout[1].Enabled());
    EXPECT_FALSE(mainfrm::timers.Timer_timeout[0].Enabled());
    funct::timeout_timer_stop(1);
    EXPECT_FALSE(mainfrm::timers.Timer_timeout[1].Enabled());
}

} // namespace
} // namespace tyxo::link_testing
