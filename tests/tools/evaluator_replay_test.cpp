// A recorded log played back as frames, on a clock of its own.

#include "replay.h"
#include "text.h"

#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

using namespace tyxo::evaluator_sim;

namespace {

const char* const header = "<?xml version=\"1.0\"?>\r\n"
                           "        <ENGINETYPE> 2 </ENGINETYPE>\r\n"
                           "        <NUMZYL> 4 </NUMZYL>\r\n"
                           "        <FWVERS> V3.10-0042 </FWVERS>\r\n"
                           "        <ALARMLEVEL> 320 </ALARMLEVEL>\r\n"
                           "        <FIRINGORDER> A1 B2 3 4 </FIRINGORDER>\r\n"
                           "        <FIRINGANGLE> 0 90 90 90 </FIRINGANGLE>\r\n"
                           "<LOG>\r\n";

class EvaluatorReplay : public testing::Test {
  protected:
    EvaluatorReplay() { channel.schedule.set_pace(Pace::off, 0); }
    ~EvaluatorReplay() override { std::filesystem::remove(file); }

    Replay log(const std::string& lines, double speed = 1) {
        std::ofstream(file, std::ios::binary) << header << lines;
        Replay replay(file.string(), speed);
        replay.take_over(channel, 0);
        return replay;
    }
    /// What goes over the line in these seconds of the log; those from 0 on have the lead-in before them.
    std::string played(Replay& replay, double from, double to) {
        std::string bytes;
        if (from != 0) from += Replay::lead_in;
        to += Replay::lead_in;
        for (int i = 0; from + 0.01 * i < to; ++i) {
            replay.step(channel, from + 0.01 * i);
            const std::string piece = channel.step(from + 0.01 * i);
            channel.settle(piece.size());
            bytes += piece;
        }
        return bytes;
    }
    /// The good frames of a code among bytes that follow those of the call before.
    std::vector<std::string> bodies(const std::string& bytes, const std::string& code) {
        std::vector<std::string> found;
        for (const std::string& frame : receiver.take(bytes))
            if (check_passes(frame) && frame.substr(1, 2) == code)
                found.push_back(frame.substr(0, frame.size() - 2));
        return found;
    }

    std::filesystem::path file = std::filesystem::temp_directory_path() /
                                 (std::string("evaluator_replay_") +
                                  testing::UnitTest::GetInstance()->current_test_info()->name() + ".xlg");
    Channel channel{1, 1};
    Receiver receiver;
};

std::string record(const char* time, int tsignal) {
    return std::string("<REC1> ") + time + " " + std::to_string(tsignal) + " 723 1234 38 12 </REC1>\r\n";
}

} // namespace

TEST_F(EvaluatorReplay, TakesTheEngineOfTheHeader) {
    std::istringstream lines(header);
    const Parameters parameters = parameters_of_log(lines);
    EXPECT_EQ(parameters.enginetype, 2);
    EXPECT_EQ(parameters.numzyl, 4);
    EXPECT_EQ(parameters.alarmlevel, 320);
    EXPECT_EQ(parameters.fwvers_ext, "V3.10-0042");
    EXPECT_EQ(parameters.firingorder[0], 101);
    EXPECT_EQ(parameters.firingorder[1], 202);
    EXPECT_EQ(parameters.firingorder[3], 4);
    EXPECT_EQ(parameters.firingorder[4], 0) << "those of the default engine are gone";
    EXPECT_EQ(parameters.firingangle[1], 90);
}

TEST_F(EvaluatorReplay, RefusesWhatIsNoLog) {
    std::istringstream lines("a text\r\n");
    EXPECT_THROW(parameters_of_log(lines), InputError);
    EXPECT_THROW(Replay("no such file", 1), InputError);
}

TEST_F(EvaluatorReplay, LeavesOutLinesThatAreTornOrNone) {
    EXPECT_TRUE(line_of_log("<REC1> 13:05:09 41 723 1234 38 12 </REC1>"));
    EXPECT_FALSE(line_of_log("<REC1> 13:05:09 41 723 1234 38 12 </RE"));
    EXPECT_FALSE(line_of_log("<REC1> 13:05:09 41 723 1234 38 </REC1>"));
    EXPECT_FALSE(line_of_log("<REC1> 13:65:09 41 723 1234 38 12 </REC1>"));
    EXPECT_FALSE(line_of_log("<REC2> 13:05:09 1 2 3  </REC2>"));
    EXPECT_FALSE(line_of_log("<REC4> 13:05:09 41 723 1234 38 12 </REC4>"));
    EXPECT_FALSE(line_of_log("<!-- 13:05:09 KVD Prealarm ON"));
    EXPECT_FALSE(line_of_log("<!--"));
    EXPECT_FALSE(line_of_log(""));
}

TEST_F(EvaluatorReplay, ReadsTheTextOfACommentAndOfANote) {
    const auto comment = line_of_log("<!-- 13:05:09 KVD Prealarm ON -->");
    ASSERT_TRUE(comment);
    EXPECT_EQ(std::get<ReplayedEvent>(comment->what).text, "KVD Prealarm ON");
    EXPECT_EQ(comment->second, 13 * 3600 + 5 * 60 + 9);
    const auto note = line_of_log("<#-- 00:00:00 Testsignal1 ON -->");
    ASSERT_TRUE(note);
    EXPECT_EQ(std::get<ReplayedEvent>(note->what).text, "Testsignal1 ON");
}

TEST_F(EvaluatorReplay, SendsTheParametersFirstAndAgainBeforeTheLines) {
    Replay replay = log(record("13:05:09", 41));
    const std::string before = played(replay, 0, -0.1);
    EXPECT_EQ(before.find(":01"), before.npos);
    EXPECT_EQ(bodies(before, "06").front().substr(0, 7), ":060140");
    const std::string bytes = played(replay, -0.1, 1);
    EXPECT_LT(bytes.find(":06"), bytes.find(":01"));
    EXPECT_EQ(bodies(bytes, "06").size(), 1U);
}

TEST_F(EvaluatorReplay, SendsTheValuesAsTheyStand) {
    Replay replay = log(record("13:05:09", 41));
    Values values;
    values.tsignal = 41;
    values.speed = 723;
    values.voltage = 12.34;
    values.effective_dc = 38;
    values.effective_ac = 12;
    EXPECT_EQ(bodies(played(replay, 0, 1), "01"), std::vector{values_body(values, ValuesForm::effective_ac)});
    EXPECT_TRUE(replay.ended());
}

TEST_F(EvaluatorReplay, SendsACurveInItsFourBlocks) {
    std::string line = "<REC3> 13:05:09 ";
    Curve curve{};
    for (size_t i = 0; i < curve.size(); ++i) {
        curve.at(i) = static_cast<std::uint16_t>(100 + i);
        line += std::to_string(100 + i) + " ";
    }
    Replay replay = log(line + " </REC3>\r\n");
    const std::vector<std::string> blocks = bodies(played(replay, 0, 2), "04");
    ASSERT_EQ(blocks.size(), 4U);
    for (int block = 1; block <= 4; ++block)
        EXPECT_EQ(blocks.at(static_cast<size_t>(block - 1)), curve_body(4, block, curve));
}

TEST_F(EvaluatorReplay, KeepsTheTimesBetweenTheLinesAndSpreadsThoseOfASecond) {
    Replay replay = log(record("23:59:59", 1) + record("23:59:59", 2) + record("00:00:01", 3));
    EXPECT_EQ(bodies(played(replay, 0, 0.09), "01").size(), 1U);
    EXPECT_EQ(bodies(played(replay, 0.09, 1), "01").size(), 1U);
    EXPECT_EQ(bodies(played(replay, 1, 1.95), "01").size(), 0U);
    EXPECT_EQ(bodies(played(replay, 1.95, 2.5), "01").size(), 1U) << "two seconds later, over midnight";
}

TEST_F(EvaluatorReplay, IsFasterWhenAskedTo) {
    Replay replay = log(record("13:00:00", 1) + record("13:00:50", 2), 100);
    EXPECT_EQ(bodies(played(replay, 0, 1), "01").size(), 2U);
}

TEST_F(EvaluatorReplay, PlaysALongPauseAsAMinuteAndAClockThatWasSetBackAtOnce) {
    Replay replay = log(record("08:00:00", 1) + record("16:00:00", 2) + record("15:00:00", 3));
    EXPECT_EQ(bodies(played(replay, 0, 59.9), "01").size(), 1U);
    EXPECT_EQ(bodies(played(replay, 59.9, 60.9), "01").size(), 2U);
}

TEST_F(EvaluatorReplay, ALineThatIsTooSlowFallsBehindAndLosesNothing) {
    std::string lines;
    for (int second = 0; second < 1000; ++second) {
        char time[9];
        std::snprintf(time, sizeof time, "13:%02d:%02d", second / 60, second % 60);
        lines += record(time, second);
    }
    Replay replay = log(lines, Replay::most_speed);
    std::vector<std::string> all = bodies(played(replay, 0, 1), "01");
    EXPECT_LT(all.size(), 130U) << "3840 characters a second";
    EXPECT_LT(channel.transmitter().waiting_bytes(), 2200U);
    for (const std::string& body : bodies(played(replay, 1, 12), "01"))
        all.push_back(body);
    EXPECT_EQ(all.size(), 1000U);
}

TEST_F(EvaluatorReplay, StandsStillWhileNobodyListens) {
    Replay replay = log(record("13:00:00", 1) + record("13:00:05", 2));
    played(replay, 0, 1);
    replay.hold();
    EXPECT_EQ(bodies(played(replay, 100, 105.5), "01").size(), 0U) << "the lead-in comes again";
    EXPECT_EQ(bodies(played(replay, 105.5, 107), "01").size(), 1U);
}

TEST_F(EvaluatorReplay, BringsAnAlarmAboutWithItsRelayAndEndsIt) {
    Replay replay = log("<!-- 13:00:00 KVD Main ALARM ON -->\r\n<!-- 13:00:02 KVD Main ALARM OFF -->\r\n");
    const std::vector<std::string> on = bodies(played(replay, 0, 1), "08");
    ASSERT_EQ(on.size(), 3U);
    EXPECT_EQ(on.front().substr(8, 4), "0020");
    EXPECT_EQ(on.back().substr(8, 4), "80A0");
    const std::vector<std::string> off = bodies(played(replay, 1, 3), "08");
    ASSERT_EQ(off.size(), 1U);
    EXPECT_EQ(off.back().substr(8, 4), "0020");
}

TEST_F(EvaluatorReplay, AnErrorLastsOneStatusFrame) {
    Replay replay = log("<!-- 13:00:00 KVD SYNC Error -->\r\n");
    const std::vector<std::string> told = bodies(played(replay, 0, 1), "08");
    ASSERT_EQ(told.size(), 3U);
    EXPECT_EQ(told.back().substr(12, 4), "0010");
    EXPECT_EQ(channel.unit.status_body(1).substr(12, 4), "0000");
}

TEST_F(EvaluatorReplay, ALostLinkIsAPauseOfTheSchedule) {
    channel.schedule.set_pace(Pace::normal, 0);
    Replay replay =
        log("<!-- 13:00:00 Evaluator not connected -->\r\n<!-- 13:00:10 Evaluator connected -->\r\n");
    played(replay, 0, 1);
    EXPECT_EQ(played(replay, 1, 9.9), "");
    EXPECT_NE(played(replay, 10, 12), "");
}
