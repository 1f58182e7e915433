// Where clock times stand below a strip chart.

#include "controls/time_axis.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <random>

namespace tyxo {
namespace {

constexpr std::int64_t second = 1000;
constexpr std::int64_t minute = 60 * second;
constexpr std::int64_t hour = 60 * minute;
constexpr std::int64_t day = 24 * hour;

/// The local clock of a time zone; `running_ms` is 0 at the given moment of universal time, and the clock's
/// seconds begin `phase` ms after those of `running_ms`.
class zone {
  public:
    zone(const char* rules, std::time_t epoch, std::int64_t phase = 0) : epoch_(epoch), phase_(phase) {
        setenv("TZ", rules, 1);
        tzset();
    }
    ~zone() {
        unsetenv("TZ");
        tzset();
    }
    zone(const zone&) = delete;
    zone& operator=(const zone&) = delete;

    [[nodiscard]] local_clock clock() const {
        return [this](std::int64_t running) {
            const std::int64_t shifted = running - phase_;
            const std::time_t moment = epoch_ + shifted / second - (shifted % second < 0 ? 1 : 0);
            std::tm parts{};
            localtime_r(&moment, &parts);
            return local_time{parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
                              parts.tm_hour,        parts.tm_min,     parts.tm_sec};
        };
    }

  private:
    std::time_t epoch_;
    std::int64_t phase_;
};

constexpr std::time_t july_2nd = 1782957600; // 2026-07-02 02:00:00 UTC
constexpr const char* utc = "UTC0";
constexpr const char* berlin = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr const char* kolkata = "IST-5:30";
constexpr const char* lord_howe = "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0";
constexpr std::time_t spring = 1774746000; // 2026-03-29 01:00:00 UTC: 02:00 becomes 03:00 in Berlin
constexpr std::time_t autumn = 1792890000; // 2026-10-25 01:00:00 UTC: 03:00 becomes 02:00 in Berlin

std::vector<std::string> texts(const time_ticks& ticks) {
    std::vector<std::string> texts;
    for (const time_label& label : ticks.labels)
        texts.push_back(label.text);
    return texts;
}

using text_list = std::vector<std::string>;

TEST(TimeAxis, TheTextsHaveDayAndMonthUnpaddedAndTheClockWithTwoDigits) {
    constexpr std::string_view format = "d/m hh:nn:ss";
    EXPECT_EQ(formatted(format, {2026, 7, 2, 3, 5, 9}), "2/7 03:05:09");
    EXPECT_EQ(formatted(format, {2026, 12, 31, 23, 59, 58}), "31/12 23:59:58");
    EXPECT_EQ(formatted(format, {2026, 1, 1, 0, 0, 0}), "1/1 00:00:00");
    EXPECT_EQ(formatted("dd.mm.yy h-n", {2006, 7, 2, 3, 5, 9}), "02.07.06 3-5");
    EXPECT_EQ(formatted("", {2006, 7, 2, 3, 5, 9}), "");
}

struct step_row {
    std::int64_t least;
    std::int64_t step;
};

TEST(TimeAxis, TheStepIsTheLeastRoundOneThatLeavesRoom) {
    constexpr step_row rows[] = {
        {0, second},
        {1, second},
        {1001, 2 * second},
        {9000, 10 * second},
        {10001, 20 * second},
        {21000, 30 * second},
        {31000, minute},
        {2 * minute + 1, 3 * minute},
        {4 * minute, 5 * minute},
        {9 * minute, 10 * minute},
        {11 * minute, 15 * minute},
        {16 * minute, 30 * minute},
        {31 * minute, hour},
        {61 * minute, 2 * hour},
        {3 * hour + 1, 4 * hour},
        {5 * hour, 6 * hour},
        {7 * hour, 12 * hour},
        {13 * hour, day},
        {25 * hour, 7 * day},
        {8 * day, 9 * day},
    };
    for (const step_row& row : rows)
        EXPECT_EQ(label_step(row.least), row.step) << row.least;
}

TEST(TimeAxis, LabelsStandAtRoundTimesWithMinorTicksBetween) {
    const zone here(utc, july_2nd);
    const time_ticks ticks = ticks_of({5 * second, 125 * second, 25 * second, 3}, here.clock());
    EXPECT_EQ(texts(ticks), (text_list{"2/7 02:00:30", "2/7 02:01:00", "2/7 02:01:30", "2/7 02:02:00"}));
    for (std::size_t label = 0; label < 4; ++label)
        EXPECT_EQ(ticks.labels[label].time, static_cast<std::int64_t>(label + 1) * 30 * second);
    const std::vector<std::int64_t> minor{7500,  15000, 22500, 37500, 45000,  52500,
                                          67500, 75000, 82500, 97500, 105000, 112500};
    EXPECT_EQ(ticks.minor, minor);
}

TEST(TimeAxis, BothEndsOfTheRangeCanBearALabel) {
    const zone here(utc, july_2nd);
    EXPECT_EQ(texts(ticks_of({0, 20 * second, 10 * second}, here.clock())).size(), 3U);
    EXPECT_EQ(texts(ticks_of({1, 20 * second - 1, 10 * second}, here.clock())).size(), 1U);
}

TEST(TimeAxis, LabelsMoveWithTheCurveAndNeverJumpOrTouch) {
    const zone here(berlin, july_2nd, 317);
    for (const std::int64_t span : {2 * minute, 15 * minute, hour, day}) {
        const std::int64_t least = span / 6;
        std::vector<time_label> before;
        for (std::int64_t newest = 0; newest < 2 * span; newest += span / 97) {
            const auto labels = ticks_of({newest - span, newest, least, 3}, here.clock()).labels;
            for (std::size_t label = 1; label < labels.size(); ++label)
                EXPECT_GE(labels[label].time - labels[label - 1].time, least);
            for (const time_label& label : before) {
                if (label.time < newest - span) continue;
                EXPECT_TRUE(std::count(labels.begin(), labels.end(), label)) << label.text << " is gone";
            }
            EXPECT_GE(labels.size(), 2U);
            before = labels;
        }
    }
}

TEST(TimeAxis, AHalfHourZoneHasItsLabelsAtItsOwnRoundTimes) {
    const zone here(kolkata, july_2nd);
    EXPECT_EQ(texts(ticks_of({0, 4 * hour, hour}, here.clock())),
              (text_list{"2/7 08:00:00", "2/7 09:00:00", "2/7 10:00:00", "2/7 11:00:00"}));
    EXPECT_EQ(ticks_of({0, 4 * hour, hour}, here.clock()).labels[0].time, 30 * minute);
}

TEST(TimeAxis, TheSecondBeginsWhereTheClockShowsANewOne) {
    for (const std::int64_t phase : {0, 1, 499, 500, 999}) {
        const zone here(utc, july_2nd, phase);
        const time_ticks ticks = ticks_of({0, minute, 10 * second}, here.clock());
        ASSERT_GE(ticks.labels.size(), 6U);
        for (const time_label& label : ticks.labels)
            EXPECT_EQ(label.time % (10 * second), phase);
    }
}

TEST(TimeAxis, AfterAnHourIsLeftOutLabelsStandAtRoundTimesOfTheNewTime) {
    const zone here(berlin, spring);
    EXPECT_EQ(texts(ticks_of({-90 * minute, 90 * minute, 30 * minute}, here.clock())),
              (text_list{"29/3 00:30:00", "29/3 01:00:00", "29/3 01:30:00", "29/3 03:00:00", "29/3 03:30:00",
                         "29/3 04:00:00", "29/3 04:30:00"}));
    // 03:00 to 04:00 are one hour of four: too near, wherever the picture begins.
    for (const std::int64_t from : {-20 * hour, -6 * hour, -2 * hour - 1, -2 * hour, 0 * hour})
        EXPECT_EQ(texts(ticks_of({from, 8 * hour, 4 * hour}, here.clock())).back(), "29/3 08:00:00") << from;
    EXPECT_EQ(texts(ticks_of({-6 * hour, 8 * hour, 4 * hour}, here.clock())),
              (text_list{"28/3 20:00:00", "29/3 00:00:00", "29/3 08:00:00"}));
    EXPECT_EQ(texts(ticks_of({-hour, 8 * hour, 4 * hour}, here.clock())), (text_list{"29/3 08:00:00"}));
}

TEST(TimeAxis, AnHourThatComesTwiceHasItsLabelsTwice) {
    const zone here(berlin, autumn);
    const time_ticks ticks = ticks_of({-hour, 2 * hour, 30 * minute, 1}, here.clock());
    EXPECT_EQ(texts(ticks), (text_list{"25/10 02:00:00", "25/10 02:30:00", "25/10 02:00:00", "25/10 02:30:00",
                                       "25/10 03:00:00", "25/10 03:30:00", "25/10 04:00:00"}));
    for (std::size_t label = 0; label < ticks.labels.size(); ++label)
        EXPECT_EQ(ticks.labels[label].time, static_cast<std::int64_t>(label) * 30 * minute - hour);
    EXPECT_EQ(ticks.minor.size(), 6U);
    EXPECT_EQ(texts(ticks_of({-4 * hour, 8 * hour, 4 * hour}, here.clock())),
              (text_list{"25/10 00:00:00", "25/10 04:00:00", "25/10 08:00:00"}));
}

TEST(TimeAxis, DaylightSavingOfHalfAnHour) {
    const zone here(lord_howe, 1775314800); // 2026-04-04 15:00:00 UTC: 02:00 becomes 01:30
    EXPECT_EQ(texts(ticks_of({-50 * minute, 50 * minute, 15 * minute}, here.clock())),
              (text_list{"5/4 01:15:00", "5/4 01:30:00", "5/4 01:45:00", "5/4 01:30:00", "5/4 01:45:00",
                         "5/4 02:00:00", "5/4 02:15:00"}));
}

TEST(TimeAxis, MidnightAndNewYearAreRoundTimes) {
    const zone here(utc, 1798761600); // 2027-01-01 00:00:00 UTC
    EXPECT_EQ(
        texts(ticks_of({-12 * hour, 12 * hour, 5 * hour}, here.clock())),
        (text_list{"31/12 12:00:00", "31/12 18:00:00", "1/1 00:00:00", "1/1 06:00:00", "1/1 12:00:00"}));
    EXPECT_EQ(texts(ticks_of({-12 * hour, 36 * hour, 13 * hour}, here.clock())),
              (text_list{"1/1 00:00:00", "2/1 00:00:00"}));
}

TEST(TimeAxis, MomentsBeforeTheBeginningOfTimeAreMoments) {
    const zone here(utc, 0);
    EXPECT_EQ(texts(ticks_of({-3 * hour, 0, hour}, here.clock())),
              (text_list{"31/12 21:00:00", "31/12 22:00:00", "31/12 23:00:00", "1/1 00:00:00"}));
}

TEST(TimeAxis, OddRequestsAreAnsweredAndBounded) {
    const zone here(utc, july_2nd);
    EXPECT_TRUE(ticks_of({1, 0, second}, here.clock()).labels.empty());
    EXPECT_EQ(ticks_of({0, 0, second}, here.clock()).labels.size(), 1U);
    EXPECT_LE(ticks_of({0, day, 0}, here.clock()).labels.size(), 101U);
    EXPECT_LE(ticks_of({0, day, -5, -3}, here.clock()).labels.size(), 101U);
    EXPECT_LE(ticks_of({0, day, hour, 1 << 30}, here.clock()).minor.size(), 3000U);
    EXPECT_LE(ticks_of({0, hour, 100 * day}, here.clock()).labels.size(), 1U);
}

TEST(TimeAxis, AHundredStepsWithBothTheirEndsAreTooManyLabels) {
    const zone here(utc, july_2nd);
    for (const std::int64_t step : {second, 10 * second, minute, hour}) {
        for (const std::int64_t more : {-1, 0, 1, 99, 100}) {
            const time_ticks ticks = ticks_of({0, 100 * step + more}, here.clock());
            EXPECT_LE(ticks.labels.size(), 100U) << step << ' ' << more;
        }
    }
}

TEST(TimeAxis, AClockThatLiesEnds) {
    std::mt19937 chance(7);
    const local_clock mad = [&chance](std::int64_t) {
        const auto number = [&chance](int end) {
            return static_cast<i32>(chance() % static_cast<unsigned>(end));
        };
        return local_time{2026, 1 + number(12), 1 + number(28), number(24), number(60), number(60)};
    };
    for (int round = 0; round < 100; ++round)
        EXPECT_LE(ticks_of({0, hour, minute}, mad).labels.size(), 100U);
}

} // namespace
} // namespace tyxo
