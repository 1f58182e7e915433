// The lines of a log: records and comments.

#include "logging/log.h"
#include "logging/logging_machine.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

class LogLines : public testing::Test {
  protected:
    void SetUp() override {
        start_on(logging_settings(1));
        start_logging(0);
    }
};

TEST_F(LogLines, ARecordOfMeasuredValues) {
    set_local({2026, 7, 2, 3, 4, 5});
    feed(0, measured_body({.tsignal = 0, .speed = 6553, .tvoltage = 0, .teff_dc = 100, .teff_ac = 1}));
    EXPECT_EQ(logged(0), text_lines{"<REC1> 03:04:05 0 6553 0 100 1 </REC1>"});
}

TEST_F(LogLines, ARecordHasNegativeAndWholeValuesInPlainDecimals) {
    channel_rec& rec = sensor::state.channels[0];
    rec.tsignal = -12;
    rec.speed = 2147483647;
    rec.tvoltage = 32768.0;
    rec.teff_dc = 1000000;
    rec.teff_ac = -2147483647 - 1;
    log::log_record(0, "1");
    EXPECT_EQ(logged(0), text_lines{"<REC1> 13:05:09 -12 2147483647 32768 1000000 -2147483648 </REC1>"});
}

struct logged_curve {
    std::string_view kind;
    std::string_view tag;
    std::array<i32, curve_samples + 1> channel_rec::*data;
};

TEST_F(LogLines, ARecordOfACurveHas256ValuesAndTwoBlanksAtItsEnd) {
    for (const logged_curve& row :
         {logged_curve{"3", "REC2", &channel_rec::thermo_data}, {"4", "REC3", &channel_rec::angacc_data}}) {
        auto& data = sensor::state.channels[0].*row.data;
        const std::string tag(row.tag);
        std::string expected = "<" + tag + "> 13:05:09 ";
        for (std::size_t sample = 0; sample < data.size(); ++sample) {
            data[sample] = static_cast<i32>(65535 - 3 * sample);
            if (sample < 256) expected += std::to_string(data[sample]) + " ";
        }
        log::log_record(0, row.kind);
        EXPECT_EQ(logged(0).back(), expected + " </" + tag + ">");
    }
    EXPECT_EQ(logged(0).size(), 2U);
}

TEST_F(LogLines, AComment) {
    log::log_comment(0, "KVD Prealarm ON");
    EXPECT_EQ(logged(0), text_lines{"<!-- 13:05:09 KVD Prealarm ON -->"});
}

TEST_F(LogLines, AHashComment) {
    log::log_note(0, "Testsignal OFF");
    EXPECT_EQ(logged(0), text_lines{"<#-- 13:05:09 Testsignal OFF -->"});
}

TEST_F(LogLines, TextsArePassedAsTheyStand) {
    log::log_comment(0, "");
    log::log_comment(0, " a -- \xE4\x80 --> ");
    log::log_note(0, "<LOG>");
    EXPECT_EQ(logged(0), (text_lines{"<!-- 13:05:09  -->", "<!-- 13:05:09  a -- \xE4\x80 -->  -->",
                                     "<#-- 13:05:09 <LOG> -->"}));
}

TEST_F(LogLines, EveryLineEndsInCrLf) {
    feed(0, measured_body());
    log::log_comment(0, "a");
    log::log_note(0, "b");
    const std::string text = file(log_path(0));
    for (std::size_t at = text.find('\n'); at != text.npos; at = text.find('\n', at + 1))
        EXPECT_EQ(text[at - 1], '\r') << at;
    EXPECT_TRUE(text.ends_with("b -->\r\n"));
}

TEST_F(LogLines, TimesAreZeroPaddedAndOfTheMoment) {
    struct time_row {
        local_time moment;
        std::string_view text;
    };
    for (const time_row& row : {time_row{{2026, 7, 2, 0, 0, 0}, "00:00:00"},
                                {{2026, 7, 2, 9, 8, 7}, "09:08:07"},
                                {{2026, 7, 2, 23, 59, 59}, "23:59:59"}}) {
        set_local(row.moment);
        log::log_note(0, "x");
        EXPECT_EQ(logged(0).back(), "<#-- " + std::string(row.text) + " x -->");
    }
    set_local({2026, 7, 2, 10, 0, 0});
    feed(0, parameter_body({}));
    advance(1500);
    log::log_note(0, "x");
    EXPECT_EQ(logged(0).back(), "<#-- 10:00:01 x -->");
}

TEST_F(LogLines, KindsWithoutARecordWriteNothing) {
    for (const char* kind : {"0", "2", "5", "6", "8", "-1", "", "REC1", "x1", "13"})
        log::log_record(0, kind);
    EXPECT_EQ(logged(0), text_lines{});
}

TEST_F(LogLines, AKindIsTheNumberOfItsText) {
    log::log_record(0, " 1");
    log::log_record(0, "01");
    log::log_record(0, "1.0");
    log::log_record(0, "1 x");
    EXPECT_EQ(logged(0).size(), 4U);
}

TEST_F(LogLines, EveryMeasuredValuesFrameIsARecord) {
    for (int frame = 0; frame < 50; ++frame)
        feed(0, measured_body({.speed = frame}));
    const text_lines lines = logged(0);
    ASSERT_EQ(lines.size(), 50U);
    for (int frame = 0; frame < 50; ++frame) {
        EXPECT_EQ(lines[static_cast<std::size_t>(frame)],
                  "<REC1> 13:05:09 51 " + std::to_string(frame) + " 1234 48 7 </REC1>");
    }
}

TEST_F(LogLines, ACurveIsARecordOnlyWithItsFourthBlock) {
    for (i32 block = 1; block <= 3; ++block)
        feed(0, curve_body(":03", block, 0));
    EXPECT_EQ(logged(0), text_lines{});
    feed(0, curve_body(":03", 4, 0));
    ASSERT_EQ(logged(0).size(), 1U);
    EXPECT_TRUE(logged(0)[0].starts_with("<REC2> 13:05:09 0 1 2 "));
    EXPECT_TRUE(logged(0)[0].ends_with(" 254 255  </REC2>"));
}

TEST_F(LogLines, ChangesOfTheTestSignalAreHashComments) {
    for (const i32 state : {0, 1, 1, 2, 0, 3, 0})
        feed(0, measured_body({.test_signal = state}));
    text_lines notes;
    for (const std::string& line : logged(0))
        if (line.starts_with("<#--")) notes.push_back(line);
    EXPECT_EQ(notes, (text_lines{"<#-- 13:05:09 Testsignal1 ON -->", "<#-- 13:05:09 Testsignal2 ON -->",
                                 "<#-- 13:05:09 Testsignal OFF -->"}));
}

TEST_F(LogLines, OnlyStateTwoLetsALineThrough) {
    for (const i16 state : std::initializer_list<i16>{0, 1, 3, -1}) {
        sensor::state.channels[0].log_state = state;
        log::log_record(0, "1");
        log::log_record(0, "3");
        log::log_record(0, "4");
        log::log_comment(0, "lost");
        log::log_note(0, "lost");
        EXPECT_EQ(logged(0), text_lines{}) << state;
    }
    sensor::state.channels[0].log_state = 2;
    log::log_comment(0, "kept");
    EXPECT_EQ(logged(0), text_lines{"<!-- 13:05:09 kept -->"});
}

TEST_F(LogLines, ALineIsOnTheDiskWhenItIsWritten) {
    log::log_comment(0, "first");
    EXPECT_EQ(logged(0).size(), 1U) << "nothing waits for a close";
}

} // namespace
} // namespace tyxo
