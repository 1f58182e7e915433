// Ends, kills and power cuts: what has to be left of the files.

#include "told_plant.h"

namespace months::check {
namespace {

class CheckerEnd : public told_plant {
  protected:
    std::string log_so_far() { return header() + std::string(measured_line) + "\r\n"; }
    std::string events_so_far() {
        return event_time + "Tyxo Logger software started !\r\n" + event_time +
               "KVD Engine 1 ## Measure started \r\n";
    }
    std::string started_; ///< what is on the disk when the start of the channel waits for its sync
    void begin_and_start_on_slow_disk() {
        begin();
        started_ = event_time + "Tyxo Logger software started !\r\n";
        check.disk_takes(2000);
        at(1000);
        start_channel_1();
    }
};

TEST_F(CheckerEnd, AnEndWithAllWrittenPasses) {
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

TEST_F(CheckerEnd, AnEndWithoutItsEventIsWrong) {
    logging();
    check.close_asked();
    check.program_ends();
    wrong("software stopped !");
}

TEST_F(CheckerEnd, AFileThatIsShorterAtTheEndIsWrong) {
    logging();
    measured();
    check.program_ends();
    check.file_found(log, header());
    wrong("is not what was written");
}

TEST_F(CheckerEnd, AFileWithAnotherByteIsWrong) {
    logging();
    measured();
    check.program_ends();
    std::string content = log_so_far();
    content[content.size() / 2] ^= 1;
    check.file_found(log, content);
    wrong("is not what was written");
}

TEST_F(CheckerEnd, AMissingFileIsWrong) {
    logging();
    check.program_ends();
    check.file_found(events, events_so_far());
    check.all_files_found();
    wrong("a file is missing: C:/logs/Engine 1");
}

TEST_F(CheckerEnd, ALogThatNobodyWroteIsWrong) {
    logging();
    check.program_ends();
    check.file_found("C:/logs/Engine 9/20260702Qu_Engine 9.xlg", "");
    wrong("a log that nobody wrote");
}

TEST_F(CheckerEnd, APowerCutMayTakeTheLastLinesAndTearOne) {
    logging();
    measured();
    check.power_cut();
    const std::string torn = log_so_far().substr(0, log_so_far().size() - 7);
    check.file_found(log, torn);
    check.file_found(events, events_so_far());
    check.all_files_found();
    begin_again();
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

TEST_F(CheckerEnd, ATornLineThatIsNotEndedIsWrong) {
    logging();
    measured();
    check.power_cut();
    check.file_found(log, log_so_far().substr(0, log_so_far().size() - 7));
    begin_again();
    start_channel_1();
    check.arrives(0, parameters());
    done();
    check.arrives(0, framed(measured_body));
    told_log(measured_line);
    wrong("a torn line was not ended");
}

TEST_F(CheckerEnd, APowerCutThatTakesALineOfAnEventIsWrong) {
    logging();
    check.power_cut();
    check.file_found(events, event_time + "Tyxo Logger software started !\r\n");
    wrong("lines are lost");
}

TEST_F(CheckerEnd, APowerCutMayTakeALineOfAnEventThatWaitsForItsSync) {
    begin_and_start_on_slow_disk();
    at(2999);
    check.power_cut();
    check.file_found(events, started_);
    fine();
}

TEST_F(CheckerEnd, APowerCutThatTakesALineOfAnEventBehindItsSlowSyncIsWrong) {
    begin_and_start_on_slow_disk();
    at(3000);
    check.power_cut();
    check.file_found(events, started_);
    wrong("lines are lost");
}

TEST_F(CheckerEnd, APowerCutThatTakesTheClosingOfALogIsWrong) {
    logging();
    stop_channel_1();
    check.power_cut();
    check.file_found(log, header());
    wrong("lines are lost");
}

TEST_F(CheckerEnd, APowerCutThatTakesTheHeaderIsWrong) {
    logging();
    check.power_cut();
    check.file_found(log, header().substr(0, 100));
    wrong("lines are lost");
}

TEST_F(CheckerEnd, APowerCutThatTakesAnOldLineIsWrong) {
    logging();
    measured();
    at(2000);
    check.chart_tick();
    shows_tick();
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

TEST_F(CheckerEnd, APowerCutThatLeavesOtherBytesIsWrong) {
    logging();
    measured();
    check.power_cut();
    check.file_found(log, header() + "<REC1> 13:05:08 ");
    wrong("up to its loss");
}

TEST_F(CheckerEnd, AKillMayTearTheLastLineOnly) {
    logging();
    measured();
    measured();
    check.killed();
    check.file_found(log, header());
    wrong("lines are lost");
}

} // namespace
} // namespace months::check
