// The gateway's window without its picture: opening, boxes, commands and closing.

#include "basics/failure.h"
#include "gateway/connection.h"
#include "gateway/modbus.h"
#include "gateway/setup_tcp.h"
#include "settings/ini.h"
#include "settings/settings.h"
#include "settings/settings_lines.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

TEST_F(SetupTcp, BeginsWithItsDesign) {
    EXPECT_EQ(form().form.Caption, "Setup data transmission over Modbus TCP/IP");
    EXPECT_FALSE(form().form.Visible);
    EXPECT_EQ(form().Txt_sendbase, "0");
    EXPECT_EQ(form().Txt_regnumber, "10");
    EXPECT_EQ(form().Text5.Text, "Disconnected");
    EXPECT_EQ(form().Text5.BackColor, 255);
    EXPECT_EQ(form().IP_frame.Caption, "TCP IP parameters");
    EXPECT_EQ(form().IP_Test_Frame.Caption, manual);
    ASSERT_EQ(form().Text4.size(), 123U);
    for (const std::string& box : form().Text4)
        EXPECT_EQ(box, "0");
}

TEST_F(SetupTcp, OpensWithTheSettingsInMemoryInItsBoxes) {
    settings.IPAdr = "plc.m\xFChle";
    settings.IPport = 502;
    settings.REGBase = 62300;
    settings.REGNumber = 50;
    settings.Sendbase = 65410;
    mainfrm::setup_tcp_click();
    EXPECT_TRUE(form().form.Visible);
    EXPECT_TRUE(form().form.Loaded);
    EXPECT_EQ(form().Txt_IPadr, "plc.m\xFChle");
    EXPECT_EQ(form().Txt_IPport, "502");
    EXPECT_EQ(form().Txt_regbase, "62300");
    EXPECT_EQ(form().Txt_regnumber, "50");
    EXPECT_EQ(form().Txt_sendbase, "65410");
}

TEST_F(SetupTcp, ShowsNegativeSettingsAsTheyAre) {
    settings.IPport = -1;
    settings.REGBase = -70000;
    mainfrm::setup_tcp_click();
    EXPECT_EQ(form().Txt_IPport, "-1");
    EXPECT_EQ(form().Txt_regbase, "-70000");
}

TEST_F(SetupTcp, ARegisterNumberOf0Opens123) {
    mainfrm::setup_tcp_click();
    EXPECT_EQ(form().Txt_regnumber, "123");
    EXPECT_EQ(settings.REGNumber, 123);
    EXPECT_EQ(file(settings_file), "") << "in memory only";
}

TEST_F(SetupTcp, LoadsOnceAndHidden) {
    settings.IPAdr = "first";
    FrmSetupTCP::load();
    EXPECT_TRUE(form().form.Loaded);
    EXPECT_FALSE(form().form.Visible);
    EXPECT_EQ(form().Txt_IPadr, "first");
    settings.IPAdr = "second";
    FrmSetupTCP::load();
    EXPECT_EQ(form().Txt_IPadr, "first");
}

TEST_F(SetupTcp, OpeningFillsTheBoxesAgain) {
    FrmSetupTCP::load();
    FrmSetupTCP::Txt_IPadr_change("typed and not saved");
    form().Txt_regnumber = "50";
    settings.IPAdr = "10.0.0.7";
    settings.REGNumber = 6;
    settings.REGView = 1;
    mainfrm::setup_tcp_click();
    EXPECT_EQ(form().Txt_IPadr, "10.0.0.7");
    EXPECT_EQ(form().Txt_regnumber, "6");
    EXPECT_TRUE(form().IP_Test_Frame.Visible);
    FrmSetupTCP::Cmd_close_click();
    settings.IPAdr = "10.0.0.8";
    mainfrm::setup_tcp_click();
    EXPECT_EQ(form().Txt_IPadr, "10.0.0.8");
}

TEST_F(SetupTcp, AnOpenWindowComesToTheFrontAsItIs) {
    mainfrm::setup_tcp_click();
    const i32 before = form().summoned;
    FrmSetupTCP::Txt_IPadr_change("half typed");
    mainfrm::setup_tcp_click();
    EXPECT_EQ(form().Txt_IPadr, "half typed");
    EXPECT_EQ(form().summoned, before + 1);
    EXPECT_TRUE(form().form.Visible);
}

TEST_F(SetupTcp, OpeningLeavesStatusAndRegistersAlone) {
    FrmSetupTCP::show_tcp_status("Connected", status_colour::green);
    form().Text4[3] = "17";
    mainfrm::setup_tcp_click();
    EXPECT_EQ(form().Text5.Text, "Connected");
    EXPECT_EQ(form().Text5.BackColor, 65280);
    EXPECT_EQ(form().Text4[3], "17");
}

TEST_F(SetupTcp, ResettingTheConnectionUnlocksIt) {
    tcp.tcp_locked = true;
    FrmSetupTCP::res_con_click();
    EXPECT_FALSE(tcp.tcp_locked);
    // What the attempt itself shows comes behind, and is never "Connection locked".
    EXPECT_NE(form().Text5.Text, "Connection locked");
    EXPECT_NE(form().Text5.Text, "Disconnected");
}

TEST_F(SetupTcp, DisconnectingUnlocksToo) {
    tcp.tcp_locked = true;
    FrmSetupTCP::cmd_discon_click();
    EXPECT_FALSE(tcp.tcp_locked);
}

TEST_F(SetupTcp, ManualCommandsWithoutConnectionAreRefusedAndChangeNoBox) {
    FrmSetupTCP::Txt_sendbase_change("70000");
    FrmSetupTCP::Txt_regnumber_change("200");
    FrmSetupTCP::Text4_change(0, "70000");
    for (const auto& click : {FrmSetupTCP::Cmd_read_R_click, FrmSetupTCP::Cmd_write_R_click}) {
        FrmSetupTCP::show_tcp_status("", 0);
        click();
        EXPECT_EQ(form().Text5.Text, "Device not connected via TCP/IP");
        EXPECT_EQ(form().Text5.BackColor, 255);
        EXPECT_EQ(form().Txt_sendbase, "70000");
        EXPECT_EQ(form().Txt_regnumber, "200");
        EXPECT_EQ(form().Text4[0], "70000");
        EXPECT_EQ(modbus, modbus_state());
    }
}

TEST_F(SetupTcp, ATypedTextIsKeptAsItIs) {
    FrmSetupTCP::Txt_IPadr_change("a\xFC ");
    FrmSetupTCP::Txt_IPport_change("abc");
    FrmSetupTCP::Txt_regbase_change("");
    FrmSetupTCP::Text4_change(122, "12x");
    EXPECT_EQ(form().Txt_IPadr, "a\xFC ");
    EXPECT_EQ(form().Txt_IPport, "abc");
    EXPECT_EQ(form().Txt_regbase, "");
    EXPECT_EQ(form().Text4[122], "12x");
    EXPECT_THROW(FrmSetupTCP::Text4_change(123, "1"), failure);
}

TEST_F(SetupTcp, ClosingOnlyHidesIt) {
    mainfrm::setup_tcp_click();
    FrmSetupTCP::Txt_IPadr_change("kept");
    FrmSetupTCP::window before = form();
    FrmSetupTCP::Cmd_close_click();
    before.form.Visible = false;
    EXPECT_EQ(form(), before);
    EXPECT_TRUE(form().form.Loaded);
    EXPECT_TRUE(world().boxes.empty());
}

struct close_row {
    FrmSetupTCP::close_reason reason;
    const char* text;
    bool stays;
};

TEST_F(SetupTcp, EveryCloseReasonHasItsMessageAndTheCloseBoxIsRefused) {
    const std::vector<close_row> rows{
        {FrmSetupTCP::close_reason::close_box,
         "User tries to close the form via the \"X\" ! Please use 'close' button below !", true},
        {FrmSetupTCP::close_reason::code, "The Unload statement is invoked from code.", false},
        {FrmSetupTCP::close_reason::system_shutdown,
         "The current Microsoft Windows operating environment session is ending.", false},
        {FrmSetupTCP::close_reason::task_manager,
         "The Microsoft Windows Task Manager is closing the application.", false},
        {FrmSetupTCP::close_reason::mdi_parent,
         "An MDI child form is closing because the MDI form is closing.", false},
        {FrmSetupTCP::close_reason::owner, "A form is closing because its owner is closing.", false}};
    for (const close_row& row : rows) {
        mainfrm::setup_tcp_click();
        world().boxes.clear();
        FrmSetupTCP::query_unload(row.reason);
        ASSERT_EQ(world().boxes.size(), 1U);
        EXPECT_EQ(world().boxes[0].text, row.text);
        EXPECT_EQ(world().boxes[0].title, "");
        EXPECT_EQ(world().boxes[0].buttons, box_buttons::ok);
        EXPECT_EQ(form().form.Visible, row.stays);
        EXPECT_TRUE(form().form.Loaded);
    }
}

} // namespace
} // namespace tyxo
