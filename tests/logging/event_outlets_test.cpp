// Where an event goes: status text, log and event file.

#include "link/calls.h"
#include "link/indicators.h"
#include "logging/event_file.h"
#include "logging/log.h"
#include "logging/logging_machine.h"

#include <gtest/gtest.h>

#include <vector>

namespace tyxo {
namespace {

using namespace simulation;
using mainfrm::start_channel_click;

constexpr std::string_view all_events = "C:/logs/TY_all_events.txt";
constexpr std::string_view with_events = "eventfile_ena=1\r\nevtpath=C:\\logs\\\r\n";

struct event_row {
    std::string_view name;
    status_values before; ///< the status of the Evaluator
    status_values now;
    std::string_view box; ///< behind date, time and a blank
    std::string_view comment;
    std::string_view file_text; ///< behind date, time and a ";"
};

// clang-format off
const std::vector<event_row> event_rows{
    {"Memory overflow", {}, {.error = 0x8000}, "Evaluator Engine 1 ## Memory Overflow", "Evaluator Memory Overflow", "Evaluator Engine 1 ## Memory Overflow"},
    {"CRC error", {}, {.error = 0x4000}, "Evaluator Engine 1 ## CRC Error", "Evaluator CRC Error", "Evaluator Engine 1 CRC Error"},
    {"Memory time-out", {}, {.error = 0x2000}, "Evaluator Engine 1 ## Memory Timeout", "Evaluator Memory Timeout", "Evaluator Engine 1 ## Memory Timeout"},
    {"Memory error", {}, {.error = 0x1000}, "Evaluator Engine 1 ## Memory Error", "Evaluator Memory Error", "Evaluator Engine 1 ## Memory Error"},
    {"INCA signal error", {}, {.error = 0x0004}, "KVD Engine 1 ## INCA signal Error", "KVD INCA Error", "KVD Engine 1 ## INCA signal Error"},
    {"INCB signal error", {}, {.error = 0x0008}, "KVD Engine 1 ## INCB signal Error", "KVD INCB Error", "KVD Engine 1 ## INCB signal Error"},
    {"Sync signal error", {}, {.error = 0x0010}, "KVD Engine 1 ## Sync signal Error", "KVD SYNC Error", "KVD Engine 1 ## Sync signal Error"},
    {"Not connected", {.error = 0x0020}, {.error = 0x0063}, "KVD Engine 1 ## Not connected", "", "KVD Engine 1 ## Not connected"},
    {"Test signal error", {}, {.error = 0x0020}, "KVD Engine 1 ## Test signal Error", "KVD TESTSIGNAL Error", "KVD Engine 1 ## Test signal Error"},
    {"Overspeed on", {}, {.alarm = 0x2000}, "KVD Engine 1 ## Overspeed Alarm ON", "KVD Overspeed Alarm ON", "KVD Engine 1 ## Overspeed Alarm ON"},
    {"Overspeed off", {.alarm = 0x2000}, {}, "KVD Engine 1 ## Overspeed Alarm OFF", "KVD Overspeed Alarm OFF", "KVD Engine 1 ## Overspeed Alarm OFF"},
    {"Main error", {}, {.alarm = 0x0100}, "KVD Engine 1 ## Main Error", "KVD Main error", "KVD Engine 1 ## Main Error"},
    {"Main alarm DC on", {}, {.alarm = 0x0002}, "KVD Engine 1 ## Main Alarm DC ON", "KVD Main ALARM DC ON", "KVD Engine 1 ## Main Alarm DC ON"},
    {"Main alarm DC off", {.alarm = 0x0002}, {}, "KVD Engine 1 ## Main Alarm DC OFF", "KVD Main ALARM DC OFF", "KVD Engine 1 ## Main Alarm DC OFF"},
    {"Prealarm DC on", {}, {.alarm = 0x0001}, "KVD Engine 1 ## Prealarm DC ON", "KVD Prealarm DC ON", "KVD Engine 1 ## Prealarm DC ON"},
    {"Prealarm DC off", {.alarm = 0x0001}, {}, "KVD Engine 1 ## Prealarm DC OFF", "KVD Prealarm DC OFF", "KVD Engine 1 ## Prealarm DC OFF"},
    {"Main alarm AC on", {}, {.alarm = 0x0008}, "KVD Engine 1 ## Main Alarm AC ON", "KVD Main ALARM AC ON", "KVD Engine 1 ## Main Alarm AC ON"},
    {"Main alarm AC off", {.alarm = 0x0008}, {}, "KVD Engine 1 ## Main Alarm AC OFF", "KVD Main ALARM AC OFF", "KVD Engine 1 ## Main Alarm AC OFF"},
    {"Prealarm AC on", {}, {.alarm = 0x0004}, "KVD Engine 1 ## Prealarm AC ON", "KVD Prealarm AC ON", "KVD Engine 1 ## Prealarm AC ON"},
    {"Prealarm AC off", {.alarm = 0x0004}, {}, "KVD Engine 1 ## Prealarm AC OFF", "KVD Prealarm AC OFF", "KVD Engine 1 ## Prealarm AC OFF"},
    {"Main alarm on", {}, {.alarm = 0x8000}, "KVD Engine 1 ## Main Alarm ON", "KVD Main ALARM ON", "KVD Engine 1 ## Main Alarm ON"},
    {"Main alarm off", {.alarm = 0x8000}, {}, "KVD Engine 1 ## Main Alarm OFF", "KVD Main ALARM OFF", "KVD Engine 1 ## Main Alarm OFF"},
    {"Prealarm on", {}, {.alarm = 0x4000}, "KVD Engine 1 ## Prealarm ON", "KVD Prealarm ON", "KVD 1 Prealarm ON"},
    {"Prealarm off", {.alarm = 0x4000}, {}, "KVD Engine 1 ## Prealarm OFF", "KVD Prealarm OFF", "KVD Engine 1 ## Prealarm OFF"},
    {"Alarm inhibit on", {}, {.inhibit_on = 1}, "KVD Engine 1 ## Alarm Inhibit ON", "KVD Alarm Inhibit ON", "KVD Engine 1 ## Alarm Inhibit ON"},
    {"Alarm inhibit off", {.inhibit_on = 1}, {}, "KVD Engine 1 ## Alarm Inhibit OFF", "KVD Alarm Inhibit OFF", "KVD Engine 1 ## Alarm Inhibit OFF"},
};
// clang-format on

class EventOutlets : public testing::Test {
  protected:
    void SetUp() override {
        start_on(logging_settings(2, with_events));
        start_logging(0);
    }
    /// What stands behind these in the three places.
    void begin_here() {
        box_size_ = indicators.Text_status.size();
        log_lines_ = logged(0).size();
        event_lines_ = lines_of(file(all_events)).size();
    }
    [[nodiscard]] std::string new_in_box() const {
        return std::string(indicators.Text_status.text().substr(box_size_));
    }
    [[nodiscard]] text_lines new_in_log() const { return behind(logged(0), log_lines_); }
    [[nodiscard]] text_lines new_events() const { return behind(lines_of(file(all_events)), event_lines_); }

  private:
    static text_lines behind(const text_lines& lines, std::size_t count) {
        return {lines.begin() + static_cast<std::ptrdiff_t>(count), lines.end()};
    }
    std::size_t box_size_ = 0;
    std::size_t log_lines_ = 0;
    std::size_t event_lines_ = 0;
};

TEST_F(EventOutlets, EachStatusEventHasItsThreeTexts) {
    for (const event_row& row : event_rows) {
        SetUp();
        feed(0, status_body(row.before));
        begin_here();
        set_local({2026, 11, 9, 3, 4, 5}); // also a new period: the comment opens a new file
        feed(0, status_body(row.now));
        EXPECT_EQ(new_in_box(), "11-09-2026 03:04:05 " + std::string(row.box) + "\r\n") << row.name;
        EXPECT_EQ(new_events(), text_lines{"##;11-09-2026;03:04:05;" + std::string(row.file_text)})
            << row.name;
        if (row.comment.empty()) {
            EXPECT_FALSE(exists(log_path(0, "20261109"))) << row.name;
        } else {
            EXPECT_EQ(logged(0, "20261109").back(), "<!-- 03:04:05 " + std::string(row.comment) + " -->")
                << row.name;
        }
    }
}

TEST_F(EventOutlets, AStatusThatDoesNotChangeWritesNothing) {
    for (const event_row& row : event_rows) {
        feed(0, status_body(row.now));
        begin_here();
        feed(0, status_body(row.now));
        EXPECT_EQ(new_in_box(), "") << row.name;
        EXPECT_EQ(new_in_log(), text_lines{}) << row.name;
        EXPECT_EQ(new_events(), text_lines{}) << row.name;
    }
}

TEST_F(EventOutlets, StartAndStopOfAChannelEndInABlankAndHaveNoComment) {
    begin_here();
    start_channel_click(1);
    EXPECT_EQ(new_in_box(), "07-02-2026 13:05:09 KVD Engine 2 ## Measure started \r\n");
    EXPECT_EQ(new_events(), text_lines{"##;07-02-2026;13:05:09;KVD Engine 2 ## Measure started "});
    begin_here();
    start_channel_click(1);
    EXPECT_EQ(new_in_box(), "07-02-2026 13:05:09 KVD Engine 2 ## Measure stopped \r\n");
    EXPECT_EQ(new_events(), text_lines{"##;07-02-2026;13:05:09;KVD Engine 2 ## Measure stopped "});
    EXPECT_EQ(new_in_log(), text_lines{});
}

TEST_F(EventOutlets, ALinkIsNamedByItsNumber) {
    begin_here();
    advance(3000);
    EXPECT_EQ(new_in_box(), "07-02-2026 13:05:12 Evaluator 1 not connected\r\n");
    EXPECT_EQ(new_in_log(), text_lines{"<!-- 13:05:12 Evaluator not connected -->"});
    EXPECT_EQ(new_events(), text_lines{"##;07-02-2026;13:05:12;Evaluator 1 not connected"});
    begin_here();
    receive(0, "x");
    EXPECT_EQ(new_in_box(), "07-02-2026 13:05:12 Evaluator 1 connected\r\n");
    EXPECT_EQ(new_in_log(), text_lines{"<!-- 13:05:12 Evaluator connected -->"});
    EXPECT_EQ(new_events(), text_lines{"##;07-02-2026;13:05:12;Evaluator 1 connected"});
}

TEST_F(EventOutlets, BoxThenLogThenFileEachWithItsOwnReadingOfTheClock) {
    text_lines order;
    calls.log_comment = [&](i16 channel, std::string_view text) {
        order.emplace_back(indicators.Text_status.text().ends_with("Memory Error\r\n") ? "box" : "no box");
        order.emplace_back("log");
        log::log_comment(channel, text);
        set_local({2026, 7, 2, 14, 0, 0});
    };
    calls.event_line = [&](std::string_view text) {
        order.emplace_back("file");
        event_line(text);
    };
    begin_here();
    feed(0, status_body({.error = 0x1000}));
    EXPECT_EQ(order, (text_lines{"box", "log", "file"}));
    EXPECT_EQ(new_in_box(), "07-02-2026 13:05:09 Evaluator Engine 1 ## Memory Error\r\n");
    EXPECT_EQ(new_in_log(), text_lines{"<!-- 13:05:09 Evaluator Memory Error -->"});
    EXPECT_EQ(new_events(), text_lines{"##;07-02-2026;14:00:00;Evaluator Engine 1 ## Memory Error"});
}

TEST_F(EventOutlets, ALocationWithASemicolonMakesMoreFields) {
    sensor::state.channels[0].location = "Mill;Engine \xC4";
    begin_here();
    feed(0, status_body({.alarm = 0x0001}));
    EXPECT_EQ(new_events(), text_lines{"##;07-02-2026;13:05:09;KVD Mill;Engine \xC4 ## Prealarm DC ON"});
}

TEST_F(EventOutlets, WithoutALogTheBoxAndTheFileHaveTheEvent) {
    start_channel_click(1);
    begin_here();
    feed(1, status_body({.alarm = 0x0001}));
    EXPECT_EQ(new_in_box(), "07-02-2026 13:05:09 KVD Engine 2 ## Prealarm DC ON\r\n");
    EXPECT_EQ(new_events(), text_lines{"##;07-02-2026;13:05:09;KVD Engine 2 ## Prealarm DC ON"});
    EXPECT_FALSE(exists(log_path(1)));
}

TEST_F(EventOutlets, AFailedEventFileLeavesBoxAndLog) {
    world().unwritable.insert(std::string(all_events));
    begin_here();
    feed(0, status_body({.alarm = 0x0001}));
    feed(0, status_body({.alarm = 0x0000}));
    EXPECT_EQ(world().boxes.size(), 1U);
    EXPECT_EQ(new_in_box(), "07-02-2026 13:05:09 KVD Engine 1 ## Prealarm DC ON\r\n"
                            "07-02-2026 13:05:09 KVD Engine 1 ## Prealarm DC OFF\r\n");
    EXPECT_EQ(new_in_log(),
              (text_lines{"<!-- 13:05:09 KVD Prealarm DC ON -->", "<!-- 13:05:09 KVD Prealarm DC OFF -->"}));
    EXPECT_EQ(new_events(), text_lines{});
}

TEST_F(EventOutlets, ADisabledEventFileLeavesBoxAndLog) {
    start_on(logging_settings(1));
    start_logging(0);
    begin_here();
    feed(0, status_body({.alarm = 0x0001}));
    EXPECT_EQ(new_in_box(), "07-02-2026 13:05:09 KVD Engine 1 ## Prealarm DC ON\r\n");
    EXPECT_EQ(new_in_log(), text_lines{"<!-- 13:05:09 KVD Prealarm DC ON -->"});
    EXPECT_FALSE(exists(all_events));
}

TEST_F(EventOutlets, AFullLogDiskLeavesBoxAndTheNextRows) {
    begin_here();
    world().unwritable.insert(log_path(0));
    feed(0, status_body({.alarm = 0x2002}));
    EXPECT_EQ(new_events(), (text_lines{"##;07-02-2026;13:05:09;KVD Engine 1 ## Overspeed Alarm ON",
                                        "##;07-02-2026;13:05:09;KVD Engine 1 ## Main Alarm DC ON"}));
}

} // namespace
} // namespace tyxo
