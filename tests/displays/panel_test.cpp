// A panel and the clicks on it.

#include "displays/panel.h"

#include "link/supervision.h"
#include "logging/logging_machine.h"
#include "settings/ini.h"

#include <gtest/gtest.h>

#include <vector>

namespace tyxo {
namespace {

using namespace simulation;
using mainfrm::start_channel_click;

constexpr colour tsig_digits = rgb(255, 0, 0);
constexpr colour tsig_pointer = rgb(198, 0, 0);
constexpr colour teff_digits = rgb(255, 0, 255);
constexpr colour teff_pointer = rgb(185, 0, 185);
constexpr std::string_view no_data = "Data for damage localisation not available !";
constexpr std::string_view advanced =
    "Advanced Evaluator detected ! Logger runs in advanced mode for this evaluator !";

class Panel : public testing::Test {
  protected:
    void SetUp() override { start_on(logging_settings(4)); }
};

struct panel_number {
    std::string_view name;
    double (*value)(i16 channel);
    double expected;
};

// clang-format off
const std::vector<panel_number> design_numbers{
    {"Gauge_thermo.PositionMin", [](i16 c) { return panels.Gauge_thermo[c].PositionMin; }, 0},
    {"Gauge_thermo.PositionMax", [](i16 c) { return panels.Gauge_thermo[c].PositionMax; }, 125},
    {"Gauge_thermo.TickMajorCount", [](i16 c) -> double { return panels.Gauge_thermo[c].TickMajorCount; }, 6},
    {"Gauge_thermo.SectionCount", [](i16 c) -> double { return panels.Gauge_thermo[c].SectionCount; }, 2},
    {"Gauge_thermo.SectionEnd1", [](i16 c) { return panels.Gauge_thermo[c].SectionEnd[0]; }, 100},
    {"Gauge_thermo.SectionEnd2", [](i16 c) { return panels.Gauge_thermo[c].SectionEnd[1]; }, 125},
    {"Gauge_thermo.SectionColor1", [](i16 c) -> double { return panels.Gauge_thermo[c].SectionColor[0]; }, rgb(192, 192, 192)},
    {"Gauge_thermo.SectionColor2", [](i16 c) -> double { return panels.Gauge_thermo[c].SectionColor[1]; }, rgb(255, 120, 55)},
    {"Gauge_thermo.PointerSize", [](i16 c) -> double { return panels.Gauge_thermo[c].PointerSize; }, 8},
    {"Gauge_thermo.ShowMaxPointer", [](i16 c) -> double { return panels.Gauge_thermo[c].ShowMaxPointer; }, 1},
    {"Gauge_thermo.MaxPointerColor", [](i16 c) -> double { return panels.Gauge_thermo[c].MaxPointerColor; }, 0},
    {"Gauge_thermo.PointerColor", [](i16 c) -> double { return panels.Gauge_thermo[c].PointerColor; }, tsig_pointer},
    {"drehzahl.ArcStartDegrees", [](i16 c) -> double { return indicators.drehzahl[c].ArcStartDegrees; }, 230},
    {"drehzahl.ArcRangeDegrees", [](i16 c) -> double { return indicators.drehzahl[c].ArcRangeDegrees; }, 280},
    {"drehzahl.TickMinorCount", [](i16 c) -> double { return indicators.drehzahl[c].TickMinorCount; }, 1},
    {"drehzahl.PositionMax", [](i16 c) { return indicators.drehzahl[c].PositionMax; }, 1000},
    {"drehzahl.SectionCount", [](i16 c) -> double { return indicators.drehzahl[c].SectionCount; }, 3},
    {"drehzahl.SectionEnd1", [](i16 c) { return indicators.drehzahl[c].SectionEnd[0]; }, 1000},
    {"drehzahl.SectionColor1", [](i16 c) -> double { return indicators.drehzahl[c].SectionColor[0]; }, rgb(0, 255, 0)},
    {"drehzahl.SectionColor2", [](i16 c) -> double { return indicators.drehzahl[c].SectionColor[1]; }, rgb(255, 255, 0)},
    {"drehzahl.SectionColor3", [](i16 c) -> double { return indicators.drehzahl[c].SectionColor[2]; }, rgb(255, 0, 0)},
    {"digi_Thermo.Precision", [](i16 c) -> double { return indicators.digi_Thermo[c].Precision; }, 0},
    {"digi_Thermo.ForeColor", [](i16 c) -> double { return indicators.digi_Thermo[c].ForeColor; }, tsig_digits},
    {"t_mv.Precision", [](i16 c) -> double { return indicators.t_mv[c].Precision; }, 2},
    {"dig_drehzahl.Precision", [](i16 c) -> double { return indicators.dig_drehzahl[c].Precision; }, 0},
    {"dig_drehzahl.ShowSign", [](i16 c) -> double { return indicators.dig_drehzahl[c].ShowSign; }, 0},
    {"dig_drehzahl.SegmentColor", [](i16 c) -> double { return indicators.dig_drehzahl[c].SegmentColor; }, 16738370},
    {"dig_drehzahl.SegmentOffColor", [](i16 c) -> double { return indicators.dig_drehzahl[c].SegmentOffColor; }, rgb(0, 0, 128)},
    {"dig_sens.Precision", [](i16 c) -> double { return panels.dig_sens[c].Precision; }, 0},
    {"dig_sens.ShowSign", [](i16 c) -> double { return panels.dig_sens[c].ShowSign; }, 0},
    {"dig_sens.DigitCount", [](i16 c) -> double { return panels.dig_sens[c].DigitCount; }, 1},
    {"dig_sens.SegmentColor", [](i16 c) -> double { return panels.dig_sens[c].SegmentColor; }, 33023},
    {"dig_sens.SegmentOffColor", [](i16 c) -> double { return panels.dig_sens[c].SegmentOffColor; }, 85},
    {"dig_sens2.Precision", [](i16 c) -> double { return panels.dig_sens2[c].Precision; }, 0},
    {"dig_sens2.DigitCount", [](i16 c) -> double { return panels.dig_sens2[c].DigitCount; }, 1},
    {"dig_sens2.SegmentColor", [](i16 c) -> double { return panels.dig_sens2[c].SegmentColor; }, rgb(85, 0, 0)},
    {"dig_sens2.SegmentOffColor", [](i16 c) -> double { return panels.dig_sens2[c].SegmentOffColor; }, 85},
    {"LED_Alarm.ActiveColor", [](i16 c) -> double { return indicators.LED_Alarm[c].ActiveColor; }, rgb(255, 0, 0)},
    {"LED_prealarm.ActiveColor", [](i16 c) -> double { return indicators.LED_prealarm[c].ActiveColor; }, rgb(255, 0, 0)},
    {"LED_prealarm.InactiveColor", [](i16 c) -> double { return indicators.LED_prealarm[c].InactiveColor; }, 16512},
    {"LED_Rdy.Active", [](i16 c) -> double { return indicators.LED_Rdy[c].Active; }, 0},
    {"Frame_sensor.Enabled", [](i16 c) -> double { return panels.Frame_sensor[c].Enabled; }, 1},
    {"XYplot.Visible", [](i16 c) -> double { return panels.XYplot[c].Visible; }, 0},
    {"Cmd_diagramm.Visible", [](i16 c) -> double { return panels.Cmd_diagramm[c].Visible; }, 0},
    {"Cmd_diagramm2.Visible", [](i16 c) -> double { return panels.Cmd_diagramm2[c].Visible; }, 0},
    {"Frame_message.Visible", [](i16 c) -> double { return panels.Frame_message[c].Visible; }, 1},
    {"Lbl_alm1.Visible", [](i16 c) -> double { return indicators.Lbl_alm1[c].Visible; }, 1},
    {"lbl_alm2.Visible", [](i16 c) -> double { return indicators.lbl_alm2[c].Visible; }, 1},
    {"Lbl_alminhibit.Visible", [](i16 c) -> double { return indicators.Lbl_alminhibit[c].Visible; }, 0},
    {"Lbl_inhtime.Visible", [](i16 c) -> double { return indicators.Lbl_inhtime[c].Visible; }, 0},
    {"start_channel.Enabled", [](i16 c) -> double { return indicators.start_channel[c].Enabled; }, 1},
};

struct panel_text {
    std::string_view name;
    std::string (*value)(i16 channel);
    std::string_view expected;
};

const std::vector<panel_text> design_texts{
    {"drehzahl.Label1Text", [](i16 c) { return indicators.drehzahl[c].Label1Text; }, "RPM"},
    {"drehzahl.Label2Text", [](i16 c) { return indicators.drehzahl[c].Label2Text; }, "RPM"},
    {"digi_Thermo.UnitsText", [](i16 c) { return indicators.digi_Thermo[c].UnitsText; }, "%"},
    {"t_mv.UnitsText", [](i16 c) { return indicators.t_mv[c].UnitsText; }, "mV"},
    {"Label4", [](i16 c) { return panels.Label4[c].Caption; }, "Tsig %DCA"},
    {"lbl_aimplevel", [](i16 c) { return panels.lbl_aimplevel[c].Caption; }, "."},
    {"Lbl_dc_percent", [](i16 c) { return panels.Lbl_dc_percent[c].Caption; }, "."},
    {"Lbl_alm1", [](i16 c) { return indicators.Lbl_alm1[c].Caption; }, "Alarmrel 1"},
    {"lbl_alm2", [](i16 c) { return indicators.lbl_alm2[c].Caption; }, "Alarmrel 2"},
    {"Lbl_alminhibit", [](i16 c) { return indicators.Lbl_alminhibit[c].Caption; }, "Alarm inhibit!"},
    {"Frame_message", [](i16 c) { return panels.Frame_message[c].Caption; }, "Info"},
    {"Lbl_dama", [](i16 c) { return panels.Lbl_dama[c].Caption; }, no_data},
    {"Cmd_diagramm", [](i16 c) { return panels.Cmd_diagramm[c].Caption; }, "Speed difference"},
    {"Cmd_diagramm2", [](i16 c) { return panels.Cmd_diagramm2[c].Caption; }, "Thermosignal difference"},
};
// clang-format on

TEST_F(Panel, HasItsDesignValuesWhenTheProgramHasStarted) {
    for (i16 channel = 0; channel < channel_count; ++channel) {
        for (const panel_number& row : design_numbers)
            EXPECT_EQ(row.value(channel), row.expected) << row.name << " of channel " << channel;
        for (const panel_text& row : design_texts)
            EXPECT_EQ(row.value(channel), row.expected) << row.name << " of channel " << channel;
        EXPECT_EQ(panels.Frame_sensor[channel].Caption,
                  std::to_string(channel + 1) + ": Engine " + std::to_string(channel + 1));
    }
}

TEST_F(Panel, RelayLabelsHaveTheNamesOfTheSettings) {
    start_on(logging_settings(2, "text_almrel1 1=Horn\r\ntext_almrel2 1=Stop\r\ntext_almrel1 2=Lamp\r\n"));
    EXPECT_EQ(indicators.Lbl_alm1[0].Caption, "Horn");
    EXPECT_EQ(indicators.lbl_alm2[0].Caption, "Stop");
    EXPECT_EQ(indicators.Lbl_alm1[1].Caption, "Lamp");
    EXPECT_EQ(indicators.lbl_alm2[1].Caption, "Alarmrel 2");
}

TEST_F(Panel, ShowsTheRecordsValues) {
    for (i16 channel = 0; channel < channel_count; ++channel) {
        channel_rec& rec = sensor::state.channels[channel];
        rec.speed = 1480 + channel;
        rec.tsignal = 51 + channel;
        rec.teff_dc = 70 + channel;
        rec.tvoltage = 1234 + channel;
        rec.alarmlevel = 320 + channel;
        update_panel(channel);
        EXPECT_EQ(indicators.drehzahl[channel].Position, 1480 + channel);
        EXPECT_EQ(indicators.dig_drehzahl[channel].Value, 1480 + channel);
        EXPECT_EQ(panels.Gauge_thermo[channel].Position, 51 + channel);
        EXPECT_EQ(indicators.digi_Thermo[channel].Value, 51 + channel);
        EXPECT_EQ(indicators.t_mv[channel].Value, (1234 + channel) / 100.0);
        EXPECT_EQ(panels.dig_sens[channel].Value, 320 + channel);
    }
}

TEST_F(Panel, TheThermoGaugeShowsTeffForAnyChoiceButNought) {
    sensor::state.channels[0].tsignal = 10;
    sensor::state.channels[0].teff_dc = 20;
    for (const int choice : {0, 1, 2, -1, 100}) {
        sensor::state.channels[0].th_dig_val = static_cast<i16>(choice);
        update_panel(0);
        EXPECT_EQ(panels.Gauge_thermo[0].Position, choice == 0 ? 10 : 20) << choice;
        EXPECT_EQ(indicators.digi_Thermo[0].Value, choice == 0 ? 10 : 20) << choice;
    }
}

TEST_F(Panel, TheAcLevelNeedsTheFirstBlockAndItsPercentageBoth) {
    struct flags_row {
        bool ext1;
        bool ext2;
        colour digits;
        double value;
        std::string_view percentage;
    };
    for (const flags_row& row : {flags_row{false, false, rgb(85, 0, 0), 7, "old"},
                                 {false, true, rgb(85, 0, 0), 7, "old"},
                                 {true, false, rgb(255, 128, 0), 45, "old"},
                                 {true, true, rgb(255, 128, 0), 45, "90% of"}}) {
        panels.dig_sens2[0].Value = 7;
        panels.lbl_aimplevel[0].Caption = "old";
        sensor::state.channels[0].aimp_level_cur = 45;
        sensor::state.channels[0].ialarmlevel = 90;
        sensor::state.channels[0].ext1_valid = row.ext1;
        sensor::state.channels[0].ext2_valid = row.ext2;
        update_panel(0);
        EXPECT_EQ(panels.dig_sens2[0].SegmentColor, row.digits);
        EXPECT_EQ(panels.dig_sens2[0].Value, row.value);
        EXPECT_EQ(panels.lbl_aimplevel[0].Caption, row.percentage);
    }
}

TEST_F(Panel, TheDcPercentageIsWrittenWhenItIsThereAndStaysOtherwise) {
    sensor::state.channels[0].dcalarmpercent = 85;
    update_panel(0);
    EXPECT_EQ(panels.Lbl_dc_percent[0].Caption, ".");
    sensor::state.channels[0].dcpercent_valid = true;
    update_panel(0);
    EXPECT_EQ(panels.Lbl_dc_percent[0].Caption, "85% of");
    sensor::state.channels[0].dcpercent_valid = false;
    sensor::state.channels[0].dcalarmpercent = 60;
    update_panel(0);
    EXPECT_EQ(panels.Lbl_dc_percent[0].Caption, "85% of");
}

TEST_F(Panel, PlotButtonsAndMessageFollowTheEvaluatorsMode) {
    struct mode_row {
        i32 mode;
        bool plot; ///< the message is the reverse
        std::string_view message;
    };
    for (const mode_row& row : {mode_row{99, false, "old"}, {1, true, no_data}, {0, false, advanced}}) {
        for (const bool before : {false, true}) {
            panels.XYplot[0].Visible = panels.Cmd_diagramm[0].Visible = panels.Cmd_diagramm2[0].Visible =
                before;
            panels.Frame_message[0].Visible = before;
            panels.Lbl_dama[0].Caption = "old";
            sensor::state.channels[0].eva_mode = row.mode;
            update_panel(0);
            EXPECT_EQ(panels.XYplot[0].Visible, row.plot) << row.mode;
            EXPECT_EQ(panels.Cmd_diagramm[0].Visible, row.plot) << row.mode;
            EXPECT_EQ(panels.Cmd_diagramm2[0].Visible, row.plot) << row.mode;
            EXPECT_EQ(panels.Frame_message[0].Visible, !row.plot) << row.mode;
            EXPECT_EQ(panels.Lbl_dama[0].Caption, row.message) << row.mode;
        }
    }
}

TEST_F(Panel, AnyOtherModeLeavesPlotButtonsAndMessageAsTheyWere) {
    for (const i32 mode : {2, 3, 98, 100, 255, -1}) {
        for (const bool before : {false, true}) {
            panels.XYplot[0].Visible = panels.Cmd_diagramm[0].Visible = panels.Cmd_diagramm2[0].Visible =
                before;
            panels.Frame_message[0].Visible = before;
            panels.Lbl_dama[0].Caption = "old";
            sensor::state.channels[0].eva_mode = mode;
            update_panel(0);
            EXPECT_EQ(panels.XYplot[0].Visible, before) << mode;
            EXPECT_EQ(panels.Cmd_diagramm[0].Visible, before) << mode;
            EXPECT_EQ(panels.Cmd_diagramm2[0].Visible, before) << mode;
            EXPECT_EQ(panels.Frame_message[0].Visible, before) << mode;
            EXPECT_EQ(panels.Lbl_dama[0].Caption, "old") << mode;
        }
    }
}

TEST_F(Panel, AClickTogglesTheThermoChoiceAndKeepsItInTheSettings) {
    struct click_row {
        i16 before;
        i16 after;
        colour digits;
        colour pointer;
        std::string_view name;
    };
    for (const click_row& row : {click_row{0, 1, teff_digits, teff_pointer, "Teff %DCA"},
                                 {1, 0, tsig_digits, tsig_pointer, "Tsig %DCA"},
                                 {2, 1, teff_digits, teff_pointer, "Teff %DCA"},
                                 {-1, 1, teff_digits, teff_pointer, "Teff %DCA"}}) {
        for (i16 channel = 0; channel < channel_count; ++channel) {
            sensor::state.channels[channel].th_dig_val = row.before;
            mainfrm::Label4_click(channel);
            EXPECT_EQ(sensor::state.channels[channel].th_dig_val, row.after) << row.before;
            EXPECT_EQ(Ini::ini_read("th_dig_val " + std::to_string(channel + 1)), std::to_string(row.after));
            EXPECT_EQ(indicators.digi_Thermo[channel].ForeColor, row.digits) << row.before;
            EXPECT_EQ(panels.Gauge_thermo[channel].PointerColor, row.pointer) << row.before;
            EXPECT_EQ(panels.Label4[channel].Caption, row.name) << row.before;
        }
    }
}

TEST_F(Panel, AClickWritesItsKeyAtOnceInTheFormOfNumbers) {
    start_on("[tyxo]\r\nmax_sensors= 1\r\nadc_offset=479\r\nzyl_speed_range=1\r\n");
    mainfrm::Label4_click(0);
    EXPECT_TRUE(file("tyxo.ini").ends_with("zyl_speed_range=1\r\nth_dig_val 1= 1\r\n"));
    mainfrm::Label4_click(0);
    EXPECT_TRUE(file("tyxo.ini").ends_with("zyl_speed_range=1\r\nth_dig_val 1= 0\r\n"));
}

TEST_F(Panel, TheStoredThermoChoiceIsShownAtTheStart) {
    start_on(
        logging_settings(4, "th_dig_val 1=0\r\nth_dig_val 2=1\r\nth_dig_val 3=2\r\nth_dig_val 4=-1\r\n"));
    for (i16 channel = 0; channel < channel_count; ++channel) {
        const bool teff = channel > 0;
        EXPECT_EQ(indicators.digi_Thermo[channel].ForeColor, teff ? 16711935 : 255);
        EXPECT_EQ(panels.Gauge_thermo[channel].PointerColor, teff ? 12124345 : 198);
        EXPECT_EQ(panels.Label4[channel].Caption, teff ? "Teff %DCA" : "Tsig %DCA");
    }
}

TEST_F(Panel, ATwoIsShownAsTeffAndTakesTwoClicksToTsig) {
    start_on(logging_settings(1, "th_dig_val 1=2\r\n"));
    const iLinearGaugeX shown = panels.Gauge_thermo[0];
    mainfrm::Label4_click(0);
    EXPECT_EQ(panels.Gauge_thermo[0], shown);
    EXPECT_EQ(panels.Label4[0].Caption, "Teff %DCA");
    mainfrm::Label4_click(0);
    EXPECT_EQ(panels.Label4[0].Caption, "Tsig %DCA");
}

} // namespace
} // namespace tyxo
