// The event file: its lines, and what is done when it is lost.

#include "logging/event_file.h"

#include "link/indicators.h"
#include "logging/logging_machine.h"
#include "settings/ini.h"
#include "settings/settings.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tyxo {
namespace {

using namespace simulation;

constexpr std::string_view events = "C:/events/TY_all_events.txt";
constexpr std::string_view no_directory = "Directory for Eventfile doesn't exist, start setup Installation !";

std::string event_settings(std::string_view enabled, std::string_view folder = "C:\\events\\") {
    return logging_settings(1, "eventfile_ena=" + std::string(enabled) +
                                   "\r\nevtpath=" + std::string(folder) + "\r\n");
}

/// A started program with its event file in a folder that exists, and no line in it yet.
class EventFile : public testing::Test {
  protected:
    void SetUp() override {
        fresh_world();
        world().folders.insert("C:/events");
        put_file("tyxo.ini", event_settings("1"));
        mainfrm::load_settings();
        event_file_init();
    }
};

TEST_F(EventFile, ALineIsTheTextBehindAMark) {
    event_line("07-02-2026;13:05:09;Tyxo Logger software started !");
    EXPECT_EQ(file(events), "##;07-02-2026;13:05:09;Tyxo Logger software started !\r\n");
}

TEST_F(EventFile, LinesAreAppendedInTheirOrderAndHaveNoHeader) {
    for (const char* text : {"a", "", " b ; c ", "M\xFChle \x80"})
        event_line(text);
    EXPECT_EQ(file(events), "##;a\r\n##;\r\n##; b ; c \r\n##;M\xFChle \x80\r\n");
}

TEST_F(EventFile, AFileFromAnEarlierRunIsGoneOnWith) {
    put_file(events, "##;old\r\n");
    event_line("new");
    EXPECT_EQ(file(events), "##;old\r\n##;new\r\n");
}

TEST_F(EventFile, IsOpenedAnewForEachLine) {
    event_line("a");
    event_line("b");
    EXPECT_EQ(world().opened, (text_lines{std::string(events), std::string(events)}));
}

TEST_F(EventFile, AFileDeletedWhileTheProgramRunsComesBackWithTheNextLine) {
    event_line("a");
    world().files.erase(std::string(events));
    event_line("b");
    EXPECT_EQ(file(events), "##;b\r\n");
    EXPECT_TRUE(world().boxes.empty());
}

TEST_F(EventFile, FolderAndNameAreJoinedWithoutASeparator) {
    Ini::ini_write("evtpath", "C:\\events\\Plant_");
    event_file_init();
    event_line("a");
    EXPECT_EQ(file("C:/events/Plant_TY_all_events.txt"), "##;a\r\n");
}

TEST_F(EventFile, TheFolderIsReadFromTheSettingsFileAtTheMomentOfInit) {
    Ini::ini_write("evtpath", "C:\\other\\");
    settings.evtpath = "C:\\neither\\";
    event_file_init();
    EXPECT_EQ(event_file.event_path, "C:\\other\\TY_all_events.txt");
    Ini::ini_write("evtpath", "C:\\later\\");
    world().folders.insert("C:/other");
    event_line("a");
    EXPECT_TRUE(exists("C:/other/TY_all_events.txt"));
}

TEST_F(EventFile, ItsNumberIsOfTheUpperRange) {
    EXPECT_GE(event_file.event_fileno, 256);
    EXPECT_LE(event_file.event_fileno, 511);
}

TEST_F(EventFile, OnlyTheValueOneEnablesIt) {
    for (const char* enabled : {"0", "", "2", "-1", "yes", "10"}) {
        fresh_world();
        put_file("tyxo.ini", event_settings(enabled, "Q:\\no such folder\\"));
        mainfrm::load_settings();
        event_file_init();
        event_line("a");
        EXPECT_EQ(event_file.event_path, "") << enabled;
        EXPECT_EQ(event_file.event_fileno, 0) << enabled;
        EXPECT_TRUE(world().opened.empty()) << enabled;
        EXPECT_TRUE(world().boxes.empty()) << enabled;
        EXPECT_FALSE(event_file.event_file_failed) << enabled;
    }
    for (const char* enabled : {"1", " 1", "1.0", "1.4"}) {
        fresh_world();
        put_file("tyxo.ini", event_settings(enabled, ""));
        mainfrm::load_settings();
        event_file_init();
        event_line("a");
        EXPECT_EQ(file("TY_all_events.txt"), "##;a\r\n") << enabled;
    }
}

TEST_F(EventFile, AMissingFolderIsToldOnceAndEndsItForThisRun) {
    world().folders.erase("C:/events");
    event_line("a");
    ASSERT_EQ(world().boxes.size(), 1U);
    EXPECT_EQ(world().boxes[0].text, no_directory);
    EXPECT_EQ(world().boxes[0].buttons, box_buttons::ok);
    EXPECT_TRUE(event_file.event_file_failed);
    world().folders.insert("C:/events");
    event_line("b");
    EXPECT_EQ(world().boxes.size(), 1U);
    EXPECT_FALSE(exists(events));
}

struct fault_row {
    std::string_view name;
    void (*strike)();
};

TEST_F(EventFile, EveryKindOfFailureHasTheSameMessage) {
    for (const fault_row& row :
         {fault_row{"write protected file", [] { world().unwritable.insert(std::string(events)); }},
          fault_row{"write protected folder", [] { world().unwritable.insert("C:/events"); }},
          fault_row{"full disk", [] { world().disk_space = 3; }}}) {
        SetUp();
        event_line("before");
        row.strike();
        event_line("lost");
        ASSERT_EQ(world().boxes.size(), 1U) << row.name;
        EXPECT_EQ(world().boxes[0].text, no_directory) << row.name;
        world().unwritable.clear();
        world().disk_space.reset();
        event_line("not tried");
        EXPECT_EQ(file(events), "##;before\r\n") << row.name;
        EXPECT_EQ(world().boxes.size(), 1U) << row.name;
    }
}

TEST_F(EventFile, ALineThatASlowDiskLostIsToldWithTheNextOne) {
    event_line("before");
    world().late_failure = true;
    EXPECT_TRUE(world().boxes.empty());
    event_line("not tried");
    ASSERT_EQ(world().boxes.size(), 1U);
    EXPECT_EQ(world().boxes[0].text, no_directory);
    EXPECT_TRUE(event_file.event_file_failed);
    EXPECT_EQ(file(events), "##;before\r\n");
}

TEST_F(EventFile, ALineRaisedWhileItsMessageIsUpIsNotTried) {
    world().folders.erase("C:/events");
    world().during_box = [] {
        world().folders.insert("C:/events");
        event_line("meanwhile");
    };
    event_line("a");
    EXPECT_EQ(world().boxes.size(), 1U);
    EXPECT_FALSE(exists(events));
}

TEST_F(EventFile, AChangeOfTheOptionCountsFromTheNextStartOn) {
    settings.eventfile_ena_edit = 0;
    Ini::var_save();
    event_line("a");
    EXPECT_EQ(file(events), "##;a\r\n");

    const std::string saved = file("tyxo.ini");
    fresh_world();
    world().folders.insert("C:/events");
    put_file("tyxo.ini", saved);
    mainfrm::load_settings();
    event_file_init();
    event_line("b");
    EXPECT_FALSE(exists(events));
}

TEST(EventFileOfAStart, AMissingFolderIsToldByTheStartLineAndTheProgramGoesOn) {
    start_on(event_settings("1", "C:\\missing\\"));
    ASSERT_EQ(world().boxes.size(), 1U);
    EXPECT_EQ(world().boxes[0].text, no_directory);
    EXPECT_FALSE(world().exit_code.has_value());
    mainfrm::startstop_click();
    EXPECT_TRUE(sensor::state.measure_running);
    EXPECT_EQ(world().boxes.size(), 1U);
}

TEST(EventFileOfAStart, ARestartTriesAgain) {
    start_on(event_settings("1", "C:\\missing\\"));
    EXPECT_TRUE(event_file.event_file_failed);
    start_on(event_settings("1", "C:\\logs\\"));
    EXPECT_FALSE(event_file.event_file_failed);
    EXPECT_EQ(file("C:/logs/TY_all_events.txt"), "##;07-02-2026;13:05:09;Tyxo Logger software started !\r\n");
}

TEST(EventFileOfAStart, StartAndCloseOfTheProgramAreLinesOfTheirTime) {
    start_on(event_settings("1", "C:\\logs\\"));
    set_local({2026, 12, 1, 1, 2, 3});
    mainfrm::query_unload();
    EXPECT_EQ(lines_of(file("C:/logs/TY_all_events.txt")),
              (text_lines{"##;07-02-2026;13:05:09;Tyxo Logger software started !",
                          "##;12-01-2026;01:02:03;Tyxo Data Logger software stopped !"}));
    EXPECT_EQ(indicators.Text_status.text(), "") << "program events are not in the box";
}

} // namespace
} // namespace tyxo
