// One chart over the whole width of its row.

#include "displays/chart.h"
#include "displays/panel.h"
#include "link/channel_rec.h"
#include "logging/logging_machine.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

struct size_row {
    i32 width;
    i32 height;
    bool maximised;
};

class ChartZoom : public testing::TestWithParam<size_row> {
  protected:
    void SetUp() override {
        start_on(logging_settings(4));
        layout_ = layout_window(GetParam().width, GetParam().height, GetParam().maximised);
        place_charts(layout_);
        const i32 frame = layout_.quadrants[0].Frame_sensor.height;
        small_ = (layout_.client_height - layout_.Text_status.height - 2 * frame - 40) / 2;
    }

    [[nodiscard]] const rectangle& design_place(i16 channel) const {
        return layout_.quadrants[channel].chart;
    }
    static i16 neighbour(i16 channel) { return static_cast<i16>((channel + 2) % 4); }

    void expect_enlarged(i16 channel) const {
        const iStripChartX& chart = charts.chart[channel];
        EXPECT_EQ(chart.Left, channel < 2 ? design_place(channel).left : 20);
        EXPECT_EQ(chart.Top, design_place(channel).top);
        EXPECT_EQ(chart.Width, layout_.client_width - 25);
        EXPECT_EQ(chart.Height, small_ + 125);
    }
    void expect_small(i16 channel) const {
        const iStripChartX& chart = charts.chart[channel];
        EXPECT_EQ(chart.Left, channel < 2 ? design_place(channel).left : layout_.client_width / 2);
        EXPECT_EQ(chart.Width, layout_.client_width / 2 - 4);
        EXPECT_EQ(chart.Height, small_);
    }

    window_layout layout_;
    i32 small_ = 0;
};

TEST_P(ChartZoom, EnlargesOverTheNeighbourAndBack) {
    for (i16 channel = 0; channel < channel_count; ++channel) {
        mainfrm::cmd_zoom_xy_click(channel);
        expect_enlarged(channel);
        EXPECT_TRUE(sensor::state.channels[channel].xy_zoom_state);
        EXPECT_EQ(panels.cmd_zoom_xy[channel].Caption, "Reduce XY graph");
        for (i16 other = 0; other < channel_count; ++other)
            EXPECT_EQ(charts.chart[other].Visible, other != neighbour(channel)) << channel << other;

        mainfrm::cmd_zoom_xy_click(channel);
        expect_small(channel);
        EXPECT_FALSE(sensor::state.channels[channel].xy_zoom_state);
        EXPECT_EQ(panels.cmd_zoom_xy[channel].Caption, "Enlarge XY graph");
        for (const iStripChartX& chart : charts.chart)
            EXPECT_TRUE(chart.Visible);
    }
}

TEST_P(ChartZoom, TheLastCommandDecidesWhichChartOfTheRowIsSeen) {
    mainfrm::cmd_zoom_xy_click(0);
    mainfrm::cmd_zoom_xy_click(2);
    EXPECT_TRUE(sensor::state.channels[0].xy_zoom_state);
    EXPECT_TRUE(sensor::state.channels[2].xy_zoom_state);
    expect_enlarged(0);
    expect_enlarged(2);
    EXPECT_FALSE(charts.chart[0].Visible);
    EXPECT_TRUE(charts.chart[2].Visible);

    mainfrm::cmd_zoom_xy_click(0); // reduced while hidden: it stays hidden, its enlarged neighbour stays
    expect_small(0);
    EXPECT_FALSE(charts.chart[0].Visible);
    EXPECT_TRUE(charts.chart[2].Visible);

    mainfrm::cmd_zoom_xy_click(2);
    expect_small(2);
    EXPECT_TRUE(charts.chart[0].Visible);
    EXPECT_TRUE(charts.chart[2].Visible);
}

TEST_P(ChartZoom, RowsDoNotTouchEachOther) {
    mainfrm::cmd_zoom_xy_click(0);
    mainfrm::cmd_zoom_xy_click(1);
    EXPECT_TRUE(charts.chart[0].Visible);
    EXPECT_TRUE(charts.chart[1].Visible);
    EXPECT_FALSE(charts.chart[2].Visible);
    EXPECT_FALSE(charts.chart[3].Visible);
    EXPECT_LE(charts.chart[0].Top + charts.chart[0].Height, charts.chart[1].Top);
    EXPECT_LE(charts.chart[1].Top + charts.chart[1].Height, layout_.Text_status.top);
}

TEST_P(ChartZoom, AnEnlargedChartFollowsTheWindowsSize) {
    mainfrm::cmd_zoom_xy_click(3);
    layout_ = layout_window(2000, 1300, true);
    small_ = (1300 - layout_.Text_status.height - 2 * layout_.quadrants[0].Frame_sensor.height - 40) / 2;
    place_charts(layout_);
    expect_enlarged(3);
    EXPECT_EQ(charts.chart[0].Left, layout_.quadrants[0].chart.left);
    EXPECT_EQ(charts.chart[0].Width, layout_.quadrants[0].chart.width);
    EXPECT_EQ(charts.chart[0].Height, layout_.quadrants[0].chart.height);
}

TEST_P(ChartZoom, TheButtonsOfARowStandAtBothEndsOfTheTitleLine) {
    for (std::size_t row = 0; row < 2; ++row) {
        const rectangle& left = layout_.quadrants[row].cmd_zoom_xy;
        const rectangle& right = layout_.quadrants[row + 2].cmd_zoom_xy;
        EXPECT_LT(left.left + left.width, layout_.client_width / 4);
        EXPECT_GT(right.left, layout_.client_width * 3 / 4);
        EXPECT_LE(right.left + right.width, layout_.client_width);
        for (const rectangle& button : {left, right}) {
            EXPECT_GE(button.top, layout_.quadrants[row].chart.top);
            EXPECT_LE(button.top + button.height, layout_.quadrants[row].chart.top + 24);
        }
    }
}

bool lies_in(const rectangle& inner, const rectangle& outer) {
    return inner.left >= outer.left && inner.top >= outer.top &&
           inner.left + inner.width <= outer.left + outer.width &&
           inner.top + inner.height <= outer.top + outer.height;
}

TEST_P(ChartZoom, TheWholeRowDownToItsFramesLowerEdgeIsCovered) {
    for (i16 channel = 0; channel < channel_count; ++channel) {
        EXPECT_FALSE(fills_row(channel));
        mainfrm::cmd_zoom_xy_click(channel);
        EXPECT_TRUE(fills_row(channel));
        EXPECT_FALSE(fills_row(neighbour(channel)));
        const rectangle row = row_place(channel);
        for (const i16 covered : {channel, neighbour(channel)}) {
            const quadrant_layout& quadrant = layout_.quadrants[covered];
            for (const rectangle& place : {quadrant.chart, quadrant.Frame_sensor, quadrant.XYplot,
                                           quadrant.Frame_message, quadrant.Cmd_diagramm2})
                EXPECT_TRUE(lies_in(place, row)) << covered;
        }
        const iStripChartX& chart = charts.chart[channel];
        EXPECT_TRUE(lies_in({chart.Left, chart.Top, chart.Width, chart.Height}, row));
        const rectangle& frame = layout_.quadrants[channel].Frame_sensor;
        EXPECT_EQ(row.top + row.height, frame.top + frame.height) << "nothing of the next row";
        mainfrm::cmd_zoom_xy_click(channel);
    }
}

TEST_P(ChartZoom, BothButtonsOfARowStandInTheChartThatIsSeen) {
    const auto place_of = [](i16 channel) {
        const iStripChartX& chart = charts.chart[channel];
        return rectangle{chart.Left, chart.Top, chart.Width, chart.Height};
    };
    for (i16 channel = 0; channel < channel_count; ++channel) {
        EXPECT_TRUE(lies_in(zoom_button_place(channel), place_of(channel)));
        mainfrm::cmd_zoom_xy_click(channel);
        const rectangle own = zoom_button_place(channel);
        const rectangle other = zoom_button_place(neighbour(channel));
        EXPECT_TRUE(lies_in(own, place_of(channel)));
        EXPECT_TRUE(lies_in(other, place_of(channel)));
        EXPECT_TRUE(own.left + own.width <= other.left || other.left + other.width <= own.left);
        mainfrm::cmd_zoom_xy_click(channel);
    }
}

INSTANTIATE_TEST_SUITE_P(Windows, ChartZoom,
                         testing::Values(size_row{1272, 911, false}, size_row{1280, 1002, true},
                                         size_row{1920, 1058, true}, size_row{3840, 2100, true},
                                         size_row{1024, 690, true}, size_row{1366, 690, true}),
                         [](const auto& row) { return "Width" + std::to_string(row.param.width); });

TEST(ChartZoomOfNoChart, IsAFailure) {
    start_on(logging_settings(4));
    EXPECT_THROW(mainfrm::cmd_zoom_xy_click(4), failure);
    EXPECT_THROW(mainfrm::cmd_zoom_xy_click(-1), failure);
}

TEST(ChartZoomAtTheStart, ChartsHaveTheirDesignSize) {
    start_on(logging_settings(4));
    place_charts(layout_window(design_client_width, design_client_height, false));
    for (const iStripChartX& chart : charts.chart) {
        EXPECT_EQ(chart.Width, 635);
        EXPECT_EQ(chart.Height, 278);
    }
}

} // namespace
} // namespace tyxo
