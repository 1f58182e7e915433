// What takes effect at once in the setup dialog, and what waits for "OK".

#include "dialogs/setup_world.h"

namespace tyxo {
namespace {

using namespace simulation;

class SetupChanges : public setup_world {
  protected:
    void SetUp() override {
        start(2);
        mainfrm::setup_click();
    }

    static bool shown(i16 channel, std::size_t curve) {
        return charts.chart[channel].curves.at(curve).Visible;
    }
};

TEST_F(SetupChanges, ACheckBoxStoresItsKeyAtOnceAndShowsOrHidesItsTraceOnEveryConfiguredChart) {
    for (const trace_box& row : trace_boxes) {
        for (const i16 value : {i16{0}, i16{1}, i16{0}}) {
            row.click();
            EXPECT_EQ((dialog().*row.box).Value, value) << row.name;
            EXPECT_EQ(settings.*row.setting, value) << row.name;
            const std::string line = "\r\n" + std::string(row.key) + "= " + std::to_string(value) + "\r\n";
            EXPECT_NE(file("tyxo.ini").find(line), std::string::npos) << row.name;
            for (i16 channel = 0; channel < 2; ++channel) {
                for (std::size_t curve = 0; curve < 6; ++curve) {
                    EXPECT_EQ(shown(channel, curve), curve != row.curve || value == 1)
                        << row.name << " of " << channel << ", curve " << curve;
                }
            }
        }
        row.click();
    }
}

TEST_F(SetupChanges, ACheckBoxTouchesNoKeyButItsOwn) {
    for (const trace_box& row : trace_boxes) {
        start(2);
        mainfrm::setup_click();
        text_lines expected = saved_lines();
        for (std::string& line : expected) {
            if (line == std::string(row.key) + "=1") line = std::string(row.key) + "= 0";
        }
        row.click();
        EXPECT_EQ(saved_lines(), expected);
    }
}

TEST_F(SetupChanges, ATraceWhoseKeyIsAnotherNumberThanZeroStaysShown) {
    start(2, "xy_tha=1\r\nxy_tmv=7\r\nxy_theff=-1\r\nxy_theff_AC=0\r\n");
    mainfrm::setup_click();
    frmSetup::th_a_click();
    EXPECT_FALSE(shown(0, 0));
    EXPECT_TRUE(shown(0, 3));
    EXPECT_TRUE(shown(0, 4));
    EXPECT_FALSE(shown(0, 5));
}

TEST_F(SetupChanges, AChannelThatCameIntoUseAfterTheStartHasNoTracesToHide) {
    frmSetup::scroll_max_commport_change(4);
    frmSetup::cmd_OK_click();
    mainfrm::setup_click();
    frmSetup::th_eff_AC_click();
    EXPECT_FALSE(shown(0, 5));
    EXPECT_FALSE(shown(1, 5));
    EXPECT_TRUE(charts.chart[2].curves.empty());
}

TEST_F(SetupChanges, ADroppedChannelsChartIsLeftAlone) {
    frmSetup::scroll_max_commport_change(1);
    frmSetup::cmd_OK_click();
    mainfrm::setup_click();
    frmSetup::th_a_click();
    EXPECT_FALSE(shown(0, 0));
    EXPECT_TRUE(shown(1, 0));
}

TEST_F(SetupChanges, CancelAfterTogglingThAKeepsTheNewStateOfTheTraceAndOfTheSettingsFile) {
    frmSetup::th_a_click();
    frmSetup::cmd_cancel_click();
    EXPECT_FALSE(shown(0, 0));
    EXPECT_FALSE(shown(1, 0));
    EXPECT_EQ(Ini::ini_read("xy_tha"), "0");
    mainfrm::setup_click();
    EXPECT_EQ(dialog().th_a.Value, 0);
    EXPECT_EQ(dialog().TvmV.Value, 1);
    frmSetup::cmd_cancel_click();
    restart();
    EXPECT_FALSE(shown(0, 0));
    EXPECT_TRUE(shown(0, 3));
}

TEST_F(SetupChanges, TheTestSignalBoxIsTheChannelsSettingAtOnce) {
    const std::string before = file("tyxo.ini");
    for (const i16 value : {i16{1}, i16{0}, i16{1}}) {
        frmSetup::Check_tst_click(1);
        EXPECT_EQ(sensor::state.channels[1].tstsig_visible, value);
        EXPECT_EQ(dialog().Check_tst[1].Value, value);
        EXPECT_EQ(sensor::state.channels[0].tstsig_visible, 0);
    }
    EXPECT_EQ(file("tyxo.ini"), before) << "the key waits for OK";
}

TEST_F(SetupChanges, TheOptionsAreTheSettingsAtOnceAndTheEventFileWaitsForTheNextStart) {
    settings.eventfile_ena = 0;
    for (const std::size_t option : {1U, 0U, 1U}) {
        frmSetup::Opt_diffmode_click(option);
        EXPECT_EQ(settings.speedbar_mode, static_cast<i16>(option));
        EXPECT_EQ(dialog().Opt_diffmode, option);
        frmSetup::Opt_event_click(option);
        EXPECT_EQ(settings.eventfile_ena_edit, static_cast<i16>(option));
        EXPECT_EQ(dialog().Opt_event, option);
        EXPECT_EQ(settings.eventfile_ena, 0);
    }
}

TEST_F(SetupChanges, TheFolderOfARowIsTheChannelsAtOnceAndTheBoxShowsIt) {
    const std::string before = file("tyxo.ini");
    frmSetup::cmd_browse_path_click(1);
    EXPECT_EQ(sensor::state.channels[1].logpath, "C:\\logs\\") << "while the browser is up";
    choose_folder("/var/log");
    EXPECT_FALSE(frmbrowse::state.form.Visible);
    EXPECT_EQ(sensor::state.channels[1].logpath, "/var/log/");
    EXPECT_EQ(dialog().Text_logfile_path[1].Text, "/var/log/");
    EXPECT_EQ(sensor::state.channels[0].logpath, "C:\\logs\\");
    EXPECT_EQ(dialog().Text_logfile_path[0].Text, "C:\\logs\\");
    EXPECT_EQ(file("tyxo.ini"), before) << "the key waits for OK";
}

TEST_F(SetupChanges, TheFolderOfTheEventFileOnlyFillsItsBox) {
    settings.evtpath = "C:\\old\\";
    frmSetup::cmd_browse_evtpath_click();
    choose_folder("/var/log/");
    EXPECT_EQ(dialog().Text_evtlogfile_path.Text, "/var/log/");
    EXPECT_EQ(settings.evtpath, "C:\\old\\");
    frmSetup::cmd_OK_click();
    EXPECT_EQ(settings.evtpath, "/var/log/");
    EXPECT_EQ(Ini::ini_read("evtpath"), "/var/log/");
}

TEST_F(SetupChanges, ABrowserClosedWithoutAChoiceKeepsThePathThatStoodThere) {
    frmSetup::cmd_browse_path_click(0);
    frmbrowse::unload();
    EXPECT_EQ(sensor::state.channels[0].logpath, "C:\\logs\\");
    EXPECT_EQ(dialog().Text_logfile_path[0].Text, "C:\\logs\\");
    frmSetup::cmd_browse_evtpath_click();
    choose_folder("/events");
    frmSetup::cmd_browse_path_click(1);
    frmbrowse::unload();
    EXPECT_EQ(sensor::state.channels[1].logpath, "C:\\logs\\") << "what was chosen for another row";
    frmSetup::cmd_browse_evtpath_click();
    frmbrowse::unload();
    EXPECT_EQ(dialog().Text_evtlogfile_path.Text, "/events/");
}

TEST_F(SetupChanges, CancelUndoesNothingThatTookEffectAtOnceAndTakesNothingElse) {
    frmSetup::Check_tst_click(0);
    frmSetup::cmd_browse_path_click(0);
    choose_folder("/chosen");
    frmSetup::Opt_diffmode_click(1);
    frmSetup::Opt_event_click(1);
    for (const trace_box& row : trace_boxes)
        row.click();
    frmSetup::scroll_max_commport_change(3);
    for (const row_box& box : row_boxes)
        box.change(0, "typed");
    frmSetup::Text_evtlogfile_path_change("typed");
    frmSetup::Select_com_click(0, 4);
    const std::string before = file("tyxo.ini");
    frmSetup::cmd_cancel_click();

    EXPECT_EQ(sensor::state.channels[0].tstsig_visible, 1);
    EXPECT_EQ(sensor::state.channels[0].logpath, "/chosen/");
    EXPECT_EQ(settings.speedbar_mode, 1);
    EXPECT_EQ(settings.eventfile_ena_edit, 1);
    for (const trace_box& row : trace_boxes) {
        EXPECT_EQ(settings.*row.setting, 0) << row.name;
        EXPECT_EQ(Ini::ini_read(row.key), "0") << row.name;
        EXPECT_FALSE(shown(1, row.curve)) << row.name;
    }

    EXPECT_EQ(file("tyxo.ini"), before);
    EXPECT_EQ(sensor::state.max_sensors, 2);
    EXPECT_EQ(sensor::state.comport[0], 1);
    EXPECT_EQ(sensor::state.channels[0].location, "Engine 1");
    EXPECT_EQ(sensor::state.channels[0].typecode, "unknown");
    EXPECT_EQ(sensor::state.channels[0].text_almrel1, "Alarmrel 1");
    EXPECT_EQ(sensor::state.channels[0].text_almrel2, "Alarmrel 2");
    EXPECT_EQ(settings.evtpath, "");

    mainfrm::setup_click();
    EXPECT_EQ(dialog().Check_tst[0].Value, 1);
    EXPECT_EQ(dialog().Text_logfile_path[0].Text, "/chosen/");
    EXPECT_EQ(dialog().Opt_diffmode, 1U);
    EXPECT_EQ(dialog().Opt_event, 1U);
    EXPECT_EQ(dialog().th_eff.Value, 0);
}

TEST_F(SetupChanges, APortIsTheNumberBehindTheFirstThreeCharactersOfItsEntry) {
    const std::vector<i16> numbers{1, 2, 3, 4, 12};
    for (i16 row = 0; row < 2; ++row) {
        for (std::size_t entry = 0; entry < numbers.size(); ++entry) {
            frmSetup::Select_com_click(row, entry);
            EXPECT_EQ(dialog().comport_edit[row], numbers[entry]);
            EXPECT_EQ(dialog().Select_com[row].ListIndex, static_cast<i32>(entry));
        }
    }
    EXPECT_EQ(sensor::state.comport, (per_channel<i16>{{1, 2, 0, 0}})) << "until OK";
    frmSetup::cmd_OK_click();
    EXPECT_EQ(sensor::state.comport, (per_channel<i16>{{12, 12, 0, 0}}));
}

TEST_F(SetupChanges, TheScrollBarSetsTheNumberAndTheRows) {
    for (const i16 number : {i16{4}, i16{3}, i16{1}, i16{2}}) {
        frmSetup::scroll_max_commport_change(number);
        EXPECT_EQ(dialog().scroll_max_commport.Value, number);
        EXPECT_EQ(dialog().Text_num_sensors, std::to_string(number));
        EXPECT_EQ(dialog().num_sensors_edit, number);
        for (i16 row = 0; row < channel_count; ++row) {
            EXPECT_EQ(dialog().Text_sensor_loc[row].Enabled, row < number);
            EXPECT_EQ(dialog().Select_com[row].List.size(), row < number ? 5U : 0U);
        }
        EXPECT_EQ(sensor::state.max_sensors, 2) << "until OK";
        EXPECT_EQ(dialog().SSTab.TabCaption[2], "2 : Engine 2") << "the tabs do not follow";
        EXPECT_EQ(dialog().SSTab.TabCaption[3], "No sensor");
    }
}

TEST_F(SetupChanges, TheScrollBarStaysInItsRange) {
    frmSetup::scroll_max_commport_change(5);
    EXPECT_EQ(dialog().num_sensors_edit, 4);
    frmSetup::scroll_max_commport_change(0);
    EXPECT_EQ(dialog().num_sensors_edit, 1);
    EXPECT_EQ(dialog().Text_num_sensors, "1");
}

TEST_F(SetupChanges, TheScrollBarShowsTheProgramsValuesAgainInTheRowsInUseAndLeavesTheOthersTexts) {
    for (const row_box& box : row_boxes) {
        box.change(0, "typed");
        box.change(1, "typed too");
    }
    frmSetup::Text_evtlogfile_path_change("typed");
    frmSetup::Select_com_click(0, 4);
    frmSetup::Check_tst_click(1);
    frmSetup::scroll_max_commport_change(1);
    for (const row_box& box : row_boxes) {
        EXPECT_EQ((dialog().*box.boxes)[0].Text, sensor::state.channels[0].*box.value) << box.name;
        EXPECT_EQ((dialog().*box.boxes)[1].Text, "typed too") << box.name;
    }
    EXPECT_EQ(dialog().Check_tst[1].Value, 1);
    EXPECT_EQ(dialog().Text_evtlogfile_path.Text, "");
    EXPECT_EQ(dialog().comport_edit[0], 1);
}

TEST_F(SetupChanges, WhatDoesNotExistFailsAndChangesNothing) {
    const frmSetup::window before = dialog();
    for (const i16 row : {i16{-1}, channel_count}) {
        for (const row_box& box : row_boxes)
            EXPECT_THROW(box.change(row, "x"), failure) << box.name;
        EXPECT_THROW(frmSetup::Select_com_click(row, 0), failure);
        EXPECT_THROW(frmSetup::Check_tst_click(row), failure);
        EXPECT_THROW(frmSetup::cmd_browse_path_click(row), failure);
        EXPECT_THROW(frmSetup::write_parameter(row), failure);
    }
    EXPECT_THROW(frmSetup::Select_com_click(0, 5), failure);
    EXPECT_THROW(frmSetup::Select_com_click(2, 0), failure)
        << "the list of a row that is not in use is empty";
    EXPECT_THROW(frmSetup::Opt_diffmode_click(2), failure);
    EXPECT_THROW(frmSetup::Opt_event_click(2), failure);
    EXPECT_EQ(dialog(), before);
    EXPECT_FALSE(frmbrowse::state.form.Visible);
}

TEST_F(SetupChanges, OnlyTheOneBoxTakesWhatIsTyped) {
    for (const row_box& box : row_boxes) {
        for (i16 row = 0; row < channel_count; ++row) {
            frmSetup::window expected = dialog();
            (expected.*box.boxes)[row].Text = "typed";
            box.change(row, "typed");
            EXPECT_EQ(dialog(), expected) << box.name << row;
        }
    }
}

} // namespace
} // namespace tyxo
