// Lines, however the blocks that they come in are cut.

#include "xlg/line_reader.h"

#include "xlg/log_texts.h"

#include "basics/failure.h"

namespace tyxo::xlg {
namespace {

struct read_line {
    std::string text;
    std::int64_t length;
    line_end end;
    bool operator==(const read_line&) const = default;
};

std::vector<read_line> read(const std::string& text, std::size_t piece = 1 << 20) {
    line_reader reader(source_of(text, piece), 16384);
    std::vector<read_line> lines;
    line one;
    while (reader.next(one)) {
        lines.push_back({std::string(one.text), one.length, one.end});
        EXPECT_EQ(one.number, static_cast<std::int64_t>(lines.size()));
    }
    EXPECT_EQ(reader.bytes(), static_cast<std::int64_t>(text.size()));
    EXPECT_FALSE(reader.next(one)) << "the end stays the end";
    return lines;
}

TEST(XlgLineReader, EveryEnd) {
    const std::vector<read_line> expected{{"a", 1, line_end::cr_lf},    {"b", 1, line_end::lf},
                                          {"", 0, line_end::cr_lf},     {"", 0, line_end::lf},
                                          {"c\rd", 3, line_end::cr_lf}, {"e\r", 2, line_end::cr_lf}};
    const std::string text = "a\r\nb\n\r\n\nc\rd\r\ne\r\r\n";
    EXPECT_EQ(read(text), expected);
    auto more = expected;
    more.push_back({"f", 1, line_end::none});
    EXPECT_EQ(read(text + "f"), more);
    more.back().end = line_end::cr;
    EXPECT_EQ(read(text + "f\r"), more);
    EXPECT_EQ(read(""), std::vector<read_line>{});
    EXPECT_EQ(read("\r"), (std::vector<read_line>{{"", 0, line_end::cr}}));
}

TEST(XlgLineReader, PiecesOfAnySizeGiveTheSameLines) {
    std::string text;
    for (int line = 0; line < 60; ++line)
        text +=
            std::string(static_cast<std::size_t>(line * line % 700), 'x') + (line % 3 == 0 ? "\n" : "\r\n");
    const auto whole = read(text);
    EXPECT_EQ(whole.size(), 60U);
    for (const std::size_t piece : {1U, 2U, 3U, 7U, 100U, 4095U})
        EXPECT_EQ(read(text, piece), whole) << piece;
}

TEST(XlgLineReader, ALineOfAnyLengthIsCountedAndItsEndIsFound) {
    for (const std::size_t length : {4096U, 4097U, 8192U, 8193U, 16383U, 16384U, 16385U, 1'000'000U}) {
        for (const std::size_t piece : {1000U, 1U << 20U}) {
            const auto lines = read(
                "a\r\n" + std::string(length, 'x') + "\r\nb\r\n" + std::string(length, 'y') + "\r", piece);
            ASSERT_EQ(lines.size(), 4U) << length;
            for (const std::size_t line : {1U, 3U}) {
                EXPECT_EQ(lines[line].length, static_cast<std::int64_t>(length));
                EXPECT_EQ(lines[line].text.size(), 4096U);
                EXPECT_EQ(lines[line].text.find_first_not_of("xy"), std::string::npos);
            }
            EXPECT_EQ(lines[1].end, line_end::cr_lf) << length;
            EXPECT_EQ(lines[3].end, line_end::cr) << length;
            EXPECT_EQ(lines[2].text, "b");
        }
    }
}

TEST(XlgLineReader, AFailureOfTheSourceIsItsOwn) {
    line_reader reader([](std::span<char>) -> std::size_t { throw failure("the disk is gone"); });
    line one;
    EXPECT_THROW(reader.next(one), failure);
}

} // namespace
} // namespace tyxo::xlg
