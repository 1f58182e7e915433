// The rows that the display tick adds to the strip charts.

#include "displays/chart.h"
#include "displays/panel.h"
#include "link/main_timers.h"
#include "link/supervision.h"
#include "logging/logging_machine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace tyxo {
namespace {

using namespace simulation;
using mainfrm::start_channel_click;

class ChartRows : public testing::Test {
  protected:
    void SetUp() override { start_on(logging_settings(3)); }
};

/// The points of a curve in the 2-minute window, gaps left out.
std::vector<float> values(i16 channel, std::size_t curve) {
    std::vector<strip_point> points;
    charts.rows[channel].window(strip_spans[0]).points(curve, 2000, points);
    std::vector<float> result;
    for (const strip_point& point : points)
        if (!std::isnan(point.value)) result.push_back(point.value);
    return result;
}

float newest(i16 channel, std::size_t curve) {
    const auto all = values(channel, curve);
    return all.empty() ? no_value : all.back();
}

i32 row_count(i16 channel) {
    return charts.rows[channel].window(strip_spans[0]).rows();
}

TEST_F(ChartRows, ATickAddsOneRowToTheChartOfEachStartedChannel) {
    start_channel_click(0);
    start_channel_click(2);
    for (i32 tick = 1; tick <= 3; ++tick) {
        advance(100);
        mainfrm::Timer_chart_upd_tick();
        EXPECT_EQ(charts.last_row[0], row_count(0) - 1);
        EXPECT_EQ(row_count(0), row_count(2));
        EXPECT_EQ(row_count(1), 0);
        EXPECT_EQ(row_count(3), 0);
    }
    EXPECT_GE(row_count(0), 3);
}

TEST_F(ChartRows, TheRowsOfTheTimerComeWithItsInterval) {
    start_channel_click(0);
    const int interval = mainfrm::timers.Timer_chart_upd.Interval();
    ASSERT_GT(interval, 0);
    advance(10 * interval);
    EXPECT_EQ(row_count(0), 10);
}

TEST_F(ChartRows, ARowHoldsTheRecordsValues) {
    channel_rec& rec = sensor::state.channels[1];
    rec.tsignal = 41;
    rec.speed = 510;
    rec.tvoltage = 123;
    rec.teff_dc = 37;
    rec.teff_ac = 29;
    rec.overspeed = 600;
    rec.param_valid = true;
    add_chart_row(1);
    EXPECT_EQ(newest(1, 0), 41);
    EXPECT_EQ(newest(1, 1), 51);
    EXPECT_EQ(newest(1, 2), 100);
    EXPECT_EQ(newest(1, 3), 61.5F);
    EXPECT_EQ(newest(1, 4), 37);
    EXPECT_EQ(newest(1, 5), 29);
}

TEST_F(ChartRows, ARowIsStampedWithTheTimeOfItsTick) {
    advance(1234);
    add_chart_row(0);
    EXPECT_EQ(charts.rows[0].window(strip_spans[0]).newest(), 1234);
    advance(77);
    add_chart_row(0);
    EXPECT_EQ(charts.rows[0].window(strip_spans[3]).newest(), 1311);
}

TEST_F(ChartRows, TheLineAt100IsThereWithoutAnyData) {
    for (int tick = 0; tick < 5; ++tick) {
        advance(250);
        add_chart_row(0);
    }
    const auto line = values(0, 2);
    ASSERT_FALSE(line.empty());
    EXPECT_TRUE(std::ranges::all_of(line, [](float value) { return value == 100; }));
}

struct band_row {
    i32 overspeed;
    i32 divisor;
    std::string_view title;
};

class ChartSpeedBands : public ChartRows, public testing::WithParamInterface<band_row> {};

TEST_P(ChartSpeedBands, SetDivisorAndTitleOnEachTick) {
    sensor::state.channels[0].param_valid = true;
    sensor::state.channels[0].speed = 1000;
    sensor::state.channels[0].overspeed = GetParam().overspeed;
    add_chart_row(0);
    EXPECT_EQ(newest(0, 1), static_cast<float>(1000.0 / GetParam().divisor));
    EXPECT_EQ(charts.chart[0].curves[1].Title, GetParam().title);
    charts.chart[0].curves[1].Title = "something else";
    add_chart_row(0);
    EXPECT_EQ(charts.chart[0].curves[1].Title, GetParam().title);
}

INSTANTIATE_TEST_SUITE_P(ALimitBelongsToTheBandAboveIt, ChartSpeedBands,
                         testing::Values(band_row{0, 1, "RPM   "}, band_row{119, 1, "RPM   "},
                                         band_row{120, 5, "RPM /5"}, band_row{399, 5, "RPM /5"},
                                         band_row{400, 10, "RPM /10"}, band_row{1399, 10, "RPM /10"},
                                         band_row{1400, 20, "RPM /20"}, band_row{2899, 20, "RPM /20"},
                                         band_row{2900, 25, "RPM /25"}, band_row{65535, 25, "RPM /25"}),
                         [](const auto& row) { return "Overspeed" + std::to_string(row.param.overspeed); });

TEST_F(ChartRows, WithoutParametersTheSpeedHasNoValueAndKeepsItsTitle) {
    sensor::state.channels[0].speed = 1000;
    sensor::state.channels[0].overspeed = 3000;
    add_chart_row(0);
    add_chart_row(0);
    EXPECT_TRUE(values(0, 1).empty());
    EXPECT_EQ(charts.chart[0].curves[1].Title, "RPM /10");
    sensor::state.channels[0].param_valid = true;
    add_chart_row(0);
    EXPECT_EQ(values(0, 1), std::vector<float>{40});
    EXPECT_EQ(charts.chart[0].curves[1].Title, "RPM /25");
}

TEST_F(ChartRows, AreKeptWhenTheChannelStopsAndStartsAgain) {
    start_channel_click(0);
    advance(1000);
    const i32 before = row_count(0);
    const auto line = values(0, 2).size();
    ASSERT_GT(before, 0);
    start_channel_click(0);
    advance(20'000);
    EXPECT_EQ(row_count(0), before);
    EXPECT_EQ(values(0, 2).size(), line);
    start_channel_click(0);
    advance(1000);
    EXPECT_GT(row_count(0), before);
    EXPECT_GT(values(0, 2).size(), line);
}

TEST_F(ChartRows, AreTakenAlsoBeyondTheLimitsOfTheScale) {
    sensor::state.channels[0].tsignal = 65535;
    sensor::state.channels[0].teff_dc = -32768;
    add_chart_row(0);
    EXPECT_EQ(newest(0, 0), 65535);
    EXPECT_EQ(newest(0, 4), -32768);
}

TEST_F(ChartRows, AChannelThatCameIntoUseAfterTheStartRecordsWithoutCurves) {
    sensor::state.channels[3].param_valid = true;
    sensor::state.channels[3].speed = 300;
    add_chart_row(3);
    EXPECT_EQ(row_count(3), 1);
    EXPECT_EQ(newest(3, 1), 300);
    EXPECT_TRUE(charts.chart[3].curves.empty());
}

TEST_F(ChartRows, AChannelThatDoesNotExistIsAFailure) {
    EXPECT_THROW(add_chart_row(4), failure);
    EXPECT_THROW(add_chart_row(-1), failure);
}

} // namespace
} // namespace tyxo
