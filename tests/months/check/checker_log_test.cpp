// What stands in the logs: good histories pass, and each kind of wrong line is complained of.

#include "told_plant.h"

namespace months::check {
namespace {

using CheckerLog = told_plant;

TEST_F(CheckerLog, AGoodBeginningPasses) {
    logging();
    measured();
    measured();
    fine();
}

TEST_F(CheckerLog, AFrameInPiecesIsOneFrame) {
    logging();
    const std::string frame = "noise\r\n:01" + framed(measured_body);
    for (std::size_t i = 0; i + 1 < frame.size(); ++i) {
        check.arrives(0, frame.substr(i, 1));
        done();
    }
    check.arrives(0, "\n");
    told_log(measured_line);
    shows_measured();
    done();
    fine();
}

TEST_F(CheckerLog, ALineTwiceIsWrong) {
    logging();
    measured();
    told_log(measured_line);
    done();
    wrong("a line too many");
}

TEST_F(CheckerLog, AMissingLineIsWrong) {
    logging();
    check.arrives(0, framed(measured_body));
    shows_measured();
    done();
    wrong("missing in C:/logs/Engine 1/20260702Qu_Engine 1.xlg: \"<REC1> 13:05:09 51");
}

TEST_F(CheckerLog, AWrongValueIsWrong) {
    logging();
    check.arrives(0, framed(measured_body));
    told_log("<REC1> 13:05:09 51 1481 1234 48 7 </REC1>");
    wrong("should be \"<REC1> 13:05:09 51 1480 1234");
}

TEST_F(CheckerLog, AWrongTimeIsWrong) {
    logging();
    check.arrives(0, framed(measured_body));
    told_log("<REC1> 13:05:10 51 1480 1234 48 7 </REC1>");
    wrong("the next line");
}

TEST_F(CheckerLog, LinesInTheWrongOrderAreWrong) {
    logging();
    check.arrives(0, framed(measured_body) + framed(":0181FE39E0000084D201E00046"));
    told_log("<REC1> 13:05:09 51 1482 1234 48 7 </REC1>");
    wrong("the next line");
}

TEST_F(CheckerLog, AFrameWithWrongDigitsLeavesNothing) {
    logging();
    std::string frame = framed(measured_body);
    frame[5] = '0';
    check.arrives(0, frame);
    check.debug_output("LRC Error");
    done();
    fine();
}

TEST_F(CheckerLog, ALineOfAFrameWithWrongDigitsIsWrong) {
    logging();
    std::string frame = framed(measured_body);
    frame[5] = '0';
    check.arrives(0, frame);
    check.debug_output("LRC Error");
    told_log(measured_line);
    wrong("a line too many");
}

TEST_F(CheckerLog, ALineWithoutItsEndIsWrong) {
    logging();
    check.arrives(0, framed(measured_body));
    check.file_appended(log, measured_line);
    wrong("the next line");
}

TEST_F(CheckerLog, AnotherFileIsWrong) {
    logging();
    check.arrives(0, framed(measured_body));
    check.file_appended("C:/logs/Engine 2/20260702Qu_Engine 2.xlg", std::string(measured_line) + "\r\n");
    wrong("written into a file that does not exist");
}

TEST_F(CheckerLog, CurvesAreLoggedWhole) {
    logging();
    check.arrives(0, curve("04", 1000) + curve("03", 0)); // a curve of zeros is not computed with
    told_log(curve_line("REC3", 1000));
    told_log(curve_line("REC2", 0));
    done();
    fine();
}

TEST_F(CheckerLog, AWrongSampleOfACurveIsWrong) {
    logging();
    check.arrives(0, curve("04", 1000));
    std::string line = curve_line("REC3", 1000);
    line[line.size() / 2] = '7';
    told_log(line);
    wrong("the next line");
}

TEST_F(CheckerLog, ACurveInTheWrongRecordIsWrong) {
    logging();
    check.arrives(0, curve("04", 1000));
    told_log(curve_line("REC2", 1000));
    wrong("the next line");
}

TEST_F(CheckerLog, ACurveOutOfOrderIsDroppedWithAWord) {
    logging();
    const std::string all = curve("04", 1000);
    const std::size_t block = all.size() / 4;
    check.arrives(0, all.substr(0, block) + all.substr(2 * block, block));
    check.debug_output("blocknummerfehler thermospannung");
    done();
    fine();
}

TEST_F(CheckerLog, ACurveOutOfOrderThatIsLoggedIsWrong) {
    logging();
    const std::string all = curve("04", 1000);
    const std::size_t block = all.size() / 4;
    check.arrives(0, all.substr(0, block) + all.substr(2 * block));
    check.debug_output("blocknummerfehler thermospannung");
    check.debug_output("blocknummerfehler thermospannung");
    told_log(curve_line("REC3", 1000));
    wrong("a line too many");
}

TEST_F(CheckerLog, TheTestSignalIsNotedOnce) {
    logging();
    check.arrives(0, framed(":0181FE39D0000184D201E00046"));
    told_log("<#-- 13:05:09 Testsignal1 ON -->");
    told_log("<REC1> 13:05:09 0 1480 0 48 7 </REC1>"); // what the test signal measures is left out
    now.channel[0].values = {0, 1480, 0, 48, 7};
    done();
    fine();
}

TEST_F(CheckerLog, AMissingNoteIsWrong) {
    logging();
    check.arrives(0, framed(":0181FE39D0000184D201E00046"));
    told_log("<REC1> 13:05:09 0 1480 0 48 7 </REC1>");
    wrong("should be \"<#-- 13:05:09 Testsignal1 ON -->");
}

TEST_F(CheckerLog, ALogBeforeTheParametersIsWrong) {
    begin();
    start_channel_1();
    check.arrives(0, framed(measured_body));
    check.file_created(log);
    wrong("nobody asked for");
}

TEST_F(CheckerLog, ALogThatDoesNotBeginIsWrong) {
    begin();
    start_channel_1();
    check.arrives(0, parameters());
    done();
    wrong("a file was not begun");
}

TEST_F(CheckerLog, ALogWithoutAHeaderIsWrong) {
    begin_log();
    done();
    wrong("a file has no header");
}

TEST_F(CheckerLog, ASecondHeaderIsWrong) {
    logging();
    check.file_appended(log, header());
    wrong("a second header");
}

TEST_F(CheckerLog, EveryLineOfTheHeaderCounts) {
    const std::string good = header();
    int lines = 0;
    for (std::size_t at = 0; at < good.size(); at = good.find('\n', at) + 1, ++lines) {
        const std::size_t end = good.find('\r', at);
        const std::string_view line = std::string_view(good).substr(at, end - at);
        if (line.find("<GRIDLINESTYLE>") != line.npos || line.find("<XAXISMIN>") != line.npos) continue;
        told_history other;
        other.begin_log();
        std::string bad = good;
        const std::size_t place = bad.find_last_not_of("</>ABCDEFGHIJKLMNOPQRSTUVWXYZ123 ", end - 1);
        char& wrong_one = bad[place == bad.npos || place < at ? end - 2 : place];
        wrong_one = wrong_one == '8' ? '9' : '8';
        other.check.file_appended(log, bad);
        EXPECT_FALSE(other.check.complaints().empty()) << line;
    }
    EXPECT_GT(lines, 100);
}

TEST_F(CheckerLog, AMissingLineOfTheHeaderIsWrong) {
    begin_log();
    std::string bad = header();
    const auto from = bad.find("        <TSTTIME>");
    check.file_appended(log, bad.erase(from, bad.find('\n', from) + 1 - from));
    wrong("should be \"        <TSTTIME> 24 </TSTTIME>");
}

TEST_F(CheckerLog, AStopClosesTheLog) {
    logging();
    stop_channel_1();
    fine();
}

TEST_F(CheckerLog, AStopWithoutItsLineIsWrong) {
    logging();
    check.stop_asked(0);
    told_box("KVD Engine 1 ## Measure stopped ");
    told_event("KVD Engine 1 ## Measure stopped ");
    now.channel[0].measuring = false;
    done();
    wrong("Measure Stopped");
}

} // namespace
} // namespace months::check
