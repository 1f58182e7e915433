// What the setup dialog shows when it opens.

#include "dialogs/setup_world.h"

namespace tyxo {
namespace {

using namespace simulation;

using port_texts = std::vector<std::string>;

class SetupOpen : public setup_world {
  protected:
    void SetUp() override { start(2); }
};

TEST_F(SetupOpen, BearsItsCaptions) {
    EXPECT_EQ(dialog().form.Caption, "Setup");
    EXPECT_EQ(dialog().SSTab.TabCaption,
              (std::array<std::string, 5>{"TY Settings", "Tab 1", "Tab 2", "Tab 3", "Tab 4"}));
    EXPECT_EQ(dialog().frame_comport.Caption, "Settings");
    EXPECT_EQ(dialog().Frame_events.Caption, "All events logfile");
    EXPECT_EQ(dialog().XY_Chart.Caption, "&XY-Chart");
    EXPECT_EQ(dialog().cmd_OK.Caption, "OK");
    EXPECT_EQ(dialog().cmd_cancel.Caption, "Cancel");
    EXPECT_EQ(dialog().cmd_Refresh.Caption, "Refresh");
    EXPECT_EQ(dialog().cmd_browse_evtpath.Caption, "Browse");
    for (const Command& button : dialog().cmd_browse_path)
        EXPECT_EQ(button.Caption, "Browse");
}

TEST_F(SetupOpen, IsShownByTheMenuAndClosedByCancelAndOk) {
    EXPECT_FALSE(dialog().form.Visible);
    for (const auto close : {frmSetup::cmd_cancel_click, frmSetup::cmd_OK_click}) {
        mainfrm::setup_click();
        EXPECT_TRUE(dialog().form.Visible);
        EXPECT_TRUE(dialog().form.Loaded);
        close();
        EXPECT_FALSE(dialog().form.Visible);
        EXPECT_FALSE(dialog().form.Loaded);
    }
}

TEST_F(SetupOpen, APortThatWasPluggedInLaterIsListedAfterTheNextStart) {
    world().port_names = {{"", "COM1"}, {"", "COM9"}};
    for (int time = 0; time < 2; ++time) {
        mainfrm::setup_click();
        EXPECT_EQ(dialog().Select_com[0].List, (port_texts{"COM1", "COM2", "COM3", "COM4", "COM12"}));
        frmSetup::cmd_OK_click();
    }
    start(file("tyxo.ini"), {"COM9", "COM1"});
    mainfrm::setup_click();
    EXPECT_EQ(dialog().Select_com[0].List, (port_texts{"COM1", "COM9"}));
}

TEST_F(SetupOpen, ShowsTheValuesOfEachChannelInItsRow) {
    for (i16 row = 0; row < 2; ++row) {
        for (const row_box& box : row_boxes)
            sensor::state.channels[row].*box.value = std::string(box.name) + " of " + channel_number(row);
        sensor::state.channels[row].tstsig_visible = row;
    }
    mainfrm::setup_click();
    for (i16 row = 0; row < 2; ++row) {
        for (const row_box& box : row_boxes)
            EXPECT_EQ((dialog().*box.boxes)[row].Text, std::string(box.name) + " of " + channel_number(row));
        EXPECT_EQ(dialog().Check_tst[row].Value, row);
    }
}

TEST_F(SetupOpen, ListsThePortsInAscendingOrderAndSelectsTheChannels) {
    sensor::state.comport = {{2, 12, 3, 4}};
    mainfrm::setup_click();
    const port_texts ports{"COM1", "COM2", "COM3", "COM4", "COM12"};
    EXPECT_EQ(dialog().Select_com[0].List, ports);
    EXPECT_EQ(dialog().Select_com[1].List, ports);
    EXPECT_EQ(dialog().Select_com[0].ListIndex, 1);
    EXPECT_EQ(dialog().Select_com[1].ListIndex, 4);
    EXPECT_EQ(dialog().comport_edit, (per_channel<i16>{{2, 12, 3, 4}}));
}

TEST_F(SetupOpen, APortThatIsNoLongerListedLeavesTheSelectorEmptyAndOkKeepsItsNumber) {
    sensor::state.comport[0] = 77;
    mainfrm::setup_click();
    EXPECT_EQ(dialog().Select_com[0].ListIndex, -1);
    EXPECT_EQ(dialog().Select_com[0].List.size(), 5U);
    frmSetup::cmd_OK_click();
    EXPECT_EQ(sensor::state.comport[0], 77);
    EXPECT_EQ(Ini::ini_read("comport 1"), "77");
}

TEST_F(SetupOpen, OnAMachineWithoutPortsTheSelectorsAreEmptyAndTheRowsFilled) {
    start(logging_settings(2), {});
    mainfrm::setup_click();
    EXPECT_EQ(dialog().Select_com[0].List, port_texts{});
    EXPECT_EQ(dialog().Select_com[0].ListIndex, -1);
    EXPECT_EQ(dialog().Text_sensor_loc[0].Text, "Engine 1");
    EXPECT_EQ(dialog().Text_sensor_loc[1].Text, "Engine 2");
    frmSetup::cmd_OK_click();
    EXPECT_EQ(sensor::state.comport[1], 2);
    EXPECT_EQ(sensor::state.channels[1].location, "Engine 2");
}

TEST_F(SetupOpen, WithoutAListOfPortsTheRowsHoldTheirDesignAndTheRestIsFilled) {
    start_without_list(2);
    settings.evtpath = "C:\\events\\";
    settings.speedbar_mode = 1;
    sensor::state.comport = {{5, 6, 7, 8}};
    mainfrm::setup_click();
    const frmSetup::window design;
    for (i16 row = 0; row < 2; ++row) {
        EXPECT_EQ(dialog().Select_com[row], design.Select_com[row]);
        for (const row_box& box : row_boxes)
            EXPECT_EQ((dialog().*box.boxes)[row], (design.*box.boxes)[row]) << box.name;
        EXPECT_EQ(dialog().Check_tst[row], design.Check_tst[row]);
    }
    expect_row_enabled(2, false);
    expect_row_enabled(3, false);
    EXPECT_EQ(dialog().comport_edit, (per_channel<i16>{{5, 6, 7, 8}}));
    EXPECT_EQ(dialog().Opt_diffmode, 1U);
    EXPECT_EQ(dialog().Text_evtlogfile_path.Text, "C:\\events\\");
    EXPECT_EQ(dialog().Text_num_sensors, "2");
    EXPECT_EQ(dialog().SSTab.TabCaption[1], "1 : Engine 1");
}

TEST_F(SetupOpen, WithoutAListOfPortsRefreshKeepsWhatTheRowsHold) {
    start_without_list(2);
    mainfrm::setup_click();
    frmSetup::Text_sensor_loc_change(0, "typed");
    frmSetup::Check_tst_click(1);
    frmSetup::cmd_Refresh_click();
    EXPECT_EQ(dialog().Text_sensor_loc[0].Text, "typed");
    EXPECT_EQ(dialog().Check_tst[1].Value, 1);
}

TEST_F(SetupOpen, WithTwoSensorsRowsTwoAndThreeAreDisabledAndTheirTabsReadNoSensor) {
    mainfrm::setup_click();
    expect_row_enabled(0, true);
    expect_row_enabled(1, true);
    expect_row_enabled(2, false);
    expect_row_enabled(3, false);
    EXPECT_EQ(dialog().Select_com[2].List, port_texts{});
    EXPECT_EQ(dialog().Select_com[2].ListIndex, -1);
    EXPECT_EQ(dialog().SSTab.TabCaption,
              (std::array<std::string, 5>{"TY Settings", "1 : Engine 1", "2 : Engine 2", "No sensor",
                                          "No sensor"}));
    EXPECT_FALSE(dialog().SSTab.TabEnabled[3]);
    EXPECT_FALSE(dialog().SSTab.TabEnabled[4]);
    EXPECT_EQ(dialog().Text_num_sensors, "2");
    EXPECT_EQ(dialog().num_sensors_edit, 2);
}

TEST_F(SetupOpen, FromNoSensorToFourAsManyRowsAndTabsAreInUse) {
    for (i16 used = 0; used <= channel_count; ++used) {
        start(used);
        for (channel_rec& rec : sensor::state.channels)
            rec.status_valid = true;
        mainfrm::setup_click();
        EXPECT_TRUE(dialog().SSTab.TabEnabled[0]);
        EXPECT_EQ(dialog().Text_num_sensors, std::to_string(used));
        EXPECT_EQ(dialog().scroll_max_commport.Value, 1) << "whatever number is shown";
        EXPECT_TRUE(dialog().scroll_max_commport.Enabled);
        for (i16 row = 0; row < channel_count; ++row) {
            expect_row_enabled(row, row < used);
            EXPECT_EQ(dialog().SSTab.TabEnabled[static_cast<std::size_t>(row) + 1], row < used);
            const std::string location = row < used ? "Engine " + channel_number(row) : "";
            EXPECT_EQ(dialog().sensors[row].Frame_sensor.Caption, location);
        }
    }
}

TEST_F(SetupOpen, AnEvaluatorThatHasNotYetSentAStatusFrameHasItsTabDisabled) {
    mainfrm::start_channel_click(0);
    mainfrm::start_channel_click(1);
    feed(1, parameter_body({}));
    mainfrm::setup_click();
    EXPECT_FALSE(dialog().SSTab.TabEnabled[1]);
    EXPECT_FALSE(dialog().SSTab.TabEnabled[2]);
    feed(1, status_body());
    EXPECT_FALSE(dialog().SSTab.TabEnabled[2]) << "before a refresh";
    frmSetup::cmd_Refresh_click();
    EXPECT_FALSE(dialog().SSTab.TabEnabled[1]);
    EXPECT_TRUE(dialog().SSTab.TabEnabled[2]);
}

TEST_F(SetupOpen, TheOptionsStandByTheirValuesAndOthersSelectNeither) {
    struct option_row {
        i16 value;
        std::optional<std::size_t> option;
    };
    for (const option_row& row : {option_row{0, 0}, {1, 1}, {2, {}}, {-1, {}}}) {
        settings.speedbar_mode = row.value;
        settings.eventfile_ena_edit = 0;
        mainfrm::setup_click();
        EXPECT_EQ(dialog().Opt_diffmode, row.option) << row.value;
        EXPECT_EQ(dialog().Opt_event, 0U);
        settings.speedbar_mode = 1;
        settings.eventfile_ena_edit = row.value;
        frmSetup::cmd_Refresh_click();
        EXPECT_EQ(dialog().Opt_event, row.option) << row.value;
        EXPECT_EQ(dialog().Opt_diffmode, 1U);
    }
}

TEST_F(SetupOpen, TheEventOptionShowsTheEditableCopyNotTheOneThatRuns) {
    settings.eventfile_ena = 1;
    settings.eventfile_ena_edit = 0;
    mainfrm::setup_click();
    EXPECT_EQ(dialog().Opt_event, 0U);
}

TEST_F(SetupOpen, ACheckBoxIsClearedByAZeroOnly) {
    for (const trace_box& row : trace_boxes) {
        for (const i16 value : {i16{0}, i16{1}, i16{7}, i16{-1}}) {
            start(2);
            settings.*row.setting = value;
            const std::string before = file("tyxo.ini");
            mainfrm::setup_click();
            for (const trace_box& other : trace_boxes)
                EXPECT_EQ((dialog().*other.box).Value, &other == &row && value == 0 ? 0 : 1) << other.name;
            EXPECT_EQ(settings.*row.setting, value) << "opening changes nothing";
            EXPECT_EQ(file("tyxo.ini"), before);
        }
    }
}

TEST_F(SetupOpen, ATestSignalSettingOfAnyNumberButZeroIsCheckedAndStaysWhatItIs) {
    sensor::state.channels[0].tstsig_visible = 5;
    sensor::state.channels[1].tstsig_visible = -1;
    mainfrm::setup_click();
    EXPECT_EQ(dialog().Check_tst[0].Value, 1);
    EXPECT_EQ(dialog().Check_tst[1].Value, 1);
    frmSetup::cmd_OK_click();
    EXPECT_EQ(sensor::state.channels[0].tstsig_visible, 5);
    EXPECT_EQ(Ini::ini_read("tstsig_visible 2"), "-1");
}

TEST_F(SetupOpen, EachOpeningBeginsWithTheDesign) {
    mainfrm::setup_click();
    frmSetup::scroll_max_commport_change(4);
    frmSetup::Text_sensor_loc_change(3, "left over");
    frmSetup::SSTab_click(0);
    frmSetup::cmd_cancel_click();
    mainfrm::setup_click();
    EXPECT_EQ(dialog().scroll_max_commport.Value, 1);
    EXPECT_EQ(dialog().num_sensors_edit, 2);
    EXPECT_EQ(dialog().Text_sensor_loc[3].Text, "");
    EXPECT_FALSE(dialog().Text_sensor_loc[3].Enabled);
}

TEST_F(SetupOpen, RefreshShowsTheProgramsValuesAgain) {
    mainfrm::setup_click();
    frmSetup::Text_sensor_loc_change(0, "typed");
    frmSetup::Text_evtlogfile_path_change("typed");
    frmSetup::Select_com_click(0, 4);
    frmSetup::scroll_max_commport_change(3);
    sensor::state.channels[1].location = "Renamed";
    frmSetup::cmd_Refresh_click();
    EXPECT_EQ(dialog().Text_sensor_loc[0].Text, "Engine 1");
    EXPECT_EQ(dialog().Text_evtlogfile_path.Text, "");
    EXPECT_EQ(dialog().comport_edit[0], 1);
    EXPECT_EQ(dialog().Select_com[0].ListIndex, 0);
    EXPECT_EQ(dialog().num_sensors_edit, 2);
    EXPECT_EQ(dialog().Text_num_sensors, "2");
    EXPECT_EQ(dialog().scroll_max_commport.Value, 3) << "it is not set from the number";
    EXPECT_EQ(dialog().SSTab.TabCaption[2], "2 : Renamed");
    EXPECT_EQ(dialog().sensors[1].Frame_sensor.Caption, "Renamed");
    expect_row_enabled(2, false);
}

TEST_F(SetupOpen, ATabCanBeChosenWhenItIsEnabled) {
    sensor::state.channels[1].status_valid = true;
    mainfrm::setup_click();
    frmSetup::SSTab_click(2);
    EXPECT_EQ(dialog().SSTab.Tab, 2);
    frmSetup::SSTab_click(1);
    EXPECT_EQ(dialog().SSTab.Tab, 2);
    frmSetup::SSTab_click(0);
    EXPECT_EQ(dialog().SSTab.Tab, 0);
    EXPECT_THROW(frmSetup::SSTab_click(5), failure);
    EXPECT_THROW(frmSetup::SSTab_click(-1), failure);
}

} // namespace
} // namespace tyxo
