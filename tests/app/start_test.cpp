// What the program does between its start and the main window, and in which order.

#include "app/started_program.h"
#include "displays/chart.h"
#include "displays/panel.h"
#include "gateway/connection.h"
#include "link/main_timers.h"
#include "settings/serial_ports.h"
#include "settings/settings.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tyxo {
namespace {

using namespace simulation;

class Start : public testing::Test {
  protected:
    void SetUp() override { prepare(logging_settings(2, with_events)); }
};

TEST_F(Start, BeginsWithItsMessageInTheDebugOutput) {
    world().port_names = {{"source", "COM3"}};
    mainfrm::start_program(1272, 911);
    ASSERT_GE(world().debug.size(), 2U);
    EXPECT_EQ(world().debug.front(), "Programmstart");
    EXPECT_EQ(std::ranges::count(world().debug, "Programmstart"), 1);
}

TEST_F(Start, KeepsScreenAndWindowSizes) {
    world().screen = {1920, 1080};
    mainfrm::start_program(1299.5, 951.25);
    EXPECT_EQ(mainfrm::state.screen_w, 1920);
    EXPECT_EQ(mainfrm::state.screen_h, 1080);
    EXPECT_EQ(mainfrm::state.design_w, 1299.5);
    EXPECT_EQ(mainfrm::state.design_h, 951.25);
    for (std::size_t channel = 0; channel < 4; ++channel) {
        EXPECT_EQ(mainfrm::state.chart_w[channel], 635.0F);
        EXPECT_EQ(mainfrm::state.chart_h[channel], 278.0F);
    }
}

TEST_F(Start, TheDesignSizeOfAChartIsTakenBeforeItsWidthIsSet) {
    charts.chart[2].Width = 700;
    charts.chart[2].Height = 300;
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(mainfrm::state.chart_w[2], 700.0F);
    EXPECT_EQ(mainfrm::state.chart_h[2], 300.0F);
    EXPECT_EQ(charts.chart[2].Width, 635);
    EXPECT_EQ(charts.chart[2].Height, 300);
}

TEST_F(Start, MarksEveryEvaluatorAsUnknownAndEveryLinkAsUp) {
    mainfrm::start_program(1272, 911);
    for (i16 channel = 0; channel < channel_count; ++channel) {
        EXPECT_EQ(sensor::state.channels[channel].eva_mode, 99) << channel;
        EXPECT_TRUE(sensor::state.channels[channel].connected) << channel;
    }
}

TEST_F(Start, AnEvaluatorThatAnswersAtOnceIsNotAnnounced) {
    mainfrm::start_program(1272, 911);
    start_logging(0);
    feed(0, measured_body());
    EXPECT_EQ(indicators.Text_status.text(), "07-02-2026 13:05:09 KVD Engine 1 ## Measure started \r\n");
    EXPECT_EQ(event_lines(), (text_lines{std::string(start_line),
                                         "##;07-02-2026;13:05:09;KVD Engine 1 ## Measure started "}));
}

TEST_F(Start, GivesTheWindowItsCaption) {
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(mainfrm::state.Caption, " Quarvo / Tyxo Data Logger  Version 2.10_4");
}

TEST_F(Start, ListsTheSerialPortsOnce) {
    world().port_names = {{"a", "COM7"}, {"b", "COM1"}};
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(serial::serial_ports, (std::vector<i16>{1, 7}));
}

TEST_F(Start, GoesOnWithoutAListOfSerialPorts) {
    world().port_list_unreadable = true;
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(serial::serial_ports, std::nullopt);
    EXPECT_FALSE(world().exit_code.has_value());
    EXPECT_EQ(event_lines(), text_lines{std::string(start_line)});
}

TEST_F(Start, EndsIdleAndWritesItsLine) {
    sensor::state.measure_running = true;
    mainfrm::start_program(1272, 911);
    EXPECT_FALSE(sensor::state.measure_running);
    EXPECT_EQ(event_lines(), text_lines{std::string(start_line)});
    EXPECT_TRUE(world().boxes.empty());
    EXPECT_FALSE(world().exit_code.has_value());
    for (i16 channel = 0; channel < channel_count; ++channel)
        EXPECT_EQ(port(channel).opened, 0);
}

TEST_F(Start, SetsTheSendTimersIntervalFromTheRefreshSetting) {
    struct interval_row {
        std::string_view refresh;
        int interval; ///< ms
    };
    for (const interval_row& row : {interval_row{"0", 600},
                                    {"1", 450},
                                    {"2", 300},
                                    {"3", 300},
                                    {"255", 300},
                                    {"", 600},
                                    {"1.5", 300}}) {
        prepare(logging_settings(1, "IPRefresh=" + std::string(row.refresh) + "\r\n"));
        mainfrm::start_program(1272, 911);
        EXPECT_EQ(mainfrm::timers.Timer_TCP.Interval(), row.interval) << row.refresh;
    }
}

TEST_F(Start, WithoutASettingsFileEndsWithThatOfTheTwoRepairs) {
    prepare("");
    world().files.clear();
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(world().files.size(), 1U);
    EXPECT_EQ(file("tyxo.ini"), "[tyxo]\r\nadc_offset=479\r\nzyl_speed_range=1\r\n");
    EXPECT_FALSE(world().exit_code.has_value());
}

TEST_F(Start, WithoutChannelsAllPanelsReadNotInstalledAndTheStartButtonSaysSo) {
    prepare(logging_settings(0));
    mainfrm::start_program(1272, 911);
    for (i16 channel = 0; channel < channel_count; ++channel) {
        EXPECT_EQ(panels.Frame_sensor[channel].Caption, "not installed");
        EXPECT_EQ(charts.chart[channel].Title, "not installed");
        EXPECT_FALSE(indicators.start_channel[channel].Enabled);
    }
    mainfrm::startstop_click();
    ASSERT_EQ(world().boxes.size(), 1U);
    EXPECT_EQ(world().boxes[0].text, no_sensor_text);
    EXPECT_EQ(world().boxes[0].icon, box_icon::critical);
    EXPECT_FALSE(sensor::state.measure_running);
}

/// What could be seen while the first box with this text was up.
struct sight {
    bool seen = false;
    std::string first_caption; ///< of the first panel
    double design_w = 0;
    std::size_t ports = 0;
    text_lines events;
    std::string window_caption;
    i16 max_sensors = 0;
};

sight sight_at(std::string_view box_text) {
    sight result;
    world().port_names = {{"a", "COM1"}};
    world().during_box = [&, text = std::string(box_text)] {
        if (result.seen || !world().boxes.back().text.starts_with(text)) return;
        result = {true,
                  panels.Frame_sensor[0].Caption,
                  mainfrm::state.design_w,
                  serial::serial_ports ? serial::serial_ports->size() : 0,
                  event_lines(),
                  mainfrm::state.Caption,
                  sensor::state.max_sensors};
    };
    mainfrm::start_program(1272, 911);
    world().during_box = {};
    EXPECT_TRUE(result.seen);
    return result;
}

TEST_F(Start, TestsTheScreenBehindTheSettingsAndInFrontOfThePanels) {
    world().screen = {1024, 768};
    const sight at_warning = sight_at("Resolution is actual");
    EXPECT_EQ(at_warning.max_sensors, 2);
    EXPECT_EQ(at_warning.first_caption, "");
    EXPECT_EQ(at_warning.design_w, 0);
    EXPECT_EQ(at_warning.ports, 0U);
    EXPECT_TRUE(at_warning.events.empty());
}

TEST_F(Start, WritesItsLineBehindPanelsAndPortsAndInFrontOfTheCaption) {
    world().unwritable.insert("C:/logs");
    const sight at_line = sight_at("Directory for Eventfile");
    EXPECT_EQ(at_line.first_caption, "1: Engine 1");
    EXPECT_EQ(at_line.design_w, 1272);
    EXPECT_EQ(at_line.ports, 1U);
    EXPECT_EQ(at_line.window_caption, "");
    EXPECT_NE(mainfrm::state.Caption, "");
}

TEST_F(Start, StartsMeasuringBehindItsLineAndInFrontOfTheCaption) {
    prepare(logging_settings(2, std::string(with_events) + "autostart=1\r\nIPRefresh=2\r\n"));
    world().ports[1].refuses_to_open = true;
    const sight at_port = sight_at(no_port_text);
    EXPECT_EQ(at_port.events, text_lines{std::string(start_line)});
    EXPECT_EQ(at_port.window_caption, "");
    EXPECT_EQ(mainfrm::timers.Timer_TCP.Interval(), 300);
    EXPECT_NE(mainfrm::state.Caption, "");
}

TEST_F(Start, ShowsItsBoxesInOrder) {
    prepare(logging_settings(2, "eventfile_ena=1\r\nevtpath=Q:\\\r\nautostart=1\r\n"));
    world().screen = {1024, 768};
    world().ports[2].refuses_to_open = true;
    mainfrm::start_program(1272, 911);
    ASSERT_EQ(world().boxes.size(), 3U);
    EXPECT_TRUE(box_texts()[0].starts_with("Resolution is actual"));
    EXPECT_TRUE(box_texts()[1].starts_with("Directory for Eventfile"));
    EXPECT_EQ(box_texts()[2], std::string(no_port_text) + "2");
}

} // namespace
} // namespace tyxo
