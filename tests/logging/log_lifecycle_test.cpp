// When a log begins, goes on and ends.

#include "link/calls.h"
#include "logging/log.h"
#include "logging/logging_machine.h"
#include "settings/ini.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tyxo {
namespace {

using namespace simulation;
using mainfrm::start_channel_click;
using mainfrm::startstop_click;

constexpr std::string_view record_line = "<REC1> 13:05:09 51 1480 1234 48 7 </REC1>";
constexpr std::string_view stopped_line = "<!-- 13:05:09 Measure Stopped -->";

class LogLifecycle : public testing::Test {
  protected:
    void SetUp() override { start_on(logging_settings(3)); }
};

long header_count(std::string_view path) {
    const text_lines lines = lines_of(file(path));
    return std::ranges::count(lines, std::string("<LOG>"));
}

TEST_F(LogLifecycle, StateIsNoneWantedOpen) {
    EXPECT_EQ(sensor::state.channels[0].log_state, log_states::none);
    start_channel_click(0);
    EXPECT_EQ(sensor::state.channels[0].log_state, log_states::wanted);
    feed(0, measured_body());
    feed(0, status_body());
    EXPECT_EQ(sensor::state.channels[0].log_state, log_states::wanted);
    feed(0, parameter_body({}));
    EXPECT_EQ(sensor::state.channels[0].log_state, log_states::open);
    start_channel_click(0);
    EXPECT_EQ(sensor::state.channels[0].log_state, log_states::open) << "a stop leaves it";
    start_channel_click(0);
    EXPECT_EQ(sensor::state.channels[0].log_state, log_states::wanted);
}

TEST_F(LogLifecycle, NoFileBeforeTheFirstParameterFrame) {
    start_channel_click(0);
    feed(0, measured_body());
    feed(0, status_body({.alarm = 0x2000}));
    EXPECT_TRUE(world().opened.empty());
    EXPECT_FALSE(world().folders.contains("C:/logs/Engine 1"));
    feed(0, parameter_body({}));
    EXPECT_EQ(world().opened, text_lines{log_path(0)});
}

TEST_F(LogLifecycle, OnlyTheFirstParameterFrameBeginsTheFile) {
    start_logging(0);
    feed(0, parameter_body({}));
    feed(0, parameter_body({.numzyl = 4}));
    EXPECT_EQ(world().opened.size(), 1U);
    EXPECT_EQ(header_count(log_path(0)), 1);
}

TEST_F(LogLifecycle, AFileBeginsWithItsHeaderAndWithoutACommentOfTheStart) {
    start_logging(0);
    EXPECT_EQ(logged(0), text_lines{});
    feed(0, measured_body());
    EXPECT_EQ(logged(0), text_lines{std::string(record_line)});
}

TEST_F(LogLifecycle, ACommentBeforeTheFirstParameterFrameIsDropped) {
    start_channel_click(0);
    feed(0, status_body({.alarm = 0x2000}));
    feed(0, measured_body({.test_signal = 1}));
    feed(0, parameter_body({}));
    EXPECT_EQ(logged(0), text_lines{});
}

TEST_F(LogLifecycle, AStopClosesTheFileWithAComment) {
    start_logging(0);
    feed(0, measured_body());
    start_channel_click(0);
    EXPECT_EQ(logged(0), (text_lines{std::string(record_line), std::string(stopped_line)}));
    EXPECT_FALSE(log::state.log_files[0].is_open());
}

TEST_F(LogLifecycle, AStopBeforeTheFirstParameterFrameLeavesNoFile) {
    start_channel_click(0);
    feed(0, measured_body());
    start_channel_click(0);
    EXPECT_TRUE(world().opened.empty());
    EXPECT_EQ(world().files.size(), 1U) << "the settings file";
}

TEST_F(LogLifecycle, ASecondStartInThePeriodGoesOnWithTheFileWithoutAHeader) {
    start_logging(0);
    feed(0, measured_body());
    start_channel_click(0);
    start_logging(0);
    feed(0, measured_body());
    start_channel_click(0);
    EXPECT_EQ(header_count(log_path(0)), 1);
    EXPECT_EQ(logged(0), (text_lines{std::string(record_line), std::string(stopped_line),
                                     std::string(record_line), std::string(stopped_line)}));
}

TEST_F(LogLifecycle, AFileFromAnEarlierRunIsGoneOnWith) {
    world().folders.insert("C:/logs/Engine 1");
    put_file(log_path(0), "an old line\r\n");
    start_logging(0);
    feed(0, measured_body());
    EXPECT_EQ(file(log_path(0)), "an old line\r\n" + std::string(record_line) + "\r\n");
}

TEST_F(LogLifecycle, ATornLastLineIsEndedBeforeTheFirstNewOne) {
    for (const auto& [tail, whole] :
         {std::pair{"<REC1> 13:0", "<REC1> 13:0\r\n"}, {"<REC1> 13:05:09\r", "<REC1> 13:05:09\r\n"}}) {
        SetUp();
        world().folders.insert("C:/logs/Engine 1");
        put_file(log_path(0), tail);
        start_logging(0);
        EXPECT_EQ(file(log_path(0)), tail) << "nothing is written before there is a line";
        feed(0, measured_body());
        feed(0, measured_body());
        EXPECT_EQ(file(log_path(0)),
                  whole + std::string(record_line) + "\r\n" + std::string(record_line) + "\r\n");
    }
}

TEST_F(LogLifecycle, AnEmptyFileThatExistsGetsNoHeader) {
    world().folders.insert("C:/logs/Engine 1");
    put_file(log_path(0), "");
    start_logging(0);
    feed(0, measured_body());
    EXPECT_EQ(file(log_path(0)), std::string(record_line) + "\r\n");
}

TEST_F(LogLifecycle, AFileThatCannotBeReadIsGoneOnWithAndNeverEmptied) {
    start_logging(0);
    feed(0, measured_body());
    start_channel_click(0);
    const std::string before = file(log_path(0));
    world().unreadable.insert(log_path(0));
    start_logging(0);
    feed(0, measured_body());
    EXPECT_EQ(file(log_path(0)), before + std::string(record_line) + "\r\n");
}

TEST_F(LogLifecycle, TheFolderIsMadeOnceAndThenExists) {
    start_logging(0);
    EXPECT_TRUE(world().folders.contains("C:/logs/Engine 1"));
    EXPECT_TRUE(world().debug.empty());
    start_channel_click(0);
    start_logging(0);
    EXPECT_EQ(world().debug, text_lines{"createlog : Path exists"});
}

TEST_F(LogLifecycle, NameAndFolderComeFromTheSettingsFileAtTheMoment) {
    put_file("tyxo.ini", logging_settings(3));
    Ini::ini_write("location 1", "Mill; \xD6st");
    Ini::ini_write("logpath 1", "C:\\");
    start_logging(0);
    EXPECT_EQ(world().opened, text_lines{"C:/Mill; \xD6st/20260702Qu_Mill; \xD6st.xlg"});
    EXPECT_EQ(sensor::state.channels[0].logname, "20260702Qu_Mill; \xD6st.xlg");
    EXPECT_EQ(sensor::state.channels[0].location, "Engine 1");
}

TEST_F(LogLifecycle, LogPathAndLocationAreJoinedWithoutASeparator) {
    Ini::ini_write("logpath 1", "C:\\logs\\Plant_");
    start_logging(0);
    EXPECT_EQ(world().opened, text_lines{"C:/logs/Plant_Engine 1/20260702Qu_Engine 1.xlg"});
}

TEST_F(LogLifecycle, EachChannelHasItsOwnFile) {
    startstop_click();
    for (i16 channel = 0; channel < 3; ++channel) {
        feed(channel, parameter_body({}));
        for (i16 frames = 0; frames <= channel; ++frames)
            feed(channel, measured_body());
    }
    for (i16 channel = 0; channel < 3; ++channel) {
        EXPECT_EQ(logged(channel),
                  text_lines(static_cast<std::size_t>(channel) + 1, std::string(record_line)));
        EXPECT_EQ(sensor::state.channels[channel].logname,
                  "20260702Qu_Engine " + std::to_string(channel + 1) + ".xlg");
    }
    startstop_click();
    for (i16 channel = 0; channel < 3; ++channel)
        EXPECT_EQ(logged(channel).back(), stopped_line);
}

TEST_F(LogLifecycle, FileNumbersAreOfTheLogsRange) {
    startstop_click();
    std::set<i16> numbers;
    for (i16 channel = 0; channel < 3; ++channel) {
        feed(channel, parameter_body({}));
        const i16 number = sensor::state.channels[channel].log_fileno;
        EXPECT_GE(number, 1);
        EXPECT_LE(number, 255);
        numbers.insert(number);
    }
    EXPECT_EQ(numbers.size(), 3U);
}

TEST_F(LogLifecycle, APortThatDoesNotOpenTakesTheWishForALogBack) {
    world().ports[2].refuses_to_open = true;
    start_channel_click(1);
    EXPECT_EQ(sensor::state.channels[1].log_state, log_states::none);
    EXPECT_TRUE(world().opened.empty());
}

TEST_F(LogLifecycle, ALostLinkEndsNoLog) {
    start_logging(0);
    advance(10000);
    EXPECT_TRUE(log::state.log_files[0].is_open());
    EXPECT_EQ(logged(0), text_lines{"<!-- 13:05:12 Evaluator not connected -->"});
    feed(0, measured_body());
    EXPECT_EQ(logged(0), (text_lines{"<!-- 13:05:12 Evaluator not connected -->",
                                     "<REC1> 13:05:19 51 1480 1234 48 7 </REC1>",
                                     "<!-- 13:05:19 Evaluator connected -->"}));
    EXPECT_EQ(world().opened.size(), 1U);
}

TEST_F(LogLifecycle, TheEndOfTheProgramLeavesTheLastRecordAsTheLastLine) {
    start_logging(0);
    feed(0, measured_body());
    const std::string before = file(log_path(0));
    EXPECT_TRUE(mainfrm::query_unload());
    EXPECT_EQ(file(log_path(0)), before);
}

TEST_F(LogLifecycle, AStaleOpenStateAfterAStopLosesItsLinesWithoutAWord) {
    start_logging(0);
    start_channel_click(0);
    const std::string before = file(log_path(0));
    log::log_comment(0, "late");
    log::log_note(0, "late");
    log::close_log(0);
    EXPECT_EQ(file(log_path(0)), before);
    EXPECT_TRUE(world().boxes.empty());
    EXPECT_THROW(log::log_record(0, "1"), failure) << "a record has no error handling of its own";
}

TEST_F(LogLifecycle, ClosingALogThatIsNotOpenIsHarmless) {
    log::close_log(0);
    log::close_log(2);
    EXPECT_TRUE(world().opened.empty());
    EXPECT_EQ(sensor::state.channels[0].log_state, log_states::none);
}

TEST_F(LogLifecycle, TheFilesHaveNoEndMark) {
    start_logging(0);
    start_channel_click(0);
    EXPECT_EQ(file(log_path(0)).find("</LOG>"), std::string::npos);
}

} // namespace
} // namespace tyxo
