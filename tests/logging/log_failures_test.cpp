// Logs that cannot be written.

#include "basics/failure.h"
#include "logging/log.h"
#include "logging/log_header.h"
#include "logging/logging_machine.h"
#include "settings/ini.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;
using mainfrm::start_channel_click;

constexpr std::string_view record = "<REC1> 13:05:09 51 1480 1234 48 7 </REC1>";

class LogFailures : public testing::Test {
  protected:
    void SetUp() override { start_on(logging_settings(2)); }

    static void expect_silence() { EXPECT_TRUE(world().boxes.empty()); }
};

struct bad_place {
    std::string_view name;
    std::string_view logpath;
    std::string_view location;
};

class LogInABadPlace : public LogFailures, public testing::WithParamInterface<bad_place> {};

TEST_P(LogInABadPlace, LosesItsLinesWithoutAWordAndMeasuringGoesOn) {
    Ini::ini_write("logpath 1", GetParam().logpath);
    Ini::ini_write("location 1", GetParam().location);
    start_logging(0);
    EXPECT_EQ(sensor::state.channels[0].log_state, log_states::open);
    EXPECT_TRUE(world().opened.empty());
    EXPECT_EQ(world().debug, text_lines{"createlog : Path exists"});
    log::log_comment(0, "lost");
    log::log_note(0, "lost");
    feed(0, measured_body({.speed = 77}));
    EXPECT_EQ(sensor::state.channels[0].speed, 77);
    expect_silence();
    EXPECT_EQ(world().files.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Places, LogInABadPlace,
                         testing::Values(bad_place{"MissingParentFolder", "C:\\no such folder\\", "Engine 1"},
                                         bad_place{"MissingDrive", "Q:\\", "Engine 1"},
                                         bad_place{"IllegalCharacter", "C:\\logs\\", "Engine ?"},
                                         bad_place{"FolderSeparatorInTheName", "C:\\logs\\", "Mill/Engine"},
                                         bad_place{"NothingAtAll", "", ""}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(LogFailures, ABadPlaceThatIsMendedTakesTheNextPeriodsLog) {
    Ini::ini_write("logpath 1", "C:\\late\\");
    start_logging(0);
    log::log_note(0, "lost");
    world().folders.insert("C:/late");
    log::log_note(0, "still lost");
    set_local({2026, 7, 3, 0, 0, 0});
    log::log_note(0, "kept");
    EXPECT_EQ(behind_header("C:/late/Engine 1/20260703Qu_Engine 1.xlg"),
              (text_lines{"<!-- 00:00:00 Log Started -->", "<#-- 00:00:00 kept -->"}));
}

TEST_F(LogFailures, ABadPlaceOfOneChannelDoesNotTouchTheOthers) {
    Ini::ini_write("logpath 1", "Q:\\");
    start_logging(0);
    start_logging(1);
    set_local({2026, 7, 3, 0, 0, 0});
    log::log_note(1, "kept");
    EXPECT_EQ(logged(1, "20260703"), (text_lines{"<!-- 00:00:00 Log Started -->", "<#-- 00:00:00 kept -->"}));
    expect_silence();
}

TEST_F(LogFailures, ARecordThatCannotBeWrittenIsAFailure) {
    start_logging(0);
    world().disk_space = 0;
    EXPECT_THROW(log::log_record(0, "1"), failure);
    EXPECT_THROW(log::log_record(0, "3"), failure);
    EXPECT_THROW(log::log_record(0, "4"), failure);
    EXPECT_NO_THROW(log::log_record(0, "2"));
    EXPECT_NO_THROW(log::log_comment(0, "x"));
    EXPECT_NO_THROW(log::log_note(0, "x"));
    EXPECT_NO_THROW(log::close_log(0));
}

TEST_F(LogFailures, TheSerialEventTellsALostRecordToTheDebugOutput) {
    start_logging(0);
    world().disk_space = 0;
    feed(0, measured_body({.speed = 77}));
    EXPECT_EQ(world().debug, text_lines{"mscomm: Disk full"});
    EXPECT_EQ(sensor::state.channels[0].speed, 77) << "the values are stored before";
    expect_silence();
}

TEST_F(LogFailures, AFullDiskLosesLinesUntilThereIsSpaceAgain) {
    start_logging(0);
    feed(0, measured_body({.speed = 1}));
    world().disk_space = 0;
    feed(0, measured_body({.speed = 2}));
    log::log_comment(0, "lost");
    log::log_note(0, "lost");
    world().disk_space.reset();
    feed(0, measured_body({.speed = 3}));
    log::log_note(0, "kept");
    EXPECT_EQ(logged(0), (text_lines{"<REC1> 13:05:09 51 1 1234 48 7 </REC1>",
                                     "<REC1> 13:05:09 51 3 1234 48 7 </REC1>", "<#-- 13:05:09 kept -->"}));
}

TEST_F(LogFailures, AHeaderThatDoesNotFitLeavesNothingAndStandsBeforeTheFirstLineThatDoes) {
    start_channel_click(0);
    world().disk_space = 100;
    feed(0, parameter_body({}));
    EXPECT_EQ(sensor::state.channels[0].log_state, log_states::open);
    EXPECT_EQ(file(log_path(0)), "");
    feed(0, measured_body());
    EXPECT_EQ(file(log_path(0)), "") << "the line would fit, but its header does not";
    world().disk_space.reset();
    feed(0, measured_body());
    EXPECT_TRUE(file(log_path(0)).starts_with("<?xml version=\"1.0\"?>\r\n<!DOCTYPE LOG >\r\n<HEADER>\r\n"));
    EXPECT_EQ(logged(0), text_lines{std::string(record)});
    expect_silence();
}

TEST_F(LogFailures, ALineThatDoesNotFitBehindItsLateHeaderIsLostAlone) {
    start_channel_click(0);
    world().disk_space = 0;
    feed(0, parameter_body({}));
    const std::string header = log::log_header(0);
    world().disk_space = header.size() + 5;
    feed(0, measured_body());
    EXPECT_EQ(file(log_path(0)), header);
    world().disk_space.reset();
    feed(0, measured_body());
    EXPECT_EQ(file(log_path(0)), header + std::string(record) + "\r\n");
}

TEST_F(LogFailures, AnEmptyFileOfAHeaderThatNeverFittedGetsNoneAtTheNextStart) {
    start_channel_click(0);
    world().disk_space = 30;
    feed(0, parameter_body({}));
    start_channel_click(0);
    world().disk_space.reset();
    start_logging(0);
    feed(0, measured_body());
    EXPECT_EQ(lines_of(file(log_path(0))), text_lines{std::string(record)});
}

TEST_F(LogFailures, AFullDiskAtARotationLosesOnlyWhatDoesNotFit) {
    start_logging(0);
    set_local({2026, 7, 3, 0, 0, 0});
    world().disk_space = 0;
    EXPECT_NO_THROW(log::log_comment(0, "lost"));
    world().disk_space.reset();
    log::log_comment(0, "kept");
    EXPECT_EQ(logged(0, "20260702"), text_lines{});
    EXPECT_EQ(logged(0, "20260703"), text_lines{"<!-- 00:00:00 kept -->"});
}

TEST_F(LogFailures, AWriteProtectedFileLosesEveryLine) {
    start_logging(0);
    const std::string before = file(log_path(0));
    world().unwritable.insert(log_path(0));
    feed(0, measured_body());
    log::log_comment(0, "lost");
    start_channel_click(0);
    EXPECT_EQ(file(log_path(0)), before);
    EXPECT_EQ(world().debug, text_lines{"mscomm: Device I/O error"});
    expect_silence();
}

TEST_F(LogFailures, AFrameBehindALostRecordInTheSameEventIsStillTaken) {
    start_logging(0);
    world().unwritable.insert(log_path(0));
    receive(0, closed(measured_body({.speed = 1})) + closed(measured_body({.speed = 2})));
    EXPECT_EQ(sensor::state.channels[0].speed, 2);
}

TEST_F(LogFailures, ALostCurveRecordLeavesTheNextCurveWhole) {
    start_logging(0);
    world().disk_space = 0;
    for (i32 block = 1; block <= 4; ++block)
        feed(0, curve_body(":03", block, 0));
    world().disk_space.reset();
    for (i32 block = 1; block <= 4; ++block)
        feed(0, curve_body(":03", block, 1000));
    ASSERT_EQ(logged(0).size(), 1U);
    EXPECT_TRUE(logged(0)[0].starts_with("<REC2> 13:05:09 1000 1001 "));
}

TEST_F(LogFailures, AnUnknownChannelIsAFailureOfItsCaller) {
    EXPECT_THROW(log::createlog(4), failure);
    EXPECT_THROW(log::createlog(-1), failure);
    EXPECT_THROW(log::log_record(4, "1"), failure);
}

} // namespace
} // namespace tyxo
