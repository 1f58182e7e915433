// The settings file: where it lies, and what a write does to it.

#include "settings/ini.h"
#include "settings/settings_lines.h"

#include <gtest/gtest.h>

namespace tyxo::Ini {
namespace {

using namespace simulation;

class SettingsFile : public testing::Test {
  protected:
    void SetUp() override { fresh_world(); }
};

TEST_F(SettingsFile, LiesInTheWorkingDirectoryUnderTheProgramsName) {
    put_file("tyxo.ini", "[tyxo]\r\nevtpath=C:\\events\\\r\n");
    EXPECT_EQ(ini_read("evtpath"), "C:\\events\\");
    ini_write("passwd", "abc");
    EXPECT_EQ(file("tyxo.ini"), "[tyxo]\r\nevtpath=C:\\events\\\r\npasswd=abc\r\n");
    EXPECT_EQ(world().files.size(), 1U);
}

TEST_F(SettingsFile, FollowsTheNameOfTheExecutable) {
    world().executable = "plant2";
    put_file("tyxo.ini", "[tyxo]\r\npasswd=other\r\n");
    put_file("plant2.ini", "[tyxo]\r\npasswd=wrong section\r\n[plant2]\r\npasswd=abc\r\n");
    EXPECT_EQ(ini_read("passwd"), "abc");
    ini_write("passwd", "def");
    EXPECT_EQ(file("plant2.ini"), "[tyxo]\r\npasswd=wrong section\r\n[plant2]\r\npasswd=def\r\n");
    EXPECT_EQ(file("tyxo.ini"), "[tyxo]\r\npasswd=other\r\n");
}

TEST_F(SettingsFile, AMissingFileReadsAsEmptyTexts) {
    EXPECT_EQ(ini_read("evtpath"), "");
    EXPECT_TRUE(world().files.empty()) << "reading creates nothing";
}

TEST_F(SettingsFile, TheFirstWriteCreatesFileSectionAndKey) {
    ini_write("adc_offset", "479");
    EXPECT_EQ(file("tyxo.ini"), "[tyxo]\r\nadc_offset=479\r\n");
}

TEST_F(SettingsFile, EveryReadGoesToTheFile) {
    put_settings("location 1=Engine 1\n");
    EXPECT_EQ(ini_read("location 1"), "Engine 1");
    put_settings("location 1=Engine 2\n");
    EXPECT_EQ(ini_read("location 1"), "Engine 2");
    world().files.clear();
    EXPECT_EQ(ini_read("location 1"), "");
}

TEST_F(SettingsFile, AValueIsCutToItsFirst69Characters) {
    for (const std::size_t length : {0U, 1U, 68U, 69U, 70U, 71U, 500U}) {
        const std::string value = std::string("C:\\") + std::string(length, 'x') + "\\";
        put_settings("logpath 1=" + value + "\n");
        EXPECT_EQ(ini_read("logpath 1"), value.substr(0, 69)) << length;
    }
}

TEST_F(SettingsFile, QuotesAndBlanksAreNoPartOfThe69Characters) {
    const std::string value(69, 'q');
    put_settings("logpath 1=    \"" + value + "\"   \n");
    EXPECT_EQ(ini_read("logpath 1"), value);
}

TEST_F(SettingsFile, AWriteIsNotCut) {
    const std::string value(200, 'w');
    ini_write("evtpath", value);
    EXPECT_EQ(file("tyxo.ini"), "[tyxo]\r\nevtpath=" + value + "\r\n");
}

TEST_F(SettingsFile, TextsAreBytes) {
    const std::string value = "M\xFChle \x80\x9F\xFF";
    ini_write("location 1", value);
    EXPECT_EQ(ini_read("location 1"), value);
    EXPECT_NE(file("tyxo.ini").find(value), std::string::npos);
}

TEST_F(SettingsFile, AKeyWrittenInOneSpellingIsReadInTheOther) {
    struct spelling {
        std::string_view written;
        std::string_view read;
    };
    for (const spelling& key : {spelling{"IPPort", "IPport"}, spelling{"IpenaTRS", "IPenaTRS"},
                                spelling{"Ippolar", "IPpolar"}, spelling{"Ipsysstat", "IPsysstat"}}) {
        ini_write(key.written, " 1");
        ini_write(key.read, " 7");
        EXPECT_EQ(ini_read(key.written), "7");
        EXPECT_EQ(ini_read(key.read), "7");
    }
}

TEST_F(SettingsFile, KeysOfOneChangeReachTheFileTogetherAndAreReadAtOnce) {
    put_settings("upd_periode= 250\n");
    const std::string before = file("tyxo.ini");
    {
        const one_change both;
        ini_write("upd_periode", " 500");
        ini_write("log_mode", " 1");
        EXPECT_EQ(ini_read("upd_periode"), "500");
        EXPECT_EQ(file("tyxo.ini"), before);
    }
    EXPECT_EQ(ini_read("upd_periode"), "500");
    EXPECT_EQ(ini_read("log_mode"), "1");
    EXPECT_EQ(world().replacements, 1);
}

TEST_F(SettingsFile, AChangeWithoutAKeyWritesNothing) {
    { const one_change nothing; }
    EXPECT_EQ(world().replacements, 0);
    EXPECT_TRUE(world().files.empty());
}

TEST_F(SettingsFile, AChangeInsideAnotherIsAPartOfIt) {
    {
        const one_change outer;
        {
            const one_change inner;
            ini_write("log_mode", " 1");
        }
        EXPECT_TRUE(world().files.empty());
        ini_write("xy_tmv", " 1");
    }
    EXPECT_EQ(file("tyxo.ini"), "[tyxo]\r\nlog_mode= 1\r\nxy_tmv= 1\r\n");
}

struct disk_fault {
    std::string_view name;
    void (*strike)();
};

class SettingsFileOnABadDisk : public SettingsFile, public testing::WithParamInterface<disk_fault> {};

TEST_P(SettingsFileOnABadDisk, AFailedWriteLeavesTheOldFileAndSaysNothing) {
    put_settings("max_sensors= 2\nlocation 1=Engine 1\n");
    const std::string before = file("tyxo.ini");
    GetParam().strike();
    ini_write("max_sensors", " 3");
    ini_write("a new key", "value");
    EXPECT_EQ(file("tyxo.ini"), before);
    EXPECT_TRUE(world().boxes.empty());
    EXPECT_TRUE(world().debug.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Faults, SettingsFileOnABadDisk,
    testing::Values(disk_fault{"WriteProtectedFile", [] { world().unwritable.insert("tyxo.ini"); }},
                    disk_fault{"WriteProtectedFolder", [] { world().unwritable.insert("."); }},
                    disk_fault{"FullDisk", [] { world().disk_space = 0; }},
                    disk_fault{"NearlyFullDisk", [] { world().disk_space = 20; }},
                    // A writer that takes an unreadable file for an empty one would lose all other keys.
                    disk_fault{"FileThatCannotBeReadNow", [] { world().unreadable.insert("tyxo.ini"); }}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace tyxo::Ini
