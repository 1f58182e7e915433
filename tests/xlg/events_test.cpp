// What is told of event files, and the table of their events.

#include "xlg/events.h"

#include "xlg/log_texts.h"

namespace tyxo::xlg {
namespace {

using text_lines = std::vector<std::string>;

struct told_events {
    bool fine = false;
    text_lines lines;
};

told_events checked(const std::string& file) {
    std::string told;
    const bool fine = check_events("F", source_of(file), [&told](std::string_view text) { told += text; });
    return {fine, lines_of(told)};
}

const std::string start = "##;07-02-2026;13:05:09;Tyxo Logger software started !\r\n";
const std::string alarm = "##;07-02-2026;13:05:10;KVD Engine 1 ## Main Alarm DC ON\r\n";

TEST(XlgEvents, NothingIsWrongWithWhatTheProgramWrites) {
    const told_events found = checked(start + alarm + "##;07-02-2026;13:05:11;KVD a;##;b ## Prealarm ON\r\n");
    EXPECT_TRUE(found.fine);
    EXPECT_EQ(found.lines, text_lines{"F: nothing wrong; 3 lines, 3 events, 162 bytes"});
    EXPECT_TRUE(checked("").fine);
}

TEST(XlgEvents, DamagedLines) {
    struct damaged_file {
        std::string line;
        std::string told;
    };
    for (const damaged_file& row : std::vector<damaged_file>{
             {"##;07-02-2026;13:05:09;Tyxo Logger\r",
              "torn, it ends in CR without LF (##;07-02-2026;13:05:09;Tyxo Logger)"},
             {"##;07-02-2026;13:05:09;Tyxo Logger",
              "torn, it has no line end (##;07-02-2026;13:05:09;Tyxo Logger)"},
             {"##;07-02-2026;13:05:09;Tyxo\n",
              "torn, it ends in LF without CR (##;07-02-2026;13:05:09;Tyxo)"},
             {"##;07-02-2026;13:0\r\n", "torn, cut behind its date (##;07-02-2026;13:0)"},
             {"##;07-02\r\n", "torn, cut behind its mark (##;07-02)"},
             {"#\r\n", "torn, cut behind its beginning (#)"},
             {"##;07-02-2026;13:05:09\r\n", "torn, cut behind its date (##;07-02-2026;13:05:09)"},
             {"##;07-02##;07-02-2026;13:05:09;x\r\n",
              "torn, another line begins at character 9 (##;07-02##;07-02-2026;13:05:09;x)"},
             {"##;13-02-2026;13:05:09;x\r\n", "its date is none: 13-02-2026 (##;13-02-2026;13:05:09;x)"},
             {"##;02-30-2026;13:05:09;x\r\n", "its date is none: 02-30-2026 (##;02-30-2026;13:05:09;x)"},
             {"##;07-02-2026;13:65:09;x\r\n", "its time is none: 13:65:09 (##;07-02-2026;13:65:09;x)"},
             {"##;07-02-2026;13:05:09,xx\r\n", "its time is none: 13:05:09 (##;07-02-2026;13:05:09,xx)"},
             {"\r\n", "an empty line ()"},
             {"hello\r\n", "no line of an event file (hello)"},
             {std::string("\0\0\r\n", 4), "no line of an event file; 2 bytes are no text, the first one 0x00 "
                                          "at character 1 (\\x00\\x00)"},
             {"##;07-02-2026;13:05:09;a\x7F\r\n",
              "1 byte is no text, the first one 0x7F at character 25 (##;07-02-2026;13:05:09;a\\x7F)"},
             {"##;07-02-2026;13:05:09;" + std::string(5000, 'x') + "\r\n",
              "a line of 5,023 characters, longer than any event "
              "(##;07-02-2026;13:05:09;xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...)"}}) {
        const told_events found = checked(start + row.line);
        ASSERT_EQ(found.lines.size(), 2U) << row.line;
        EXPECT_EQ(found.lines[0], "F:2: " + row.told);
        EXPECT_FALSE(found.fine);
    }
}

TEST(XlgEvents, AClockThatWasSetBackIsARemark) {
    const told_events found = checked(alarm + start + "##;07-01-2026;13:05:09;x\r\n");
    EXPECT_TRUE(found.fine);
    ASSERT_EQ(found.lines.size(), 3U);
    EXPECT_EQ(found.lines[0],
              "F:2: remark: time runs back by 1 s (##;07-02-2026;13:05:09;Tyxo Logger software started !)");
    EXPECT_EQ(found.lines[1], "F:3: remark: time runs back by 24 h 0 min (##;07-01-2026;13:05:09;x)");
}

TEST(XlgEvents, TheTableHasARowForEachEvent) {
    std::string rows;
    const auto left_out =
        csv_of_events("F", source_of(start + "##;07-02\r\n" + changed(alarm, "Engine 1", "\xDC;,")),
                      [&rows](std::string_view text) { rows += text; });
    EXPECT_EQ(left_out, 1);
    EXPECT_EQ(events_csv_head() + rows, "file,line,time,text\r\n"
                                        "F,1,2026-07-02T13:05:09,Tyxo Logger software started !\r\n"
                                        "F,3,2026-07-02T13:05:10,\"KVD \u00DC;, ## Main Alarm DC ON\"\r\n");
}

} // namespace
} // namespace tyxo::xlg
