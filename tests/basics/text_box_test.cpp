// The text box that grows at its end and is cut at its start.

#include "controls/text_box.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace tyxo {
namespace {

TEST(TextBox, StartsEmpty) {
    const text_box box;
    EXPECT_EQ(box.text(), "");
    EXPECT_EQ(box.size(), 0U);
    EXPECT_EQ(box.appended(), 0U);
    EXPECT_EQ(box.dropped(), 0U);
    EXPECT_EQ(box.caret(), 0U);
}

TEST(TextBox, AppendsAtItsEnd) {
    text_box box;
    box.append("one\r\n");
    box.append("");
    box.append("two\r\n");
    EXPECT_EQ(box.text(), "one\r\ntwo\r\n");
    EXPECT_EQ(box.size(), 10U);
    EXPECT_EQ(box.appended(), 10U);
}

TEST(TextBox, KeepsItsLastCharacters) {
    text_box box;
    box.append("0123456789");
    box.keep_last(3);
    EXPECT_EQ(box.text(), "789");
    EXPECT_EQ(box.dropped(), 7U);
    EXPECT_EQ(box.appended(), 10U);
    box.append("abc");
    EXPECT_EQ(box.text(), "789abc");
    box.keep_last(5);
    EXPECT_EQ(box.text(), "89abc");
    EXPECT_EQ(box.dropped(), 8U);
    box.keep_last(0);
    EXPECT_EQ(box.text(), "");
    EXPECT_EQ(box.dropped(), 13U);
}

TEST(TextBox, ThatIsNotLongerIsNotCut) {
    text_box box;
    box.append("12345");
    box.keep_last(5);
    box.keep_last(6);
    EXPECT_EQ(box.text(), "12345");
    EXPECT_EQ(box.dropped(), 0U);
}

TEST(TextBox, CaretCountsAllCharactersEverAppended) {
    text_box box;
    box.append("12345");
    EXPECT_EQ(box.caret(), 0U);
    box.caret_to_end();
    EXPECT_EQ(box.caret(), 5U);
    box.append("678");
    EXPECT_EQ(box.caret(), 5U);
    box.keep_last(2);
    box.caret_to_end();
    EXPECT_EQ(box.caret(), 8U);
}

TEST(TextBox, CutAgainAndAgainHoldsTheSameTextAsOneLongText) {
    text_box box;
    std::string all;
    for (int line = 0; line < 3000; ++line) {
        const std::string text = "line " + std::to_string(line) + "\r\n";
        box.append(text);
        all += text;
        box.keep_last(1000);
        ASSERT_EQ(box.text(),
                  std::string_view(all).substr(all.size() - std::min<std::size_t>(all.size(), 1000)));
        ASSERT_EQ(box.dropped(), all.size() - box.size());
    }
}

TEST(TextBox, FullOf60000CharactersMovesItsTextOnlyNowAndThen) {
    constexpr std::size_t limit = 60000;
    text_box box;
    box.append(std::string(limit, 'x'));
    const std::string added = "07-02-2026 13:05:09 KVD engine ## Prealarm ON\r\n";
    int moves = 0;
    for (int line = 0; line < 10000; ++line) {
        const char* const end = box.text().data() + box.size();
        box.append(added);
        box.keep_last(limit);
        // The end of the text goes on where it was, unless the text was moved.
        const char* const new_end = box.text().data() + box.size();
        if (new_end != end + added.size()) ++moves;
    }
    EXPECT_LE(moves, 20);
}

} // namespace
} // namespace tyxo
