// The options of the gateway's window: check boxes, the view and the speed.

#include "gateway/connection.h"
#include "gateway/setup_tcp.h"
#include "link/main_timers.h"
#include "settings/ini.h"
#include "settings/settings.h"
#include "settings/settings_lines.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

class SetupTcpOptions : public SetupTcp {};

TEST_F(SetupTcpOptions, SetsTheCheckBoxesOfItsSettings) {
    for (int on = 0; on < 16; ++on) {
        form() = {};
        settings.IPAutoC = static_cast<u8>(on & 1);
        settings.IPenaTRS = static_cast<u8>((on >> 1) & 1);
        settings.IPpolar = static_cast<i16>((on >> 2) & 1);
        settings.IPsysstat = static_cast<i16>((on >> 3) & 1);
        mainfrm::setup_tcp_click();
        EXPECT_EQ(form().Check1, settings.IPAutoC);
        EXPECT_EQ(form().Check2, settings.IPenaTRS);
        EXPECT_EQ(form().Check3, settings.IPpolar);
        EXPECT_EQ(form().Check4, settings.IPsysstat);
        EXPECT_EQ(form().IP_Test_Frame.Enabled, on < 2) << on;
        EXPECT_EQ(form().IP_Test_Frame.Caption, on < 2 ? manual : automatic) << on;
    }
}

TEST_F(SetupTcpOptions, OnlyTheNumber1SwitchesAnOptionOn) {
    settings.IPAutoC = settings.IPenaTRS = 2;
    settings.IPpolar = -1;
    settings.IPsysstat = 7;
    mainfrm::setup_tcp_click();
    EXPECT_EQ(form().Check1 + form().Check2 + form().Check3 + form().Check4, 0);
    EXPECT_TRUE(form().IP_Test_Frame.Enabled);
    EXPECT_EQ(settings.IPpolar, -1);
}

TEST_F(SetupTcpOptions, AnAutomaticBlockDisablesTheManualCommands) {
    mainfrm::setup_tcp_click();
    for (const auto& click :
         {FrmSetupTCP::Check2_click, FrmSetupTCP::Check3_click, FrmSetupTCP::Check4_click}) {
        click();
        EXPECT_FALSE(form().IP_Test_Frame.Enabled);
        EXPECT_EQ(form().IP_Test_Frame.Caption, automatic);
        click();
        EXPECT_TRUE(form().IP_Test_Frame.Enabled);
        EXPECT_EQ(form().IP_Test_Frame.Caption, manual);
    }
    FrmSetupTCP::Check2_click();
    FrmSetupTCP::Check4_click();
    FrmSetupTCP::Check2_click();
    EXPECT_FALSE(form().IP_Test_Frame.Enabled) << "one block is still sent";
    FrmSetupTCP::Check1_click();
    FrmSetupTCP::Check4_click();
    EXPECT_TRUE(form().IP_Test_Frame.Enabled) << "the connection alone is no block";
}

TEST_F(SetupTcpOptions, CheckBoxesChangeTheirOwnSettingAndStoreNothing) {
    mainfrm::setup_tcp_click();
    const auto values = [] {
        return std::vector<int>{settings.IPAutoC, settings.IPenaTRS, settings.IPpolar, settings.IPsysstat};
    };
    FrmSetupTCP::Check1_click();
    EXPECT_EQ(values(), (std::vector<int>{1, 0, 0, 0}));
    FrmSetupTCP::Check2_click();
    EXPECT_EQ(values(), (std::vector<int>{1, 1, 0, 0}));
    FrmSetupTCP::Check3_click();
    EXPECT_EQ(values(), (std::vector<int>{1, 1, 1, 0}));
    FrmSetupTCP::Check4_click();
    EXPECT_EQ(values(), (std::vector<int>{1, 1, 1, 1}));
    EXPECT_EQ(form().Check1 + form().Check2 + form().Check3 + form().Check4, 4);
    FrmSetupTCP::Check1_click();
    EXPECT_EQ(values(), (std::vector<int>{0, 1, 1, 1}));
    EXPECT_EQ(form().Check1, 0);
    EXPECT_EQ(file(settings_file), "");
}

TEST_F(SetupTcpOptions, TheAutomaticConnectionStartsTheCycleAndNeverStopsIt) {
    mainfrm::setup_tcp_click();
    mainfrm::timers.Timer_TCP.Interval(300);
    FrmSetupTCP::Check1_click();
    EXPECT_TRUE(mainfrm::timers.Timer_TCP.Enabled());
    FrmSetupTCP::Check1_click();
    EXPECT_EQ(settings.IPAutoC, 0);
    EXPECT_TRUE(mainfrm::timers.Timer_TCP.Enabled());
    mainfrm::timers.Timer_TCP.Enabled(false);
    FrmSetupTCP::Check2_click();
    EXPECT_FALSE(mainfrm::timers.Timer_TCP.Enabled()) << "another box";
}

TEST_F(SetupTcpOptions, ARunningCycleKeepsItsPeriodWhenTheConnectionIsSwitched) {
    mainfrm::setup_tcp_click();
    int ticks = 0;
    mainfrm::timers.Timer_TCP.on_tick([&] { ++ticks; });
    mainfrm::timers.Timer_TCP.Interval(300);
    mainfrm::timers.Timer_TCP.Enabled(true);
    advance(200);
    FrmSetupTCP::Check1_click();
    advance(100);
    EXPECT_EQ(ticks, 1);
}

TEST_F(SetupTcpOptions, TheViewShowsRegistersOrThePicture) {
    for (const u8 view : {u8{0}, u8{1}, u8{2}, u8{255}}) {
        form() = {};
        settings.REGView = view;
        mainfrm::setup_tcp_click();
        EXPECT_EQ(form().Reg_content, view == 1);
        EXPECT_EQ(form().IP_Test_Frame.Visible, view == 1);
        EXPECT_EQ(form().Image_TCP_visible, view != 1);
    }
}

TEST_F(SetupTcpOptions, TheRegisterViewIsInvertedAndStoredAtOnce) {
    settings.REGView = 7;
    mainfrm::setup_tcp_click();
    FrmSetupTCP::Reg_content_click();
    EXPECT_EQ(settings.REGView, 1);
    EXPECT_TRUE(form().Reg_content);
    EXPECT_TRUE(form().IP_Test_Frame.Visible);
    EXPECT_FALSE(form().Image_TCP_visible);
    EXPECT_EQ(file(settings_file), "[tyxo]\r\nREGView= 1\r\n");
    FrmSetupTCP::Reg_content_click();
    EXPECT_EQ(settings.REGView, 0);
    EXPECT_FALSE(form().Reg_content);
    EXPECT_FALSE(form().IP_Test_Frame.Visible);
    EXPECT_TRUE(form().Image_TCP_visible);
    EXPECT_EQ(file(settings_file), "[tyxo]\r\nREGView= 0\r\n");
}

TEST_F(SetupTcpOptions, TheMenuItemOfTheSpeedIsChecked) {
    const std::array<std::string, 3> names{"slow ", "medium ", "fast "};
    for (u8 refresh = 0; refresh < 3; ++refresh) {
        settings.IPRefresh = refresh;
        mainfrm::setup_tcp_click();
        EXPECT_EQ(checked_items(), names[refresh]);
        FrmSetupTCP::Cmd_close_click();
    }
    settings.IPRefresh = 7;
    mainfrm::setup_tcp_click();
    EXPECT_EQ(checked_items(), "fast ") << "another value touches no item";
    form() = {};
    mainfrm::setup_tcp_click();
    EXPECT_EQ(checked_items(), "");
}

struct speed_row {
    void (*click)();
    const char* item;
    int refresh;
    int interval;
};

TEST_F(SetupTcpOptions, ASpeedIsCheckedStoredAndTaken) {
    settings.IPRefresh = 7;
    mainfrm::setup_tcp_click();
    mainfrm::timers.Timer_TCP.Interval(300);
    for (const speed_row& row : {speed_row{FrmSetupTCP::slow_click, "slow ", 0, 600},
                                 {FrmSetupTCP::medium_click, "medium ", 1, 450},
                                 {FrmSetupTCP::fast_click, "fast ", 2, 300},
                                 {FrmSetupTCP::slow_click, "slow ", 0, 600}}) {
        row.click();
        EXPECT_EQ(checked_items(), row.item);
        EXPECT_EQ(settings.IPRefresh, row.refresh);
        EXPECT_EQ(mainfrm::timers.Timer_TCP.Interval(), row.interval);
        EXPECT_EQ(file(settings_file), "[tyxo]\r\nIPRefresh= " + std::to_string(row.refresh) + "\r\n");
    }
}

TEST_F(SetupTcpOptions, AClickOnTheCheckedSpeedChangesNothing) {
    settings.IPRefresh = 1;
    mainfrm::setup_tcp_click();
    put_settings("IPRefresh=17\n");
    const std::string before = file(settings_file);
    mainfrm::timers.Timer_TCP.Interval(299);
    FrmSetupTCP::medium_click();
    EXPECT_EQ(checked_items(), "medium ");
    EXPECT_EQ(file(settings_file), before);
    EXPECT_EQ(mainfrm::timers.Timer_TCP.Interval(), 299);
}

} // namespace
} // namespace tyxo
