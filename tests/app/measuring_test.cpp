// Channels of the started program, where its parts have to play together.

#include "app/started_program.h"

#include "link/calls.h"
#include "link/supervision.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;
using mainfrm::start_channel_click;
using mainfrm::startstop_click;

void begin_with(i16 used) {
    prepare(logging_settings(used, with_events));
    mainfrm::start_program(1272, 911);
}

TEST(Measuring, ARefusedStopChangesNothing) {
    begin_with(2);
    startstop_click();
    const std::string box(indicators.Text_status.text());
    calls.stop_lock = [](std::string_view) { return false; };
    startstop_click();
    start_channel_click(0);
    EXPECT_TRUE(sensor::state.measure_running);
    EXPECT_EQ(sensor::state.channel_running, (per_channel<bool>{{true, true, false, false}}));
    EXPECT_TRUE(port(0).open);
    EXPECT_EQ(indicators.Text_status.text(), box);
}

TEST(Measuring, ASecondStartOnAnotherDayBeginsANewLog) {
    begin_with(1);
    start_logging(0);
    start_channel_click(0);
    set_local({2026, 7, 3, 8, 0, 0});
    start_logging(0);
    feed(0, measured_body());
    EXPECT_EQ(logged(0, "20260702"), text_lines{"<!-- 13:05:09 Measure Stopped -->"});
    EXPECT_EQ(logged(0, "20260703"), text_lines{"<REC1> 08:00:00 51 1480 1234 48 7 </REC1>"});
}

TEST(Measuring, AStoppedChannelHearsNothing) {
    begin_with(1);
    start_logging(0);
    start_channel_click(0);
    EXPECT_FALSE(receive(0, closed(measured_body({.speed = 99}))));
    EXPECT_EQ(sensor::state.channels[0].speed, 0);
    advance(10000);
    EXPECT_TRUE(sensor::state.channels[0].connected) << "its watchdog rests";
}

} // namespace
} // namespace tyxo
