// The status machine's messages: every row in both directions, their order, their repetition.

#include "link/frames.h"
#include "link/link_world.h"
#include "link/status_update.h"

namespace tyxo::link_testing {
namespace {

/// What a row writes; an empty comment or text stands for none. `file` is what the event file reads behind
/// "KVD Engine 1" or "Evaluator Engine 1".
struct message {
    std::string prefix;
    std::string box;
    std::string comment;
    std::string file;
};

struct status_row {
    const char* name;
    raw_status set;
    message on;
    message off;
};

message event(std::string prefix, std::string text, std::string comment) {
    return {std::move(prefix), text, std::move(comment), text};
}
message evaluator(std::string text, std::string comment) {
    return event("Evaluator", std::move(text), std::move(comment));
}
message engine(std::string text, std::string comment) {
    return event("KVD", std::move(text), std::move(comment));
}
const message nothing{};

std::vector<status_row> status_rows() {
    return {
        {"memory_overflow",
         {.error = 0x8000},
         evaluator(" ## Memory Overflow", "Evaluator Memory Overflow"),
         nothing},
        {"crc_error",
         {.error = 0x4000},
         {"Evaluator", " ## CRC Error", "Evaluator CRC Error", " CRC Error"},
         nothing},
        {"memory_timeout",
         {.error = 0x2000},
         evaluator(" ## Memory Timeout", "Evaluator Memory Timeout"),
         nothing},
        {"memory_error", {.error = 0x1000}, evaluator(" ## Memory Error", "Evaluator Memory Error"), nothing},
        {"inca", {.error = 0x0004}, engine(" ## INCA signal Error", "KVD INCA Error"), nothing},
        {"incb", {.error = 0x0008}, engine(" ## INCB signal Error", "KVD INCB Error"), nothing},
        {"sync", {.error = 0x0010}, engine(" ## Sync signal Error", "KVD SYNC Error"), nothing},
        {"test_signal", {.error = 0x0020}, engine(" ## Test signal Error", "KVD TESTSIGNAL Error"), nothing},
        {"overspeed",
         {.alarm = 0x2000},
         engine(" ## Overspeed Alarm ON", "KVD Overspeed Alarm ON"),
         engine(" ## Overspeed Alarm OFF", "KVD Overspeed Alarm OFF")},
        {"main_error", {.alarm = 0x0100}, engine(" ## Main Error", "KVD Main error"), nothing},
        {"main_dc",
         {.alarm = 0x0002},
         engine(" ## Main Alarm DC ON", "KVD Main ALARM DC ON"),
         engine(" ## Main Alarm DC OFF", "KVD Main ALARM DC OFF")},
        {"pre_dc",
         {.alarm = 0x0001},
         engine(" ## Prealarm DC ON", "KVD Prealarm DC ON"),
         engine(" ## Prealarm DC OFF", "KVD Prealarm DC OFF")},
        {"main_ac",
         {.alarm = 0x0008},
         engine(" ## Main Alarm AC ON", "KVD Main ALARM AC ON"),
         engine(" ## Main Alarm AC OFF", "KVD Main ALARM AC OFF")},
        {"pre_ac",
         {.alarm = 0x0004},
         engine(" ## Prealarm AC ON", "KVD Prealarm AC ON"),
         engine(" ## Prealarm AC OFF", "KVD Prealarm AC OFF")},
        {"main_alarm",
         {.alarm = 0x8000},
         engine(" ## Main Alarm ON", "KVD Main ALARM ON"),
         engine(" ## Main Alarm OFF", "KVD Main ALARM OFF")},
        {"inhibit",
         {.inhibit_on = 1},
         engine(" ## Alarm Inhibit ON", "KVD Alarm Inhibit ON"),
         engine(" ## Alarm Inhibit OFF", "KVD Alarm Inhibit OFF")},
    };
}

class StatusMessages : public link_world {
  protected:
    /// What was written since the last call.
    struct written {
        std::string box;
        lines comments;
        lines events;
        bool operator==(const written&) const = default;
        friend void PrintTo(const written& it, std::ostream* out) {
            *out << it.box << testing::PrintToString(it.comments) << testing::PrintToString(it.events);
        }
    };

    written take(const raw_status& raw) {
        const std::size_t before = indicators.Text_status.size();
        said.clear();
        dispatch(status(raw));
        return {box().substr(before), told("log_comment"), told("event_line")};
    }

    static written wanted(const message& row) {
        if (row.box.empty()) return {};
        const std::string name = row.prefix + " Engine 1";
        return {std::string(box_clock) + ' ' + name + row.box + "\r\n",
                row.comment.empty() ? lines{} : lines{"1 " + row.comment},
                {std::string(file_clock) + name + row.file}};
    }
    /// The texts of the box without clock and name, one per line.
    lines box_events() {
        lines events;
        std::string text = box();
        for (auto end = text.find("\r\n"); end != text.npos; end = text.find("\r\n")) {
            events.push_back(text.substr(text.find(" ## "), end - text.find(" ## ")));
            text.erase(0, end + 2);
        }
        return events;
    }
};

class EveryStatusRow : public StatusMessages, public testing::WithParamInterface<status_row> {};

TEST_P(EveryStatusRow, WritesItsTextsOnceInEachDirection) {
    const status_row& row = GetParam();
    EXPECT_EQ(take({}), written{});
    EXPECT_EQ(take(row.set), wanted(row.on));
    EXPECT_EQ(take(row.set), written{});
    EXPECT_EQ(take({}), wanted(row.off));
    EXPECT_EQ(take({}), written{});
    EXPECT_EQ(take(row.set), wanted(row.on));
}

INSTANTIATE_TEST_SUITE_P(rows, EveryStatusRow, testing::ValuesIn(status_rows()),
                         [](const auto& info) { return info.param.name; });

TEST_F(StatusMessages, PrealarmOnNamesTheChannelNumberInTheEventFile) {
    EXPECT_EQ(take({.alarm = 0x4000}), (written{std::string(box_clock) + " KVD Engine 1 ## Prealarm ON\r\n",
                                                {"1 KVD Prealarm ON"},
                                                {std::string(file_clock) + "KVD 1 Prealarm ON"}}));
    EXPECT_EQ(take({.alarm = 0x4000}), written{});
    EXPECT_EQ(take({}), wanted(engine(" ## Prealarm OFF", "KVD Prealarm OFF")));
}

TEST_F(StatusMessages, PrealarmOnOfALocationThatBeginsWithAHash) {
    record(0).location = "# 7";
    EXPECT_EQ(take({.alarm = 0x4000}).events, lines{std::string(file_clock) + "KVD 1 Prealarm ON"});
    EXPECT_EQ(take({}).events, lines{std::string(file_clock) + "KVD # 7 ## Prealarm OFF"});
}

TEST_F(StatusMessages, NotConnectedNeedsAllOfItsBitsAndComesBeforeTheTestSignal) {
    const written both = take({.error = 0x0063});
    EXPECT_EQ(both.box, std::string(box_clock) + " KVD Engine 1 ## Not connected\r\n" +
                            std::string(box_clock) + " KVD Engine 1 ## Test signal Error\r\n");
    EXPECT_EQ(both.comments, lines{"1 KVD TESTSIGNAL Error"}); // "Not connected" has none
    EXPECT_EQ(both.events, (lines{std::string(file_clock) + "KVD Engine 1 ## Not connected",
                                  std::string(file_clock) + "KVD Engine 1 ## Test signal Error"}));
}

TEST_F(StatusMessages, ThreeOfTheFourBitsAreNotNotConnected) {
    EXPECT_EQ(take({.error = 0x0023}), wanted(engine(" ## Test signal Error", "KVD TESTSIGNAL Error")));
    EXPECT_EQ(take({.error = 0x0043}), written{});
    EXPECT_EQ(take({.error = 0x0061}), wanted(engine(" ## Test signal Error", "KVD TESTSIGNAL Error")));
    EXPECT_EQ(take({.error = 0x0062}), written{});
    take({.error = 0x0063});
    EXPECT_TRUE(record(0).lat_not_connected);
    take({.error = 0x0023});
    EXPECT_FALSE(record(0).lat_not_connected);
}

TEST_F(StatusMessages, BitsWithoutARowWriteNothing) {
    EXPECT_EQ(take({.alarm = 0x1E10, .error = 0x0F80, .mode = 1, .inhibit_left = 9, .ext = 0xFF}), written{});
}

TEST_F(StatusMessages, AlarmsComeInTheOrderOfTheRowsNotOfTheBits) {
    take({.alarm = 0x8000 | 0x2000 | 0x0002});
    EXPECT_EQ(box_events(), (lines{" ## Overspeed Alarm ON", " ## Main Alarm DC ON", " ## Main Alarm ON"}));
}

TEST_F(StatusMessages, EverythingAtOnceKeepsTheOrderOnAndOff) {
    take({.alarm = 0xE10F, .error = 0xF07F, .inhibit_on = 1});
    EXPECT_EQ(box_events(),
              (lines{" ## Memory Overflow", " ## CRC Error", " ## Memory Timeout", " ## Memory Error",
                     " ## INCA signal Error", " ## INCB signal Error", " ## Sync signal Error",
                     " ## Not connected", " ## Test signal Error", " ## Overspeed Alarm ON", " ## Main Error",
                     " ## Main Alarm DC ON", " ## Prealarm DC ON", " ## Main Alarm AC ON",
                     " ## Prealarm AC ON", " ## Main Alarm ON", " ## Prealarm ON", " ## Alarm Inhibit ON"}));
    EXPECT_EQ(told("log_comment").size(), 17U);
    EXPECT_EQ(told("event_line").size(), 18U);
    indicators.Text_status = {};
    take({});
    EXPECT_EQ(box_events(), (lines{" ## Overspeed Alarm OFF", " ## Main Alarm DC OFF", " ## Prealarm DC OFF",
                                   " ## Main Alarm AC OFF", " ## Prealarm AC OFF", " ## Main Alarm OFF",
                                   " ## Prealarm OFF", " ## Alarm Inhibit OFF"}));
}

TEST_F(StatusMessages, EachEventGoesToTheBoxThenTheLogThenTheEventFile) {
    std::vector<std::pair<std::string, std::size_t>> order;
    const auto seen = [&](const char* what) {
        order.emplace_back(what, indicators.Text_status.text().size());
    };
    calls.log_comment = [&](i16, std::string_view) { seen("log"); };
    calls.event_line = [&](std::string_view) { seen("file"); };
    dispatch(status({.alarm = 0x2000}));
    const std::size_t whole = box().size();
    EXPECT_EQ(order, (std::vector<std::pair<std::string, std::size_t>>{{"log", whole}, {"file", whole}}));
}

TEST_F(StatusMessages, BoxAndEventFileReadTheClockForThemselves) {
    calls.log_comment = [](i16, std::string_view) { simulation::set_local({2026, 12, 31, 23, 59, 59}); };
    EXPECT_EQ(take({.alarm = 0x2000}).events,
              lines{"12-31-2026;23:59:59;KVD Engine 1 ## Overspeed Alarm ON"});
    EXPECT_EQ(box(), std::string(box_clock) + " KVD Engine 1 ## Overspeed Alarm ON\r\n");
}

TEST_F(StatusMessages, ClockTextsHaveLeadingZeros) {
    simulation::set_local({2026, 1, 3, 4, 5, 6});
    const written line = take({.error = 0x4000});
    EXPECT_EQ(line.box, "01-03-2026 04:05:06 Evaluator Engine 1 ## CRC Error\r\n");
    EXPECT_EQ(line.events, lines{"01-03-2026;04:05:06;Evaluator Engine 1 CRC Error"});
}

class InhibitValue : public StatusMessages, public testing::WithParamInterface<i32> {};

TEST_P(InhibitValue, OtherThan1CountsAsOff) {
    EXPECT_EQ(take({.inhibit_on = GetParam()}), written{});
    take({.inhibit_on = 1});
    EXPECT_EQ(take({.inhibit_on = GetParam()}),
              wanted(engine(" ## Alarm Inhibit OFF", "KVD Alarm Inhibit OFF")));
}

INSTANTIATE_TEST_SUITE_P(values, InhibitValue, testing::Values(0, 2, 3, 0x0101, 0xFFFF),
                         [](const auto& info) { return "value_" + std::to_string(info.param); });

TEST_F(StatusMessages, ChannelsHaveTheirOwnLatches) {
    dispatch(status({.alarm = 0x8000}), 0);
    dispatch(status({.alarm = 0x8000}), 1);
    EXPECT_EQ(told("log_comment"), (lines{"1 KVD Main ALARM ON", "2 KVD Main ALARM ON"}));
    dispatch(status({}), 1);
    EXPECT_EQ(told("log_comment").back(), "2 KVD Main ALARM OFF");
    EXPECT_TRUE(record(0).lat_main_alarm);
}

TEST_F(StatusMessages, ALocationIsWrittenAsItStands) {
    record(0).location = " a;b M\xFChle ";
    EXPECT_EQ(take({.alarm = 0x2000}).events,
              lines{std::string(file_clock) + "KVD  a;b M\xFChle  ## Overspeed Alarm ON"});
}

} // namespace
} // namespace tyxo::link_testing
