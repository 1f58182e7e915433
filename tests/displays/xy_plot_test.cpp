// The polar scope: how it is set up, cleared and clicked, and which part of its lines shows.

#include "displays/xy_plot.h"

#include "controls/xy_plot_geometry.h"
#include "displays/frmdetailedpic.h"
#include "displays/panel.h"
#include "link/supervision.h"
#include "logging/logging_machine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tyxo {
namespace {

using namespace simulation;

class XYPlot : public testing::Test {
  protected:
    void SetUp() override { start_on(logging_settings(3)); }
    static iXYPlotX& plot(i16 channel) { return panels.XYplot[channel]; }
};

TEST_F(XYPlot, OfEachChannelInUseHasAWhiteCircleNamedZeroAndARedAndABlueCurveInThisOrder) {
    for (i16 channel = 0; channel < 3; ++channel) {
        ASSERT_EQ(plot(channel).curves.size(), 3U) << channel;
        EXPECT_EQ(plot(channel).curves[0].Title, "zero");
        EXPECT_EQ(plot(channel).curves[0].Color, rgb(255, 255, 255));
        EXPECT_EQ(plot(channel).curves[0].points.size(), 256U);
        EXPECT_EQ(plot(channel).curves[1].Color, rgb(255, 0, 0));
        EXPECT_EQ(plot(channel).curves[2].Color, rgb(0, 0, 255));
        for (const std::size_t measured : {1U, 2U}) {
            EXPECT_EQ(plot(channel).curves[measured].Title, "");
            EXPECT_TRUE(plot(channel).curves[measured].points.empty());
        }
        for (const plot_curve& curve : plot(channel).curves)
            EXPECT_TRUE(curve.Visible);
    }
}

TEST_F(XYPlot, OfAChannelNotInUseHasNoCurves) {
    EXPECT_TRUE(plot(3).curves.empty());
}

TEST_F(XYPlot, ShowsASquareAroundNought) {
    for (i16 channel = 0; channel < 3; ++channel) {
        EXPECT_EQ(plot(channel).XAxis, (plot_axis{-65, 130}));
        EXPECT_EQ(plot(channel).YAxis, (plot_axis{-65, 130}));
    }
}

TEST_F(XYPlot, IsHiddenUntilTheEvaluatorsModeSaysOtherwise) {
    for (i16 channel = 0; channel < channel_count; ++channel)
        EXPECT_FALSE(plot(channel).Visible) << channel;
}

TEST_F(XYPlot, RoundsOnlyYOfTheReferenceCircle) {
    const auto& circle = plot(0).curves[0].points;
    for (std::size_t index = 0; index < circle.size(); ++index) {
        const double angle = static_cast<double>(index) * 0.024639215686274512;
        EXPECT_EQ(circle[index].x, 30 * std::cos(angle)) << index;
        EXPECT_EQ(circle[index].y, std::nearbyint(30 * std::sin(angle))) << index;
    }
    EXPECT_EQ(circle[0], (plot_point{30, 0}));
    EXPECT_EQ(circle[21].y, 15); // 14.84
    EXPECT_NEAR(circle[21].x, 26.07, 0.01);
    EXPECT_NEAR(circle[255].x, circle[0].x, 0.001); // the last point falls upon the first
}

TEST_F(XYPlot, IsTheSameWhenItIsSetUpAgain) {
    const iXYPlotX before = plot(0);
    plot(0).curves[1].points.push_back({1, 2});
    plot(0).curves[2].Visible = false;
    plot(0).XAxis = {};
    setup_plot(0);
    EXPECT_EQ(plot(0), before);
}

TEST_F(XYPlot, LosesBothMeasuredCurvesAndKeepsItsCircleWhenTheLinkIsLost) {
    for (i16 channel = 0; channel < 2; ++channel) {
        plot(channel).curves[1].points.push_back({1, 2});
        plot(channel).curves[2].points.push_back({1, 2});
    }
    sensor::link_timed_out(0);
    EXPECT_TRUE(plot(0).curves[1].points.empty());
    EXPECT_TRUE(plot(0).curves[2].points.empty());
    EXPECT_EQ(plot(0).curves[0].points.size(), 256U);
    EXPECT_EQ(plot(1).curves[1].points.size(), 1U);
    EXPECT_EQ(plot(1).curves[2].points.size(), 1U);
}

TEST_F(XYPlot, OfAChannelThatCameIntoUseAfterTheStartStaysEmptyWhenItIsCleared) {
    sensor::state.max_sensors = 4;
    clear_curves(3);
    EXPECT_TRUE(plot(3).curves.empty());
}

TEST_F(XYPlot, AClickChoosesTheChannelOfTheDetailedDisplay) {
    for (i16 channel = 0; channel < 3; ++channel) {
        mainfrm::XYplot_click(channel);
        EXPECT_EQ(sensor::state.polar_channel, channel + 1);
    }
}

TEST_F(XYPlot, AClickOnAChannelNotInUseOpensNothing) {
    mainfrm::XYplot_click(3);
    EXPECT_EQ(sensor::state.polar_channel, 4); // is set all the same
    EXPECT_FALSE(frmdetailedpic::state.form.Visible);
    EXPECT_FALSE(frmdetailedpic::state.open);
}

constexpr plot_axis axis{-65, 130};
constexpr double far = 1e300;
constexpr double endless = std::numeric_limits<double>::infinity();
constexpr double no_number = std::numeric_limits<double>::quiet_NaN();

struct clipped_row {
    const char* name;
    plot_line line;
    std::optional<plot_line> shown;
};

const std::vector<clipped_row> clipped_rows{
    {"inside", {{1, 2}, {-3, 4}}, plot_line{{1, 2}, {-3, 4}}},
    {"from edge to edge", {{-65, -65}, {65, 65}}, plot_line{{-65, -65}, {65, 65}}},
    {"a point", {{5, 5}, {5, 5}}, plot_line{{5, 5}, {5, 5}}},
    {"out to the right", {{0, 0}, {130, 65}}, plot_line{{0, 0}, {65, 32.5}}},
    {"in from the left", {{-130, 65}, {0, 0}}, plot_line{{-65, 32.5}, {0, 0}}},
    {"out at the top", {{0, 0}, {65, 130}}, plot_line{{0, 0}, {32.5, 65}}},
    {"out at the bottom", {{0, 0}, {-65, -130}}, plot_line{{0, 0}, {-32.5, -65}}},
    {"across", {{-200, 10}, {200, 10}}, plot_line{{-65, 10}, {65, 10}}},
    {"across upwards", {{10, -200}, {10, 200}}, plot_line{{10, -65}, {10, 65}}},
    {"along the right edge", {{65, -70}, {65, 70}}, plot_line{{65, -65}, {65, 65}}},
    {"along the lower edge", {{-70, -65}, {70, -65}}, plot_line{{-65, -65}, {65, -65}}},
    {"past a corner", {{0, 140}, {140, 0}}, std::nullopt},
    {"beside, upright", {{66, -10}, {66, 10}}, std::nullopt},
    {"beside, level", {{-10, 66}, {10, 66}}, std::nullopt},
    {"outside, short of the window", {{70, 0}, {90, 0}}, std::nullopt},
    {"a point outside", {{70, 5}, {70, 5}}, std::nullopt},
    {"far to the right", {{0, 0}, {far, 0}}, plot_line{{0, 0}, {65, 0}}},
    {"far along the diagonal", {{0, 0}, {-far, far}}, plot_line{{0, 0}, {-65, 65}}},
    {"far across", {{-1e6, 7}, {1e6, 7}}, plot_line{{-65, 7}, {65, 7}}},
    {"to infinity", {{0, 0}, {endless, 0}}, std::nullopt},
    {"from infinity", {{0, -endless}, {0, 0}}, std::nullopt},
    {"to no number", {{0, 0}, {0, no_number}}, std::nullopt},
    {"from no number", {{no_number, 0}, {0, 0}}, std::nullopt},
};

TEST(VisiblePart, OfALineIsWhatLiesInsideTheWindow) {
    for (const clipped_row& row : clipped_rows) {
        const auto shown = visible_part(row.line, axis, axis);
        ASSERT_EQ(shown.has_value(), row.shown.has_value()) << row.name;
        if (!shown) continue;
        EXPECT_NEAR(shown->from.x, row.shown->from.x, 1e-9) << row.name;
        EXPECT_NEAR(shown->from.y, row.shown->from.y, 1e-9) << row.name;
        EXPECT_NEAR(shown->to.x, row.shown->to.x, 1e-9) << row.name;
        EXPECT_NEAR(shown->to.y, row.shown->to.y, 1e-9) << row.name;
    }
}

TEST(VisiblePart, NeverLeavesTheWindowHoweverFarTheEndsAre) {
    const auto across = visible_part({{-1.7e308, 7}, {1.7e308, 7}}, axis, axis);
    ASSERT_TRUE(across);
    EXPECT_TRUE(across->from.x >= -65 && across->to.x <= 65);
    int shown_lines = 0;
    for (const double x : {-1.3e308, -far, -1e3, 1e-300, 70.0, far, 1.3e308}) {
        for (const double y : {-1.3e308, -1e17, -70.0, 3.0, far}) {
            const auto shown = visible_part({{x, y}, {-x * 1.3, -y * 1.3}}, axis, axis); // through 0
            if (!shown) continue;
            ++shown_lines;
            for (const double number : {shown->from.x, shown->from.y, shown->to.x, shown->to.y})
                EXPECT_TRUE(number >= -65 && number <= 65) << x << ' ' << y << ": " << number;
        }
    }
    EXPECT_GT(shown_lines, 10);
}

TEST(VisiblePart, IsNothingWhenAnAxisSpansNothing) {
    const plot_line line{{0, 0}, {1, 1}};
    for (const plot_axis& bad :
         {plot_axis{0, 0}, plot_axis{0, -10}, plot_axis{-1, no_number}, plot_axis{-1, endless},
          plot_axis{no_number, 1}, plot_axis{1.7e308, 1.7e308}}) {
        EXPECT_FALSE(visible_part(line, bad, axis)) << bad.Min << ' ' << bad.Span;
        EXPECT_FALSE(visible_part(line, axis, bad)) << bad.Min << ' ' << bad.Span;
    }
}

} // namespace
} // namespace tyxo
