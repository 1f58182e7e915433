// The command language, and that each command does what it says.

#include "controller/commands.h"
#include "controller_frames.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace tyxo::controller_sim {
namespace {

class ControllerCommands : public testing::Test {
  protected:
    void give(const std::string& line) { carry_out(*parse_command(line), session); }
    std::vector<std::string> said;
    Session session{0, 1000, [this](const std::string& line) { said.push_back(line); }};
};

TEST_F(ControllerCommands, ThePortIsToldFirst) {
    EXPECT_EQ(said.at(0), "listening on port " + std::to_string(session.server().port()));
    EXPECT_GE(session.server().port(), lowest_free_port);
    EXPECT_LE(session.server().port(), highest_free_port);
}

TEST_F(ControllerCommands, EveryCommandIsUnderstoodAndTold) {
    for (const char* line : {"normal", "silent", "late 90", "exception 4", "split 5", "bytewise", "too-much",
                             "wrong-function", "garbage", "close", "refuse", "normal", "quit"}) {
        give(std::string("  ") + line + " ");
        EXPECT_EQ(said.back(), std::string("ok ") + line);
    }
    EXPECT_TRUE(session.ended());
}

TEST_F(ControllerCommands, RefuseEndsListeningAndNormalBeginsItAnewOnTheSamePort) {
    const int port = session.server().port();
    give("refuse");
    EXPECT_FALSE(session.server().listening());
    give("late 5");
    EXPECT_FALSE(session.server().listening());
    give("normal");
    EXPECT_TRUE(session.server().listening());
    EXPECT_EQ(session.server().port(), port);
}

TEST_F(ControllerCommands, APortThatIsTakenMeanwhileIsTold) {
    give("refuse");
    const Server other(session.server().port(), {[](const Answer&) {}, [](const std::string&) {}});
    give("normal");
    EXPECT_TRUE(said.back().starts_with("error: normal: cannot listen on port ")) << said.back();
}

TEST_F(ControllerCommands, AReportWithoutAFrameHasZeros) {
    said.clear();
    give("report");
    const std::vector<std::string> expected = {
        "channel 1 frames 1=0 8=0 3=0 4=0",  "channel 2 frames 1=0 8=0 3=0 4=0",
        "channel 3 frames 1=0 8=0 3=0 4=0",  "channel 4 frames 1=0 8=0 3=0 4=0",
        "others writes=0 reads=0 refused=0", "ok report"};
    EXPECT_EQ(said, expected);
}

TEST_F(ControllerCommands, WhatCannotBeUnderstoodIsRefusedWithItsReason) {
    const std::pair<const char*, const char*> lines[] = {
        {"dance", "unknown command 'dance'"},
        {"late", "late: a number is missing"},
        {"late x", "late: 'x'"},
        {"late 600001", "late: "},
        {"exception 0", "exception: "},
        {"exception 256", "exception: "},
        {"split 0", "split: "},
        {"silent 5", "'5' is one word too many"},
        {"late 5 6", "'6' is one word too many"},
        {"report all", "'all' is one word too many"},
        {"at 5", "a time and a command belong behind 'at'"},
        {"at -1 normal", "time"},
    };
    for (const auto& [line, reason] : lines) {
        try {
            parse_command(line);
            ADD_FAILURE() << line;
        } catch (const InputError& error) {
            EXPECT_NE(std::string(error.what()).find(reason), std::string::npos) << error.what();
        }
    }
}

TEST_F(ControllerCommands, CommentsAndEmptyLinesAreNothing) {
    for (const char* line : {"", "  ", "# late 5", "\r"})
        EXPECT_FALSE(parse_command(line));
}

TEST_F(ControllerCommands, AScenarioIsInTheOrderOfItsTimes) {
    std::istringstream text("at 5 silent\nat 2.5 late 7\n# nothing\nnormal\nat 5 normal\n");
    const auto commands = read_scenario(text);
    ASSERT_EQ(commands.size(), 4U);
    EXPECT_EQ(commands[0].text, "normal");
    EXPECT_EQ(commands[1].text, "late 7");
    EXPECT_EQ(commands[1].at, 2.5);
    EXPECT_EQ(commands[2].text, "silent");
    EXPECT_EQ(commands[3].text, "normal");
    carry_out(commands[1], session);
    EXPECT_EQ(said.back(), "at 2.5 late 7");
}

TEST_F(ControllerCommands, AMistakeInAScenarioHasItsLine) {
    std::istringstream text("normal\n\nlate\n");
    try {
        read_scenario(text);
        FAIL();
    } catch (const InputError& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with("line 3: ")) << error.what();
    }
}

TEST_F(ControllerCommands, TheScenarioThatComesWithItIsSound) {
    std::ifstream file(CONTROLLER_SCENARIOS "/bad-day.txt");
    ASSERT_TRUE(file);
    EXPECT_GT(read_scenario(file).size(), 5U);
}

TEST_F(ControllerCommands, TheHelpNamesEveryCommand) {
    const std::string help = command_help();
    for (const char* name : {"normal", "silent", "late MS", "exception CODE", "split N", "bytewise",
                             "too-much", "wrong-function", "garbage", "close", "refuse", "report", "quit"})
        EXPECT_NE(help.find(std::string("\n  ") + name + " "), std::string::npos) << name;
}

} // namespace
} // namespace tyxo::controller_sim
