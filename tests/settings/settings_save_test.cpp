// What the setup dialog stores.

#include "app/mainfrm.h"
#include "link/channel_rec.h"
#include "settings/ini.h"
#include "settings/settings.h"
#include "settings/settings_lines.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

class SettingsSave : public testing::Test {
  protected:
    void SetUp() override { fresh_world(); }
};

void fill_settings(i16 used) {
    sensor::state.upd_periode = 500;
    sensor::state.cmd_periode = -70001;
    sensor::state.max_sensors = used;
    settings.speedbar_mode = 1;
    settings.eventfile_ena = 7;
    settings.eventfile_ena_edit = 0;
    settings.evtpath = "C:\\events\\";
    settings.autostart = true;
    for (i16 channel = 0; channel < used; ++channel) {
        const std::string number = std::to_string(channel + 1);
        sensor::state.comport[channel] = static_cast<i16>(10 + channel);
        sensor::state.channels[channel].location = "Engine " + number;
        sensor::state.channels[channel].typecode = "T" + number;
        sensor::state.channels[channel].logpath = "C:\\logs\\";
        sensor::state.channels[channel].text_almrel1 = "Relay A" + number;
        sensor::state.channels[channel].text_almrel2 = "Relay B" + number;
        sensor::state.channels[channel].tstsig_visible = channel;
        sensor::state.channels[channel].th_dig_val = 1;
    }
}

constexpr std::string_view saved_text = "[tyxo]\r\n"
                                        "upd_periode= 500\r\n"
                                        "cmd_periode=-70001\r\n"
                                        "max_sensors= 2\r\n"
                                        "speedbar_mode= 1\r\n"
                                        "eventfile_ena= 0\r\n"
                                        "evtpath=C:\\events\\\r\n"
                                        "autostart=1\r\n"
                                        "comport 1= 10\r\n"
                                        "location 1=Engine 1\r\n"
                                        "typecode 1=T1\r\n"
                                        "logpath 1=C:\\logs\\\r\n"
                                        "text_almrel1 1=Relay A1\r\n"
                                        "text_almrel2 1=Relay B1\r\n"
                                        "tstsig_visible 1= 0\r\n"
                                        "comport 2= 11\r\n"
                                        "location 2=Engine 2\r\n"
                                        "typecode 2=T2\r\n"
                                        "logpath 2=C:\\logs\\\r\n"
                                        "text_almrel1 2=Relay A2\r\n"
                                        "text_almrel2 2=Relay B2\r\n"
                                        "tstsig_visible 2= 1\r\n";

TEST_F(SettingsSave, WritesTheSetupKeysInOrderAndToTheByte) {
    fill_settings(2);
    Ini::var_save();
    EXPECT_EQ(file("tyxo.ini"), saved_text);
}

TEST_F(SettingsSave, SavingAgainChangesNothing) {
    fill_settings(2);
    Ini::var_save();
    Ini::var_save();
    EXPECT_EQ(file("tyxo.ini"), saved_text);
}

TEST_F(SettingsSave, KeysOfOtherDialogsAreLeftAlone) {
    const std::string others = "passwd=abc\r\nscale_polar_a= 2.5\r\nlog_mode= 1\r\nxy_tmv= 1\r\n"
                               "adc_offset=479\r\nth_dig_val 1= 0\r\nIPPort= 502\r\n";
    put_file("tyxo.ini", "[tyxo]\r\n" + others);
    fill_settings(2);
    settings.passwd = "changed";
    settings.log_mode = 9;
    settings.IPport = 1;
    Ini::var_save();
    EXPECT_EQ(file("tyxo.ini"), "[tyxo]\r\n" + others + std::string(saved_text.substr(8)));
}

TEST_F(SettingsSave, AutostartIsWrittenAsOneOrNought) {
    settings.autostart = true;
    Ini::var_save();
    EXPECT_NE(file("tyxo.ini").find("\r\nautostart=1\r\n"), std::string::npos);
    settings.autostart = false;
    Ini::var_save();
    EXPECT_NE(file("tyxo.ini").find("\r\nautostart=0\r\n"), std::string::npos);
}

TEST_F(SettingsSave, ARemovedChannelKeepsItsKeys) {
    fill_settings(2);
    Ini::var_save();
    sensor::state.max_sensors = 1;
    sensor::state.channels[1].location = "must not be written";
    Ini::var_save();
    EXPECT_EQ(Ini::ini_read("max_sensors"), "1");
    EXPECT_EQ(Ini::ini_read("location 2"), "Engine 2");
    EXPECT_EQ(Ini::ini_read("comport 2"), "11");
    std::string expected(saved_text);
    expected.replace(expected.find("max_sensors= 2"), 14, "max_sensors= 1");
    EXPECT_EQ(file("tyxo.ini"), expected);
}

TEST_F(SettingsSave, TheEventFileSwitchIsSavedFromItsEditableCopy) {
    put_settings("eventfile_ena=1\n");
    mainfrm::load_settings();
    EXPECT_EQ(settings.eventfile_ena, 1);
    EXPECT_EQ(settings.eventfile_ena_edit, 1);
    settings.eventfile_ena_edit = 0;
    Ini::var_save();
    EXPECT_EQ(settings.eventfile_ena, 1) << "this run goes on as it began";
    EXPECT_EQ(Ini::ini_read("eventfile_ena"), "0");
    mainfrm::load_settings();
    EXPECT_EQ(settings.eventfile_ena, 0);
}

TEST_F(SettingsSave, ValuesSurviveASaveWithoutAChangeOfMeaning) {
    put_settings("upd_periode=100\ncmd_periode=12\nmax_sensors=2\nspeedbar_mode=0\neventfile_ena=1\n"
                 "evtpath=C:\\e\\\nautostart=1.0\ncomport 1=3\nlocation 1=\" padded \"\ntypecode 1=\n"
                 "logpath 1=C:\\l\\\ntext_almrel1 1=\ntext_almrel2 1=b\ntstsig_visible 1=-1\n"
                 "comport 2=4\nlocation 2=M\xFChle; 2\n");
    mainfrm::load_settings();
    sensor::state.channels[0].location = "Engine 1";
    Ini::var_save();
    const std::string saved = file("tyxo.ini");
    EXPECT_NE(saved.find("upd_periode= 100\r\n"), std::string::npos) << "a number gains its leading blank";

    fresh_world();
    put_file("tyxo.ini", saved);
    mainfrm::load_settings();
    EXPECT_EQ(sensor::state.upd_periode, 100);
    EXPECT_EQ(sensor::state.cmd_periode, 12);
    EXPECT_EQ(sensor::state.max_sensors, 2);
    EXPECT_EQ(settings.speedbar_mode, 0);
    EXPECT_EQ(settings.eventfile_ena, 1);
    EXPECT_EQ(settings.evtpath, "C:\\e\\");
    EXPECT_TRUE(settings.autostart);
    EXPECT_EQ(sensor::state.comport[0], 3);
    EXPECT_EQ(sensor::state.channels[0].location, "Engine 1");
    EXPECT_EQ(sensor::state.channels[0].typecode, "unknown");
    EXPECT_EQ(sensor::state.channels[0].logpath, "C:\\l\\");
    EXPECT_EQ(sensor::state.channels[0].text_almrel1, "Alarmrel 1");
    EXPECT_EQ(sensor::state.channels[0].text_almrel2, "b");
    EXPECT_EQ(sensor::state.channels[0].tstsig_visible, -1);
    EXPECT_EQ(sensor::state.comport[1], 4);
    EXPECT_EQ(sensor::state.channels[1].location, "M\xFChle; 2");
    Ini::var_save();
    EXPECT_EQ(file("tyxo.ini"), saved) << "a second round changes nothing";
}

TEST_F(SettingsSave, ASaveOnAFullDiskLeavesWholeLines) {
    fill_settings(2);
    for (std::size_t space = 0; space < 3000; space += 97) {
        world().files.clear();
        put_settings("upd_periode= 250\n");
        world().disk_space = space;
        Ini::var_save();
        world().disk_space.reset();
        const std::string left = file("tyxo.ini");
        EXPECT_TRUE(left.starts_with("[tyxo]\r\nupd_periode= ")) << space;
        EXPECT_TRUE(left.ends_with("\r\n")) << space;
        EXPECT_TRUE(left.size() <= saved_text.size()) << space;
    }
}

TEST_F(SettingsSave, WithoutChannelsOnlyGlobalKeysAreSaved) {
    fill_settings(0);
    Ini::var_save();
    const std::string_view global = saved_text.substr(0, saved_text.find("comport 1"));
    std::string expected(global);
    expected.replace(expected.find("max_sensors= 2"), 14, "max_sensors= 0");
    EXPECT_EQ(file("tyxo.ini"), expected);
}

} // namespace
} // namespace tyxo
