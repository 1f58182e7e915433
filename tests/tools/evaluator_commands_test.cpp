// The command language of the simulated Evaluator.

#include "command.h"
#include "runner.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

using namespace tyxo::evaluator_sim;

namespace {

class EvaluatorCommands : public testing::Test {
  protected:
    void obey(const std::string& line, double time = 0) {
        const auto command = parse_command(line);
        ASSERT_TRUE(command) << line;
        carry_out(*command, plant, time);
    }
    Unit& unit() { return plant.channel(1).unit; }
    std::string status(double time = 0) { return unit().status_body(time); }

    std::vector<std::string> said;
    Plant plant{"unused", 1, Pace::off, [this](const std::string& line) { said.push_back(line); }};
};

std::string refusal(const std::string& line) {
    try {
        parse_command(line);
        return "";
    } catch (const InputError& error) {
        return error.what();
    }
}

} // namespace

TEST_F(EvaluatorCommands, TimeStandsBeforeTheCommand) {
    const auto command = parse_command("  at 12.5  1 warm 140 over 20 ");
    ASSERT_TRUE(command);
    EXPECT_DOUBLE_EQ(command->at.value(), 12.5);
    EXPECT_EQ(command->text, "1 warm 140 over 20");
    EXPECT_FALSE(parse_command("1 pause")->at);
}

TEST_F(EvaluatorCommands, EmptyLinesAndCommentsAreNoCommands) {
    EXPECT_FALSE(parse_command(""));
    EXPECT_FALSE(parse_command(" \t\r"));
    EXPECT_FALSE(parse_command("# 1 pause"));
}

TEST_F(EvaluatorCommands, MistakesAreRefusedWithAReason) {
    const std::pair<const char*, const char*> mistakes[] = {
        {"fly", "'fly' is neither a channel number nor report or quit"},
        {"5 pause", "channel: '5' is not in 1 to 4"},
        {"0 pause", "channel: '0' is not in 1 to 4"},
        {"1", "no command behind the channel number"},
        {"1 fly", "unknown command 'fly'"},
        {"at", "time: '' is not a number"},
        {"at x 1 pause", "time: 'x' is not a number"},
        {"at -1 1 pause", "time: '-1' is not in 0 to 1e+07"},
        {"at 5", "no command behind the time"},
        {"report now", "report: nothing may follow"},
        {"1 pause now", "'now' is one word too many (usage: N pause)"},
        {"1 warm", "a word is missing (usage: N warm PERCENT [over S] [cylinder C])"},
        {"1 warm 5 over", "a word is missing (usage: N warm PERCENT [over S] [cylinder C])"},
        {"1 warm 5 under 3", "'under' has no meaning here (usage: N warm PERCENT [over S] [cylinder C])"},
        {"1 warm 5 cylinder 25",
         "cylinder: '25' is not in 1 to 24 (usage: N warm PERCENT [over S] [cylinder C])"},
        {"1 warm nan", "percent: 'nan' is not a number (usage: N warm PERCENT [over S] [cylinder C])"},
        {"1 port 1.5", "port: '1.5' is not a whole number (usage: N port P)"},
        {"1 status 12345",
         "status: '12345' is not one to four hexadecimal digits (usage: N status HEX|auto)"},
        {"1 form 08 base", "form: 'base' is none of short, long (usage: N form 01|06|08 NAME)"},
        {"1 raw a\\q", "after a backslash only r, n, t, xHH or a backslash may follow (usage: N raw TEXT)"},
        {"1 raw a\\x1", "two hexadecimal digits must follow \\x (usage: N raw TEXT)"},
        {"1 fault cut 2", "probability: '2' is not in 0 to 1 (usage: N fault FAULT PROBABILITY | none)"},
        {"1 engine v 8 3 1 2",
         "strokes: 3 is neither 2 nor 4 (usage: N engine NAME | inline|v CYL STROKES RATED OVER)"},
    };
    for (const auto& [line, reason] : mistakes)
        EXPECT_EQ(refusal(line), reason) << line;
}

TEST_F(EvaluatorCommands, EveryVerbRefusesUnknownWords) {
    for (const auto verbs : {unit_verbs(), signal_verbs(), line_verbs()})
        for (const Verb& verb : verbs)
            if (verb.name != "frame" && verb.name != "raw" && verb.name != "record" &&
                verb.name != "replay") {
                const std::string line = "1 " + std::string(verb.name) + " ??? ??? ???";
                EXPECT_NE(refusal(line), "") << line;
            }
}

TEST_F(EvaluatorCommands, HelpNamesEveryVerb) {
    const std::string help = command_help();
    for (const auto verbs : {unit_verbs(), signal_verbs(), line_verbs()})
        for (const Verb& verb : verbs)
            EXPECT_NE(help.find("N " + std::string(verb.name)), std::string::npos) << verb.name;
}

TEST_F(EvaluatorCommands, CommandIsAcknowledged) {
    obey("1 mode 0");
    carry_out(*parse_command("at 3 1 mode 1"), plant, 3);
    EXPECT_EQ(said, (std::vector<std::string>{"ok 1 mode 0", "at 3 1 mode 1"}));
}

TEST_F(EvaluatorCommands, FailureIsToldAndEndsNothing) {
    obey("1 vanish");
    obey("2 return");
    EXPECT_EQ(said, (std::vector<std::string>{"error: 1 vanish: channel 1 has no device that could vanish",
                                              "error: 2 return: channel 2 has no port"}));
    EXPECT_FALSE(plant.ended());
}

TEST_F(EvaluatorCommands, StatusWordsFollowTheCommands) {
    obey("1 alarm ac");
    obey("1 prealarm dc");
    EXPECT_EQ(status().substr(8, 8), "C0E90000");
    obey("1 error set inca not_connected 8000");
    EXPECT_EQ(status().substr(8, 8), "C1C98067");
    obey("1 error clear ffff");
    obey("1 status beef");
    EXPECT_EQ(status().substr(8, 8), "BEEF0000");
    obey("1 status auto");
    obey("1 alarm off");
    obey("1 prealarm auto");
    obey("1 overspeed on");
    obey("1 ready off");
    EXPECT_EQ(status().substr(8, 8), "20000000");
}

TEST_F(EvaluatorCommands, InhibitTimeModeAndExtensionShowInTheStatus) {
    obey("1 inhibit on 30", 5);
    obey("1 mode 99");
    obey("1 statusext 18");
    EXPECT_EQ(status(6).substr(16), "0000630001001D12");
    obey("1 inhibit off");
    EXPECT_EQ(status(6).substr(22, 8), "00000000");
    obey("1 param alminhibit_time 60");
    obey("1 inhibit on", 7);
    EXPECT_EQ(unit().inhibit.left(7), 60);
}

TEST_F(EvaluatorCommands, UnitKindsDifferInTheirForms) {
    obey("1 unit plain");
    EXPECT_EQ(unit().values_body(0).size(), 11U);
    EXPECT_EQ(unit().parameters_body(0).size(), 179U);
    EXPECT_EQ(status().size(), 16U);
    obey("1 unit advanced");
    EXPECT_EQ(unit().mode, 0);
    EXPECT_EQ(status().size(), 32U);
    obey("1 form 01 voltage");
    obey("1 form 06 delay");
    obey("1 form 08 short");
    EXPECT_EQ(unit().values_body(0).size(), 19U);
    EXPECT_EQ(unit().parameters_body(0).size(), 223U);
    EXPECT_EQ(status().size(), 16U);
}

TEST_F(EvaluatorCommands, EngineParametersAndTextsAreTakenOver) {
    obey("1 engine v 10 2 300 345");
    obey("1 firingorder 3 205");
    obey("1 firingangle 0 33");
    obey("1 param impoffset 77");
    obey("1 text fwvers V2.99");
    obey("1 text id4 two  words");
    const Parameters& p = unit().parameters;
    EXPECT_EQ(p.numzyl, 10);
    EXPECT_EQ(p.enginetype, 2);
    EXPECT_EQ(p.cylconf, 2);
    EXPECT_EQ(p.firingorder[1], 205);
    EXPECT_EQ(p.firingorder[2], 0);
    EXPECT_EQ(p.firingangle[1], 33);
    EXPECT_EQ(p.impoffset, 77);
    EXPECT_EQ(unit().firmware, "V2.99");
    EXPECT_EQ(unit().identification.text4, "two  words");
    obey("1 engine inline5-2");
    EXPECT_EQ(p.numzyl, 5);
    EXPECT_EQ(p.impoffset, 77);
}

TEST_F(EvaluatorCommands, SpeedAndWarmthAreRamps) {
    obey("1 speed 800 over 10", 100);
    obey("1 warm 90 over 4 cylinder 2", 100);
    obey("1 power 3 0");
    EXPECT_DOUBLE_EQ(unit().engine.speed.at(105), 775);
    EXPECT_DOUBLE_EQ(unit().engine.level[1].at(104), 90);
    EXPECT_DOUBLE_EQ(unit().engine.power[2], 0);
}

TEST_F(EvaluatorCommands, RawAndFrameAndSendReachTheLine) {
    obey("1 raw  a b\\r\\n\\x3A\\\\");
    obey("1 frame :00");
    obey("1 testsignal 2");
    obey("1 send 01");
    Channel& channel = plant.channel(1);
    channel.step(0);
    EXPECT_TRUE(channel.step(0.05).starts_with("a b\r\n:\\:00a0\r\n:01822"));
}

TEST_F(EvaluatorCommands, QuitEndsThePlant) {
    obey("quit");
    EXPECT_TRUE(plant.ended());
}

TEST(EvaluatorTimeline, KeepsCommandsUntilTheirTimeInTheirOrder) {
    std::istringstream text("at 2 1 pause\n# comment\n1 resume\nat 1 2 pause\nat 2 3 pause\n");
    Timeline timeline = read_scenario(text);
    EXPECT_EQ(timeline.due(0).at(0).text, "1 resume");
    EXPECT_TRUE(timeline.due(0.5).empty());
    const auto due = timeline.due(2);
    ASSERT_EQ(due.size(), 3U);
    EXPECT_EQ(due[0].text, "2 pause");
    EXPECT_EQ(due[1].text, "1 pause");
    EXPECT_EQ(due[2].text, "3 pause");
    EXPECT_TRUE(timeline.empty());
}

TEST(EvaluatorTimeline, MistakeNamesItsLine) {
    std::istringstream text("1 pause\n\n1 fly\n");
    try {
        read_scenario(text);
        FAIL();
    } catch (const InputError& error) {
        EXPECT_STREQ(error.what(), "line 3: unknown command 'fly'");
    }
}

TEST(EvaluatorTimeline, ScenariosOfTheProgramAreUnderstood) {
    for (const char* name : {"plant.txt", "full-pace.txt"}) {
        std::ifstream file(std::string(EVALUATOR_SCENARIOS "/") + name);
        ASSERT_TRUE(file) << name;
        Timeline timeline = read_scenario(file);
        EXPECT_GE(timeline.due(0).size(), 8U) << name;
    }
}

TEST(EvaluatorInput, LinesAreReadWhenTheyAreComplete) {
    LineBuffer buffer;
    EXPECT_TRUE(buffer.take("1 pa").empty());
    EXPECT_EQ(buffer.take("use\nre"), std::vector<std::string>{"1 pause"});
    EXPECT_EQ(buffer.rest(), "re");
    EXPECT_EQ(buffer.take("port\nquit\n"), (std::vector<std::string>{"report", "quit"}));
}
