// Changes of the status words in text, log and event file; latches, lamps and the alert.

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

} // namespace
} // namespace months::check
