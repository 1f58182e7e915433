// The header of a log, compared with golden files.

#include "displays/chart.h"
#include "logging/logging_machine.h"
#include "settings/settings.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tyxo {
namespace {

using namespace simulation;

/// The header that a log begins with, line by line.
text_lines header_of(const parameter_values& values, parameter_form form = parameter_form::full,
                     std::string_view more_settings = "") {
    start_on(logging_settings(1, more_settings));
    start_logging(0, values, form);
    return lines_of(world().files[world().opened.empty() ? "" : world().opened.back()]);
}

/// The lines of a header that begin with the tag.
text_lines tagged(const text_lines& lines, std::string_view tag) {
    text_lines found;
    const std::string start = "        <" + std::string(tag) + ">";
    std::ranges::copy_if(lines, std::back_inserter(found),
                         [&](const std::string& line) { return line.starts_with(start); });
    return found;
}

std::string only(const text_lines& lines, std::string_view tag) {
    const text_lines found = tagged(lines, tag);
    return found.size() == 1 ? found[0] : std::to_string(found.size()) + " lines " + std::string(tag);
}

TEST(LogHeader, ASessionOfASixCylinderEngineInLineIsTheGoldenFile) {
    start_on(logging_settings(1, "typecode 1=TX-6\r\n"));
    start_logging(0);
    feed(0, measured_body());
    for (i32 block = 1; block <= 4; ++block)
        feed(0, curve_body(":03", block, 500));
    for (i32 block = 1; block <= 4; ++block)
        feed(0, curve_body(":04", block, 20000));
    feed(0, measured_body({.test_signal = 1}));
    feed(0, status_body({.alarm = 0x2000}));
    mainfrm::start_channel_click(0);
    EXPECT_EQ(file(log_path(0)), golden("six_cylinders_in_line.xlg"));
}

TEST(LogHeader, AVEngineInHourlyModeIsTheGoldenFile) {
    start_on(logging_settings(1, "log_mode= 1\r\nscale_polar_x=1\r\n"));
    sensor::state.scale_polar_t = -0.0625;
    sensor::state.scale_polar_a = 1234.5;
    mainfrm::opt_res_click(2);
    start_logging(0, {.ratedspeed = 750,
                      .overspeed = 900,
                      .numzyl = 12,
                      .cylconf = 2,
                      .firingorder = {101, 201, 105, 205, 103, 203, 106, 206, 102, 202, 104, 204},
                      .firingangle = {0, 60, 120, 180, 240, 300, 360, 420, 480, 540, 600, 660}});
    EXPECT_EQ(file(log_path(0, "2026070213")), golden("v_engine_hourly.xlg"));
}

TEST(LogHeader, TheShortestParametersGiveTheGoldenFile) {
    parameter_values values{.ratedspeed = 100, .overspeed = 119, .enginetype = 2, .numzyl = 24};
    for (std::size_t cylinder = 0; cylinder < 24; ++cylinder) {
        values.firingorder[cylinder] = static_cast<i32>(cylinder) + 1;
        values.firingangle[cylinder] = 30 * static_cast<i32>(cylinder);
    }
    start_on(logging_settings(1));
    mainfrm::opt_res_click(3);
    mainfrm::start_channel_click(0);
    feed(0, status_body());
    feed(0, parameter_body(values, parameter_form::shortest));
    EXPECT_EQ(file(log_path(0)), golden("shortest_parameters.xlg"));
}

TEST(LogHeader, CylindersOneHundredAndTwoHundredHaveNoEntryInTheGoldenFile) {
    start_on(logging_settings(1));
    mainfrm::opt_res_click(1);
    start_logging(0, {.ratedspeed = 2700,
                      .overspeed = 2900,
                      .numzyl = 8,
                      .cylconf = 2,
                      .firingorder = {99, 100, 101, 199, 200, 201, 255, 0},
                      .firingangle = {100, 200, 300, 400, 0, 65535, 720, 1}});
    EXPECT_EQ(file(log_path(0)), golden("firing_order_without_entries.xlg"));
}

TEST(LogHeader, MoreThan24CylindersEndItInFrontOfTheFiringListsAndLoggingGoesOn) {
    start_on(logging_settings(1));
    start_logging(0, {.numzyl = 25});
    feed(0, measured_body());
    EXPECT_EQ(file(log_path(0)), golden("too_many_cylinders.xlg"));
    EXPECT_TRUE(world().debug.empty());
}

TEST(LogHeader, EveryNumberOfCylindersUpTo24HasItsLists) {
    parameter_values values;
    values.firingorder.fill(7);
    values.firingangle.fill(90);
    std::string order;
    std::string angles;
    for (i32 cylinders = 0; cylinders <= 24; ++cylinders) {
        values.numzyl = cylinders;
        const text_lines lines = header_of(values);
        EXPECT_EQ(only(lines, "NUMZYL"), "        <NUMZYL> " + std::to_string(cylinders) + " </NUMZYL>");
        EXPECT_EQ(only(lines, "FIRINGORDER"), "        <FIRINGORDER>" + order + " </FIRINGORDER>");
        EXPECT_EQ(only(lines, "FIRINGANGLE"), "        <FIRINGANGLE>" + angles + " </FIRINGANGLE>");
        EXPECT_EQ(lines.back(), "<LOG>");
        order += " 7";
        angles += " 90";
    }
}

TEST(LogHeader, TheHourStandsInHourlyModeOnly) {
    for (const int mode : {0, 2, -1, 60, 1}) {
        const text_lines lines =
            header_of({}, parameter_form::full, "log_mode=" + std::to_string(mode) + "\r\n");
        if (mode == 1) {
            EXPECT_EQ(lines[7], "        <LOGHOUR> 13 </LOGHOUR>");
            EXPECT_EQ(lines[8], "    </INFO>");
        } else {
            EXPECT_EQ(lines[6], "        <LOGDATE> 20260702 </LOGDATE>") << mode;
            EXPECT_EQ(lines[7], "    </INFO>") << mode;
        }
    }
}

TEST(LogHeader, DateAndHourAreZeroPadded) {
    start_on(logging_settings(1, "log_mode=1\r\n"));
    set_local({987, 1, 3, 4, 5, 6});
    start_logging(0);
    const text_lines lines = lines_of(file(log_path(0, "0987010304")));
    EXPECT_EQ(only(lines, "LOGDATE"), "        <LOGDATE> 09870103 </LOGDATE>");
    EXPECT_EQ(only(lines, "LOGHOUR"), "        <LOGHOUR> 04 </LOGHOUR>");
    EXPECT_EQ(only(lines, "LOGNAME"), "        <LOGNAME> 0987010304Qu_Engine 1.xlg </LOGNAME> ");
}

TEST(LogHeader, AShortParameterFrameBehindALongOneLeavesNothingOfIt) {
    start_on(logging_settings(1));
    start_logging(0, {}, parameter_form::full);
    const text_lines first = lines_of(file(log_path(0)));
    EXPECT_EQ(only(first, "FWVERS"), "        <FWVERS> V3.10-0042 </FWVERS>");
    mainfrm::start_channel_click(0);
    set_local({2026, 7, 3, 8, 0, 0});
    mainfrm::start_channel_click(0);
    feed(0, status_body());
    feed(0, parameter_body({}, parameter_form::shortest));
    const text_lines second = lines_of(file(log_path(0, "20260703")));
    EXPECT_EQ(only(second, "FWVERS"), "        <FWVERS> " + sensor::state.channels[0].fwvers + " </FWVERS>");
    EXPECT_EQ(sensor::state.channels[0].fwvers.size(), 5U);
    EXPECT_EQ(only(second, "TSTTIME"), "        <TSTTIME> NA </TSTTIME>");
    EXPECT_EQ(only(second, "EVASNR"), "        <EVASNR> inactive </EVASNR>");
    for (const char* const tag :
         {"IALARMLEVEL1", "IALARMLEVEL2", "IALMRPM", "IMPOFFSET", "IALARMDELAY", "IALARMLEN", "IALARMLEVEL",
          "DCALARMPERCENT", "THEFF_ALM", "THEFF_CNT", "ALMINHIBIT_TIME"}) {
        EXPECT_EQ(tagged(first, tag).size(), 1U) << tag;
        EXPECT_EQ(tagged(second, tag), text_lines{}) << tag;
    }
}

TEST(LogHeader, EachLengthOfTheParameterFrameAddsItsLines) {
    struct form_row {
        parameter_form form;
        text_lines added;
    };
    const text_lines optional{"IALARMLEVEL1", "IALARMLEVEL2",    "IALMRPM",       "IMPOFFSET",
                              "IALARMDELAY",  "IALARMLEN",       "IALARMLEVEL",   "THEFF_ALM",
                              "THEFF_CNT",    "ALMINHIBIT_TIME", "DCALARMPERCENT"};
    text_lines expected;
    for (const form_row& row :
         {form_row{parameter_form::shortest, {}},
          {parameter_form::test_signal, {}},
          {parameter_form::ext1, {"IALARMLEVEL1", "IALARMLEVEL2", "IALMRPM"}},
          {parameter_form::ext2, {"IMPOFFSET", "IALARMDELAY", "IALARMLEN", "IALARMLEVEL"}},
          {parameter_form::theff, {"THEFF_ALM", "THEFF_CNT"}},
          {parameter_form::inhibit, {"ALMINHIBIT_TIME"}},
          {parameter_form::full, {"DCALARMPERCENT"}}}) {
        expected.insert(expected.end(), row.added.begin(), row.added.end());
        const text_lines lines = header_of({}, row.form);
        text_lines found;
        std::ranges::copy_if(optional, std::back_inserter(found),
                             [&](const std::string& tag) { return !tagged(lines, tag).empty(); });
        EXPECT_EQ(found, expected) << static_cast<std::size_t>(row.form);
        const bool with_test_signal = row.form >= parameter_form::test_signal;
        EXPECT_EQ(only(lines, "TSTTIME"),
                  with_test_signal ? "        <TSTTIME> 24 </TSTTIME>" : "        <TSTTIME> NA </TSTTIME>");
        EXPECT_EQ(only(lines, "TSTLEN"),
                  with_test_signal ? "        <TSTLEN> 10 </TSTLEN>" : "        <TSTLEN> NA </TSTLEN>");
        EXPECT_EQ(only(lines, "FWVERS"), row.form >= parameter_form::ext1
                                             ? "        <FWVERS> V3.10-0042 </FWVERS>"
                                             : "        <FWVERS>  </FWVERS>")
            << "no status frame came";
        EXPECT_EQ(only(lines, "EVASNR"), row.form >= parameter_form::inhibit
                                             ? "        <EVASNR> SN004711 </EVASNR>"
                                             : "        <EVASNR> inactive </EVASNR>");
    }
}

TEST(LogHeader, MarkersOfUnknownValuesLeaveTheirLinesOut) {
    EXPECT_TRUE(tagged(header_of({.theff_alm = 9999}), "THEFF_ALM").empty());
    EXPECT_TRUE(tagged(header_of({.theff_cnt = 9999}), "THEFF_CNT").empty());
    EXPECT_EQ(only(header_of({.theff_alm = 9999}), "THEFF_CNT"), "        <THEFF_CNT> 64 </THEFF_CNT>");
    EXPECT_EQ(only(header_of({.alminhibit_time = 9999}), "ALMINHIBIT_TIME"),
              "        <ALMINHIBIT_TIME> 9999 </ALMINHIBIT_TIME>");
    EXPECT_EQ(only(header_of({.theff_cnt = 9998}), "THEFF_CNT"), "        <THEFF_CNT> 9998 </THEFF_CNT>");
}

TEST(LogHeader, TheSpeedScaleFollowsTheOverspeedLimit) {
    struct speed_row {
        i32 overspeed;
        std::string_view unit;
        std::string_view scale;
    };
    for (const speed_row& row : {speed_row{0, "RPM", " 1"},
                                 {119, "RPM", " 1"},
                                 {120, "RPM /5", " .2"},
                                 {399, "RPM /5", " .2"},
                                 {400, "RPM /10", " .1"},
                                 {1399, "RPM /10", " .1"},
                                 {1400, "RPM /20", " .05"},
                                 {2899, "RPM /20", " .05"},
                                 {2900, "RPM /25", " .04"},
                                 {65535, "RPM /25", " .04"}}) {
        const text_lines lines = header_of({.overspeed = row.overspeed});
        const auto speed = std::ranges::find(lines, "            <NAME>Speed</NAME>");
        ASSERT_LT(speed, lines.end() - 2);
        EXPECT_EQ(speed[1], "            <UNIT>" + std::string(row.unit) + "</UNIT>") << row.overspeed;
        EXPECT_EQ(speed[2], "            <SCALE>" + std::string(row.scale) + "</SCALE>") << row.overspeed;
    }
}

TEST(LogHeader, TheChartsSettingsAreThoseOfTheMomentAndOfTheChannel) {
    start_on(logging_settings(2));
    iStripChartX& chart = charts.chart[1];
    chart.AxisGridColor = 1;
    chart.LegendFontColor = 2;
    chart.XAxisLabelFontColor = 3;
    chart.YAxisLabelFontColor = 4;
    chart.TitleFontColor = 5;
    chart.XAxisTickMajorColor = 6;
    chart.XAxisDateTimeFormatString = "hh:nn";
    chart.BackGroundColor = 7;
    chart.GridBackGroundColor = 8;
    chart.GridLineStyle = 9;
    chart.XAxisMin = -0.5;
    chart.XAxisSpan = 0.25;
    chart.XAxisTickMajorCount = 10;
    chart.YAxisMin = -20;
    chart.YAxisMax = 110.5;
    chart.YAxisTickMajorCount = 11;
    start_logging(1);
    const text_lines lines = lines_of(file(log_path(1)));
    const text_lines expected{"        <AXISGRIDCOLOR>1</AXISGRIDCOLOR>",
                              "        <LEGENDFONTCOLOR>2</LEGENDFONTCOLOR>",
                              "        <XAXISLABELFONTCOLOR>3</XAXISLABELFONTCOLOR>",
                              "        <YAXISLABELFONTCOLOR>4</YAXISLABELFONTCOLOR>",
                              "        <TITLEFONTCOLOR>5</TITLEFONTCOLOR>",
                              "        <XAXISTICKCOLOR>6</XAXISTICKCOLOR>",
                              "        <XAXISDATETIMEFORMAT>hh:nn</XAXISDATETIMEFORMAT>",
                              "        <BACKGROUNDCOLOR>7</BACKGROUNDCOLOR>",
                              "        <GRIDBACKGROUNDCOLOR>8</GRIDBACKGROUNDCOLOR>",
                              "        <GRIDLINESTYLE>9</GRIDLINESTYLE>",
                              "        <XAXISMIN>-.5</XAXISMIN>",
                              "        <XAXISSPAN> .25</XAXISSPAN>",
                              "        <XAXISTICKS>10</XAXISTICKS>",
                              "        <YAXISMIN>-20</YAXISMIN>",
                              "        <YAXISSPAN> 130.5</YAXISSPAN>",
                              "        <YAXISTICKS>11</YAXISTICKS>"};
    ASSERT_GT(lines.size(), 25U);
    EXPECT_EQ(text_lines(lines.begin() + 9, lines.begin() + 25), expected);
}

TEST(LogHeader, TheFourTimeResolutionsGiveTheirSpans) {
    const text_lines spans{" 1.38888888888889E-03", " 1.04166666666667E-02", " 4.16666666666667E-02", " 1"};
    for (std::size_t option = 0; option < spans.size(); ++option) {
        start_on(logging_settings(1));
        mainfrm::opt_res_click(option);
        start_logging(0);
        EXPECT_EQ(only(lines_of(file(log_path(0))), "XAXISSPAN"),
                  "        <XAXISSPAN>" + spans[option] + "</XAXISSPAN>");
    }
}

TEST(LogHeader, TheLinesOfTheCurvesAre808CharactersLong) {
    const text_lines lines = header_of({});
    ASSERT_GT(lines.size(), 6U);
    EXPECT_EQ(lines[lines.size() - 5].size(), 808U);
    EXPECT_EQ(lines[lines.size() - 4].size(), 808U);
    EXPECT_TRUE(lines[lines.size() - 5].starts_with("        <REC2><POLAR> T1 T4 T4 "));
    EXPECT_TRUE(lines[lines.size() - 4].starts_with("        <REC3><POLAR> T1 T5 T5 "));
}

TEST(LogHeader, TextsArePassedAsBytes) {
    const text_lines lines = header_of({.fwvers_ext = "\xC4\xD6\xDC<>&\"1.0", .evasnr = " S;/ \xDF \x80"},
                                       parameter_form::full, "typecode 1=M\xFCnchen & <X>\r\n");
    EXPECT_EQ(only(lines, "TYPECODE"), "        <TYPECODE> M\xFCnchen & <X> </TYPECODE>");
    EXPECT_EQ(only(lines, "FWVERS"), "        <FWVERS> \xC4\xD6\xDC<>&\"1.0 </FWVERS>");
    EXPECT_EQ(only(lines, "EVASNR"), "        <EVASNR>  S;/ \xDF \x80 </EVASNR>");
}

} // namespace
} // namespace tyxo
