#include "app/started_program.h"

#include "link/calls.h"
#include "link/supervision.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;
using mainfrm::start_channel_click;
using mainfrm::startstop_click;
using sensor::channel_running;
using sensor::channels;

void begin_with(i16 used) {
    prepare(logging_settings(used, with_events));
    start_program(1272, 911);
}

TEST(Measuring, WithoutChannelsBothMenuEntriesSaySo) {
    begin_with(0);
    startstop_click();
    for (i16 channel = 0; channel < channel_count; ++channel)
        start_channel_click(channel);
    EXPECT_EQ(box_texts(), text_lines(5, std::string(no_sensor_text)));
    for (const shown_box& box : world().boxes)
        EXPECT_EQ(box.icon, box_icon::critical);
    EXPECT_FALSE(sensor::measure_running);
}

TEST(Measuring, TheEntryOfAChannelBeyondMaxSensorsIsDisabledAndHasItsMessageAllTheSame) {
    begin_with(2);
    EXPECT_FALSE(indicators.start_channel[2].Enabled);
    start_channel_click(2);
    EXPECT_EQ(box_texts(), text_lines{std::string(no_sensor_text)});
    EXPECT_FALSE(channel_running[2]);
    start_channel_click(0);
    start_channel_click(1);
    EXPECT_EQ(world().boxes.size(), 1U);
    EXPECT_TRUE(port(0).open);
    EXPECT_TRUE(port(1).open);
}

TEST(Measuring, ABusyPortOfTheSecondOfThreeLeavesTheFirstRunningAndTheThirdUnstarted) {
    begin_with(3);
    world().ports[2].refuses_to_open = true;
    startstop_click();
    EXPECT_EQ(box_texts(), text_lines{std::string(no_port_text) + "2"});
    EXPECT_EQ(channel_running, (std::array{true, false, false, false}));
    EXPECT_TRUE(port(0).open);
    EXPECT_EQ(channels[1].log_state, log_states::none);
    EXPECT_EQ(port(2).opened, 0);
    EXPECT_EQ(channels[2].log_state, log_states::none);
    EXPECT_FALSE(mainfrm::Timer_timeout[1].Enabled());
    EXPECT_EQ(indicators.startstop.Caption, "Stop all channels");
}

TEST(Measuring, TheLastStoppedChannelStopsTheDisplayTickAndTurnsTheCaptionBack) {
    begin_with(2);
    start_channel_click(0);
    start_channel_click(1);
    EXPECT_EQ(indicators.startstop.Caption, "Stop all channels");
    start_channel_click(0);
    EXPECT_TRUE(mainfrm::Timer_chart_upd.Enabled());
    EXPECT_TRUE(sensor::measure_running);
    EXPECT_EQ(indicators.startstop.Caption, "Stop all channels");
    start_channel_click(1);
    EXPECT_FALSE(mainfrm::Timer_chart_upd.Enabled());
    EXPECT_FALSE(sensor::measure_running);
    EXPECT_EQ(indicators.startstop.Caption, "Start all channels");
}

TEST(Measuring, AnEntryNamesWhatItsNextClickDoes) {
    begin_with(4);
    startstop_click();
    for (i16 channel = 0; channel < channel_count; ++channel)
        EXPECT_EQ(indicators.start_channel[channel].Caption, "Stop channel " + std::to_string(channel + 1));
    startstop_click();
    for (i16 channel = 0; channel < channel_count; ++channel)
        EXPECT_EQ(indicators.start_channel[channel].Caption, "Start channel " + std::to_string(channel + 1));
    EXPECT_EQ(indicators.startstop.Caption, "Start all channels");
}

TEST(Measuring, APortIsOpenedWithTheEvaluatorsLineSettings) {
    begin_with(3);
    start_channel_click(2);
    const port_settings& line = port(2);
    EXPECT_TRUE(line.open);
    EXPECT_EQ(line.number, 3);
    EXPECT_EQ(line.settings, "38400,n,8,1");
    EXPECT_EQ(line.input_mode, 1);
    EXPECT_FALSE(line.rts);
    EXPECT_EQ(line.r_threshold, 1);
    EXPECT_EQ(line.s_threshold, 1);
    EXPECT_EQ(line.handshaking, 0);
}

TEST(Measuring, AStartThatFailedAloneLeavesTheNextClickAskingForAStop) {
    begin_with(1);
    world().ports[1].refuses_to_open = true;
    start_channel_click(0);
    EXPECT_FALSE(channel_running[0]);
    EXPECT_TRUE(sensor::measure_running);
    EXPECT_TRUE(mainfrm::Timer_chart_upd.Enabled());
    int asked = 0;
    calls.stop_lock = [&asked](std::string_view) {
        ++asked;
        return true;
    };
    startstop_click();
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(sensor::measure_running);
    EXPECT_FALSE(mainfrm::Timer_chart_upd.Enabled());
}

TEST(Measuring, ARefusedStopChangesNothing) {
    begin_with(2);
    startstop_click();
    const std::string box(indicators.Text_status.text());
    calls.stop_lock = [](std::string_view) { return false; };
    startstop_click();
    start_channel_click(0);
    EXPECT_TRUE(sensor::measure_running);
    EXPECT_EQ(channel_running, (std::array{true, true, false, false}));
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
    EXPECT_FALSE(receive(0, framed(measured_body({.speed = 99}))));
    EXPECT_EQ(channels[0].speed, 0);
    advance(10000);
    EXPECT_TRUE(channels[0].connected) << "its watchdog rests";
}

TEST(Measuring, ARestartKeepsTheRecord) {
    begin_with(1);
    start_logging(0);
    feed(0, measured_body({.speed = 812}));
    start_channel_click(0);
    start_channel_click(0);
    EXPECT_EQ(channels[0].speed, 812);
    EXPECT_TRUE(channels[0].param_valid);
    EXPECT_EQ(channels[0].numzyl, 6);
}

TEST(Measuring, AShorterParameterFrameTakesTheLongFormsValuesBack) {
    begin_with(1);
    start_logging(0);
    EXPECT_EQ(channels[0].theff_cnt, 64);
    EXPECT_EQ(channels[0].evasnr, "SN004711");
    feed(0, parameter_body({}, parameter_form::shortest));
    EXPECT_EQ(channels[0].theff_cnt, 9999);
    EXPECT_EQ(channels[0].theff_alm, 9999);
    EXPECT_EQ(channels[0].alminhibit_time, 99999);
    EXPECT_EQ(channels[0].evasnr, "inactive");
    EXPECT_FALSE(channels[0].tst_valid || channels[0].ext1_valid || channels[0].ext2_valid ||
                 channels[0].dcpercent_valid);
}

} // namespace
} // namespace tyxo
