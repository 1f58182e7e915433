// What is told of damaged logs, and that nothing is told of sound ones.

#include "xlg/checked_log.h"

namespace tyxo::xlg {
namespace {

TEST(XlgCheck, DamagedLines) {
    const std::string whole = "<REC1> 13:05:09 51 1480 1234 48 7 </REC1>";
    const auto line_107 = [](const std::string& line) { return golden_with(first_record, line); };
    expect_told({
        {"a record is cut",
         line_107("<REC1> 13:05:09 51 14\r\n"),
         {"F:107: record 1, REC1: torn, cut behind 1 of 5 values (<REC1> 13:05:09 51 14)"}},
        {"a record is cut behind a blank",
         line_107("<REC1> 13:05:09 51 1480 \r\n"),
         {"F:107: record 1, REC1: torn, cut behind 2 of 5 values (<REC1> 13:05:09 51 1480 )"}},
        {"a record is cut in its time",
         line_107("<REC1> 13:0\r\n"),
         {"F:107: record 1, REC1: torn, cut behind its beginning (<REC1> 13:0)"}},
        {"a record is cut in its tag", line_107("<RE\r\n"), {"F:107: torn, cut in its beginning (<RE)"}},
        {"a record is cut in its closing tag",
         line_107("<REC1> 13:05:09 51 1480 1234 48 7 </RE\r\n"),
         {"F:107: record 1, REC1: torn, cut behind 5 of 5 values (<REC1> 13:05:09 51 1480 1234 48 7 </RE)"}},
        {"a curve is cut",
         golden_with("755  </REC2>", "75"),
         {"F:108: record 2, REC2: torn, cut behind 255 of 256 values (<REC2> 13:05:09 500 501 502 503 504 "
          "505 506 507 508 509 510 ...)"}},
        {"another record begins in one that is cut",
         line_107("<REC1> 13:05:09 51 14" + whole + "\r\n"),
         {"F:107: record 1, REC1: torn, another line begins at character 22 (<REC1> 13:05:09 51 14<REC1> "
          "13:05:09 51 1480 1234 48 7 </REC...)"}},
        {"the beginning of a record is missing",
         line_107("480 1234 48 7 </REC1>\r\n"),
         {"F:107: torn, its beginning is missing (480 1234 48 7 </REC1>)"}},
        {"a comment is cut",
         golden_with("Overspeed Alarm ON -->", "Oversp"),
         {"F:112: torn, a comment without its end (<!-- 13:05:09 KVD Oversp)"}},
        {"a note is cut",
         golden_with("Testsignal1 ON -->", "Testsignal1 ON --"),
         {"F:110: torn, a comment without its end (<#-- 13:05:09 Testsignal1 ON --)"}},
        {"the last line has no end",
         six_cylinders().substr(0, six_cylinders().size() - 2),
         {"F:113: torn, it has no line end (<!-- 13:05:09 Measure Stopped -->)"}},
        {"the last line ends in CR",
         six_cylinders().substr(0, six_cylinders().size() - 1),
         {"F:113: torn, it ends in CR without LF (<!-- 13:05:09 Measure Stopped -->)"}},
        {"the last line is cut",
         six_cylinders().substr(0, six_cylinders().size() - 9),
         {"F:113: torn, a comment without its end; it has no line end (<!-- 13:05:09 Measure Stop)"}},
        {"a line ends in LF",
         golden_with(first_record, whole + "\n"),
         {"F:107: record 1, it ends in LF without CR (<REC1> 13:05:09 51 1480 1234 48 7 </REC1>)"}},
        {"a cut line ends in LF",
         golden_with(first_record, "<REC1> 13:05:09 51 \n"),
         {"F:107: record 1, REC1: torn, cut behind 1 of 5 values; it ends in LF without CR (<REC1> 13:05:09 "
          "51 )"}},
        {"an empty line", golden_with(first_record, "\r\n"), {"F:107: an empty line ()"}},
        {"zeros of a disk that lost its power",
         line_107(std::string(5, '\0') + "\r\n"),
         {"F:107: no line of a log; 5 bytes are no text, the first one 0x00 at character 1 "
          "(\\x00\\x00\\x00\\x00\\x00)"}},
        {"zeros behind a cut record",
         line_107("<REC1> 13:05:09 51" + std::string(9, '\0') + "\r\n"),
         {"F:107: record 1, REC1: torn, cut behind 0 of 5 values; 9 bytes are no text, the first one 0x00 at "
          "character 19 (<REC1> 13:05:09 51\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00)"}},
        {"a control character in a comment",
         golden_with("KVD Overspeed", "KVD\x07Overspeed"),
         {"F:112: 1 byte is no text, the first one 0x07 at character 18 (<!-- 13:05:09 KVD\\x07Overspeed "
          "Alarm ON -->)"}},
        {"a byte without a character",
         golden_with("KVD Overspeed", "KVD \x81 \x9D"),
         {"F:112: 2 bytes are no text, the first one 0x81 at character 19 (<!-- 13:05:09 KVD \\x81 \\x9D "
          "Alarm ON -->)"}},
        {"a line of a text", line_107("hello\r\n"), {"F:107: no line of a log (hello)"}},
        {"a line that is too long",
         line_107("<!-- 13:05:09 " + std::string(5000, 'x') + " -->\r\n"),
         {"F:107: a line of 5,018 characters, longer than any line of a log (<!-- 13:05:09 "
          "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...)"}},
        {"<LOG> again", line_107("<LOG>\r\n"), {"F:107: <LOG> stands twice (<LOG>)"}},
        {"a record of an unknown kind",
         line_107("<REC4> 13:05:09 1 </REC4>\r\n"),
         {"F:107: record 1, unknown record kind REC4 (<REC4> 13:05:09 1 </REC4>)"}},
    });
}

TEST(XlgCheck, DamagedValues) {
    const auto line_107 = [](const std::string& line) { return golden_with(first_record, line + "\r\n"); };
    expect_told({
        {"too few values",
         line_107("<REC1> 13:05:09 51 1480 1234 48 </REC1>"),
         {"F:107: record 1, REC1: has 4 values and not 5 (<REC1> 13:05:09 51 1480 1234 48 </REC1>)"}},
        {"too many values",
         line_107("<REC1> 13:05:09 51 1480 1234 48 7 8 </REC1>"),
         {"F:107: record 1, REC1: has 6 values and not 5 (<REC1> 13:05:09 51 1480 1234 48 7 8 </REC1>)"}},
        {"a curve with a value too few",
         golden_with(curve_line("REC2"), curve_line("REC2", 500, 255)),
         {"F:108: record 2, REC2: has 255 values and not 256 (<REC2> 13:05:09 500 501 502 503 504 505 506 "
          "507 508 509 510 ...)"}},
        {"a curve with a value too many",
         golden_with(curve_line("REC2"), curve_line("REC2", 500, 257)),
         {"F:108: record 2, REC2: has 257 values and not 256 (<REC2> 13:05:09 500 501 502 503 504 505 506 "
          "507 508 509 510 ...)"}},
        {"a letter in a value",
         line_107("<REC1> 13:05:09 51 14x0 1234 48 7 </REC1>"),
         {"F:107: record 1, REC1: Speed is no number: 14x0 (<REC1> 13:05:09 51 14x0 1234 48 7 </REC1>)"}},
        {"a letter in a curve",
         golden_with(" 516 ", " 5l6 "),
         {"F:108: record 2, REC2: value 17 is no number: 5l6 (<REC2> 13:05:09 500 501 502 503 504 505 506 "
          "507 508 509 510 ...)"}},
        {"a value with a point",
         line_107("<REC1> 13:05:09 51 1480.5 1234 48 7 </REC1>"),
         {"F:107: record 1, REC1: Speed is no number: 1480.5 (<REC1> 13:05:09 51 1480.5 1234 48 7 </REC1>)"}},
        {"a value with a zero before it",
         line_107("<REC1> 13:05:09 51 01480 1234 48 7 </REC1>"),
         {"F:107: record 1, REC1: Speed is no number: 01480 (<REC1> 13:05:09 51 01480 1234 48 7 </REC1>)"}},
        {"an empty value",
         line_107("<REC1> 13:05:09 51  1234 48 7 </REC1>"),
         {"F:107: record 1, REC1: Speed is no number: nothing (<REC1> 13:05:09 51  1234 48 7 </REC1>)"}},
        {"a blank is missing at the end",
         line_107("<REC1> 13:05:09 51 1480 1234 48 7</REC1>"),
         {"F:107: record 1, REC1: its blanks are not those of a record (<REC1> 13:05:09 51 1480 1234 48 "
          "7</REC1>)"}},
        {"a blank too many at the end",
         line_107("<REC1> 13:05:09 51 1480 1234 48 7  </REC1>"),
         {"F:107: record 1, REC1: has 6 values and not 5 (<REC1> 13:05:09 51 1480 1234 48 7  </REC1>)"}},
        {"a curve with one blank at its end",
         golden_with("755  </REC2>", "755 </REC2>"),
         {"F:108: record 2, REC2: its blanks are not those of a record (<REC2> 13:05:09 500 501 502 503 504 "
          "505 506 507 508 509 510 ...)"}},
        {"a value below 0",
         line_107("<REC1> 13:05:09 -51 1480 1234 48 7 </REC1>"),
         {"F:107: record 1, REC1: Tsignal is -51, not within 0 to 3277 (<REC1> 13:05:09 -51 1480 1234 48 7 "
          "</REC1>)"}},
        {"Tsignal too great",
         line_107("<REC1> 13:05:09 3278 1480 1234 48 7 </REC1>"),
         {"F:107: record 1, REC1: Tsignal is 3278, not within 0 to 3277 (<REC1> 13:05:09 3278 1480 1234 48 7 "
          "</REC1>)"}},
        {"Speed too great",
         line_107("<REC1> 13:05:09 51 6555 1234 48 7 </REC1>"),
         {"F:107: record 1, REC1: Speed is 6555, not within 0 to 6554 (<REC1> 13:05:09 51 6555 1234 48 7 "
          "</REC1>)"}},
        {"Tvoltage too great",
         line_107("<REC1> 13:05:09 51 1480 32769 48 7 </REC1>"),
         {"F:107: record 1, REC1: Tvoltage is 32769, not within 0 to 32768 (<REC1> 13:05:09 51 1480 32769 48 "
          "7 </REC1>)"}},
        {"Teff AC with ten digits",
         line_107("<REC1> 13:05:09 51 1480 1234 48 1234567890 </REC1>"),
         {"F:107: record 1, REC1: Teff AC is 1234567890, not within 0 to 6554 (<REC1> 13:05:09 51 1480 1234 "
          "48 1234567890 </REC1>)"}},
        {"a curve's value too great",
         golden_with(" 20016 ", " 65536 "),
         {"F:109: record 3, REC3: value 17 is 65536, not within 0 to 65535 (<REC3> 13:05:09 20000 20001 "
          "20002 20003 20004 20005 20006 20...)"}},
        {"no time",
         line_107("<REC1> 51 1480 1234 48 7 </REC1>"),
         {"F:107: record 1, REC1: its time is none: 51 (<REC1> 51 1480 1234 48 7 </REC1>)"}},
        {"an hour too late",
         line_107("<REC1> 24:05:09 51 1480 1234 48 7 </REC1>"),
         {"F:107: record 1, REC1: its time is none: 24:05:09 (<REC1> 24:05:09 51 1480 1234 48 7 </REC1>)"}},
        {"a minute too late",
         line_107("<REC1> 13:60:09 51 1480 1234 48 7 </REC1>"),
         {"F:107: record 1, REC1: its time is none: 13:60:09 (<REC1> 13:60:09 51 1480 1234 48 7 </REC1>)"}},
        {"a comment without a time",
         line_107("<!-- KVD Prealarm ON -->"),
         {"F:107: the comment's time is none: KVD (<!-- KVD Prealarm ON -->)"}},
        {"a comment at no time",
         line_107("<!-- 13:05:99 KVD Prealarm ON -->"),
         {"F:107: the comment's time is none: 13:05:99 (<!-- 13:05:99 KVD Prealarm ON -->)"}},
    });
}

TEST(XlgCheck, TheLeastAndTheGreatestValuesAreFine) {
    std::string curve = "<REC2> 23:59:59 ";
    for (int sample = 0; sample < 256; ++sample)
        curve += sample % 2 == 0 ? "65535 " : "0 ";
    const verdict found = checked(log_of({"<REC1> 00:00:00 0 0 0 0 0 </REC1>", curve + " </REC2>",
                                          "<REC1> 23:59:59 3277 6554 32768 6554 6554 </REC1>",
                                          "<!-- 23:59:59  -->", "<!-- 23:59:59 a -- --> \xE4\x80 -->"}));
    EXPECT_EQ(found.told, text_lines{});
    EXPECT_TRUE(found.fine);
}

TEST(XlgCheck, GapsOnRequest) {
    const std::string log = log_of({"<!-- 10:00:00 KVD Prealarm ON -->", "<!-- 10:30:01 KVD Prealarm OFF -->",
                                    "<!-- 11:00:01 Measure Stopped -->", "<!-- 20:00:00 Log Started -->"});
    EXPECT_TRUE(checked(log).fine);
    EXPECT_TRUE(checked(log, 31).fine);
    EXPECT_EQ(checked(log, 30).told,
              text_lines{"F:108: a gap of 30 min 1 s in front of it (<!-- 10:30:01 KVD Prealarm OFF -->)"});
    EXPECT_FALSE(checked(log, 30).fine);
}

TEST(XlgCheck, ClocksThatWereSetAreRemarks) {
    const std::string back = log_of({"<!-- 10:00:00 a -->", "<!-- 09:00:00 b -->", "<!-- 09:00:00 c -->"});
    EXPECT_EQ(checked(back).told,
              text_lines{"F:108: remark: time runs back by 1 h 0 min (<!-- 09:00:00 b -->)"});
    EXPECT_TRUE(checked(back).fine);
    const std::string midnight = log_of({"<!-- 23:59:59 a -->", "<!-- 00:00:00 b -->"});
    EXPECT_EQ(checked(midnight).told,
              text_lines{"F:108: remark: the log goes on behind midnight (<!-- 00:00:00 b -->)"});
    EXPECT_TRUE(checked(midnight).fine);
    const std::string stopped = log_of({"<!-- 23:59:59 a -->", "<!-- 00:00:00 Measure Stopped -->"});
    EXPECT_EQ(checked(stopped).told, text_lines{});
}

TEST(XlgCheck, ADateThatIsNotThatOfTheNameIsARemark) {
    const verdict found = checked(six_cylinders(), {}, "20260703Qu_Engine 1.xlg");
    EXPECT_EQ(found.told, text_lines{"F: remark: the name's date is not that of the header, 20260702"});
    EXPECT_TRUE(found.fine);
}

TEST(XlgCheck, NothingIsWrongWithTheGoldenLogs) {
    std::size_t logs = 0;
    for (const auto& each : std::filesystem::directory_iterator(golden_folder())) {
        const verdict found = checked(file_content(each.path()));
        EXPECT_TRUE(found.fine) << each.path();
        const bool cut_short = each.path().filename() == "too_many_cylinders.xlg";
        EXPECT_EQ(found.told.size(), cut_short ? 1U : 0U) << each.path();
        ++logs;
    }
    EXPECT_GE(logs, 5U);
}

TEST(XlgCheck, TheLastLineHasTheFigures) {
    EXPECT_EQ(checked(six_cylinders()).figures, "20260702Qu_Engine 1.xlg: nothing wrong; 113 lines, 4 "
                                                "records (REC1 2, REC2 1, REC3 1), 3 comments, 7,837 bytes");
    const verdict found = checked(golden_with(first_record, "<REC1> 13:05:09 \r\n<RE\r\n"));
    EXPECT_EQ(found.figures, "20260702Qu_Engine 1.xlg: 2 wrong; 114 lines, 4 records (REC1 1, REC2 1, REC3 "
                             "1), 3 comments, 7,817 bytes");
}

} // namespace
} // namespace tyxo::xlg
