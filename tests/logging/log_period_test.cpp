// Logs of a day or an hour, and the change from one to the next.

#include "logging/log.h"
#include "logging/logging_machine.h"
#include "settings/settings.h"

#include <gtest/gtest.h>

#include <utility>

namespace tyxo {
namespace {

using namespace simulation;
using mainfrm::start_channel_click;

std::string stopped(std::string_view time) {
    return "<!-- " + std::string(time) + " Measure Stopped -->";
}
std::string started(std::string_view time) {
    return "<!-- " + std::string(time) + " Log Started -->";
}
std::string note(std::string_view time, std::string_view text) {
    return "<#-- " + std::string(time) + " " + std::string(text) + " -->";
}

void begin_at(const local_time& moment, std::string_view mode, i16 used = 1) {
    start_on(logging_settings(used, "log_mode=" + std::string(mode) + "\r\n"));
    set_local(moment);
}

TEST(LogPeriod, NamesOfDailyAndHourlyFiles) {
    struct name_row {
        std::string_view mode;
        local_time moment;
        std::string_view digits;
    };
    for (const name_row& row : {name_row{"0", {2026, 7, 2, 13, 5, 9}, "20260702"},
                                {"1", {2026, 7, 2, 13, 5, 9}, "2026070213"},
                                {"1", {2026, 12, 31, 0, 59, 59}, "2026123100"},
                                {"2", {2026, 1, 9, 9, 0, 0}, "20260109"},
                                {"-1", {2026, 1, 9, 9, 0, 0}, "20260109"},
                                {"1", {2026, 1, 9, 9, 0, 0}, "2026010909"}}) {
        begin_at(row.moment, row.mode);
        start_logging(0);
        EXPECT_EQ(world().opened, text_lines{log_path(0, row.digits)});
    }
}

TEST(LogPeriod, AChangeOfDayEndsTheFileAndBeginsTheNext) {
    begin_at({2026, 7, 2, 23, 59, 59}, "0");
    start_logging(0);
    log::log_note(0, "last");
    advance(1000);
    log::log_note(0, "first");
    EXPECT_EQ(logged(0, "20260702"), (text_lines{note("23:59:59", "last"), stopped("00:00:00")}));
    EXPECT_EQ(logged(0, "20260703"), (text_lines{started("00:00:00"), note("00:00:00", "first")}));
    EXPECT_EQ(sensor::state.channels[0].log_state, log_states::open);
    EXPECT_EQ(sensor::state.channels[0].logname, "20260703Qu_Engine 1.xlg");
}

TEST(LogPeriod, EveryKindOfLineRunsTheCheck) {
    struct writer_row {
        std::string_view name;
        void (*write)();
        std::string_view line; ///< in the new file
    };
    for (const writer_row& row : {
             writer_row{"record", [] { log::log_record(0, "1"); }, "<REC1> 00:00:00 0 0 0 0 0 </REC1>"},
             {"comment", [] { log::log_comment(0, "c"); }, "<!-- 00:00:00 c -->"},
             {"note", [] { log::log_note(0, "n"); }, "<#-- 00:00:00 n -->"},
             {"kind 2", [] { log::log_record(0, "2"); }, ""},
             {"kind 8", [] { log::log_record(0, "8"); }, ""},
         }) {
        begin_at({2026, 7, 2, 23, 59, 59}, "0");
        start_logging(0);
        advance(1000);
        row.write();
        text_lines expected{started("00:00:00")};
        if (!row.line.empty()) expected.emplace_back(row.line);
        EXPECT_EQ(logged(0, "20260703"), expected) << row.name;
        EXPECT_EQ(logged(0, "20260702"), text_lines{stopped("00:00:00")}) << row.name;
    }
}

TEST(LogPeriod, ALineHasTheTimeFromBeforeTheCheckHoweverLongTheFilesTake) {
    for (const auto& [write, line] :
         {std::pair{+[] { log::log_record(0, "1"); }, "<REC1> 00:00:00 0 0 0 0 0 </REC1>"},
          {+[] { log::log_comment(0, "c"); }, "<!-- 00:00:00 c -->"},
          {+[] { log::log_note(0, "n"); }, "<#-- 00:00:00 n -->"}}) {
        begin_at({2026, 7, 2, 23, 59, 59}, "0");
        start_logging(0);
        advance(1000);
        world().during_open = [] { set_local({2026, 7, 3, 0, 0, 2}); };
        write();
        EXPECT_EQ(logged(0, "20260703"), (text_lines{started("00:00:02"), line}));
    }
}

TEST(LogPeriod, NothingRotatesBeforeALineIsWritten) {
    begin_at({2026, 7, 2, 23, 59, 59}, "0");
    start_logging(0);
    advance(1000);
    EXPECT_EQ(world().opened.size(), 1U);
    EXPECT_EQ(logged(0, "20260702"), text_lines{});
}

TEST(LogPeriod, AnHourChangesNothingInDailyMode) {
    begin_at({2026, 7, 2, 0, 0, 0}, "0");
    start_logging(0);
    for (int hour = 0; hour < 24; ++hour) {
        set_local({2026, 7, 2, hour, 30, 0});
        log::log_note(0, "x");
    }
    EXPECT_EQ(world().opened.size(), 1U);
    EXPECT_EQ(logged(0).size(), 24U);
}

TEST(LogPeriod, EveryHourHasItsFileInHourlyMode) {
    begin_at({2026, 7, 2, 22, 0, 0}, "1");
    start_logging(0);
    for (int hour = 0; hour < 4; ++hour) {
        log::log_note(0, "a");
        advance(3599 * 1000);
        log::log_note(0, "b");
        advance(1000);
    }
    EXPECT_EQ(world().opened, (text_lines{log_path(0, "2026070222"), log_path(0, "2026070223"),
                                          log_path(0, "2026070300"), log_path(0, "2026070301")}));
    EXPECT_EQ(logged(0, "2026070223"), (text_lines{"<!-- 23:00:00 Log Started -->", note("23:00:00", "a"),
                                                   note("23:59:59", "b"), stopped("00:00:00")}));
}

TEST(LogPeriod, AllChannelsInUseRotateAlsoThoseThatDoNotLog) {
    // The fourth channel has its keys and is not in use.
    start_on(logging_settings(3, "location 4=Engine 4\r\nlogpath 4=C:\\logs\\\r\n"));
    set_local({2026, 7, 2, 23, 59, 59});
    start_logging(0);
    start_logging(1);
    advance(1000);
    log::log_note(1, "cause");
    EXPECT_EQ(logged(0, "20260702"), text_lines{stopped("00:00:00")});
    EXPECT_EQ(logged(0, "20260703"), text_lines{started("00:00:00")});
    EXPECT_EQ(logged(1, "20260703"), (text_lines{started("00:00:00"), note("00:00:00", "cause")}));
    EXPECT_EQ(logged(2, "20260703"), text_lines{}) << "a header and nothing behind it";
    EXPECT_FALSE(exists(log_path(2, "20260702")));
    EXPECT_EQ(sensor::state.channels[2].log_state, log_states::none);
    EXPECT_FALSE(exists(log_path(3, "20260703")));
}

TEST(LogPeriod, AChannelThatWaitsForItsParametersRotatesAndStaysWaiting) {
    begin_at({2026, 7, 2, 23, 59, 59}, "0", 2);
    start_logging(0);
    start_channel_click(1);
    advance(1000);
    log::log_note(0, "cause");
    EXPECT_EQ(sensor::state.channels[1].log_state, log_states::wanted);
    EXPECT_EQ(logged(1, "20260703"), text_lines{});
    feed(1, parameter_body({}));
    feed(1, measured_body());
    EXPECT_EQ(logged(1, "20260703"), text_lines{"<REC1> 00:00:00 51 1480 1234 48 7 </REC1>"});
}

TEST(LogPeriod, AStoppedChannelWithAStaleStateGetsAFileOfTheNewPeriod) {
    begin_at({2026, 7, 2, 23, 59, 59}, "0", 2);
    start_logging(0);
    start_logging(1);
    start_channel_click(1);
    advance(1000);
    log::log_note(0, "cause");
    EXPECT_EQ(logged(1, "20260702"), text_lines{stopped("23:59:59")});
    EXPECT_EQ(logged(1, "20260703"), text_lines{started("00:00:00")});
}

TEST(LogPeriod, AChannelStartedBehindTheChangeLetsAnotherMissIt) {
    begin_at({2026, 7, 2, 23, 59, 59}, "0", 2);
    start_logging(0);
    advance(1000);
    start_logging(1); // its file sets the stamp of all
    log::log_note(0, "missed");
    EXPECT_EQ(logged(0, "20260702"), text_lines{note("00:00:00", "missed")});
    EXPECT_FALSE(exists(log_path(0, "20260703")));
    set_local({2026, 7, 4, 0, 0, 0});
    log::log_note(0, "next");
    EXPECT_EQ(logged(0, "20260704"), (text_lines{started("00:00:00"), note("00:00:00", "next")}));
}

TEST(LogPeriod, AClockSetBackOverMidnightGoesOnWithTheOldFile) {
    begin_at({2026, 7, 2, 23, 59, 0}, "0");
    start_logging(0);
    set_local({2026, 7, 3, 0, 0, 30});
    log::log_note(0, "third");
    set_local({2026, 7, 2, 23, 50, 0});
    log::log_note(0, "back");
    EXPECT_EQ(logged(0, "20260703"),
              (text_lines{started("00:00:30"), note("00:00:30", "third"), stopped("23:50:00")}));
    EXPECT_EQ(logged(0, "20260702"),
              (text_lines{stopped("00:00:30"), started("23:50:00"), note("23:50:00", "back")}));
}

TEST(LogPeriod, AClockSetByYearsRotatesEitherWay) {
    begin_at({2026, 7, 2, 12, 0, 0}, "0");
    start_logging(0);
    for (const local_time& moment : {local_time{2031, 7, 2, 12, 0, 0}, local_time{2001, 7, 2, 12, 0, 0}}) {
        set_local(moment);
        log::log_note(0, "x");
    }
    EXPECT_EQ(world().opened,
              (text_lines{log_path(0, "20260702"), log_path(0, "20310702"), log_path(0, "20010702")}));
}

TEST(LogPeriod, SummerTimeBeginsWithAMissingHour) {
    begin_at({2026, 3, 29, 1, 59, 59}, "1");
    start_logging(0);
    set_local({2026, 3, 29, 3, 0, 0});
    log::log_note(0, "summer");
    EXPECT_EQ(world().opened, (text_lines{log_path(0, "2026032901"), log_path(0, "2026032903")}));
    EXPECT_EQ(logged(0, "2026032903"), (text_lines{started("03:00:00"), note("03:00:00", "summer")}));
}

TEST(LogPeriod, SummerTimeEndsInTheSameHourAndTheSameFile) {
    begin_at({2026, 10, 25, 2, 59, 59}, "1");
    start_logging(0);
    log::log_note(0, "summer");
    set_local({2026, 10, 25, 2, 0, 0});
    log::log_note(0, "winter");
    EXPECT_EQ(world().opened.size(), 1U);
    EXPECT_EQ(logged(0, "2026102502"), (text_lines{note("02:59:59", "summer"), note("02:00:00", "winter")}));
}

TEST(LogPeriod, AnHourThatComesAgainIsAppendedToItsFile) {
    begin_at({2026, 10, 25, 2, 59, 59}, "1");
    start_logging(0);
    set_local({2026, 10, 25, 3, 0, 0});
    log::log_note(0, "three");
    set_local({2026, 10, 25, 2, 0, 0});
    log::log_note(0, "two again");
    EXPECT_EQ(logged(0, "2026102502"),
              (text_lines{stopped("03:00:00"), started("02:00:00"), note("02:00:00", "two again")}));
}

TEST(LogPeriod, AChangeOfTheModeTakesEffectWithTheNextLineOfAnyChannel) {
    begin_at({2026, 7, 2, 13, 5, 9}, "0", 2);
    start_logging(0);
    start_logging(1);
    settings.log_mode = 1;
    EXPECT_EQ(world().opened.size(), 2U);
    log::log_note(1, "hourly");
    EXPECT_EQ(logged(0, "20260702"), text_lines{stopped("13:05:09")});
    EXPECT_EQ(logged(0, "2026070213"), text_lines{started("13:05:09")});
    EXPECT_EQ(logged(1, "2026070213"), (text_lines{started("13:05:09"), note("13:05:09", "hourly")}));
    settings.log_mode = 0;
    log::log_note(0, "daily");
    EXPECT_EQ(logged(0, "20260702"),
              (text_lines{stopped("13:05:09"), started("13:05:09"), note("13:05:09", "daily")}));
}

TEST(LogPeriod, DailyStampsDifferInDayMonthAndYear) {
    for (const local_time& next : {local_time{2026, 7, 3, 13, 5, 9}, local_time{2026, 8, 2, 13, 5, 9},
                                   local_time{2027, 7, 2, 13, 5, 9}}) {
        begin_at({2026, 7, 2, 13, 5, 9}, "0");
        start_logging(0);
        set_local(next);
        log::log_note(0, "x");
        EXPECT_EQ(world().opened.size(), 2U);
    }
}

TEST(LogPeriod, TheSameHourOfAnotherDayIsAnotherPeriod) {
    begin_at({2026, 7, 2, 13, 5, 9}, "1");
    start_logging(0);
    set_local({2026, 7, 3, 13, 5, 9});
    log::log_note(0, "x");
    EXPECT_EQ(world().opened, (text_lines{log_path(0, "2026070213"), log_path(0, "2026070313")}));
}

} // namespace
} // namespace tyxo
