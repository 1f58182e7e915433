// Changes of the status words, links that are lost and come back, starts and stops, the alert.

#include "told_plant.h"

namespace months::check {
namespace {

class CheckerStatus : public told_plant {
  protected:
    /// The three outlets of one message of channel 1.
    void told(const std::string& who, const std::string& text, const std::string& note) {
        told_box(who + " Engine 1" + text);
        if (!note.empty()) told_log("<!-- " + event_time.substr(14, 8) + " " + note + " -->");
        told_event(who + " Engine 1" + text);
    }
    void told_link(const std::string& text) {
        told_box("Evaluator 1 " + text);
        told_log("<!-- " + event_time.substr(14, 8) + " Evaluator " + text + " -->");
        told_event("Evaluator 1 " + text);
    }
    void shows_silence() {
        now.channel[0].values[0] = now.channel[0].values[1] = 0;
        now.channel[0].alarm_lamp = now.channel[0].prealarm_lamp = now.channel[0].ready_lamp = false;
    }
    void alarm() {
        status_arrives(0x80a0, 0);
        told("KVD", " ## Main Alarm ON", "KVD Main ALARM ON");
        now.alert_open = true;
        done();
    }
};

TEST_F(CheckerStatus, AnAlarmComesAndGoes) {
    logging();
    alarm();
    status_arrives(0x80a0, 0); // nothing new
    done();
    check.alert_confirmed();
    told_box("Mainalarm confirmed by operator!");
    now.alert_open = false;
    done();
    status_arrives(0x0020, 0);
    told("KVD", " ## Main Alarm OFF", "KVD Main ALARM OFF");
    done();
    fine();
}

TEST_F(CheckerStatus, SeveralMessagesHaveTheirOrder) {
    logging();
    status_arrives(0xe002, 0x4000);
    told_box("Evaluator Engine 1 ## CRC Error");
    told_log("<!-- 13:05:09 Evaluator CRC Error -->");
    told_event("Evaluator Engine 1 CRC Error");
    told("KVD", " ## Overspeed Alarm ON", "KVD Overspeed Alarm ON");
    told("KVD", " ## Main Alarm DC ON", "KVD Main ALARM DC ON");
    told("KVD", " ## Main Alarm ON", "KVD Main ALARM ON");
    told_box("KVD Engine 1 ## Prealarm ON");
    told_log("<!-- 13:05:09 KVD Prealarm ON -->");
    told_event("KVD 1 Prealarm ON");
    done();
    fine();
}

TEST_F(CheckerStatus, AnotherOrderIsWrong) {
    logging();
    status_arrives(0x8002, 0);
    told_log("<!-- 13:05:09 KVD Main ALARM ON -->");
    wrong("should be \"<!-- 13:05:09 KVD Main ALARM DC ON -->");
}

TEST_F(CheckerStatus, AMissingNoteIsWrong) {
    logging();
    status_arrives(0x8000, 0);
    told_box("KVD Engine 1 ## Main Alarm ON");
    told_event("KVD Engine 1 ## Main Alarm ON");
    done();
    wrong("missing in C:/logs/Engine 1");
}

TEST_F(CheckerStatus, AMissingEventIsWrong) {
    logging();
    status_arrives(0x8000, 0);
    told_box("KVD Engine 1 ## Main Alarm ON");
    told_log("<!-- 13:05:09 KVD Main ALARM ON -->");
    done();
    wrong("missing in C:/logs/TY_all_events.txt");
}

TEST_F(CheckerStatus, AMissingTextIsWrong) {
    logging();
    status_arrives(0x8000, 0);
    told_log("<!-- 13:05:09 KVD Main ALARM ON -->");
    told_event("KVD Engine 1 ## Main Alarm ON");
    done();
    wrong("the status text should get");
}

TEST_F(CheckerStatus, AnotherTextIsWrong) {
    logging();
    status_arrives(0x8000, 0);
    told_box("KVD Engine 1 ## Main Alarm On");
    told_log("<!-- 13:05:09 KVD Main ALARM ON -->");
    told_event("KVD Engine 1 ## Main Alarm ON");
    done();
    wrong("the status text should get");
}

TEST_F(CheckerStatus, AnEventOfNothingIsWrong) {
    logging();
    told_event("KVD Engine 1 ## Main Alarm ON");
    wrong("a line too many in C:/logs/TY_all_events.txt");
}

TEST_F(CheckerStatus, AnEventWithTheWrongDateIsWrong) {
    logging();
    status_arrives(0x8000, 0);
    told_log("<!-- 13:05:09 KVD Main ALARM ON -->");
    check.file_appended(events, "##;02-07-2026;13:05:09;KVD Engine 1 ## Main Alarm ON\r\n");
    wrong("should be \"##;07-02-2026");
}

TEST_F(CheckerStatus, TheSameAlarmToldTwiceIsWrong) {
    logging();
    alarm();
    status_arrives(0x80a0, 0);
    told("KVD", " ## Main Alarm ON", "KVD Main ALARM ON");
    done();
    wrong("a line too many");
}

TEST_F(CheckerStatus, AnErrorGoesWithoutAWord) {
    logging();
    status_arrives(0, 0x0010);
    told("KVD", " ## Sync signal Error", "KVD SYNC Error");
    done();
    status_arrives(0, 0);
    done();
    fine();
}

TEST_F(CheckerStatus, AnAlarmWithoutItsAlertIsWrong) {
    logging();
    status_arrives(0x0080, 0);
    done();
    wrong("the alert should be open, is closed");
}

TEST_F(CheckerStatus, AnAlertWithoutAnAlarmIsWrong) {
    logging();
    now.alert_open = true;
    done();
    wrong("the alert should be closed, is open");
}

TEST_F(CheckerStatus, AnAlertThatComesAgainWithoutAReasonIsWrong) {
    logging();
    alarm();
    check.alert_confirmed();
    told_box("Mainalarm confirmed by operator!");
    now.alert_open = false;
    done();
    status_arrives(0x80a0, 0);
    now.alert_open = true;
    done();
    wrong("the alert should be closed, is open");
}

TEST_F(CheckerStatus, AWrongLatchIsWrong) {
    logging();
    status_arrives(0x0080, 0);
    now.alert_open = true;
    now.channel[0].latched = false;
    done();
    wrong("the latch of its alert should be on");
}

TEST_F(CheckerStatus, AWrongLampIsWrong) {
    logging();
    status_arrives(0x0040, 0);
    now.channel[0].prealarm_lamp = false;
    done();
    wrong("its prealarm lamp should be on");
}

TEST_F(CheckerStatus, AConfirmationWithoutItsTextIsWrong) {
    logging();
    alarm();
    check.alert_confirmed();
    now.alert_open = false;
    done();
    wrong("the status text should get");
}

TEST_F(CheckerStatus, ASilentLinkIsToldOnce) {
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

TEST_F(CheckerStatus, ASilenceThatIsNotToldIsWrong) {
    logging();
    measured();
    at(3100);
    shows_silence();
    done();
    wrong("the status text should get");
}

TEST_F(CheckerStatus, ASilenceThatIsToldTooSoonIsWrong) {
    logging();
    measured();
    at(2900);
    told_link("not connected");
    shows_silence();
    done();
    wrong("a line too many");
}

TEST_F(CheckerStatus, AFrameWithWrongDigitsKeepsTheLinkAlive) {
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

TEST_F(CheckerStatus, AReturnThatIsNotToldIsWrong) {
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

TEST_F(CheckerStatus, ALostLinkWithItsOldSpeedIsWrong) {
    logging();
    measured();
    at(3000);
    told_link("not connected");
    now.channel[0].values[0] = 0;
    done();
    wrong("speed should be 0, is 1480");
}

TEST_F(CheckerStatus, AStoppedChannelIsNotWatched) {
    logging();
    check.stop_asked(0);
    told_log("<!-- 13:05:09 Measure Stopped -->");
    told_box("KVD Engine 1 ## Measure stopped ");
    told_event("KVD Engine 1 ## Measure stopped ");
    now.channel[0].measuring = false;
    done();
    at(9000);
    done();
    fine();
}

TEST_F(CheckerStatus, AStartThatIsNotToldIsWrong) {
    begin();
    check.start_asked(0, true);
    told_box("KVD Engine 1 ## Measure started ");
    now.channel[0].measuring = true;
    done();
    wrong("Measure started ");
}

TEST_F(CheckerStatus, APortThatDoesNotOpenHasItsMessage) {
    begin();
    check.start_asked(1, false);
    check.message_shown("no Comport configurated for sensor nr. 2");
    told_box("KVD Engine 2 ## Measure stopped ");
    told_event("KVD Engine 2 ## Measure stopped ");
    done();
    fine();
}

TEST_F(CheckerStatus, APortThatDoesNotOpenWithoutAMessageIsWrong) {
    begin();
    check.start_asked(1, false);
    told_box("KVD Engine 2 ## Measure stopped ");
    told_event("KVD Engine 2 ## Measure stopped ");
    done();
    wrong("a message is missing");
}

TEST_F(CheckerStatus, AMeasurementThatDoesNotBeginIsWrong) {
    begin();
    check.start_asked(0, true);
    told_box("KVD Engine 1 ## Measure started ");
    told_event("KVD Engine 1 ## Measure started ");
    done();
    wrong("its measurement should be on");
}

TEST_F(CheckerStatus, TheRestartOfTheInhibitTimeIsRecorded) {
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

TEST_F(CheckerStatus, ARestartThatIsNotSentIsWrong) {
    logging();
    check.inhibit_reset(0);
    check.debug_output("TX: :80092f");
    done();
    wrong("was not sent");
}

TEST_F(CheckerStatus, ACommandThatNobodyAskedForIsWrong) {
    logging();
    check.sent_to_line(0, ":80092f\r\n");
    wrong("nobody asked for");
}

TEST_F(CheckerStatus, AnEventFileThatIsRefusedIsGivenUpWithAMessage) {
    check.program_starts(settings);
    check.debug_output("Programmstart");
    check.file_refused(events, "");
    check.message_shown("Directory for Eventfile doesn't exist, start setup Installation !");
    done();
    check.start_asked(0, true);
    told_box("KVD Engine 1 ## Measure started ");
    now.channel[0].measuring = true;
    done();
    fine();
}

TEST_F(CheckerStatus, AnEventBehindARefusedOneIsWrong) {
    check.program_starts(settings);
    check.debug_output("Programmstart");
    check.file_refused(events, "");
    check.message_shown("Directory for Eventfile doesn't exist, start setup Installation !");
    done();
    check.start_asked(0, true);
    check.file_created(events);
    wrong("nobody asked for");
}

TEST_F(CheckerStatus, ARefusedEventFileWithoutAMessageIsWrong) {
    check.program_starts(settings);
    check.debug_output("Programmstart");
    check.file_refused(events, "");
    done();
    wrong("a message is missing");
}

TEST_F(CheckerStatus, AMessageOfNothingIsWrong) {
    logging();
    check.message_shown("no Comport configurated for sensor nr. 2");
    wrong("a message that nothing asked for");
}

} // namespace
} // namespace months::check
