// What becomes of files: new periods, refused lines, files that vanish.

#include "told_plant.h"

namespace months::check {
namespace {

class CheckerFiles : public told_plant {
  protected:
    static constexpr std::string_view next_log = "C:/logs/Engine 1/20260703Qu_Engine 1.xlg";
    static constexpr std::string_view other_log = "C:/logs/Engine 2/20260703Qu_Engine 2.xlg";

    static std::string replaced(std::string text, std::string_view what, std::string_view by) {
        for (auto at = text.find(what); at != text.npos; at = text.find(what, at + by.size()))
            text.replace(at, what.size(), by);
        return text;
    }
    static std::string next_header() { return replaced(header(), "20260702", "20260703"); }
    /// The log of a channel that knows nothing of its Evaluator.
    static std::string empty_header() {
        std::string text = replaced(replaced(header(), "20260702", "20260703"), "Engine 1", "Engine 2");
        const auto value = [&](std::string_view tag, std::string_view content) {
            const std::string open = "<" + std::string(tag) + ">";
            const auto from = text.find(open) + open.size();
            text.replace(from, text.find("</", from) - from, content);
        };
        const auto without = [&](std::string_view tag) {
            const auto from = text.find("        <" + std::string(tag) + ">");
            text.erase(from, text.find('\n', from) + 1 - from);
        };
        value("TYPECODE", " unknown ");
        for (const char* tag : {"ENGINETYPE", "CYLCONF", "NUMZYL", "THEFF_ALM", "THEFF_CNT",
                                "ALMINHIBIT_TIME", "ALARMLEVEL", "PREALARMLEVEL", "OVERSPEED", "RATEDSPEED"})
            value(tag, " 0 ");
        for (const char* tag : {"TSTTIME", "TSTLEN"})
            value(tag, " NA ");
        value("FWVERS", "  ");
        value("EVASNR", "  ");
        for (const char* tag : {"FIRINGORDER", "FIRINGANGLE"})
            value(tag, " ");
        for (const char* tag : {"IALARMLEVEL1", "IALARMLEVEL2", "IALMRPM", "IMPOFFSET", "IALARMDELAY",
                                "IALARMLEN", "IALARMLEVEL", "DCALARMPERCENT"})
            without(tag);
        text = replaced(text, "RPM /20", "");
        return replaced(text, " .05<", " 0<");
    }
    void next_day() { wall(1000, {2026, 7, 3, 0, 0, 1}); }
    void new_period(std::string_view header_1, bool other = true) {
        next_day();
        check.arrives(0, framed(measured_body));
        told_log("<!-- 00:00:01 Measure Stopped -->");
        check.file_created(next_log);
        check.file_appended(next_log, header_1);
        check.file_appended(next_log, "<!-- 00:00:01 Log Started -->\r\n");
        if (other) {
            check.file_created(other_log);
            check.file_appended(other_log, empty_header());
        }
        check.file_appended(next_log, "<REC1> 00:00:01 51 1480 1234 48 7 </REC1>\r\n");
        shows_measured();
        done();
    }
};

TEST_F(CheckerFiles, ANewPeriodRotatesAllLogs) {
    logging();
    new_period(next_header());
    fine();
}

TEST_F(CheckerFiles, TheOldDateInTheNewHeaderIsWrong) {
    logging();
    new_period(header());
    wrong("20260703");
}

TEST_F(CheckerFiles, AChannelThatIsLeftOutOfTheRotationIsWrong) {
    logging();
    new_period(next_header(), false);
    wrong("a file was not begun: C:/logs/Engine 2");
}

TEST_F(CheckerFiles, ALineThatStaysInTheOldPeriodIsWrong) {
    logging();
    next_day();
    check.arrives(0, framed(measured_body));
    told_log("<REC1> 00:00:01 51 1480 1234 48 7 </REC1>");
    wrong("Measure Stopped");
}

TEST_F(CheckerFiles, ARefusedLineIsLost) {
    logging();
    check.arrives(0, framed(measured_body));
    check.file_refused(log, std::string(measured_line) + "\r\n");
    shows_measured();
    done();
    measured();
    fine();
}

TEST_F(CheckerFiles, ARefusedLineMayBeTriedAgain) {
    logging();
    check.arrives(0, framed(measured_body));
    const std::string line = std::string(measured_line) + "\r\n";
    check.file_refused(log, line);
    check.file_refused(log, line);
    check.file_appended(log, line);
    shows_measured();
    done();
    fine();
}

TEST_F(CheckerFiles, LinesWithoutRoomForTheHeaderMayBeLost) {
    begin_log_without_room();
    check.arrives(0, framed(measured_body) + framed(":0181FE39E0000084D201E00046"));
    check.file_refused(log, header());
    check.file_appended(log, header());
    told_log("<REC1> 13:05:09 51 1482 1234 48 7 </REC1>"); // the first record is lost with the refused header
    now.channel[0].values = {51, 1482, 1234, 48, 7};
    done();
    fine();
}

TEST_F(CheckerFiles, ALineBehindARefusedOneMustNotBeLost) {
    logging();
    check.arrives(0, framed(measured_body));
    check.file_refused(log, std::string(measured_line) + "\r\n");
    shows_measured();
    done();
    check.arrives(0, framed(measured_body));
    done();
    wrong("missing in");
}

TEST_F(CheckerFiles, AHeaderThatIsRefusedComesWhenThereIsRoom) {
    begin_log_without_room();
    check.arrives(0, framed(measured_body));
    check.file_refused(log, header());
    shows_measured();
    done();
    check.arrives(0, framed(measured_body));
    check.file_appended(log, header());
    told_log(measured_line);
    done();
    fine();
}

TEST_F(CheckerFiles, ALineInFrontOfARefusedHeaderIsWrong) {
    begin_log_without_room();
    check.arrives(0, framed(measured_body));
    told_log(measured_line);
    wrong("no header in front of");
}

TEST_F(CheckerFiles, ALogThatVanishesGoesOnInANewFile) {
    logging();
    check.file_gone(log);
    at(200);
    check.arrives(0, framed(measured_body)); // lost with the file
    shows_measured();
    done();
    at(1400);
    check.arrives(0, framed(measured_body));
    check.debug_output("log opened anew");
    check.file_created(log);
    check.file_appended(log, header());
    told_log("<REC1> 13:05:10 51 1480 1234 48 7 </REC1>");
    done();
    fine();
}

TEST_F(CheckerFiles, ALogThatDoesNotGoOnIsWrong) {
    logging();
    check.file_gone(log);
    at(1400);
    check.arrives(0, framed(measured_body));
    shows_measured();
    done();
    wrong("missing in");
}

TEST_F(CheckerFiles, ALogThatComesBackGoesOnWhereItWas) {
    logging();
    check.file_gone(log);
    at(100);
    check.file_found(log, header());
    check.arrives(0, framed(measured_body)); // the old file is still open
    shows_measured();
    done();
    at(1100);
    check.arrives(0, framed(measured_body));
    told_log("<REC1> 13:05:10 51 1480 1234 48 7 </REC1>");
    done();
    fine();
    check.arrives(0, framed(measured_body));
    done();
    wrong("missing in");
}

TEST_F(CheckerFiles, ALogOpenedAnewWithoutAReasonIsWrong) {
    logging();
    check.debug_output("log opened anew");
    wrong("says \"log opened anew\"");
}

} // namespace
} // namespace months::check
