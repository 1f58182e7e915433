// What is told of a log as a whole.

#include "xlg/summary.h"

#include "xlg/log_texts.h"

namespace tyxo::xlg {
namespace {

struct told_summary {
    bool whole = false;
    std::string text;
};

told_summary summarised(const std::string& log, int gap_minutes = 10) {
    told_summary result;
    result.whole = summarise_log("20260702Qu_Engine 1.xlg", source_of(log), gap_minutes,
                                 [&result](std::string_view text) { result.text += text; });
    return result;
}

TEST(XlgSummary, EngineRecordsAlarmsAndExtremes) {
    const std::string log =
        log_of({"<REC1> 13:05:09 51 1480 1234 48 7 </REC1>", "<!-- 13:05:10 KVD Main ALARM DC ON -->",
                "<REC1> 13:05:11 7 1500 1 0 9 </REC1>", "<#-- 13:05:12 Testsignal1 ON -->",
                "<!-- 13:05:13 KVD Main ALARM DC OFF -->", "<!-- 13:05:14 KVD Alarm Inhibit ON -->",
                curve_line("REC3"), "<!-- 13:05:15 KVD Main ALARM DC ON -->"});
    const told_summary found = summarised(log);
    EXPECT_TRUE(found.whole);
    EXPECT_EQ(
        found.text,
        "20260702Qu_Engine 1.xlg\n"
        "  Program               MTyxo Version 2.10_4  02.07.2026\n"
        "  Engine                6 cylinder in-line, 4 stroke, nominal speed 1500 rpm, overspeed 1650 rpm\n"
        "  Firing order          1 5 3 6 2 4\n"
        "  Evaluator             type code TX-6, firmware V3.10-0042, serial number SN004711\n"
        "  Period                2026-07-02T13:05:09 to 2026-07-02T13:05:15\n"
        "  Records               REC1 2, REC2 0, REC3 1\n"
        "  Comments              4, notes 1, alarms that begin 2\n"
        "                        1 x KVD Alarm Inhibit ON\n"
        "                        1 x KVD Main ALARM DC OFF\n"
        "                        2 x KVD Main ALARM DC ON\n"
        "                        1 x Testsignal1 ON\n"
        "  Tsignal               7 (2026-07-02T13:05:11) to 51 (2026-07-02T13:05:09) % of alarm level\n"
        "  Speed                 1480 (2026-07-02T13:05:09) to 1500 (2026-07-02T13:05:11) rpm\n"
        "  Tvoltage              1 (2026-07-02T13:05:11) to 1234 (2026-07-02T13:05:09) 0.01 mV\n"
        "  Teff DC               0 (2026-07-02T13:05:11) to 48 (2026-07-02T13:05:09) % of alarm level\n"
        "  Teff AC               7 (2026-07-02T13:05:09) to 9 (2026-07-02T13:05:11) % of alarm level\n"
        "  Angular Acceleration  500 (2026-07-02T13:05:09) to 755 (2026-07-02T13:05:09) count\n\n");
}

TEST(XlgSummary, GapsAreTold) {
    const std::string log = log_of({"<!-- 10:00:00 a -->", "<!-- 10:10:01 b -->", "<!-- 10:20:02 c -->",
                                    "<!-- 10:20:03 Measure Stopped -->", "<!-- 12:00:00 d -->"});
    EXPECT_NE(summarised(log).text.find("  Gap                   10 min 1 s behind 2026-07-02T10:00:00\n"
                                        "  Gap                   10 min 1 s behind 2026-07-02T10:10:01\n\n"),
              std::string::npos)
        << summarised(log).text;
    EXPECT_EQ(summarised(log, 11).text.find("Gap"), std::string::npos);
}

TEST(XlgSummary, DamagedLinesAreLeftOutAndCounted) {
    const told_summary found =
        summarised(log_of({"<REC1> 13:05:09 51 1480 1234 48 7 </REC1>", "<REC1> 13:05:10 51",
                           "<REC1> 13:05:11 51 9999 1234 48 7 </REC1>"}));
    EXPECT_FALSE(found.whole);
    EXPECT_NE(found.text.find("  Left out              2 damaged lines, see xlg check\n"), std::string::npos);
    EXPECT_EQ(found.text.find("9999"), std::string::npos);
    const told_summary empty = summarised("");
    EXPECT_FALSE(empty.whole);
    EXPECT_NE(empty.text.find("  Wrong                 empty, it has no header, see xlg check\n"),
              std::string::npos);
}

TEST(XlgSummary, NothingInALogReachesATerminalAsACommand) {
    std::string log = six_cylinders();
    for (const char* const value : {" 6 ", " 1500 ", "TX-6", " 1 5 3 6 2 4 ", "V3.10-0042", "Version 2.10_4"})
        log = changed(log, value, " \x1B[31m ");
    const std::string text = summarised(log).text;
    EXPECT_EQ(text.find('\x1B'), std::string::npos);
    EXPECT_NE(text.find("type code \\x1B[31m, firmware \\x1B[31m,"), std::string::npos) << text;
}

TEST(XlgSummary, DifferentCommentsBeyondFiftyAreOneRow) {
    std::vector<std::string> lines;
    for (int number = 100; number < 160; ++number)
        lines.push_back("<!-- 13:05:09 text " + std::to_string(number) + " -->");
    const std::string text = summarised(log_of(lines)).text;
    EXPECT_NE(text.find("1 x text 149\n"), std::string::npos);
    EXPECT_NE(text.find("10 x others\n"), std::string::npos);
}

} // namespace
} // namespace tyxo::xlg
