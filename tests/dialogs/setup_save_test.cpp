// "OK" of the setup dialog: what the program takes over, and what its settings file holds then.

#include "dialogs/setup_world.h"

#include "displays/panel.h"
#include "logging/log_header.h"

#include <algorithm>

namespace tyxo {
namespace {

using namespace simulation;

class SetupSave : public setup_world {
  protected:
    void SetUp() override {
        start(2);
        mainfrm::setup_click();
    }
};

TEST_F(SetupSave, TakesEveryBoxOfEveryRow) {
    frmSetup::scroll_max_commport_change(4);
    for (i16 row = 0; row < channel_count; ++row) {
        for (const row_box& box : row_boxes)
            box.change(row, std::string(box.name) + channel_number(row));
        frmSetup::Select_com_click(row, static_cast<std::size_t>(3 - row));
    }
    frmSetup::Text_evtlogfile_path_change("C:\\events\\");
    frmSetup::cmd_OK_click();
    EXPECT_EQ(sensor::state.max_sensors, 4);
    EXPECT_EQ(sensor::state.comport, (per_channel<i16>{{4, 3, 2, 1}}));
    EXPECT_EQ(settings.evtpath, "C:\\events\\");
    for (i16 row = 0; row < channel_count; ++row) {
        for (const row_box& box : row_boxes) {
            const std::string text = std::string(box.name) + channel_number(row);
            EXPECT_EQ(sensor::state.channels[row].*box.value, text);
            EXPECT_EQ(Ini::ini_read(std::string(box.stem) + channel_number(row)), text);
        }
    }
}

TEST_F(SetupSave, WritesItsKeysInTheirOrder) {
    put_file("tyxo.ini", "");
    settings.autostart = true;
    frmSetup::Text_sensor_loc_change(1, "M\xFChle");
    frmSetup::Check_tst_click(1);
    frmSetup::Select_com_click(1, 4);
    frmSetup::Opt_diffmode_click(1);
    frmSetup::Opt_event_click(1);
    frmSetup::Text_evtlogfile_path_change("C:\\events\\");
    frmSetup::cmd_OK_click();
    EXPECT_EQ(saved_lines(), (text_lines{"[tyxo]",
                                         "upd_periode= 500",
                                         "cmd_periode= 0",
                                         "max_sensors= 2",
                                         "speedbar_mode= 1",
                                         "eventfile_ena= 1",
                                         "evtpath=C:\\events\\",
                                         "autostart=1",
                                         "comport 1= 1",
                                         "location 1=Engine 1",
                                         "typecode 1=unknown",
                                         "logpath 1=C:\\logs\\",
                                         "text_almrel1 1=Alarmrel 1",
                                         "text_almrel2 1=Alarmrel 2",
                                         "tstsig_visible 1= 0",
                                         "comport 2= 12",
                                         "location 2=M\xFChle",
                                         "typecode 2=unknown",
                                         "logpath 2=C:\\logs\\",
                                         "text_almrel1 2=Alarmrel 1",
                                         "text_almrel2 2=Alarmrel 2",
                                         "tstsig_visible 2= 1"}));
}

TEST_F(SetupSave, WritesAllItsKeysAsOneChange) {
    frmSetup::Text_sensor_loc_change(1, "Renamed");
    const int before = world().replacements;
    frmSetup::cmd_OK_click();
    EXPECT_EQ(world().replacements, before + 1);
    EXPECT_EQ(Ini::ini_read("location 2"), "Renamed");
}

TEST_F(SetupSave, AnEmptiedTypeCodeIsUnknownAtOnceAndStaysEmptyInTheFile) {
    frmSetup::scroll_max_commport_change(3);
    frmSetup::Text_type_code_change(0, "TX-6");
    frmSetup::Text_type_code_change(1, "");
    frmSetup::Text_type_code_change(2, "");
    frmSetup::Text_type_code_change(3, "");
    frmSetup::cmd_OK_click();
    EXPECT_EQ(sensor::state.channels[0].typecode, "TX-6");
    EXPECT_EQ(sensor::state.channels[1].typecode, "unknown");
    EXPECT_EQ(sensor::state.channels[2].typecode, "unknown");
    EXPECT_EQ(sensor::state.channels[3].typecode, "") << "not in use";
    EXPECT_NE(file("tyxo.ini").find("\r\ntypecode 2=\r\n"), std::string::npos);
    EXPECT_NE(log::log_header(1).find("<TYPECODE> unknown </TYPECODE>"), std::string::npos);
    restart();
    EXPECT_EQ(sensor::state.channels[1].typecode, "unknown");
}

TEST_F(SetupSave, AnOkThatComesBehindACancelStoresNothing) {
    frmSetup::Text_sensor_loc_change(0, "Renamed");
    const std::string before = file("tyxo.ini");
    frmSetup::cmd_cancel_click();
    frmSetup::cmd_OK_click();
    EXPECT_EQ(sensor::state.channels[0].location, "Engine 1");
    EXPECT_EQ(file("tyxo.ini"), before);
}

TEST_F(SetupSave, EnablesTheStartEntriesOfTheChannelsInUseAndNamesTheirRelays) {
    for (const i16 number : {i16{4}, i16{1}, i16{3}}) {
        mainfrm::setup_click();
        frmSetup::scroll_max_commport_change(number);
        for (i16 row = 0; row < number; ++row) {
            frmSetup::Text_alm1_change(row, "first " + std::to_string(number));
            frmSetup::Text_alm2_change(row, "second " + std::to_string(number));
        }
        frmSetup::cmd_OK_click();
        for (i16 row = 0; row < channel_count; ++row) {
            EXPECT_EQ(indicators.start_channel[row].Enabled, row < number);
            if (row >= number) continue;
            EXPECT_EQ(indicators.Lbl_alm1[row].Caption, "first " + std::to_string(number));
            EXPECT_EQ(indicators.lbl_alm2[row].Caption, "second " + std::to_string(number));
        }
    }
    EXPECT_EQ(indicators.Lbl_alm1[3].Caption, "first 4") << "a dropped channel keeps its labels";
}

TEST_F(SetupSave, DoesNotReachTheRestOfTheMainWindowBeforeTheNextStart) {
    frmSetup::scroll_max_commport_change(3);
    frmSetup::Text_sensor_loc_change(0, "Renamed");
    frmSetup::Text_sensor_loc_change(2, "New");
    frmSetup::cmd_OK_click();
    EXPECT_EQ(panels.Frame_sensor[0].Caption.find("Renamed"), std::string::npos);
    EXPECT_EQ(panels.Frame_sensor[2].Caption, "not installed");
    EXPECT_EQ(charts.chart[0].Title, "1: Engine 1");
    EXPECT_EQ(charts.chart[2].Title, "not installed");
    restart();
    EXPECT_NE(panels.Frame_sensor[0].Caption.find("Renamed"), std::string::npos);
    EXPECT_EQ(charts.chart[2].Title, "3: New");
}

TEST_F(SetupSave, LoweringTheNumberLeavesTheKeysOfTheDroppedChannelsInTheFile) {
    start(4);
    mainfrm::setup_click();
    frmSetup::scroll_max_commport_change(2);
    frmSetup::cmd_OK_click();
    EXPECT_EQ(sensor::state.max_sensors, 2);
    EXPECT_EQ(Ini::ini_read("max_sensors"), "2");
    EXPECT_EQ(Ini::ini_read("location 3"), "Engine 3");
    EXPECT_EQ(Ini::ini_read("location 4"), "Engine 4");
    EXPECT_EQ(Ini::ini_read("comport 4"), "4");
    EXPECT_EQ(Ini::ini_read("logpath 4"), "C:\\logs\\");
}

TEST_F(SetupSave, RaisingTheNumberAgainShowsEmptyRowsAndBringsTheOldValuesBackOnlyAfterARestart) {
    start(4);
    mainfrm::setup_click();
    frmSetup::scroll_max_commport_change(2);
    frmSetup::cmd_OK_click();
    mainfrm::setup_click();
    frmSetup::cmd_OK_click(); // rows 2 and 3 were empty: so are the channels now
    mainfrm::setup_click();
    frmSetup::scroll_max_commport_change(4);
    for (const row_box& box : row_boxes)
        EXPECT_EQ((dialog().*box.boxes)[3].Text, "") << box.name;
    EXPECT_EQ(dialog().comport_edit[3], 4) << "the working copy of the ports has no empty rows";
    frmSetup::cmd_cancel_click();

    Ini::ini_write("max_sensors", " 4");
    restart();
    mainfrm::setup_click();
    EXPECT_EQ(dialog().Text_sensor_loc[3].Text, "Engine 4");
    EXPECT_EQ(dialog().Text_logfile_path[3].Text, "C:\\logs\\");
}

TEST_F(SetupSave, RaisingTheNumberAgainWithOkStoresWhatTheRowsShow) {
    start(4);
    mainfrm::setup_click();
    frmSetup::scroll_max_commport_change(2);
    frmSetup::cmd_OK_click();
    mainfrm::setup_click();
    frmSetup::cmd_OK_click();
    mainfrm::setup_click();
    frmSetup::scroll_max_commport_change(4);
    frmSetup::cmd_OK_click();
    EXPECT_EQ(Ini::ini_read("location 4"), "");
    EXPECT_EQ(Ini::ini_read("comport 4"), "4");
}

TEST_F(SetupSave, WithoutAListOfPortsKeepsThePortsAndOverwritesNamesAndPathsWithTheEmptyBoxes) {
    start_without_list(2);
    settings.evtpath = "C:\\events\\";
    mainfrm::setup_click();
    frmSetup::cmd_OK_click();
    for (i16 row = 0; row < 2; ++row) {
        const std::string number = channel_number(row);
        EXPECT_EQ(sensor::state.comport[row], row + 1);
        EXPECT_EQ(Ini::ini_read("comport " + number), number);
        for (const row_box& box : row_boxes) {
            const bool typecode =
                box.value == &channel_rec::typecode; // has a name of its own when it is empty
            EXPECT_EQ(sensor::state.channels[row].*box.value, typecode ? "unknown" : "") << box.name;
            EXPECT_EQ(Ini::ini_read(std::string(box.stem) + number), "") << box.name;
        }
    }
    EXPECT_EQ(settings.evtpath, "C:\\events\\");
    EXPECT_EQ(sensor::state.max_sensors, 2);
}

TEST_F(SetupSave, DuringAMeasurementStoresWhatItShowsAndChangesNothing) {
    measure();
    mainfrm::setup_click();
    frmSetup::cmd_OK_click();
    EXPECT_EQ(sensor::state.max_sensors, 2);
    EXPECT_EQ(sensor::state.comport, (per_channel<i16>{{1, 2, 0, 0}}));
    EXPECT_EQ(sensor::state.channels[0].location, "Engine 1");
    EXPECT_TRUE(sensor::state.channel_running[0]);
    EXPECT_TRUE(indicators.start_channel[0].Enabled);
    EXPECT_EQ(Ini::ini_read("location 2"), "Engine 2");
}

TEST_F(SetupSave, OfAFileThatCannotBeWrittenTakesTheValuesAllTheSame) {
    world().unwritable.insert("tyxo.ini");
    const std::string before = file("tyxo.ini");
    frmSetup::Text_sensor_loc_change(0, "Renamed");
    EXPECT_NO_THROW(frmSetup::cmd_OK_click());
    EXPECT_EQ(sensor::state.channels[0].location, "Renamed");
    EXPECT_EQ(file("tyxo.ini"), before);
    EXPECT_TRUE(world().boxes.empty());
    EXPECT_FALSE(dialog().form.Visible);
}

TEST_F(SetupSave, AFirstSensorIsSetUpOnAnEmptySettingsFile) {
    start("", {"COM3"});
    mainfrm::setup_click();
    EXPECT_EQ(dialog().Text_num_sensors, "0");
    frmSetup::scroll_max_commport_change(2);
    frmSetup::scroll_max_commport_change(1);
    frmSetup::Select_com_click(0, 0);
    frmSetup::Text_sensor_loc_change(0, "Mill");
    frmSetup::Text_logfile_path_change(0, "C:\\logs\\");
    frmSetup::cmd_OK_click();
    EXPECT_TRUE(indicators.start_channel[0].Enabled);
    EXPECT_FALSE(indicators.start_channel[1].Enabled);
    restart();
    EXPECT_EQ(sensor::state.max_sensors, 1);
    EXPECT_EQ(sensor::state.comport[0], 3);
    start_logging(0);
    EXPECT_TRUE(exists("C:/logs/Mill/20260702Qu_Mill.xlg"));
}

// Nothing that is typed is checked; what the file system cannot take costs the log, without a word.

struct typed_row {
    std::string_view name;
    std::string location;
    std::string logpath;
    std::string log; ///< the file that comes into being; empty for none
};

class SetupTyped : public setup_world, public testing::WithParamInterface<typed_row> {};

TEST_P(SetupTyped, GoesThroughUncheckedToTheLog) {
    start(1);
    world().folders.insert("relative");
    mainfrm::setup_click();
    frmSetup::Text_sensor_loc_change(0, GetParam().location);
    frmSetup::Text_logfile_path_change(0, GetParam().logpath);
    frmSetup::cmd_OK_click();
    EXPECT_EQ(sensor::state.channels[0].location, GetParam().location);
    EXPECT_EQ(sensor::state.channels[0].logpath, GetParam().logpath);
    const text_lines lines = saved_lines();
    EXPECT_EQ(std::ranges::count(lines, "location 1=" + GetParam().location), 1) << file("tyxo.ini");
    EXPECT_EQ(std::ranges::count(lines, "logpath 1=" + GetParam().logpath), 1) << file("tyxo.ini");
    start_logging(0);
    feed(0, measured_body({.speed = 77}));
    EXPECT_EQ(sensor::state.channels[0].speed, 77);
    EXPECT_TRUE(world().boxes.empty());
    EXPECT_EQ(world().opened, GetParam().log.empty() ? text_lines{} : text_lines{GetParam().log});
}

const std::string long_name(200, 'x');
const std::string cut_name(69, 'x');

INSTANTIATE_TEST_SUITE_P(
    Texts, SetupTyped,
    testing::Values(
        typed_row{"Semicolon", "a;b", "C:\\logs\\", "C:/logs/a;b/20260702Qu_a;b.xlg"},
        typed_row{"Slash", "a/b", "C:\\logs\\", ""}, typed_row{"Backslash", "a\\b", "C:\\logs\\", ""},
        typed_row{"Umlauts", "M\xFChle \xC4\xD6", "C:\\logs\\",
                  "C:/logs/M\xFChle \xC4\xD6/20260702Qu_M\xFChle \xC4\xD6.xlg"},
        typed_row{"TwoHundredCharacters", long_name, "C:\\logs\\",
                  "C:/logs/" + cut_name + "/20260702Qu_" + cut_name + ".xlg"},
        typed_row{"Nothing", "", "C:\\logs\\", "C:/logs/20260702Qu_.xlg"},
        typed_row{"PathWithoutClosingSeparator", "Mill", "C:\\logs", "C:/logsMill/20260702Qu_Mill.xlg"},
        typed_row{"RelativePath", "Mill", "relative/", "relative/Mill/20260702Qu_Mill.xlg"},
        typed_row{"MissingFolder", "Mill", "Q:\\no such\\", ""},
        typed_row{"EmptyPath", "Mill", "", "Mill/20260702Qu_Mill.xlg"}, typed_row{"NothingAtAll", "", "", ""},
        typed_row{"LongPath", "Mill", "C:\\logs\\" + long_name + "\\",
                  "C:/logs/" + std::string(61, 'x') + "Mill/20260702Qu_Mill.xlg"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(SetupSave, AnEventPathWithoutClosingSeparatorGoesThroughToTheEventFile) {
    frmSetup::Opt_event_click(1);
    frmSetup::Text_evtlogfile_path_change("C:\\logs");
    frmSetup::cmd_OK_click();
    EXPECT_EQ(settings.evtpath, "C:\\logs");
    EXPECT_FALSE(exists("C:/logsTY_all_events.txt")) << "before the next start";
    restart();
    EXPECT_EQ(lines_of(file("C:/logsTY_all_events.txt")), text_lines{std::string(start_line)});
}

} // namespace
} // namespace tyxo
