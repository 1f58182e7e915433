// Controls before anything is shown on them.

#include "controls/bar_plot.h"
#include "controls/canvas.h"
#include "controls/controls.h"
#include "controls/curve_strokes.h"
#include "controls/strip_chart.h"
#include "controls/xy_plot.h"
#include "displays/layout.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

constexpr colour green = 65280;

TEST(PlainControl, IsSeenAndCanBeUsed) {
    EXPECT_EQ(Label{}, (Label{"", 0, true}));
    EXPECT_EQ(Frame{}, (Frame{"", true, true}));
    EXPECT_EQ(Command{}, (Command{"", true, true}));
    EXPECT_EQ(TextBox{}, (TextBox{"", true}));
    EXPECT_EQ(CheckBox{}, (CheckBox{0, true}));
    EXPECT_EQ(ComboBox{}, (ComboBox{{}, -1, true}));
    EXPECT_EQ(ScrollBar{}, (ScrollBar{0, 0, 0, true}));
}

TEST(PlainControl, AWindowIsNeitherLoadedNorSeen) {
    EXPECT_EQ(Form{}, (Form{"", false, false}));
}

TEST(PlainControl, ALampIsGreenAndOff) {
    EXPECT_EQ(iLedRoundX{}, (iLedRoundX{false, green, 64 * 256}));
}

TEST(PlainControl, AGaugeStandsAtTheZeroOfItsScale) {
    EXPECT_EQ(iAngularGaugeX{}, (iAngularGaugeX{0, 0, 1000, {}, {}, 1, 230, 280, 11, 1, "", ""}));
    EXPECT_EQ(iLinearGaugeX{}, (iLinearGaugeX{0, 0, 100, {}, {}, 1, 6, 8, 0, false, 0, 0}));
}

TEST(PlainControl, ADisplayShowsZero) {
    EXPECT_EQ(iAnalogDisplayX{}, (iAnalogDisplayX{0, 0, "", 0}));
    EXPECT_EQ(iSevenSegmentAnalogX{}, (iSevenSegmentAnalogX{0, 0, 1, false, 0, 0}));
}

TEST(PlainControl, APlotHasAxesAndNothingBetweenThem) {
    EXPECT_EQ(bar_axis{}, (bar_axis{"", "", 0, 100, 0, 0}));
    EXPECT_EQ(bar_series{}.Color, 0);
    EXPECT_EQ(bar_point{}, (bar_point{0, 0, 1}));
    EXPECT_EQ(plot_axis{}, (plot_axis{0, 100}));
    EXPECT_EQ(plot_point{}, (plot_point{0, 0}));
    EXPECT_EQ(plot_curve{}, (plot_curve{"", 0xFFFFFF, true, {}}));
    EXPECT_TRUE(iXYPlotX{}.Visible);
}

TEST(PlainControl, AStripChartHasItsDesign) {
    const iStripChartX chart;
    EXPECT_EQ(chart_curve{}, (chart_curve{"", 0, true}));
    EXPECT_EQ(chart.Left + chart.Top, 0);
    EXPECT_EQ(chart.Width, 635);
    EXPECT_EQ(chart.Height, 278);
    EXPECT_EQ(chart.AxisGridColor, 0x404040);
    EXPECT_EQ(chart.LegendFontColor | chart.XAxisLabelFontColor | chart.YAxisLabelFontColor, 0);
    EXPECT_EQ(chart.XAxisTickMajorColor | chart.XAxisTickMinorColor, 0);
    EXPECT_EQ(chart.TitleFontColor, 0x0000FF);
    EXPECT_EQ(chart.BackGroundColor, 0xC0C0C0);
    EXPECT_EQ(chart.GridBackGroundColor, 0xC0C0C0);
    EXPECT_EQ(chart.GridLineStyle, 2);
    EXPECT_EQ(chart.XAxisMin, 0);
    EXPECT_EQ(chart.XAxisSpan, 2.0 / 1440); // two minutes
    EXPECT_EQ(chart.XAxisTickMajorCount, 6);
    EXPECT_EQ(chart.XAxisTickMinorCount, 3);
    EXPECT_EQ(chart.YAxisMin, 0);
    EXPECT_EQ(chart.YAxisMax, 100);
    EXPECT_EQ(chart.YAxisTickMajorCount, 7);
    EXPECT_TRUE(chart.Visible);
    EXPECT_FALSE(chart.Frozen || chart.PrintFlag || chart.PrintFontBold);
    EXPECT_EQ(chart.FrozenMode + chart.PrintMode, 0);
    EXPECT_EQ(chart.PrintFontSize, 8);
    for (const double margin : {chart.PrinterMarginLeft, chart.PrinterMarginTop, chart.PrinterMarginRight,
                                chart.PrinterMarginBottom})
        EXPECT_EQ(margin, 0.5);
}

TEST(PlainControl, ASurfaceIsBlankAndCountsEachChange) {
    canvas surface;
    EXPECT_EQ(surface.ScaleWidth, 0);
    EXPECT_EQ(surface.ScaleHeight, 0);
    EXPECT_EQ(surface.ForeColor, 0);
    EXPECT_EQ(surface.CurrentX, 0);
    EXPECT_EQ(surface.CurrentY, 0);
    EXPECT_EQ(surface.passes, 0U);
    surface.line(1, 2, 3, 4);
    EXPECT_EQ(surface.passes, 1U);
    surface.print("a text");
    EXPECT_EQ(surface.passes, 2U);
    surface.clear();
    EXPECT_EQ(surface.passes, 3U);
    EXPECT_EQ(stroke{}, (stroke{0, 0, 0, 0, 0}));
    EXPECT_EQ(canvas_text{}, (canvas_text{0, 0, "", 0}));
}

TEST(PlainControl, APlaceIsEmpty) {
    EXPECT_EQ(rectangle{}, (rectangle{0, 0, 0, 0}));
    EXPECT_EQ(print_room{}, (print_room{64, 250, 150, 22, 118, 22, 104, 4}));
    EXPECT_EQ(window_layout{}.client_width + window_layout{}.client_height, 0);
}

} // namespace
} // namespace tyxo
