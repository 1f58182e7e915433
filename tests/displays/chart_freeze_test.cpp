// A strip chart that is frozen by a click and goes on by a click or by itself.

#include "displays/chart.h"
#include "link/main_timers.h"
#include "logging/logging_machine.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

constexpr std::int64_t minute_ms = 60'000;

class ChartFreeze : public testing::Test {
  protected:
    void SetUp() override { start_on(logging_settings(4)); }

    static const Timer& minutes(std::size_t channel) { return mainfrm::timers.Timer_chartres[channel]; }
};

TEST_F(ChartFreeze, AChartIsLiveAtTheStart) {
    for (std::size_t channel = 0; channel < channel_count; ++channel) {
        EXPECT_FALSE(charts.chart[channel].Frozen);
        EXPECT_FALSE(minutes(channel).Enabled());
    }
}

TEST_F(ChartFreeze, AClickFreezesThisChartAndStartsItsMinutes) {
    mainfrm::chart_click(2);
    for (std::size_t channel = 0; channel < channel_count; ++channel) {
        EXPECT_EQ(charts.chart[channel].Frozen, channel == 2);
        EXPECT_EQ(minutes(channel).Enabled(), channel == 2);
    }
    EXPECT_EQ(minutes(2).Interval(), minute_ms);
}

TEST_F(ChartFreeze, ASecondClickLetsItGoOn) {
    mainfrm::chart_click(1);
    mainfrm::chart_click(1);
    EXPECT_FALSE(charts.chart[1].Frozen);
    EXPECT_FALSE(minutes(1).Enabled());
}

TEST_F(ChartFreeze, AFrozenChartTakesRowsAndKeepsItsPicture) {
    add_chart_row(0);
    advance(500);
    add_chart_row(0);
    mainfrm::chart_click(0);
    advance(500);
    add_chart_row(0);
    EXPECT_EQ(charts.last_row[0], 2);
    EXPECT_EQ(shown_rows(0).rows(), 2);
    EXPECT_EQ(shown_rows(0).newest(), 500);
    mainfrm::chart_click(0);
    EXPECT_EQ(shown_rows(0).rows(), 3);
    EXPECT_EQ(shown_rows(0).newest(), 1000);
}

TEST_F(ChartFreeze, AFrozenChartKeepsItsRangeWhenAnotherTimeIsChosen) {
    add_chart_row(0);
    mainfrm::chart_click(0);
    mainfrm::opt_res_click(2);
    EXPECT_EQ(charts.chart[0].XAxisSpan, 1.0 / 24);
    EXPECT_EQ(shown_rows(0).span(), strip_spans[0]);
    EXPECT_EQ(shown_rows(1).span(), strip_spans[2]);
    mainfrm::chart_click(0);
    EXPECT_EQ(shown_rows(0).span(), strip_spans[2]);
}

TEST_F(ChartFreeze, EachTimeResolutionShowsItsOwnWindow) {
    for (std::size_t index = 0; index < strip_spans.size(); ++index) {
        mainfrm::opt_res_click(index);
        EXPECT_EQ(shown_rows(3).span(), strip_spans[index]);
    }
}

TEST_F(ChartFreeze, AFrozenChartGoesOnByItselfAtTheTenthMinute) {
    charts.chart[0].FrozenMode = 7;
    mainfrm::chart_click(0);
    advance(10 * minute_ms - 1);
    EXPECT_TRUE(charts.chart[0].Frozen);
    EXPECT_EQ(charts.frozen_minutes[0], 9);
    EXPECT_EQ(charts.chart[0].FrozenMode, 7);
    advance(1);
    EXPECT_FALSE(charts.chart[0].Frozen);
    EXPECT_FALSE(minutes(0).Enabled());
    EXPECT_EQ(charts.frozen_minutes[0], 0);
    EXPECT_EQ(charts.chart[0].FrozenMode, 0);
    EXPECT_FALSE(charts.frozen[0]) << "the copy of the picture is given back";
}

TEST_F(ChartFreeze, AClickDoesNotResetTheMinutesSoTheNextFreezeIsShorter) {
    mainfrm::chart_click(0);
    advance(3 * minute_ms + 30'000);
    mainfrm::chart_click(0);
    EXPECT_EQ(charts.frozen_minutes[0], 3);
    advance(60 * minute_ms);
    EXPECT_EQ(charts.frozen_minutes[0], 3);
    mainfrm::chart_click(0);
    advance(7 * minute_ms - 1);
    EXPECT_TRUE(charts.chart[0].Frozen);
    advance(1);
    EXPECT_FALSE(charts.chart[0].Frozen);
    mainfrm::chart_click(0);
    advance(10 * minute_ms - 1);
    EXPECT_TRUE(charts.chart[0].Frozen) << "the self-made end has reset the count";
}

TEST_F(ChartFreeze, TwoClicksWithinAMinuteAndOneLaterStartAWholeMinuteAnew) {
    mainfrm::chart_click(0);
    advance(59'999);
    mainfrm::chart_click(0);
    advance(5000);
    mainfrm::chart_click(0);
    advance(minute_ms - 1);
    EXPECT_EQ(charts.frozen_minutes[0], 0);
    advance(1);
    EXPECT_EQ(charts.frozen_minutes[0], 1);
}

TEST_F(ChartFreeze, ChartsCountForThemselves) {
    mainfrm::chart_click(0);
    advance(4 * minute_ms);
    mainfrm::chart_click(3);
    advance(6 * minute_ms);
    EXPECT_FALSE(charts.chart[0].Frozen);
    EXPECT_TRUE(charts.chart[3].Frozen);
    EXPECT_EQ(charts.frozen_minutes[3], 6);
}

TEST_F(ChartFreeze, AnEmptyChartCanBeFrozen) {
    mainfrm::chart_click(0);
    add_chart_row(0);
    EXPECT_EQ(shown_rows(0).rows(), 0);
    mainfrm::chart_click(0);
    EXPECT_EQ(shown_rows(0).rows(), 1);
}

TEST_F(ChartFreeze, AChartThatDoesNotExistIsAFailure) {
    EXPECT_THROW(mainfrm::chart_click(4), failure);
    EXPECT_THROW(mainfrm::Timer_chartres_tick(-1), failure);
}

} // namespace
} // namespace tyxo
