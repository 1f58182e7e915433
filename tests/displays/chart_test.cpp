// The strip charts: design, titles, the curves of the settings.

#include "displays/chart.h"

#include "logging/logging_machine.h"
#include "settings/settings.h"

#include <gtest/gtest.h>

#include <vector>

namespace tyxo {
namespace {

using namespace simulation;

class Chart : public testing::Test {
  protected:
    void SetUp() override { start_on(logging_settings(2, all_shown)); }
    static constexpr std::string_view all_shown = "xy_tha=1\r\nxy_tmv=1\r\nxy_theff=1\r\nxy_theff_AC=1\r\n";
};

struct curve_row {
    std::string_view title;
    colour color;
    std::string_view hidden_by;
};

const std::vector<curve_row> curve_rows{
    {"Tsig %DCA", rgb(255, 0, 0), "xy_tha"},     {"RPM /10", rgb(0, 0, 255), ""},
    {"TAlm 100%", rgb(255, 128, 0), ""},         {"TmV x50", rgb(0, 192, 0), "xy_tmv"},
    {"Teff %DCA", rgb(192, 0, 192), "xy_theff"}, {"Teff %ACA", rgb(255, 255, 255), "xy_theff_AC"},
};

TEST_F(Chart, HasSixCurvesWithTheirTitlesAndColoursInOrder) {
    for (std::size_t channel = 0; channel < 2; ++channel) {
        const auto& curves = charts.chart[channel].curves;
        ASSERT_EQ(curves.size(), curve_rows.size());
        for (std::size_t curve = 0; curve < curves.size(); ++curve) {
            EXPECT_EQ(curves[curve].Title, curve_rows[curve].title);
            EXPECT_EQ(curves[curve].Color, curve_rows[curve].color) << curve_rows[curve].title;
            EXPECT_TRUE(curves[curve].Visible) << curve_rows[curve].title;
        }
    }
}

struct chart_number {
    std::string_view name;
    double (*value)(const iStripChartX& chart);
    double expected;
};

const std::vector<chart_number> design_values{
    {"Width", [](const iStripChartX& c) -> double { return c.Width; }, 635},
    {"Height", [](const iStripChartX& c) -> double { return c.Height; }, 278},
    {"AxisGridColor", [](const iStripChartX& c) -> double { return c.AxisGridColor; }, 4210752},
    {"TitleFont.Color", [](const iStripChartX& c) -> double { return c.TitleFontColor; }, rgb(255, 0, 0)},
    {"LegendFont.Color", [](const iStripChartX& c) -> double { return c.LegendFontColor; }, 0},
    {"XAxisLabelFont.Color", [](const iStripChartX& c) -> double { return c.XAxisLabelFontColor; }, 0},
    {"YAxisLabelFont.Color", [](const iStripChartX& c) -> double { return c.YAxisLabelFontColor; }, 0},
    {"XAxisTickMajorColor", [](const iStripChartX& c) -> double { return c.XAxisTickMajorColor; }, 0},
    {"XAxisTickMinorColor", [](const iStripChartX& c) -> double { return c.XAxisTickMinorColor; }, 0},
    {"BackGroundColor", [](const iStripChartX& c) -> double { return c.BackGroundColor; },
     rgb(192, 192, 192)},
    {"GridBackGroundColor", [](const iStripChartX& c) -> double { return c.GridBackGroundColor; },
     rgb(192, 192, 192)},
    {"XAxisTickMajorCount", [](const iStripChartX& c) -> double { return c.XAxisTickMajorCount; }, 6},
    {"XAxisTickMinorCount", [](const iStripChartX& c) -> double { return c.XAxisTickMinorCount; }, 3},
    {"YAxisTickMajorCount", [](const iStripChartX& c) -> double { return c.YAxisTickMajorCount; }, 7},
    {"XAxisMin", [](const iStripChartX& c) { return c.XAxisMin; }, 0},
    {"XAxisSpan", [](const iStripChartX& c) { return c.XAxisSpan; }, 1.0 / 720},
};

TEST_F(Chart, HasItsDesignValuesWhetherItsChannelIsInUseOrNot) {
    for (const iStripChartX& chart : charts.chart) {
        for (const chart_number& row : design_values)
            EXPECT_EQ(row.value(chart), row.expected) << row.name;
    }
}

TEST_F(Chart, OfAChannelInUseHasTheScaleFrom0To150AndItsTimeFormat) {
    for (std::size_t channel = 0; channel < 2; ++channel) {
        EXPECT_EQ(charts.chart[channel].YAxisMin, 0);
        EXPECT_EQ(charts.chart[channel].YAxisMax, 150);
        EXPECT_EQ(charts.chart[channel].XAxisDateTimeFormatString, "d/m hh:nn:ss");
    }
}

TEST_F(Chart, HasTheChannelsNumberAndLocationAsItsTitle) {
    EXPECT_EQ(charts.chart[0].Title, "1: Engine 1");
    EXPECT_EQ(charts.chart[1].Title, "2: Engine 2");
    EXPECT_EQ(charts.chart[2].Title, "not installed");
    EXPECT_EQ(charts.chart[3].Title, "not installed");
    EXPECT_TRUE(charts.chart[2].curves.empty());
}

TEST_F(Chart, EachVisibilityKeyOfNoughtHidesItsCurveOnAllChartsAndNoOther) {
    for (std::size_t hidden = 0; hidden < curve_rows.size(); ++hidden) {
        const std::string_view key = curve_rows[hidden].hidden_by;
        if (key.empty()) continue;
        std::string lines;
        for (const curve_row& row : curve_rows)
            if (!row.hidden_by.empty())
                lines += std::string(row.hidden_by) + (row.hidden_by == key ? "= 0\r\n" : "= 1\r\n");
        start_on(logging_settings(4, lines));
        for (const iStripChartX& chart : charts.chart) {
            ASSERT_EQ(chart.curves.size(), curve_rows.size());
            for (std::size_t curve = 0; curve < curve_rows.size(); ++curve)
                EXPECT_EQ(chart.curves[curve].Visible, curve != hidden) << key << " and curve " << curve;
        }
    }
}

TEST_F(Chart, AnyVisibilityValueButNoughtShowsTheCurve) {
    for (const char* value : {"1", "2", "-1", "32767"}) {
        start_on(logging_settings(1, "xy_tmv=" + std::string(value) + "\r\n"));
        EXPECT_TRUE(charts.chart[0].curves[3].Visible) << value;
        EXPECT_FALSE(charts.chart[0].curves[0].Visible) << "its key is missing";
    }
}

TEST_F(Chart, TheTimeResolutionsSetTheSpanOfAllFourCharts) {
    struct option_row {
        std::string_view caption;
        double span;
    };
    constexpr std::array<option_row, 4> options{
        {{"2 min", 1.0 / 720}, {"15 min", 1.0 / 96}, {"1 h", 1.0 / 24}, {"24 h", 1.0}}};
    for (const std::size_t index : {3U, 1U, 0U, 2U}) {
        for (iStripChartX& chart : charts.chart)
            chart.XAxisMin = 5;
        mainfrm::opt_res_click(index);
        EXPECT_EQ(charts.opt_res, index);
        EXPECT_EQ(charts.Lbl_opt_res[index].Caption, options[index].caption);
        for (const iStripChartX& chart : charts.chart) {
            EXPECT_EQ(chart.XAxisMin, 0);
            EXPECT_EQ(chart.XAxisSpan, options[index].span) << options[index].caption;
        }
    }
}

TEST_F(Chart, TheProgramStartsWithTwoMinutesWhateverWasChosenBefore) {
    mainfrm::opt_res_click(3);
    const std::string kept = file("tyxo.ini");
    start_on(kept);
    EXPECT_EQ(charts.opt_res, 0U);
    EXPECT_EQ(charts.chart[0].XAxisSpan, 1.0 / 720);
}

TEST_F(Chart, ATimeResolutionIsChosenByTheCaptionBesideIt) {
    charts.Lbl_opt_res[1].Caption = "24 h";
    mainfrm::opt_res_click(1);
    EXPECT_EQ(charts.chart[0].XAxisSpan, 1.0);
    charts.Lbl_opt_res[1].Caption = "no such span";
    mainfrm::opt_res_click(1);
    EXPECT_EQ(charts.chart[0].XAxisSpan, 1.0) << "an unknown caption changes nothing";
}

} // namespace
} // namespace tyxo
