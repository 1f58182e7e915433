// Settings that end the program at its start, and a second copy of it.

#include "app/started_program.h"

#include "displays/panel.h"
#include "settings/serial_ports.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

struct fatal_row {
    std::string_view name;
    std::string_view lines;
    std::string_view description;
};

class StartWithUnusableSettings : public testing::TestWithParam<fatal_row> {
  protected:
    void SetUp() override {
        prepare(logging_settings(1, std::string(with_events) + "autostart=1\r\n"));
        // The first of duplicate keys counts.
        put_file("tyxo.ini", "[tyxo]\r\n" + std::string(GetParam().lines) + file("tyxo.ini").substr(8));
        world().port_names = {{"a", "COM1"}};
    }
};

TEST_P(StartWithUnusableSettings, EndsWithABoxAndExitCodeOne) {
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(world().exit_code, 1);
    EXPECT_EQ(box_texts(), text_lines{std::string(GetParam().description)});
    EXPECT_EQ(world().boxes[0].buttons, box_buttons::ok);
    EXPECT_TRUE(world().boxes[0].waits) << "the program ends behind it";
}

TEST_P(StartWithUnusableSettings, StartsNothing) {
    mainfrm::start_program(1272, 911);
    EXPECT_TRUE(event_lines().empty());
    EXPECT_EQ(serial::serial_ports, std::nullopt);
    EXPECT_EQ(port(0).opened, 0);
    EXPECT_EQ(mainfrm::state.Caption, "");
}

INSTANTIATE_TEST_SUITE_P(
    Keys, StartWithUnusableSettings,
    testing::Values(fatal_row{"FiveChannels", "max_sensors=5\r\n", "comport 5: Subscript out of range"},
                    fatal_row{"ManyChannels", "max_sensors=32767\r\n", "comport 5: Subscript out of range"},
                    fatal_row{"FewerThanNoChannels", "max_sensors=-1\r\n", "Subscript out of range"},
                    fatal_row{"ChannelsBeyondTheType", "max_sensors=32768\r\n", "max_sensors: Overflow"},
                    fatal_row{"SixteenBits", "upd_periode=40000\r\n", "upd_periode: Overflow"},
                    fatal_row{"ThirtyTwoBits", "REGBase=2147483648\r\n", "REGBase: Overflow"},
                    fatal_row{"EightBits", "IPRefresh=256\r\n", "IPRefresh: Overflow"},
                    fatal_row{"EightBitsBelow", "IPAutoC=-1\r\n", "IPAutoC: Overflow"},
                    fatal_row{"RepairedKeyBeyondItsType", "adc_offset=32768\r\n", "adc_offset: Overflow"},
                    fatal_row{"PortNumber", "comport 1=65536\r\n", "comport 1: Overflow"},
                    fatal_row{"Scale", "scale_polar_a=1E999\r\n", "scale_polar_a: Overflow"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(StartWithUnusableSettingsOfOthers, AChannelBeyondMaxSensorsIsNotReadAndSpoilsNothing) {
    prepare(logging_settings(1, "comport 2=99999\r\n"));
    mainfrm::start_program(1272, 911);
    EXPECT_FALSE(world().exit_code.has_value());
    EXPECT_TRUE(world().boxes.empty());
}

TEST(StartWithUnusableSettingsOfOthers, TheFailureComesInFrontOfTheScreenTest) {
    prepare("[tyxo]\r\nIPRefresh=-1\r\n");
    world().screen = {640, 480};
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(box_texts(), text_lines{"IPRefresh: Overflow"});
}

TEST(SecondCopy, SaysWhoHoldsTheFolderAndEndsWithACodeOfItsOwn) {
    prepare(logging_settings(1, std::string(with_events) + "autostart=1\r\n"));
    world().folder_holder = "process 1234";
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(world().exit_code, 2);
    EXPECT_EQ(box_texts(), text_lines{"Another Tyxo Data Logger runs in this folder: process 1234.\r\n"
                                      "This one ends now."});
    EXPECT_TRUE(world().boxes[0].waits);
}

TEST(SecondCopy, TouchesNothing) {
    prepare("[tyxo]\r\nmax_sensors=1\r\ncomport 1=1\r\nautostart=1\r\nadc_offset=1\r\nIPAutoC=1\r\n" +
            std::string(with_events));
    const auto files = world().files;
    world().folder_holder = "process 1234";
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(world().files, files);
    EXPECT_TRUE(world().opened.empty());
    EXPECT_EQ(port(0).opened, 0);
    EXPECT_TRUE(world().plant.attempts.empty());
}

TEST(StartWithUnusableSettingsOfOthers, RepairsInFrontOfTheFailureAreWritten) {
    prepare("[tyxo]\r\nadc_offset=1\r\nzyl_speed_range=2\r\nIPRefresh=-1\r\n");
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(world().exit_code, 1);
    EXPECT_EQ(file("tyxo.ini"), "[tyxo]\r\nadc_offset=479\r\nzyl_speed_range=2\r\nIPRefresh=-1\r\n");
}

} // namespace
} // namespace tyxo
