// What becomes of files: new periods, refused lines, files that vanish, power cuts.

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
    std::string log_so_far() { return header() + std::string(measured_line) + "\r\n"; }
    std::string events_so_far() {
        return event_time + "Tyxo Logger software started !\r\n" + event_time +
               "KVD Engine 1 ## Measure started \r\n";
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
    begin();
    start_channel_1();
    check.arrives(0, parameters());
    check.file_created(log);
    check.file_refused(log, header());
    done();
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
    begin();
    start_channel_1();
    check.arrives(0, parameters());
    check.file_created(log);
    check.file_refused(log, header());
    done();
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

TEST_F(CheckerFiles, ALogOpenedAnewWithoutAReasonIsWrong) {
    logging();
    check.debug_output("log opened anew");
    wrong("says \"log opened anew\"");
}

TEST_F(CheckerFiles, AnEndWithAllWrittenPasses) {
    logging();
    measured();
    check.close_asked();
    told_event("Tyxo Data Logger software stopped !");
    check.program_ends();
    check.file_found(log, log_so_far());
    check.file_found(events, events_so_far() + event_time + "Tyxo Data Logger software stopped !\r\n");
    check.all_files_found();
    fine();
}

TEST_F(CheckerFiles, AnEndWithoutItsEventIsWrong) {
    logging();
    check.close_asked();
    check.program_ends();
    wrong("software stopped !");
}

TEST_F(CheckerFiles, AFileThatIsShorterAtTheEndIsWrong) {
    logging();
    measured();
    check.program_ends();
    check.file_found(log, header());
    wrong("is not what was written");
}

TEST_F(CheckerFiles, AFileWithAnotherByteIsWrong) {
    logging();
    measured();
    check.program_ends();
    std::string content = log_so_far();
    content[content.size() / 2] ^= 1;
    check.file_found(log, content);
    wrong("is not what was written");
}

TEST_F(CheckerFiles, AMissingFileIsWrong) {
    logging();
    check.program_ends();
    check.file_found(events, events_so_far());
    check.all_files_found();
    wrong("a file is missing: C:/logs/Engine 1");
}

TEST_F(CheckerFiles, ALogThatNobodyWroteIsWrong) {
    logging();
    check.program_ends();
    check.file_found("C:/logs/Engine 9/20260702Qu_Engine 9.xlg", "");
    wrong("a log that nobody wrote");
}

TEST_F(CheckerFiles, APowerCutMayTakeTheLastLinesAndTearOne) {
    logging();
    measured();
    check.power_cut();
    const std::string torn = log_so_far().substr(0, log_so_far().size() - 7);
    check.file_found(log, torn);
    check.file_found(events, events_so_far());
    check.all_files_found();
    now = {};
    box.clear();
    check.program_starts(settings);
    check.debug_output("Programmstart");
    told_event("Tyxo Logger software started !");
    done();
    start_channel_1();
    check.arrives(0, parameters());
    check.debug_output("createlog : Path exists");
    done();
    check.arrives(0, framed(measured_body));
    check.file_appended(log, "\r\n" + std::string(measured_line) + "\r\n");
    shows_measured();
    done();
    check.program_ends();
    check.file_found(log, torn + "\r\n" + std::string(measured_line) + "\r\n");
    fine();
}

TEST_F(CheckerFiles, ATornLineThatIsNotEndedIsWrong) {
    logging();
    measured();
    check.power_cut();
    check.file_found(log, log_so_far().substr(0, log_so_far().size() - 7));
    now = {};
    box.clear();
    check.program_starts(settings);
    check.debug_output("Programmstart");
    told_event("Tyxo Logger software started !");
    done();
    start_channel_1();
    check.arrives(0, parameters());
    done();
    check.arrives(0, framed(measured_body));
    told_log(measured_line);
    wrong("a torn line was not ended");
}

TEST_F(CheckerFiles, APowerCutThatTakesALineOfAnEventIsWrong) {
    logging();
    check.power_cut();
    check.file_found(events, event_time + "Tyxo Logger software started !\r\n");
    wrong("lines are lost");
}

TEST_F(CheckerFiles, APowerCutThatTakesTheHeaderIsWrong) {
    logging();
    check.power_cut();
    check.file_found(log, header().substr(0, 100));
    wrong("lines are lost");
}

TEST_F(CheckerFiles, APowerCutThatTakesAnOldLineIsWrong) {
    logging();
    measured();
    at(2000);
    check.chart_tick();
    now.channel[0].chart_rows = 1;
    now.channel[0].chart_last = {51, 74, 100, 617, 48, 7};
    now.channel[0].panel_speed = 1480;
    now.channel[0].panel_tsignal = now.channel[0].digits_tsignal = 51;
    now.channel[0].digits_tmv = 12.34;
    check.arrives(0, framed(":00")); // the line lives
    check.debug_output("mscomm: ");
    done();
    for (int second : {4, 6}) {
        at(1000 * second);
        check.arrives(0, framed(measured_body));
        told_log("<REC1> 13:05:" + std::to_string(9 + second) + " 51 1480 1234 48 7 </REC1>");
        done();
    }
    fine();
    check.power_cut();
    check.file_found(log, header());
    wrong("lines are lost");
}

TEST_F(CheckerFiles, APowerCutThatLeavesOtherBytesIsWrong) {
    logging();
    measured();
    check.power_cut();
    check.file_found(log, header() + "<REC1> 13:05:08 ");
    wrong("up to its loss");
}

TEST_F(CheckerFiles, AKillMayTearTheLastLineOnly) {
    logging();
    measured();
    measured();
    check.killed();
    check.file_found(log, header());
    wrong("lines are lost");
}

} // namespace
} // namespace months::check
