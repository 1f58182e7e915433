// Logs as tables: what is written is read back.

#include "xlg/csv.h"

#include "basics/ansi.h"
#include "xlg/log_texts.h"

#include <random>

namespace tyxo::xlg {
namespace {

using csv_row = std::vector<std::string>;

/// The rows of a table by RFC 4180.
std::vector<csv_row> parsed(const std::string& text) {
    std::vector<csv_row> rows;
    csv_row row;
    std::string field;
    bool quoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char byte = text[at];
        if (quoted && byte == '"' && at + 1 < text.size() && text[at + 1] == '"') {
            field += text[++at];
        } else if (byte == '"') {
            quoted = !quoted;
        } else if (!quoted && (byte == ',' || byte == '\r')) {
            row.push_back(field);
            field.clear();
            if (byte == ',') continue;
            EXPECT_EQ(text[++at], '\n');
            rows.push_back(std::move(row));
            row.clear();
        } else {
            field += byte;
        }
    }
    EXPECT_TRUE(row.empty() && field.empty()) << "the last row has its end";
    return rows;
}

struct table {
    std::vector<csv_row> rows;
    std::int64_t left_out = 0;
};

table table_of(const std::string& log, csv_lines lines, const std::string& name = "a.xlg") {
    std::string text;
    table result;
    result.left_out =
        csv_of_log(name, source_of(log), lines, [&text](std::string_view more) { text += more; });
    result.rows = parsed(text);
    return result;
}

/// The line that a row was made of.
std::string line_of(const csv_row& row, csv_lines lines) {
    const std::string time = row[2].substr(row[2].find('T') + 1);
    if (lines == csv_lines::comments)
        return (row[3] == "note" ? "<#-- " : "<!-- ") + time + " " + ansi_from_utf8(row[4]) + " -->";
    const bool curves = lines == csv_lines::curves;
    const std::string tag = curves ? row[3] : "REC1";
    std::string text = "<" + tag + "> " + time + " ";
    for (std::size_t field = curves ? 4 : 3; field < row.size(); ++field)
        text += row[field] + " ";
    return text + (curves ? " </" : "</") + tag + ">";
}

/// Lines of all kinds with any values and texts.
std::vector<std::string> any_lines(std::mt19937& dice) {
    const auto below = [&dice](unsigned limit) { return static_cast<int>(dice() % limit); };
    std::vector<std::string> lines;
    const auto number = [](int value) { return std::to_string(value) + " "; };
    for (int second = 0; second < 60; ++second) {
        const std::string time =
            "13:05:" + std::string(second < 10 ? "0" : "") + std::to_string(second) + " ";
        lines.push_back("<REC1> " + time + number(below(3278)) + number(below(6555)) + number(below(32769)) +
                        number(below(6555)) + number(below(6555)) + "</REC1>");
        std::string curve = (second % 2 == 0 ? "<REC2> " : "<REC3> ") + time;
        for (int sample = 0; sample < 256; ++sample)
            curve += number(below(65536));
        lines.push_back(curve + (second % 2 == 0 ? " </REC2>" : " </REC3>"));
        std::string text;
        for (int length = below(12); length > 0; --length)
            text += "a\"\xFC,; \x80x"[below(8)];
        lines.push_back((second % 3 == 0 ? "<#-- " : "<!-- ") + time + text + " -->");
    }
    return lines;
}

TEST(XlgCsv, WhatIsWrittenIsReadBack) {
    std::mt19937 dice(4711);
    for (int log = 0; log < 20; ++log) {
        const auto lines = any_lines(dice);
        const std::string text = log_of(lines);
        std::size_t rows = 0;
        for (const csv_lines kind : {csv_lines::records, csv_lines::curves, csv_lines::comments}) {
            const table read = table_of(text, kind);
            EXPECT_EQ(read.left_out, 0);
            for (const csv_row& row : read.rows) {
                ASSERT_EQ(row.size(), parsed(csv_head(kind)).at(0).size());
                const std::size_t number = std::stoul(row[1]);
                ASSERT_GT(number, 106U);
                EXPECT_EQ(line_of(row, kind), lines.at(number - 107));
                ++rows;
            }
        }
        EXPECT_EQ(rows, lines.size()) << "every line is in one of the tables";
    }
}

TEST(XlgCsv, TheHeadHasNamesAndUnits) {
    EXPECT_EQ(csv_head(csv_lines::records),
              "file,line,time,Tsignal [% of alarm level],Speed [rpm],Tvoltage [0.01 mV],"
              "Teff DC [% of alarm level],Teff AC [% of alarm level]\r\n");
    EXPECT_EQ(csv_head(csv_lines::comments), "file,line,time,kind,text\r\n");
    const std::string curves = csv_head(csv_lines::curves);
    EXPECT_TRUE(curves.starts_with("file,line,time,record,sample 0 [raw],sample 1 [raw],")) << curves;
    EXPECT_TRUE(curves.ends_with(",sample 255 [raw]\r\n")) << curves;
}

TEST(XlgCsv, TheDateIsThatOfTheNameElseOfTheHeaderElseNone) {
    const auto time_in = [](const std::string& log, const std::string& name) {
        return table_of(log, csv_lines::records, name).rows.at(0)[2];
    };
    EXPECT_EQ(time_in(six_cylinders(), "20240229Qu_Engine 1.xlg"), "2024-02-29T13:05:09");
    EXPECT_EQ(time_in(six_cylinders(), "logs 1/2024022913Qu_Engine 1.xlg"), "2024-02-29T13:05:09");
    for (const char* const name : {"-", "Qu_a.xlg", "20240230Qu_a.xlg", "2024022Qu_a.xlg", "20240229/a.xlg"})
        EXPECT_EQ(time_in(six_cylinders(), name), "2026-07-02T13:05:09") << name;
    EXPECT_EQ(time_in(golden_with("<LOGDATE> 20260702", "<LOGDATE> 20260732"), "-"), "13:05:09");
}

TEST(XlgCsv, TheDateGoesOnBehindMidnightAndNotWithAClockThatWasSetBack) {
    const std::string log = log_of({"<!-- 23:00:00 a -->", "<!-- 22:59:59 b -->", "<!-- 00:00:00 c -->",
                                    "<!-- 13:00:00 d -->", "<!-- 01:00:00 e -->", "<!-- 00:30:00 f -->"});
    std::vector<std::string> times;
    for (const csv_row& row : table_of(log, csv_lines::comments, "20241231Qu_a.xlg").rows)
        times.push_back(row[2]);
    EXPECT_EQ(times, (std::vector<std::string>{"2024-12-31T23:00:00", "2024-12-31T22:59:59",
                                               "2025-01-01T00:00:00", "2025-01-01T13:00:00",
                                               "2025-01-01T01:00:00", "2025-01-01T00:30:00"}));
    const std::string twice =
        log_of({"<!-- 12:00:01 a -->", "<!-- 00:00:00 b -->", "<!-- 12:00:01 c -->", "<!-- 00:00:00 d -->"});
    EXPECT_EQ(table_of(twice, csv_lines::comments, "20241230Qu_a.xlg").rows.back()[2], "2025-01-01T00:00:00");
}

TEST(XlgCsv, DamagedLinesAreLeftOutAndCounted) {
    const std::string log = log_of({"<REC1> 13:05:09 1 2 3 4 5 </REC1>", "<REC1> 13:05:09 1 2",
                                    "<REC1> 13:05:09 1 9999 3 4 5 </REC1>", "hello"}) +
                            "<REC1> 13:05:10 5 4 3 2 1 </REC1>";
    const table read = table_of(log, csv_lines::records, "b, \"c\".xlg");
    EXPECT_EQ(read.left_out, 3);
    ASSERT_EQ(read.rows.size(), 2U) << "a line that lacks its end only is whole";
    EXPECT_EQ(read.rows[1], (csv_row{"b, \"c\".xlg", "111", "2026-07-02T13:05:10", "5", "4", "3", "2", "1"}));
}

TEST(XlgCsv, TextsAreUtf8AndQuotedWhereTheyHaveTo) {
    const auto field = [](std::string_view text) {
        std::string row;
        append_csv_text(row, text);
        return row;
    };
    EXPECT_EQ(field("KVD Prealarm ON"), "KVD Prealarm ON");
    EXPECT_EQ(field("a,b"), "\"a,b\"");
    EXPECT_EQ(field("say \"a\""), "\"say \"\"a\"\"\"");
    EXPECT_EQ(field("a\nb"), "\"a\nb\"");
    EXPECT_EQ(field(""), "\"\"");
    EXPECT_EQ(field(" a"), "\" a\"");
    const table read = table_of(log_of({"<!-- 13:05:09 KVD Maschine \xDC \x80 -->"}), csv_lines::comments);
    EXPECT_EQ(read.rows.at(0).back(), "KVD Maschine \u00DC \u20AC");
}

} // namespace
} // namespace tyxo::xlg
