// "Save parameters": limits, order and form of what is stored.

#include "basics/failure.h"
#include "gateway/connection.h"
#include "gateway/frmsetuptcp.h"
#include "settings/ini.h"
#include "settings/settings.h"
#include "settings/settings_lines.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

class SaveTcp : public testing::Test {
  protected:
    void SetUp() override {
        fresh_world();
        settings.IPAdr = "10.0.0.1";
        settings.IPport = 502;
        settings.REGBase = 1000;
        settings.REGNumber = 10;
        settings.Sendbase = 40;
        mainfrm::setup_tcp_click();
    }

    static FrmSetupTCP::window& form() { return FrmSetupTCP::state; }
    static std::string stored(std::string_view key) { return Ini::ini_read(key); }
};

TEST_F(SaveTcp, StoresEverythingInOrderToTheByte) {
    FrmSetupTCP::Txt_IPadr_change("192.168.0.10");
    FrmSetupTCP::Txt_IPport_change("503");
    FrmSetupTCP::Txt_regbase_change("62300");
    FrmSetupTCP::Txt_regnumber_change("50");
    FrmSetupTCP::Txt_sendbase_change("65410");
    FrmSetupTCP::Check2_click();
    FrmSetupTCP::Check4_click();
    FrmSetupTCP::Cmd_save_click();
    EXPECT_EQ(file(settings_file), "[tyxo]\r\n"
                                   "IPAdr=192.168.0.10\r\n"
                                   "IPPort=503\r\n"
                                   "REGBase= 62300\r\n"
                                   "REGNumber=50\r\n"
                                   "IPAutoC= 0\r\n"
                                   "IpenaTRS= 1\r\n"
                                   "Ippolar= 0\r\n"
                                   "Ipsysstat= 1\r\n"
                                   "Sendbase=65410\r\n");
    EXPECT_EQ(settings.IPAdr, "192.168.0.10");
    EXPECT_EQ(settings.IPport, 503);
    EXPECT_EQ(settings.REGBase, 62300);
    EXPECT_EQ(settings.REGNumber, 50);
    EXPECT_EQ(settings.Sendbase, 40) << "in the file only";
}

TEST_F(SaveTcp, StoresItsKeysAsOneChange) {
    const int before = world().replacements;
    FrmSetupTCP::Cmd_save_click();
    EXPECT_EQ(world().replacements, before + 1);
}

TEST_F(SaveTcp, FindsTheKeysOfTheStartInTheirOtherSpelling) {
    put_settings("IPport=1\nIPenaTRS=0\nIPpolar=0\nIPsysstat=0\nREGBase=5\n");
    FrmSetupTCP::Check2_click();
    FrmSetupTCP::Check3_click();
    FrmSetupTCP::Check4_click();
    FrmSetupTCP::Cmd_save_click();
    EXPECT_EQ(file(settings_file), "[tyxo]\r\n"
                                   "IPport=502\r\n"
                                   "IPenaTRS= 1\r\n"
                                   "IPpolar= 1\r\n"
                                   "IPsysstat= 1\r\n"
                                   "REGBase= 1000\r\n"
                                   "IPAdr=10.0.0.1\r\n"
                                   "REGNumber=10\r\n"
                                   "IPAutoC= 0\r\n"
                                   "Sendbase=40\r\n");
}

TEST_F(SaveTcp, ReplacesNumbersAboveTheirLimitsInTheBoxes) {
    FrmSetupTCP::Txt_regbase_change("62301");
    FrmSetupTCP::Txt_regnumber_change("200");
    FrmSetupTCP::Txt_sendbase_change("65411");
    FrmSetupTCP::Cmd_save_click();
    EXPECT_EQ(form().Txt_regbase, "62300");
    EXPECT_EQ(form().Txt_regnumber, "123");
    EXPECT_EQ(form().Txt_sendbase, "65410");
    EXPECT_EQ(stored("REGBase"), "62300");
    EXPECT_EQ(stored("REGNumber"), "123");
    EXPECT_EQ(stored("Sendbase"), "65410");
    EXPECT_EQ(settings.REGBase, 62300);
    EXPECT_EQ(settings.REGNumber, 123);
}

TEST_F(SaveTcp, KeepsNumbersAtTheirLimits) {
    FrmSetupTCP::Txt_regbase_change("62300");
    FrmSetupTCP::Txt_regnumber_change("123");
    FrmSetupTCP::Txt_sendbase_change("65410");
    FrmSetupTCP::Txt_IPport_change("32767");
    FrmSetupTCP::Cmd_save_click();
    EXPECT_EQ(form().Txt_regbase, "62300");
    EXPECT_EQ(form().Txt_regnumber, "123");
    EXPECT_EQ(form().Txt_sendbase, "65410");
    EXPECT_EQ(form().Txt_IPport, "32767");
    EXPECT_EQ(settings.IPport, 32767);
}

TEST_F(SaveTcp, APortAbove32767OverflowsBehindItsStoring) {
    for (const char* const port : {"32768", "65535", "70000"}) {
        fresh_world();
        settings.IPport = 502;
        mainfrm::setup_tcp_click();
        FrmSetupTCP::Txt_IPadr_change("192.168.0.10");
        FrmSetupTCP::Txt_IPport_change(port);
        FrmSetupTCP::Txt_regbase_change("7");
        EXPECT_THROW(FrmSetupTCP::Cmd_save_click(), failure);
        const std::string limited = port == std::string("70000") ? "65535" : port;
        EXPECT_EQ(form().Txt_IPport, limited);
        EXPECT_EQ(file(settings_file), "[tyxo]\r\nIPAdr=192.168.0.10\r\nIPPort=" + limited + "\r\n");
        EXPECT_EQ(settings.IPAdr, "192.168.0.10");
        EXPECT_EQ(settings.IPport, 502);
        EXPECT_EQ(settings.REGBase, 0);
    }
}

TEST_F(SaveTcp, ANegativePortIsStoredAsItIs) {
    FrmSetupTCP::Txt_IPport_change("-1");
    FrmSetupTCP::Cmd_save_click();
    EXPECT_EQ(form().Txt_IPport, "-1");
    EXPECT_EQ(stored("IPport"), "-1");
    EXPECT_EQ(settings.IPport, -1);
}

TEST_F(SaveTcp, ATextThatIsNoNumberIsStoredAndCountsAs0) {
    FrmSetupTCP::Txt_IPport_change("abc");
    FrmSetupTCP::Txt_regbase_change("abc");
    FrmSetupTCP::Txt_regnumber_change("abc");
    FrmSetupTCP::Txt_sendbase_change("abc");
    FrmSetupTCP::Cmd_save_click();
    EXPECT_EQ(file(settings_file).find("IPPort=abc\r\nREGBase= 0\r\nREGNumber=abc\r\n"), 24U);
    EXPECT_EQ(stored("Sendbase"), "abc");
    EXPECT_EQ(settings.IPport, 0);
    EXPECT_EQ(settings.REGBase, 0);
    EXPECT_EQ(settings.REGNumber, 0);
    EXPECT_EQ(form().Txt_regbase, "abc");
}

TEST_F(SaveTcp, ANumberIsTheOneThatItsTextBeginsWith) {
    FrmSetupTCP::Txt_IPport_change(" 502 tcp");
    FrmSetupTCP::Txt_regbase_change("12.5 or so");
    FrmSetupTCP::Txt_regnumber_change("2.5");
    FrmSetupTCP::Cmd_save_click();
    EXPECT_EQ(settings.IPport, 502);
    EXPECT_EQ(stored("REGBase"), "12.5") << "the number as it is";
    EXPECT_EQ(settings.REGBase, 12) << "a half goes to the even neighbour";
    EXPECT_EQ(stored("REGNumber"), "2.5");
    EXPECT_EQ(settings.REGNumber, 2);
}

TEST_F(SaveTcp, StoresTheOptionsOfTheMemoryAndNotOfTheBoxes) {
    settings.IPpolar = 5;
    FrmSetupTCP::Cmd_save_click();
    EXPECT_EQ(stored("IPpolar"), "5");
    EXPECT_EQ(form().Check3, 0);
}

TEST_F(SaveTcp, LeavesTheStateOfTheConnectionAsItWas) {
    tcp.tcp_connected = true;
    FrmSetupTCP::Cmd_save_click();
    EXPECT_TRUE(tcp.tcp_connected);
    EXPECT_EQ(form().Text5.Text, "Disconnected");
}

TEST_F(SaveTcp, ConnectsWhenTheConnectionIsAutomatic) {
    FrmSetupTCP::Check1_click();
    tcp.tcp_locked = true;
    FrmSetupTCP::Cmd_save_click();
    EXPECT_EQ(stored("IPAutoC"), "1");
    EXPECT_TRUE(tcp.tcp_locked) << "saving does not unlock";
}

} // namespace
} // namespace tyxo
