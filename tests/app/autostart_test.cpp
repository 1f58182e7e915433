// Measuring that begins with the program, and the boxes that may come before it.

#include "app/started_program.h"

#include "link/supervision.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

std::string autostart_settings(i16 used, std::string_view value = "1") {
    return logging_settings(used, std::string(with_events) + "autostart=" + std::string(value) + "\r\n");
}

std::string started(int number) {
    return "##;07-02-2026;13:05:09;KVD Engine " + std::to_string(number) + " ## Measure started ";
}
std::string stopped(int number) {
    return "##;07-02-2026;13:05:09;KVD Engine " + std::to_string(number) + " ## Measure stopped ";
}

TEST(Autostart, StartsAllChannelsBehindTheStartLine) {
    prepare(autostart_settings(3));
    mainfrm::start_program(1272, 911);
    EXPECT_TRUE(sensor::state.measure_running);
    for (i16 channel = 0; channel < channel_count; ++channel) {
        EXPECT_EQ(sensor::state.channel_running[channel], channel < 3);
        EXPECT_EQ(port(channel).open, channel < 3);
    }
    EXPECT_EQ(event_lines(), (text_lines{std::string(start_line), started(1), started(2), started(3)}));
    EXPECT_EQ(indicators.startstop.Caption, "Stop all channels");
}

TEST(Autostart, FollowsTheNumberOfItsSetting) {
    struct value_row {
        std::string_view value;
        bool starts;
    };
    for (const value_row& row : {value_row{"1", true},
                                 {" 1", true},
                                 {"1.0", true},
                                 {"yes", false},
                                 {"2", false},
                                 {"0", false},
                                 {"", false}}) {
        prepare(autostart_settings(1, row.value));
        mainfrm::start_program(1272, 911);
        EXPECT_EQ(sensor::state.measure_running, row.starts) << row.value;
        EXPECT_EQ(port(0).opened, row.starts ? 1 : 0) << row.value;
    }
}

TEST(Autostart, WithoutChannelsSaysSo) {
    prepare(autostart_settings(0));
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(box_texts(), text_lines{std::string(no_sensor_text)});
    EXPECT_FALSE(sensor::state.measure_running);
    EXPECT_FALSE(world().exit_code.has_value());
    EXPECT_NE(mainfrm::state.Caption, "");
}

TEST(Autostart, AMissingPortShowsItsBoxDuringTheLoadAndStopsTheChannelsBehindIt) {
    prepare(autostart_settings(3));
    world().ports[2].refuses_to_open = true;
    bool held = false;
    world().during_box = [&] { held = world().events_held; };
    mainfrm::start_program(1272, 911);
    EXPECT_TRUE(held);
    EXPECT_EQ(box_texts(), text_lines{std::string(no_port_text) + "2"});
    EXPECT_EQ(world().boxes[0].icon, box_icon::critical);
    EXPECT_TRUE(port(0).open);
    EXPECT_FALSE(port(1).open);
    EXPECT_EQ(port(2).opened, 0);
    EXPECT_TRUE(sensor::state.measure_running);
    EXPECT_EQ(event_lines(), (text_lines{std::string(start_line), started(1), stopped(2)}));
    EXPECT_NE(mainfrm::state.Caption, "") << "the load goes on";
}

TEST(Autostart, APortNumberOfNoughtIsAMissingPort) {
    prepare("[tyxo]\r\nmax_sensors=1\r\nautostart=1\r\n");
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(box_texts(), text_lines{std::string(no_port_text) + "1"});
}

TEST(Autostart, BytesThatComeDuringABoxWaitForTheEndOfTheLoad) {
    prepare(autostart_settings(2));
    world().ports[2].refuses_to_open = true;
    bool taken = true;
    i32 speed_in_box = -1;
    world().during_box = [&] {
        taken = receive(0, closed(parameter_body({})) + closed(measured_body({.speed = 777})));
        speed_in_box = sensor::state.channels[0].speed;
        EXPECT_EQ(sensor::state.channels[0].log_state, log_states::wanted);
        EXPECT_TRUE(world().opened.empty() || world().opened.back() == events_path) << "no log yet";
    };
    mainfrm::start_program(1272, 911);
    EXPECT_FALSE(taken);
    EXPECT_EQ(speed_in_box, 0);
    EXPECT_EQ(sensor::state.channels[0].speed, 777);
    EXPECT_EQ(logged(0), text_lines{"<REC1> 13:05:09 51 777 1234 48 7 </REC1>"});
}

TEST(Autostart, TimersDoNotTickDuringABox) {
    prepare(autostart_settings(2));
    world().ports[2].refuses_to_open = true;
    int ticks = -1;
    bool connected = false;
    world().during_box = [&] {
        advance(20000);
        ticks = world().do_events_calls;
        connected = sensor::state.channels[0].connected;
    };
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(ticks, 0);
    EXPECT_TRUE(connected) << "the watchdog rests too";
    EXPECT_FALSE(world().events_held);
    advance(5000);
    EXPECT_EQ(world().do_events_calls, 10);
    EXPECT_FALSE(sensor::state.channels[0].connected);
}

TEST(Autostart, NoBoxWithOneButtonHoldsTheStartUp) {
    prepare(logging_settings(3, "eventfile_ena=1\r\nevtpath=Q:\\\r\nautostart=1\r\n"));
    world().ports[3].refuses_to_open = true;
    mainfrm::start_program(1272, 911);
    ASSERT_EQ(world().boxes.size(), 2U);
    EXPECT_FALSE(world().boxes[0].waits) << "the event file";
    EXPECT_FALSE(world().boxes[1].waits) << "the port";
    EXPECT_TRUE(port(0).open);
    EXPECT_TRUE(port(1).open);
    feed(1, parameter_body({}));
    feed(1, measured_body());
    EXPECT_EQ(logged(1).size(), 1U) << "the channels in front measure behind the boxes";
}

TEST(Autostart, TheQuestionAboutTheScreenWaits) {
    prepare(autostart_settings(1));
    world().screen = {640, 480};
    mainfrm::start_program(1272, 911);
    ASSERT_EQ(world().boxes.size(), 1U);
    EXPECT_TRUE(world().boxes[0].waits);
}

TEST(Autostart, EventsAreHeldInEveryBoxOfTheStartAndNoLonger) {
    prepare(logging_settings(2, "eventfile_ena=1\r\nevtpath=Q:\\\r\nautostart=1\r\n"));
    world().screen = {640, 480};
    world().ports[1].refuses_to_open = true;
    int held = 0;
    world().during_box = [&] { held += world().events_held ? 1 : 0; };
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(world().boxes.size(), 3U);
    EXPECT_EQ(held, 3);
    EXPECT_FALSE(world().events_held);
}

} // namespace
} // namespace tyxo
