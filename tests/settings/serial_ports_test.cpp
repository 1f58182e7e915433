// The list of serial ports that the setup offers.

#include "settings/serial_ports.h"

#include "platform/simulation.h"

#include <gtest/gtest.h>

#include <numeric>

namespace tyxo {
namespace {

using namespace simulation;
using serial::serial_ports;

class SerialPorts : public testing::Test {
  protected:
    void SetUp() override { fresh_world(); }
};

std::string all_debug() {
    return std::accumulate(world().debug.begin(), world().debug.end(), std::string());
}

TEST_F(SerialPorts, AreListedInAscendingOrder) {
    world().port_names = {{"a", "COM7"}, {"b", "COM1"}, {"c", "COM3"}};
    serial::get_serial_port();
    EXPECT_EQ(serial_ports, (std::vector<i16>{1, 3, 7}));
}

TEST_F(SerialPorts, AreSortedAsNumbers) {
    world().port_names = {{"a", "COM10"}, {"b", "COM9"}, {"c", "COM129"}, {"d", "COM65"}, {"e", "COM2"}};
    serial::get_serial_port();
    EXPECT_EQ(serial_ports, (std::vector<i16>{2, 9, 10, 65, 129}));
}

TEST_F(SerialPorts, AreListedFromOneToAHundredInAnyOrder) {
    std::vector<i16> expected;
    for (i16 number = 1; number <= 100; ++number)
        expected.push_back(number);
    for (int port = 0; port < 100; ++port)
        world().port_names.push_back({"source", "COM" + std::to_string(1 + port * 37 % 100)});
    serial::get_serial_port();
    EXPECT_EQ(serial_ports, expected);
}

TEST_F(SerialPorts, TheNumberStandsBehindThreeLettersOfAnyKind) {
    world().port_names = {{"a", "com4"}, {"b", "LPT2"}, {"c", "1235"}};
    serial::get_serial_port();
    EXPECT_EQ(serial_ports, (std::vector<i16>{2, 4, 5}));
}

TEST_F(SerialPorts, AMachineWithoutPortsGivesAnEmptyList) {
    serial_ports = {{1, 2}};
    serial::get_serial_port();
    EXPECT_EQ(serial_ports, std::vector<i16>{});
    EXPECT_TRUE(world().debug.empty());
}

TEST_F(SerialPorts, EachFoundPortIsToldToTheDebugOutputInTheMachinesOrder) {
    world().port_names = {{"\\Device\\Serial1", "COM7"}, {"\\Device\\Serial0", "COM1"}};
    serial::get_serial_port();
    const std::string debug = all_debug();
    const auto first = debug.find("\\Device\\Serial1");
    const auto first_name = debug.find("COM7");
    const auto second = debug.find("\\Device\\Serial0");
    const auto second_name = debug.find("COM1");
    ASSERT_NE(second_name, debug.npos);
    EXPECT_LT(first, first_name);
    EXPECT_LT(first_name, second);
    EXPECT_LT(second, second_name);
}

TEST_F(SerialPorts, AnUnreadableListIsToldAndLeavesTheArrayAsItIs) {
    world().port_names = {{"a", "COM7"}};
    world().port_list_unreadable = true;
    world().port_list_error = 5;
    world().error_texts[5] = "Zugriff verweigert\r\n";
    serial_ports = {{3, 4}};
    serial::get_serial_port();
    EXPECT_EQ(serial_ports, (std::vector<i16>{3, 4}));
    EXPECT_EQ(all_debug(), "get_serial_port: Cannot Access to RegistryZugriff verweigert");
}

TEST_F(SerialPorts, AnUnreadableListWithoutASystemTextNamesTheCode) {
    world().port_list_unreadable = true;
    world().port_list_error = 0x1F;
    serial::get_serial_port();
    EXPECT_EQ(serial_ports, std::nullopt) << "no list, which is not the same as a list without ports";
    EXPECT_EQ(all_debug(), "get_serial_port: Cannot Access to RegistryUnbekannter Windows-Fehler: &H1F");
}

TEST_F(SerialPorts, ErrorTextsLoseTheirLineBreaks) {
    world().error_texts[2] = "The system cannot\r\nfind the file\nspecified.\r\n";
    EXPECT_EQ(Registry::win_error_text(2), "The system cannotfind the filespecified.");
}

TEST_F(SerialPorts, AnErrorTextIsAtMost256Characters) {
    world().error_texts[2] = std::string(1000, 'e');
    EXPECT_LE(Registry::win_error_text(2).size(), 256U);
    EXPECT_GE(Registry::win_error_text(2).size(), 255U);
}

TEST_F(SerialPorts, AnUnknownErrorCodeIsShownInHexadecimal) {
    struct code_row {
        int code;
        std::string_view digits;
    };
    for (const code_row& row : {code_row{0, "0"},
                                {5, "5"},
                                {16, "10"},
                                {31, "1F"},
                                {1722, "6BA"},
                                {65535, "FFFF"},
                                {65536, "10000"},
                                {0x7FFFFFFF, "7FFFFFFF"},
                                {-1, "FFFFFFFF"},
                                {-2147024894, "80070002"}}) {
        EXPECT_EQ(Registry::win_error_text(row.code),
                  "Unbekannter Windows-Fehler: &H" + std::string(row.digits));
    }
}

} // namespace
} // namespace tyxo
