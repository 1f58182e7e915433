// What happens to a finished curve: the drawing, the buffers, and who gets it.

#include "displays/finished_curves.h"

#include <cmath>

namespace tyxo::curve_testing {
namespace {

class Curves : public curve_test {};

constexpr sensor::curve untouched{};

TEST_P(Curves, AreDrawnClockwiseFromTheTopAroundTheirMean) {
    fill();
    data()[0] = 700;
    double sum = 0;
    for (const i32 sample : samples())
        sum += sample;
    const double mean = sum / 256.0;
    process();
    const auto& points = drawn().points;
    ASSERT_EQ(points.size(), 256U);
    for (std::size_t index = 0; index < points.size(); ++index) {
        const double angle = -static_cast<double>(index) * 0.024639215686274512;
        const double radius = (samples()[index] - mean) * 0.5 + 30;
        EXPECT_DOUBLE_EQ(points[index].x, std::cos(3.1415 / 2 + angle) * radius) << index;
        EXPECT_DOUBLE_EQ(points[index].y, std::sin(3.1415 / 2 + angle) * radius) << index;
    }
}

TEST_P(Curves, BeginAtTheTopAndRunToTheRight) {
    data().fill(500);
    process();
    EXPECT_NEAR(drawn().points[0].x, 0, 0.01);
    EXPECT_NEAR(drawn().points[0].y, 30, 0.01);
    EXPECT_NEAR(drawn().points[64].x, 30, 0.01);
    EXPECT_NEAR(drawn().points[191].x, -30, 0.1);
    EXPECT_NEAR(drawn().points[255].y, 30, 0.01);
}

TEST_P(Curves, OfSamplesEqualToTheMeanLieOnTheReferenceCircleWhateverTheScale) {
    for (const double scale : {5.0, 0.03, 0.0, -2.0, 1e300}) {
        *kind().scale = scale;
        data().fill(4711);
        process();
        ASSERT_EQ(drawn().points.size(), 256U);
        for (const plot_point& point : drawn().points)
            EXPECT_NEAR(std::hypot(point.x, point.y), 30, 1e-9) << scale;
    }
}

TEST_P(Curves, LeaveTheWindowWithALargeScaleAndPassTheCentreWithANegativeRadius) {
    data().fill(1000);
    data()[0] = 1100;
    data()[128] = 900;
    *kind().scale = 5;
    process();
    EXPECT_NEAR(drawn().points[0].y, 530, 0.1);
    EXPECT_NEAR(drawn().points[128].y, 470, 0.2); // sample 128 lies at the bottom, its radius is -470
}

TEST_P(Curves, AreClearedBeforeTheyAreDrawnAndBecomeVisible) {
    fill();
    process();
    drawn().Visible = false;
    process();
    EXPECT_EQ(drawn().points.size(), 256U);
    EXPECT_TRUE(drawn().Visible);
}

TEST_P(Curves, DoNotTouchTheOtherCurvesOfThePlotNorOtherPlots) {
    const iXYPlotX before = panels.XYplot[0];
    const iXYPlotX other_plot = panels.XYplot[1];
    fill();
    process();
    for (const std::size_t other : {std::size_t{0}, 3 - kind().plot_curve})
        EXPECT_EQ(panels.XYplot[0].curves[other], before.curves[other]) << other;
    EXPECT_EQ(panels.XYplot[1], other_plot);
}

TEST_P(Curves, SetBothAxesAgain) {
    fill();
    panels.XYplot[0].XAxis = {1, 2};
    panels.XYplot[0].YAxis = {3, 4};
    process();
    EXPECT_EQ(panels.XYplot[0].XAxis, (plot_axis{-65, 130}));
    EXPECT_EQ(panels.XYplot[0].YAxis, (plot_axis{-65, 130}));
}

TEST_P(Curves, OfNoughtsAreClearedAndNothingElseIsServed) {
    fill();
    sensor::state.polar_channel = *kind().bar_channel = 1;
    process();
    const sensor::curve last = samples();
    calculated.clear();
    panels.XYplot[0].XAxis = {1, 2};
    data().fill(0);
    process();
    EXPECT_TRUE(drawn().points.empty());
    EXPECT_TRUE(drawn().Visible);
    EXPECT_EQ((*kind().mb)[0], last);
    EXPECT_EQ(*kind().detail, last);
    EXPECT_TRUE(calculated.empty());
    EXPECT_EQ(panels.XYplot[0].XAxis, (plot_axis{1, 2}));
    EXPECT_TRUE(world().debug.empty());
}

TEST_P(Curves, OfANegativeMeanCountAsEmpty) {
    data().fill(-5);
    process();
    EXPECT_TRUE(drawn().points.empty());
    EXPECT_EQ((*kind().mb)[0], untouched);
    EXPECT_TRUE(calculated.empty());
}

TEST_P(Curves, OfTheLeastMeanAboveNoughtAreDrawn) {
    data().fill(0);
    data()[77] = 1;
    process();
    EXPECT_EQ(drawn().points.size(), 256U);
    EXPECT_EQ((*kind().mb)[0], samples());
}

TEST_P(Curves, TakeNoPartOfTheSlotBehindTheSamples) {
    data().fill(0);
    data()[curve_samples] = 60000;
    process();
    EXPECT_TRUE(drawn().points.empty());
    EXPECT_TRUE(calculated.empty());
}

TEST_P(Curves, AreCopiedForTheGatewayAtTheirOwnChannel) {
    fill(2);
    process(2);
    for (std::size_t channel = 0; channel < kind().mb->size(); ++channel)
        EXPECT_EQ((*kind().mb)[channel], channel == 2 ? samples(2) : untouched) << channel;
    for (const sensor::curve& other : *kind().other_mb)
        EXPECT_EQ(other, untouched);
}

struct view_row {
    i16 polar;
    i16 bar;
    i16 other_bar;
    bool copied; ///< a curve of the second channel
};

TEST_P(Curves, AreCopiedForTheViewsOnlyWhenOneOfThemShowsTheChannel) {
    const std::vector<view_row> rows{
        {0, 0, 0, false}, {2, 0, 0, true},  {0, 2, 0, true},  {2, 2, 0, true},
        {1, 3, 0, false}, {3, 1, 0, false}, {1, 2, 0, true},  {2, 1, 0, true},
        {0, 0, 2, false}, {1, 1, 1, false}, {4, 4, 4, false}, {-1, -1, -1, false},
    };
    fill(1);
    for (const view_row& row : rows) {
        sensor::state.polar_channel = row.polar;
        *kind().bar_channel = row.bar;
        *kind().other_bar_channel = row.other_bar;
        kind().detail->fill(0);
        process(1);
        EXPECT_EQ(*kind().detail, row.copied ? samples(1) : untouched) << row.polar << ' ' << row.bar;
        EXPECT_EQ(*kind().other_detail, untouched);
    }
}

TEST_P(Curves, OfTwoViewsOnTwoChannelsLeaveTheLastFinishedOneInTheBuffer) {
    sensor::state.polar_channel = 1;
    *kind().bar_channel = 2;
    fill(0);
    fill(1);
    process(0);
    EXPECT_EQ(*kind().detail, samples(0));
    process(1);
    EXPECT_EQ(*kind().detail, samples(1));
    process(0);
    EXPECT_EQ(*kind().detail, samples(0));
}

TEST_P(Curves, AreHandedToTheirOwnCalculationOnceWithTheirChannelAfterEverythingElse) {
    fill(1);
    sensor::state.polar_channel = *kind().bar_channel = 2;
    panels.XYplot[1].YAxis = {3, 4};
    during_calc = [&] {
        EXPECT_EQ(drawn(1).points.size(), 256U);
        EXPECT_EQ(panels.XYplot[1].YAxis, (plot_axis{-65, 130}));
        EXPECT_EQ((*kind().mb)[1], samples(1));
        EXPECT_EQ(*kind().detail, samples(1));
    };
    process(1);
    EXPECT_EQ(calculated, text_lines{std::string(kind().name) + " 1"});
}

TEST_P(Curves, OfAChannelThatCameIntoUseAfterTheStartAreServedWithoutADrawing) {
    sensor::state.max_sensors = 4;
    fill(3);
    process(3);
    EXPECT_TRUE(panels.XYplot[3].curves.empty());
    EXPECT_EQ((*kind().mb)[3], samples(3));
    EXPECT_EQ(calculated.size(), 1U);
}

TEST_P(Curves, FromTheLineAreDrawnCopiedCalculatedAndRecorded) {
    sensor::state.polar_channel = 1;
    for (i32 block = 1; block <= 3; ++block)
        feed(0, curve_body(kind().code, block, 1000));
    EXPECT_TRUE(drawn().points.empty());
    EXPECT_TRUE(calculated.empty());
    feed(0, curve_body(kind().code, 4, 1000));
    EXPECT_EQ(drawn().points.size(), 256U);
    for (i32 index = 0; index < curve_samples; ++index) {
        EXPECT_EQ(at((*kind().mb)[0], index), 1000 + index);
        EXPECT_EQ(at(*kind().detail, index), 1000 + index);
    }
    EXPECT_EQ(calculated.size(), 1U);
    EXPECT_EQ(records(), 1);
    EXPECT_EQ((*kind().block_last)[0], 0);
    EXPECT_TRUE(world().debug.empty());
}

TEST_P(Curves, OfNoughtsFromTheLineAreRecordedAllTheSame) {
    for (i32 block = 1; block <= 4; ++block)
        feed(0, std::string(kind().code) + hex_digits(block, 2) + std::string(256, '0'));
    EXPECT_EQ(records(), 1);
    EXPECT_TRUE(drawn().points.empty());
    EXPECT_TRUE(calculated.empty());
}

TEST_P(Curves, OfOtherChannelsLeaveTheBufferOfAViewOnAStoppedChannelAlone) {
    sensor::state.polar_channel = 2;
    feed_curve(1, 1000);
    const sensor::curve last = samples(1);
    mainfrm::start_channel_click(1); // stops it
    feed_curve(0, 3000);
    feed_curve(1, 2000); // nobody listens
    EXPECT_EQ(*kind().detail, last);
    EXPECT_EQ(drawn(1).points.size(), 256U);
    EXPECT_EQ(*kind().detail, (*kind().mb)[1]);
}

INSTANTIATE_TEST_SUITE_P(kinds, Curves, testing::Values(thermo_kind, angacc_kind),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace tyxo::curve_testing
