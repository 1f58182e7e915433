// Links that are lost and come back, starts and stops, what the operator asks for, a refused event file.

#include "told_plant.h"

namespace months::check {
namespace {

class CheckerLink : public told_plant {
  protected:
    void told_link(const std::string& text) {
        told_box("Evaluator 1 " + text);
        told_log("<!-- " + event_time.substr(14, 8) + " Evaluator " + text + " -->");
        told_event("Evaluator 1 " + text);
    }
    /// Channel 1 measures and has no log yet.
    void begin_without_events() {
        std::string no_events(settings);
        no_events.replace(no_events.find("eventfile_ena=1"), 15, "eventfile_ena=0");
        check.program_starts(no_events);
        check.debug_output("Programmstart");
        done();
        check.start_asked(0, true);
        told_box("KVD Engine 1 ## Measure started ");
        now.channel[0].measuring = true;
        done();
    }
    static constexpr const char* no_event_folder =
        "Directory for Eventfile doesn't exist, start setup Installation !";
    void start_without_event_file() {
        check.program_starts(settings);
        check.debug_output("Programmstart");
        check.file_refused(events, "");
    }
    void shows_silence() {
        now.channel[0].values[0] = now.channel[0].values[1] = 0;
        now.channel[0].alarm_lamp = now.channel[0].prealarm_lamp = now.channel[0].ready_lamp = false;
    }
};

TEST_F(CheckerLink, ASilentLinkIsToldOnce) {
    logging();
    measured();
    at(3000);
    told_link("not connected");
    shows_silence();
    done();
    at(6000);
    done();
    at(7000);
    check.arrives(0, "?");
    told_link("connected");
    done();
    fine();
}

TEST_F(CheckerLink, ASilenceWithBytesBehindItInTheSameHandlerPasses) {
    begin_without_events();
    at(3000);
    told_box("Evaluator 1 not connected");
    check.arrives(0, "?");
    told_box("Evaluator 1 connected");
    done();
    fine();
}

TEST_F(CheckerLink, ASilenceWithinALongHandlerHasTheTimeOfItsTimer) {
    begin_without_events();
    at(3000);
    told_box("Evaluator 1 not connected");
    at(4000);
    done();
    fine();
}

TEST_F(CheckerLink, ALineThatIsTriedAgainSaysNothingOfATimerThatIsDue) {
    logging();
    measured();
    check.start_asked(1, true);
    told_box("KVD Engine 2 ## Measure started ");
    told_event("KVD Engine 2 ## Measure started ");
    now.channel[1].measuring = true;
    done();
    at(2990);
    check.arrives(0, framed(":00")); // its own line lives
    check.debug_output("mscomm: ");
    done();
    at(3000);
    check.arrives(0, framed(measured_body));
    const std::string line = "<REC1> 13:05:12 51 1480 1234 48 7 </REC1>\r\n";
    check.file_refused(log, line);
    check.file_refused(log, line);
    check.debug_output("mscomm: Disk full");
    done();
    fine();
}

TEST_F(CheckerLink, ALinkThatIsToldBackWithoutBytesIsWrong) {
    begin_without_events();
    check.arrives(0, "?");
    done();
    at(3000);
    told_box("Evaluator 1 not connected");
    told_box("Evaluator 1 connected");
    done();
    wrong("the status text should get");
}

TEST_F(CheckerLink, ASilenceThatIsNotToldIsWrong) {
    logging();
    measured();
    at(3100);
    shows_silence();
    done();
    wrong("the status text should get");
}

TEST_F(CheckerLink, ASilenceThatIsToldTooSoonIsWrong) {
    logging();
    measured();
    at(2900);
    told_link("not connected");
    shows_silence();
    done();
    wrong("a line too many");
}

TEST_F(CheckerLink, AFrameWithWrongDigitsKeepsTheLinkAlive) {
    logging();
    measured();
    at(2000);
    check.arrives(0, ":01\r\n");
    check.debug_output("LRC Error");
    done();
    at(4000);
    done();
    fine();
}

TEST_F(CheckerLink, AReturnThatIsNotToldIsWrong) {
    logging();
    at(3000);
    told_link("not connected");
    done();
    at(4000);
    check.arrives(0, framed(measured_body));
    told_log("<REC1> 13:05:13 51 1480 1234 48 7 </REC1>");
    shows_measured();
    done();
    wrong("the status text should get");
}

TEST_F(CheckerLink, ALostLinkWithItsOldSpeedIsWrong) {
    logging();
    measured();
    at(3000);
    told_link("not connected");
    now.channel[0].values[0] = 0;
    done();
    wrong("speed should be 0, is 1480");
}

TEST_F(CheckerLink, AStoppedChannelIsNotWatched) {
    logging();
    stop_channel_1();
    at(9000);
    done();
    fine();
}

TEST_F(CheckerLink, AStartThatIsNotToldIsWrong) {
    begin();
    check.start_asked(0, true);
    told_box("KVD Engine 1 ## Measure started ");
    now.channel[0].measuring = true;
    done();
    wrong("Measure started ");
}

TEST_F(CheckerLink, APortThatDoesNotOpenHasItsMessage) {
    begin();
    check.start_asked(1, false);
    check.message_shown("no Comport configurated for sensor nr. 2");
    told_box("KVD Engine 2 ## Measure stopped ");
    told_event("KVD Engine 2 ## Measure stopped ");
    done();
    fine();
}

TEST_F(CheckerLink, APortThatDoesNotOpenWithoutAMessageIsWrong) {
    begin();
    check.start_asked(1, false);
    told_box("KVD Engine 2 ## Measure stopped ");
    told_event("KVD Engine 2 ## Measure stopped ");
    done();
    wrong("a message is missing");
}

TEST_F(CheckerLink, AMeasurementThatDoesNotBeginIsWrong) {
    begin();
    check.start_asked(0, true);
    told_box("KVD Engine 1 ## Measure started ");
    told_event("KVD Engine 1 ## Measure started ");
    done();
    wrong("its measurement should be on");
}

TEST_F(CheckerLink, TheRestartOfTheInhibitTimeIsRecorded) {
    logging();
    check.inhibit_reset(0);
    check.debug_output("TX: :80092f");
    check.sent_to_line(0, ":80092f\r\n");
    told_box("KVD Engine 1 ## Restart Alarm Inhibit Time");
    told_log("<!-- 13:05:09 KVD Engine 1 ## Restart Alarm Inhibit Time -->");
    told_event("KVD Engine 1 ## Restart Alarm Inhibit Time");
    done();
    fine();
}

TEST_F(CheckerLink, ARestartThatIsNotSentIsWrong) {
    logging();
    check.inhibit_reset(0);
    check.debug_output("TX: :80092f");
    done();
    wrong("was not sent");
}

TEST_F(CheckerLink, ACommandThatNobodyAskedForIsWrong) {
    logging();
    check.sent_to_line(0, ":80092f\r\n");
    wrong("nobody asked for");
}

TEST_F(CheckerLink, AnEventFileThatIsRefusedIsGivenUpWithAMessage) {
    start_without_event_file();
    check.message_shown(no_event_folder);
    done();
    check.start_asked(0, true);
    told_box("KVD Engine 1 ## Measure started ");
    now.channel[0].measuring = true;
    done();
    fine();
}

TEST_F(CheckerLink, ASilenceThatNoFileTakesPassesAlsoWithBytesBehindItInTheSameHandler) {
    begin_without_events();
    check.arrives(0, parameters());
    check.file_created(log);
    check.file_appended(log, header());
    done();
    check.file_gone(log);
    at(3000);
    told_box("Evaluator 1 not connected");
    check.file_refused(log, "");
    check.arrives(0, "?");
    told_box("Evaluator 1 connected");
    done();
    fine();
}

TEST_F(CheckerLink, AnEventBehindARefusedOneIsWrong) {
    start_without_event_file();
    check.message_shown(no_event_folder);
    done();
    check.start_asked(0, true);
    check.file_created(events);
    wrong("nobody asked for");
}

TEST_F(CheckerLink, ARefusedEventFileWithoutAMessageIsWrong) {
    start_without_event_file();
    done();
    wrong("a message is missing");
}

TEST_F(CheckerLink, AMessageOfNothingIsWrong) {
    logging();
    check.message_shown("no Comport configurated for sensor nr. 2");
    wrong("a message that nothing asked for");
}

} // namespace
} // namespace months::check
