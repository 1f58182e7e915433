// The menu entries that start and stop, and the stop lock in front of them.

#include "link/frames.h"
#include "link/link_world.h"
#include "link/main_timers.h"
#include "link/start_stop.h"
#include "link/supervision.h"

namespace tyxo::link_testing {
namespace {

class StartMenu : public link_world {
  protected:
    /// The channels that run, by their numbers.
    static std::string running() {
        std::string numbers;
        for (i16 channel = 0; channel < channel_count; ++channel) {
            if (sensor::state.channel_running[channel]) numbers += channel_number(channel);
        }
        return numbers;
    }
    /// Marks of the whole measurement.
    static void expect_measuring(bool measuring) {
        EXPECT_EQ(sensor::state.measure_running, measuring);
        EXPECT_EQ(indicators.startstop.Caption, measuring ? "Stop all channels" : "Start all channels");
        EXPECT_EQ(sensor::state.chart_timer_on, measuring);
        EXPECT_EQ(mainfrm::timers.Timer_chart_upd.Enabled(), measuring);
    }
    static void expect_no_sensor_box() {
        ASSERT_EQ(simulation::world().boxes.size(), 1U);
        EXPECT_EQ(simulation::world().boxes[0].text, "No sensor configurated\r\nPlease setup first");
        EXPECT_EQ(simulation::world().boxes[0].icon, box_icon::critical);
        simulation::world().boxes.clear();
    }
    static void click_all() { mainfrm::startstop_click(); }
    static void click(i16 channel) { mainfrm::start_channel_click(channel); }
    static void make_busy(i16 channel) {
        simulation::world().ports[sensor::state.comport[channel]].refuses_to_open = true;
    }
};

TEST_F(StartMenu, WithoutSensorsBothEntriesSaySo) {
    sensor::state.max_sensors = 0;
    click_all();
    expect_no_sensor_box();
    for (i16 channel = 0; channel < channel_count; ++channel) {
        click(channel);
        expect_no_sensor_box();
    }
    EXPECT_TRUE(said.empty());
    expect_measuring(false);
}

TEST_F(StartMenu, WithTwoSensorsTheThirdEntrySaysSoAndTheFirstTwoWork) {
    sensor::state.max_sensors = 2;
    click(2);
    expect_no_sensor_box();
    click(3);
    expect_no_sensor_box();
    EXPECT_FALSE(sensor::state.measure_running);
    click(0);
    click(1);
    EXPECT_EQ(running(), "12");
    EXPECT_TRUE(simulation::world().boxes.empty());
}

TEST_F(StartMenu, AllChannelsStartAndStop) {
    click_all();
    EXPECT_EQ(running(), "1234");
    expect_measuring(true);
    EXPECT_TRUE(told("stop_lock").empty());
    click_all();
    EXPECT_EQ(running(), "");
    expect_measuring(false);
    EXPECT_EQ(told("stop_lock").size(), 1U);
    click_all();
    EXPECT_EQ(running(), "1234");
}

TEST_F(StartMenu, TheLockCanRefuseTheStopOfAll) {
    click_all();
    lock_grants = false;
    click_all();
    EXPECT_EQ(running(), "1234");
    expect_measuring(true);
    EXPECT_FALSE(indicators.Quit.Enabled);
    EXPECT_TRUE(told("close_log").empty());
    lock_grants = true;
    click_all();
    EXPECT_EQ(running(), "");
    EXPECT_TRUE(indicators.Quit.Enabled);
}

TEST_F(StartMenu, OneChannelStartsAndStops) {
    click(1);
    EXPECT_EQ(running(), "2");
    expect_measuring(true);
    click(1);
    EXPECT_EQ(running(), "");
    expect_measuring(false);
    EXPECT_EQ(told("stop_lock").size(), 1U);
    EXPECT_FALSE(simulation::port(1).open);
}

TEST_F(StartMenu, TheLockIsToldWhatWillStop) {
    sensor::state.channels[1].location = "Engine 2";
    sensor::state.channels[2].location = "";
    lock_grants = false;
    click_all();
    click(1);
    click(2);
    click_all();
    EXPECT_EQ(told("stop_lock"),
              (lines{"Stops channel 2: Engine 2", "Stops channel 3", "Stops all channels"}));
}

TEST_F(StartMenu, TheLockCanRefuseTheStopOfOne) {
    click(1);
    lock_grants = false;
    click(1);
    EXPECT_EQ(running(), "2");
    expect_measuring(true);
    EXPECT_TRUE(simulation::port(1).open);
    EXPECT_FALSE(indicators.Quit.Enabled);
}

TEST_F(StartMenu, StartingAsksNobody) {
    lock_grants = false;
    click(0);
    click(2);
    EXPECT_EQ(running(), "13");
    EXPECT_TRUE(told("stop_lock").empty());
    EXPECT_TRUE(indicators.Quit.Enabled);
}

TEST_F(StartMenu, TheMeasurementEndsWithTheLastChannel) {
    click(0);
    click(3);
    click(0);
    EXPECT_EQ(running(), "4");
    expect_measuring(true);
    click(3);
    expect_measuring(false);
}

TEST_F(StartMenu, ChannelsAddedOneByOneAreStoppedTogether) {
    click(0);
    click(1);
    click_all();
    EXPECT_EQ(running(), "");
    expect_measuring(false);
}

TEST_F(StartMenu, AChannelLeftOutCanJoinLater) {
    click_all();
    click(2);
    EXPECT_EQ(running(), "124");
    expect_measuring(true);
    click(2);
    EXPECT_EQ(running(), "1234");
}

TEST_F(StartMenu, ABusyPortOnASingleStartLeavesTheMeasurementMarkedAsRunning) {
    make_busy(0);
    click(0);
    EXPECT_EQ(running(), "");
    expect_measuring(true);
    EXPECT_EQ(indicators.start_channel[0].Caption, "Start channel 1");
    click_all(); // asks for a stop
    EXPECT_EQ(told("stop_lock").size(), 1U);
    expect_measuring(false);
}

TEST_F(StartMenu, ABusyPortInTheMiddleOfAStartOfAllKeepsTheFirstChannels) {
    sensor::state.max_sensors = 3;
    make_busy(1);
    click_all();
    EXPECT_EQ(running(), "1");
    expect_measuring(true);
    ASSERT_EQ(simulation::world().boxes.size(), 1U);
    EXPECT_EQ(simulation::world().boxes[0].text, "no Comport configurated for sensor nr. 2");
    click(2);
    EXPECT_EQ(running(), "13");
}

TEST_F(StartMenu, ABusyFirstPortMarksTheMeasurementWithoutItsCaption) {
    make_busy(0);
    click_all();
    EXPECT_EQ(running(), "");
    EXPECT_TRUE(sensor::state.measure_running);
    EXPECT_EQ(indicators.startstop.Caption, "Start all channels");
    click_all();
    EXPECT_EQ(told("stop_lock").size(), 1U);
    EXPECT_FALSE(sensor::state.measure_running);
}

TEST_F(StartMenu, AChannelCountsAsRunningWhileTheLockAsks) {
    click(0);
    bool marked = false;
    calls.stop_lock = [&](std::string_view) {
        marked = sensor::state.channel_running[0] && simulation::port(0).open;
        return true;
    };
    click(0);
    EXPECT_TRUE(marked);
}

} // namespace
} // namespace tyxo::link_testing
