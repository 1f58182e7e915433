// The dialog "Select print" without its picture, and the print that it hands over.

#include "dialogs/frmselectprint.h"

#include "displays/chart.h"
#include "logging/log_header.h"
#include "logging/logging_machine.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

class SelectPrint : public testing::Test {
  protected:
    void SetUp() override { start_on(logging_settings(3)); }

    static frmselectprint::window& dialog() { return frmselectprint::state; }
    static const std::vector<printed_chart>& prints() { return world().prints; }
};

TEST_F(SelectPrint, BearsItsCaptions) {
    EXPECT_EQ(dialog().form.Caption, "Select print");
    EXPECT_EQ(dialog().Lblprintheader.Caption, "xy - diagram printout");
    EXPECT_EQ(dialog().Frmprint.Caption, "Sensor select");
    EXPECT_EQ(dialog().Cmd_ok.Caption, "ok");
    EXPECT_EQ(dialog().cmd_cancel.Caption, "cancel");
}

TEST_F(SelectPrint, OffersTheChannelsInUse) {
    EXPECT_FALSE(dialog().form.Visible);
    mainfrm::prt_click();
    EXPECT_TRUE(dialog().form.Visible);
    EXPECT_TRUE(dialog().form.Loaded);
    const std::array<std::string, 4> captions{"1:   Engine 1", "2:   Engine 2", "3:   Engine 3", "4:   "};
    for (std::size_t index = 0; index < captions.size(); ++index) {
        EXPECT_EQ(dialog().optPrint[index].Caption, captions[index]);
        EXPECT_EQ(dialog().optPrint[index].Enabled, index < 3) << index;
    }
}

TEST_F(SelectPrint, BeginsWithTheFirstChannel) {
    mainfrm::prt_click();
    EXPECT_EQ(frmselectprint::state.print_channel, 0);
    EXPECT_EQ(dialog().selected, 0U);
}

TEST_F(SelectPrint, AChoiceIsThePrintChannelAtOnce) {
    mainfrm::prt_click();
    for (const std::size_t index : {2U, 1U, 0U, 3U}) {
        frmselectprint::optPrint_click(index);
        EXPECT_EQ(frmselectprint::state.print_channel, static_cast<i16>(index));
        EXPECT_EQ(dialog().selected, index);
    }
    EXPECT_THROW(frmselectprint::optPrint_click(4), failure);
    EXPECT_EQ(frmselectprint::state.print_channel, 3);
}

TEST_F(SelectPrint, CancelClosesWithoutAPrintAndTheChannelSurvives) {
    mainfrm::prt_click();
    frmselectprint::optPrint_click(2);
    frmselectprint::cmd_cancel_click();
    EXPECT_FALSE(dialog().form.Visible);
    EXPECT_FALSE(dialog().form.Loaded);
    EXPECT_TRUE(prints().empty());
    mainfrm::prt_click();
    EXPECT_EQ(dialog().selected, 2U);
    EXPECT_EQ(frmselectprint::state.print_channel, 2);
}

TEST_F(SelectPrint, OkPrintsThePrintChannelAndCloses) {
    mainfrm::prt_click();
    frmselectprint::optPrint_click(1);
    frmselectprint::Cmd_ok_click();
    ASSERT_EQ(prints().size(), 1U);
    EXPECT_EQ(prints()[0].chart.Title, "2: Engine 2");
    EXPECT_FALSE(dialog().form.Visible);
    EXPECT_FALSE(dialog().form.Loaded);
}

TEST_F(SelectPrint, IsClosedBeforeThePrinterIsAsked) {
    mainfrm::prt_click();
    bool open = true;
    world().during_print = [&] { open = dialog().form.Visible; };
    frmselectprint::Cmd_ok_click();
    EXPECT_FALSE(open);
}

TEST_F(SelectPrint, AChannelThatWentOutOfUseStaysAndNoOptionIsSelected) {
    mainfrm::prt_click();
    frmselectprint::optPrint_click(2);
    frmselectprint::cmd_cancel_click();
    sensor::state.max_sensors = 2;
    mainfrm::prt_click();
    EXPECT_FALSE(dialog().selected);
    EXPECT_FALSE(dialog().optPrint[2].Enabled);
    EXPECT_EQ(frmselectprint::state.print_channel, 2);
    EXPECT_EQ(dialog().LblPrint.Caption, "Channel 3 is not installed");
    frmselectprint::cmd_cancel_click();
    sensor::state.max_sensors = 3;
    mainfrm::prt_click();
    EXPECT_EQ(dialog().selected, 2U);
}

TEST_F(SelectPrint, TellsWhatItWillPrint) {
    mainfrm::prt_click();
    EXPECT_EQ(dialog().LblPrint.Caption, "Prints channel 1, the last 2 min");
    mainfrm::opt_res_click(2);
    mainfrm::chart_click(1);
    frmselectprint::optPrint_click(1);
    EXPECT_EQ(dialog().LblPrint.Caption, "Prints channel 2, the last 1 h, frozen");
    mainfrm::prt_click();
    EXPECT_EQ(dialog().LblPrint.Caption, "Prints channel 2, the last 1 h, frozen");
}

TEST_F(SelectPrint, NamesTheWindowThatAChartWasFrozenWith) {
    mainfrm::opt_res_click(3);
    mainfrm::chart_click(1);
    mainfrm::opt_res_click(0); // the frozen chart keeps its own
    mainfrm::prt_click();
    frmselectprint::optPrint_click(1);
    EXPECT_EQ(dialog().LblPrint.Caption, "Prints channel 2, the last 24 h, frozen");
    frmselectprint::optPrint_click(0);
    EXPECT_EQ(dialog().LblPrint.Caption, "Prints channel 1, the last 2 min");
    frmselectprint::Cmd_ok_click();
    frmselectprint::optPrint_click(1);
    mainfrm::printplot(1);
    EXPECT_EQ(prints()[1].rows.span(), 86'400'000);
}

class Printplot : public SelectPrint {};

TEST_F(Printplot, HasFourTitleLinesInOrder) {
    mainfrm::printplot(2);
    ASSERT_EQ(prints().size(), 1U);
    EXPECT_EQ(
        prints()[0].chart.PrintTitle,
        (text_lines{" ", "Sensor 3:  Engine 3", " ", "Printed by Quarvo | Tyxo Data Logger Version 2.10_4"}));
}

TEST_F(Printplot, NamesTheVersionOfTheLogs) {
    EXPECT_EQ(log::version, "Version 2.10_4");
    EXPECT_EQ(mainfrm::state.Caption, " Quarvo / Tyxo Data Logger  Version 2.10_4");
}

TEST_F(Printplot, AsksForThePrinterAndPrintsAcrossInBoldArial) {
    EXPECT_FALSE(charts.chart[0].PrintFlag);
    mainfrm::printplot(0);
    const iStripChartX& chart = prints().at(0).chart;
    EXPECT_TRUE(chart.PrintFlag);
    EXPECT_EQ(chart.PrintMode, 1);
    EXPECT_EQ(chart.PrintFontName, "arial");
    EXPECT_EQ(chart.PrintFontSize, 12);
    EXPECT_TRUE(chart.PrintFontBold);
}

TEST_F(Printplot, HasNarrowMarginsAtTheLeftAndTheTopAndWideOnesElsewhere) {
    for (const iStripChartX& chart : charts.chart) {
        for (const double margin : {chart.PrinterMarginLeft, chart.PrinterMarginTop, chart.PrinterMarginRight,
                                    chart.PrinterMarginBottom})
            EXPECT_EQ(margin, 0.5); // the design's
    }
    mainfrm::printplot(0);
    const iStripChartX& chart = prints().at(0).chart;
    EXPECT_EQ(chart.PrinterMarginLeft, 0.5);
    EXPECT_EQ(chart.PrinterMarginTop, 0.5);
    EXPECT_EQ(chart.PrinterMarginRight, 2.0);
    EXPECT_EQ(chart.PrinterMarginBottom, 2.0);
}

TEST_F(Printplot, SetsEverythingAgain) {
    charts.chart[0].PrinterMarginLeft = charts.chart[0].PrinterMarginTop = 9;
    mainfrm::printplot(0);
    EXPECT_EQ(prints().at(0).chart.PrinterMarginLeft, 0.5);
    EXPECT_EQ(prints().at(0).chart.PrinterMarginTop, 0.5);
}

TEST_F(Printplot, TakesTheTitleLinesAwayAfterwards) {
    mainfrm::printplot(1);
    EXPECT_TRUE(charts.chart[1].PrintTitle.empty());
    mainfrm::printplot(1);
    EXPECT_EQ(prints().at(1).chart.PrintTitle.size(), 4U);
}

TEST_F(Printplot, TakesTheTitleLinesAwayWhenPrintingFailed) {
    std::size_t lines = 0;
    world().during_print = [&] {
        lines = charts.chart[1].PrintTitle.size();
        throw failure("Printer error");
    };
    EXPECT_THROW(mainfrm::printplot(1), failure);
    EXPECT_EQ(lines, 4U);
    EXPECT_TRUE(charts.chart[1].PrintTitle.empty());
}

TEST_F(Printplot, PrintsTheRowsThatTheChartShowsWithItsSpanAndItsVisibleCurves) {
    mainfrm::opt_res_click(1);
    charts.chart[0].curves[3].Visible = false;
    for (int row = 0; row < 5; ++row)
        add_chart_row(0);
    mainfrm::printplot(0);
    EXPECT_EQ(prints().at(0).rows.rows(), 5);
    EXPECT_EQ(prints().at(0).rows.span(), 900'000);
    EXPECT_EQ(prints().at(0).chart.XAxisSpan, 1.0 / 96);
    EXPECT_FALSE(prints().at(0).chart.curves[3].Visible);
    mainfrm::chart_click(0);
    add_chart_row(0);
    mainfrm::printplot(0);
    EXPECT_EQ(prints().at(1).rows.rows(), 5); // frozen
}

TEST_F(Printplot, ChangesNoOtherChart) {
    const auto before = charts.chart[1];
    mainfrm::printplot(0);
    EXPECT_EQ(charts.chart[1], before);
}

TEST_F(Printplot, OfAChannelThatDoesNotExistFails) {
    EXPECT_THROW(mainfrm::printplot(4), failure);
    EXPECT_THROW(mainfrm::printplot(-1), failure);
    EXPECT_TRUE(prints().empty());
}

} // namespace
} // namespace tyxo
