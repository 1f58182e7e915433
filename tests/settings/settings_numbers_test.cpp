// Texts of the settings as numbers.

#include "app/mainfrm.h"
#include "basics/failure.h"
#include "link/channel_rec.h"
#include "settings/settings.h"
#include "settings/settings_lines.h"

#include <gtest/gtest.h>

#include <vector>

namespace tyxo {
namespace {

using namespace simulation;

class SettingsNumbers : public testing::Test {
  protected:
    void SetUp() override { fresh_world(); }
};

void load_one(std::string_view key, std::string_view value) {
    fresh_world();
    put_settings(std::string(key) + "=" + std::string(value) + "\n");
    mainfrm::load_settings();
}

TEST_F(SettingsNumbers, ANumberIsTheLeadingOneOfItsText) {
    struct number_row {
        std::string_view in_file;
        i16 value;
    };
    for (const number_row& row : {number_row{"500", 500},
                                  {" 500", 500},
                                  {"-7", -7},
                                  {"+7", 7},
                                  {"0250", 250},
                                  {"12 ms", 12},
                                  {"12ms", 12},
                                  {"12,9", 12},
                                  {"ms 12", 0},
                                  {"", 0},
                                  {"-", 0},
                                  {".", 0},
                                  {"one", 0},
                                  {"1E2", 100},
                                  {"\"33\"", 33}}) {
        load_one("log_mode", row.in_file);
        EXPECT_EQ(settings.log_mode, row.value) << row.in_file;
    }
}

TEST_F(SettingsNumbers, HalvesAreRoundedToTheEvenNeighbour) {
    struct number_row {
        std::string_view in_file;
        i16 value;
    };
    for (const number_row& row : {number_row{"0.5", 0},
                                  {"1.5", 2},
                                  {"2.5", 2},
                                  {"3.5", 4},
                                  {".51", 1},
                                  {"2.4999", 2},
                                  {"-0.5", 0},
                                  {"-1.5", -2},
                                  {"-2.5", -2},
                                  {"-2.51", -3}}) {
        load_one("log_mode", row.in_file);
        EXPECT_EQ(settings.log_mode, row.value) << row.in_file;
    }
}

TEST_F(SettingsNumbers, AScaleKeepsItsFraction) {
    load_one("scale_polar_a", " .0625");
    EXPECT_EQ(sensor::state.scale_polar_a, 0.0625);
    load_one("scale_polar_t", "-1234567.5 units");
    EXPECT_EQ(sensor::state.scale_polar_t, -1234567.5);
    load_one("scale_polar_t", "nan");
    EXPECT_EQ(sensor::state.scale_polar_t, 0);
}

/// The keys of each integer type.
const std::vector<std::string_view> i16_keys{"upd_periode", "max_sensors",   "adc_offset", "zyl_speed_range",
                                             "log_mode",    "xy_tmv",        "xy_theff",   "xy_theff_AC",
                                             "xy_tha",      "speedbar_mode", "IPport",     "eventfile_ena",
                                             "IPsend",      "REGNumber",     "IPpolar",    "IPsysstat"};
const std::vector<std::string_view> i32_keys{"cmd_periode", "REGBase", "Sendbase"};
const std::vector<std::string_view> u8_keys{"IPAutoC", "IPenaTRS", "REGView", "IPRefresh"};
const std::vector<std::string_view> channel_keys{"comport 1", "tstsig_visible 1", "th_dig_val 1"};

/// The description of the failure that loading ends with, or an empty text.
std::string failure_of(std::string_view key, std::string_view value) {
    fresh_world();
    const std::string channels_in_use = key == "max_sensors" ? "" : "max_sensors=1\n";
    put_settings(channels_in_use + std::string(key) + "=" + std::string(value) + "\n");
    return attempt([] { mainfrm::load_settings(); }).value_or("");
}

void expect_limits(const std::vector<std::string_view>& keys, std::initializer_list<std::string_view> held,
                   std::initializer_list<std::string_view> refused) {
    for (const std::string_view key : keys) {
        for (const std::string_view value : held) {
            if (key == "max_sensors" && !value.starts_with('-')) continue; // has a narrower limit
            EXPECT_EQ(failure_of(key, value), "") << key << "=" << value;
        }
        for (const std::string_view value : refused)
            EXPECT_EQ(failure_of(key, value), std::string(key) + ": Overflow") << key << "=" << value;
    }
}

TEST_F(SettingsNumbers, SixteenBitsOverflowBeyondTheirRange) {
    expect_limits(i16_keys, {"32767", "32767.4", "-32768", "-32768.5"},
                  {"32768", "32767.5", "-32769", "-32768.51", "65535", "1E30"});
    expect_limits(channel_keys, {"32767", "-32768"}, {"32768", "-32769", "99999999999"});
}

TEST_F(SettingsNumbers, ThirtyTwoBitsOverflowBeyondTheirRange) {
    expect_limits(i32_keys, {"2147483647", "2147483647.4", "-2147483648", "40001"},
                  {"2147483648", "2147483647.5", "-2147483649", "4294967295"});
}

TEST_F(SettingsNumbers, EightBitsOverflowBeyondTheirRange) {
    expect_limits(u8_keys, {"255", "255.4", "0", "-0.5"}, {"256", "255.5", "-1", "-0.51", "1000"});
}

TEST_F(SettingsNumbers, AScaleOverflowsBeyondItsRange) {
    EXPECT_EQ(failure_of("scale_polar_a", "1E308"), "");
    EXPECT_EQ(failure_of("scale_polar_a", "1E309"), "scale_polar_a: Overflow");
    EXPECT_EQ(failure_of("scale_polar_t", "-1E309"), "scale_polar_t: Overflow");
    EXPECT_EQ(failure_of("scale_polar_t", "1E-400"), "");
}

TEST_F(SettingsNumbers, MoreThanFourChannelsAreAnIndexError) {
    EXPECT_EQ(failure_of("max_sensors", "4"), "");
    EXPECT_EQ(failure_of("max_sensors", "4.5"), "");
    EXPECT_EQ(failure_of("max_sensors", "5"), "comport 5: Subscript out of range");
    EXPECT_EQ(failure_of("max_sensors", "32767"), "comport 5: Subscript out of range");
}

TEST_F(SettingsNumbers, NoChannelIsReadForNoneOrFewer) {
    for (const char* count : {"0", "-1", "-32768", "", "none"}) {
        fresh_world();
        put_settings("max_sensors=" + std::string(count) + "\ntypecode 1=A\nlocation 0=B\n");
        mainfrm::load_settings();
        for (const channel_rec& rec : sensor::state.channels) {
            EXPECT_EQ(rec.typecode, "") << count;
            EXPECT_EQ(rec.text_almrel1, "") << count;
        }
    }
}

struct repair_row {
    std::string_view key;
    std::string_view in_file;
    i16 value;
    bool repaired;
};

TEST_F(SettingsNumbers, AValueOutsideItsRangeIsRepairedAndWrittenBackAsBareDigits) {
    for (const repair_row& row : {repair_row{"adc_offset", "460", 460, false},
                                  {"adc_offset", "520", 520, false},
                                  {"adc_offset", " 500", 500, false},
                                  {"adc_offset", "459.5", 460, false},
                                  {"adc_offset", "520.5", 520, false},
                                  {"adc_offset", "459", 479, true},
                                  {"adc_offset", "521", 479, true},
                                  {"adc_offset", "520.6", 479, true},
                                  {"adc_offset", "0", 479, true},
                                  {"adc_offset", "-480", 479, true},
                                  {"adc_offset", "", 479, true},
                                  {"adc_offset", "none", 479, true},
                                  {"zyl_speed_range", "1", 1, false},
                                  {"zyl_speed_range", "20", 20, false},
                                  {"zyl_speed_range", "20.5", 20, false},
                                  {"zyl_speed_range", "0", 1, true},
                                  {"zyl_speed_range", "0.5", 1, true},
                                  {"zyl_speed_range", "21", 1, true},
                                  {"zyl_speed_range", "-3", 1, true},
                                  {"zyl_speed_range", "", 1, true}}) {
        fresh_world();
        const bool offset = row.key == "adc_offset";
        const std::string other = offset ? "zyl_speed_range= 5\r\n" : "adc_offset= 470\r\n";
        const std::string head = "[tyxo]\r\nlog_mode= 1\r\n" + std::string(row.key) + "=";
        put_file("tyxo.ini", head + std::string(row.in_file) + "\r\n" + other);
        mainfrm::load_settings();
        EXPECT_EQ(offset ? sensor::state.adc_offset : sensor::state.zyl_speed_range, row.value)
            << row.key << "=" << row.in_file;
        const std::string kept(row.in_file);
        EXPECT_EQ(file("tyxo.ini"), head + (row.repaired ? (offset ? "479" : "1") : kept) + "\r\n" + other)
            << row.key << "=" << row.in_file;
    }
}

TEST_F(SettingsNumbers, ARepairThatCannotBeWrittenHoldsForThisRun) {
    put_settings("adc_offset=1\nzyl_speed_range=99\n");
    const std::string before = file("tyxo.ini");
    world().unwritable.insert("tyxo.ini");
    mainfrm::load_settings();
    EXPECT_EQ(sensor::state.adc_offset, 479);
    EXPECT_EQ(sensor::state.zyl_speed_range, 1);
    EXPECT_EQ(file("tyxo.ini"), before);
}

TEST_F(SettingsNumbers, AFirstLoadCreatesAFileWithTheTwoRepairsAndNothingElse) {
    mainfrm::load_settings();
    EXPECT_EQ(file("tyxo.ini"), "[tyxo]\r\nadc_offset=479\r\nzyl_speed_range=1\r\n");
    EXPECT_EQ(world().files.size(), 1U);
}

} // namespace
} // namespace tyxo
