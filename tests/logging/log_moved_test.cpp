// A log whose file, folder or disk goes away while it is written, and comes back.

#include "logging/event_file.h"
#include "logging/log.h"
#include "logging/log_header.h"
#include "logging/logging_machine.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;
using mainfrm::start_channel_click;

constexpr std::string_view anew = "log opened anew : C:\\logs\\Engine 1\\20260702Qu_Engine 1.xlg";

class LogMoved : public testing::Test {
  protected:
    void SetUp() override {
        start_on(logging_settings(2));
        start_logging(0);
        log::log_note(0, "before");
        world().debug.clear();
    }
};

TEST_F(LogMoved, AFileThatWasMovedIsBegunAnewWithItsHeaderBeforeTheNextLine) {
    const std::string header = log::log_header(0);
    advance(1000);
    const std::string moved = take_file_away(log_path(0));
    log::log_note(0, "behind");
    EXPECT_EQ(moved, header + "<#-- 13:05:09 before -->\r\n");
    EXPECT_EQ(file(log_path(0)), header + "<#-- 13:05:10 behind -->\r\n");
    EXPECT_EQ(world().debug, text_lines{std::string(anew)});
}

TEST_F(LogMoved, AnotherFileAtThePathIsAppendedTo) {
    advance(1000);
    take_file_away(log_path(0));
    put_file(log_path(0), "somebody's line\r\n");
    log::log_note(0, "behind");
    EXPECT_EQ(file(log_path(0)), "somebody's line\r\n<#-- 13:05:10 behind -->\r\n");
}

TEST_F(LogMoved, AFolderThatWasRemovedIsMadeAgain) {
    advance(1000);
    take_file_away(log_path(0));
    world().folders.erase("C:/logs/Engine 1");
    log::log_note(0, "behind");
    EXPECT_EQ(logged(0), text_lines{"<#-- 13:05:10 behind -->"});
}

TEST_F(LogMoved, ThePathIsLookedAtOnceASecond) {
    take_file_away(log_path(0));
    advance(999);
    log::log_note(0, "into the file that went away");
    EXPECT_FALSE(exists(log_path(0)));
    advance(1);
    log::log_note(0, "behind");
    EXPECT_EQ(logged(0), text_lines{"<#-- 13:05:10 behind -->"});
}

TEST_F(LogMoved, TheLookFollowsTheClockThatNeverJumps) {
    advance(1000);
    log::log_note(0, "looked");
    set_local({2026, 7, 2, 12, 0, 0});
    take_file_away(log_path(0));
    advance(1000);
    log::log_note(0, "behind");
    EXPECT_EQ(logged(0), text_lines{"<#-- 12:00:01 behind -->"});
}

TEST_F(LogMoved, ADiskThatIsAwayIsTriedOnceASecondAndTakenUpAgain) {
    advance(1000);
    const std::string kept = take_file_away(log_path(0));
    world().folders.erase("C:/logs");
    world().folders.erase("C:/logs/Engine 1");
    for (int second = 0; second < 5; ++second) {
        log::log_note(0, "lost");
        log::log_note(0, "lost too");
        advance(1000);
    }
    EXPECT_EQ(world().debug, text_lines{});
    world().folders.insert("C:/logs");
    world().folders.insert("C:/logs/Engine 1");
    put_file(log_path(0), kept);
    log::log_note(0, "back");
    log::log_note(0, "and on");
    EXPECT_EQ(logged(0),
              (text_lines{"<#-- 13:05:09 before -->", "<#-- 13:05:15 back -->", "<#-- 13:05:15 and on -->"}));
    EXPECT_EQ(world().debug, text_lines{std::string(anew)});
}

TEST_F(LogMoved, AFailedWriteOpensAnewAndIsTriedOnceMore) {
    advance(1000);
    world().refused_writes = 1;
    log::log_note(0, "not lost");
    EXPECT_EQ(logged(0), (text_lines{"<#-- 13:05:09 before -->", "<#-- 13:05:10 not lost -->"}));
    EXPECT_EQ(world().debug, text_lines{std::string(anew)});
}

TEST_F(LogMoved, FailedWritesOpenAnewOnceASecond) {
    advance(1000);
    world().opened.clear();
    world().refused_writes = 1000;
    for (int line = 0; line < 30; ++line) {
        log::log_note(0, "lost");
        advance(100);
    }
    EXPECT_EQ(world().opened.size(), 3U);
    EXPECT_EQ(world().debug.size(), 3U);
}

TEST_F(LogMoved, AHeaderThatIsDueStaysSoWhenTheFileIsOpenedAnew) {
    world().disk_space = 0;
    start_logging(1);
    advance(1000);
    log::log_note(1, "lost");
    world().disk_space.reset();
    advance(1000);
    log::log_note(1, "kept");
    EXPECT_EQ(logged(1), text_lines{"<#-- 13:05:11 kept -->"});
}

TEST_F(LogMoved, AClosedLogIsNotOpenedAnew) {
    start_channel_click(0);
    take_file_away(log_path(0));
    advance(5000);
    log::log_note(0, "late");
    EXPECT_FALSE(exists(log_path(0)));
}

TEST(LogOnThePowerCut, HeadersClosingsAndEventLinesAreBroughtToTheDiskAtOnce) {
    const std::string log_file = log_path(0);
    start_on(logging_settings(1, "eventfile_ena=1\r\nevtpath=C:\\logs\\\r\n"));
    EXPECT_EQ(world().synced, text_lines{"C:/logs/TY_all_events.txt"});
    world().synced.clear();
    log::createlog(0);
    EXPECT_EQ(world().synced, text_lines{log_file}) << "the header";
    sensor::channel_at(0).log_state = log_states::open;
    log::log_note(0, "some seconds later");
    EXPECT_EQ(world().synced.size(), 1U);
    log::close_log(0);
    EXPECT_EQ(world().synced, (text_lines{log_file, log_file})) << "the closing";
    event_line("x");
    EXPECT_EQ(world().synced.back(), "C:/logs/TY_all_events.txt");
    EXPECT_EQ(world().synced.size(), 3U);
}

} // namespace
} // namespace tyxo
