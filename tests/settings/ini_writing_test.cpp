// How a key is written into the text of a settings file.

#include "settings/ini_text.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tyxo::Ini {
namespace {

struct writing {
    std::string_view rule;
    std::string_view before;
    std::string_view after; ///< when "alpha" in the section "tyxo" was set to "9"
};

void expect_writings(std::initializer_list<writing> rows) {
    for (const writing& row : rows) {
        EXPECT_EQ(set_key(row.before, "tyxo", "alpha", "9"), row.after) << row.rule;
    }
}

TEST(IniWriting, AKeyIsReplacedAtItsPlace) {
    expect_writings({
        {"in the middle", "[tyxo]\r\na=1\r\nalpha=2\r\nb=3\r\n", "[tyxo]\r\na=1\r\nalpha=9\r\nb=3\r\n"},
        {"at the end", "[tyxo]\r\na=1\r\nalpha=2\r\n", "[tyxo]\r\na=1\r\nalpha=9\r\n"},
        {"an empty one", "[tyxo]\r\nalpha=\r\nb=3\r\n", "[tyxo]\r\nalpha=9\r\nb=3\r\n"},
        {"a longer one", "[tyxo]\r\nalpha=a longer text\r\nb=3\r\n", "[tyxo]\r\nalpha=9\r\nb=3\r\n"},
        {"one with equals signs", "[tyxo]\r\nalpha=1=2=3\r\nb=3\r\n", "[tyxo]\r\nalpha=9\r\nb=3\r\n"},
    });
}

TEST(IniWriting, AMissingKeyIsAddedAtTheEndOfItsSection) {
    expect_writings({
        {"the only section", "[tyxo]\r\na=1\r\n", "[tyxo]\r\na=1\r\nalpha=9\r\n"},
        {"an empty section", "[tyxo]\r\n", "[tyxo]\r\nalpha=9\r\n"},
        {"another section behind", "[tyxo]\r\na=1\r\n[other]\r\nalpha=1\r\n",
         "[tyxo]\r\na=1\r\nalpha=9\r\n[other]\r\nalpha=1\r\n"},
        {"blank lines in front of the next section", "[tyxo]\r\na=1\r\n\r\n[other]\r\n",
         "[tyxo]\r\na=1\r\nalpha=9\r\n\r\n[other]\r\n"},
        {"behind a comment", "[tyxo]\r\na=1\r\n;end\r\n", "[tyxo]\r\na=1\r\n;end\r\nalpha=9\r\n"},
        {"a comment is not the key", "[tyxo]\r\n;alpha=1\r\n", "[tyxo]\r\n;alpha=1\r\nalpha=9\r\n"},
        {"a line without equals sign is not the key", "[tyxo]\r\nalpha\r\n",
         "[tyxo]\r\nalpha\r\nalpha=9\r\n"},
    });
}

TEST(IniWriting, AMissingSectionIsAddedAtTheEndOfTheFile) {
    expect_writings({
        {"no file", "", "[tyxo]\r\nalpha=9\r\n"},
        {"another section", "[other]\r\nalpha=1\r\n", "[other]\r\nalpha=1\r\n[tyxo]\r\nalpha=9\r\n"},
        {"a key without section", "alpha=1\r\n", "alpha=1\r\n[tyxo]\r\nalpha=9\r\n"},
        {"a commented section", ";[tyxo]\r\n", ";[tyxo]\r\n[tyxo]\r\nalpha=9\r\n"},
    });
}

TEST(IniWriting, TheFilesOwnKindOfLineEndIsKept) {
    expect_writings({
        {"replaced among LF", "[tyxo]\nalpha=1\nb=3\n", "[tyxo]\nalpha=9\nb=3\n"},
        {"added among LF", "[tyxo]\nb=3\n", "[tyxo]\nb=3\nalpha=9\n"},
        {"section added among LF", "[other]\n", "[other]\n[tyxo]\nalpha=9\n"},
        {"added among CR LF", "[tyxo]\r\nb=3\r\n", "[tyxo]\r\nb=3\r\nalpha=9\r\n"},
        {"other lines of mixed kinds stay", "[tyxo]\r\na=1\nalpha=2\nb=3\r\n",
         "[tyxo]\r\na=1\nalpha=9\nb=3\r\n"},
        {"a new file has CR LF", "", "[tyxo]\r\nalpha=9\r\n"},
    });
}

TEST(IniWriting, AMissingFinalLineEndIsNoHindrance) {
    expect_writings({
        {"the key is last", "[tyxo]\r\nalpha=2", "[tyxo]\r\nalpha=9"},
        {"another key is last", "[tyxo]\r\nb=3", "[tyxo]\r\nb=3\r\nalpha=9\r\n"},
        {"another section is last", "[other]\r\nb=3", "[other]\r\nb=3\r\n[tyxo]\r\nalpha=9\r\n"},
        {"among LF", "[tyxo]\nb=3", "[tyxo]\nb=3\nalpha=9\n"},
        {"the section line is last", "[tyxo]", "[tyxo]\r\nalpha=9\r\n"},
    });
}

TEST(IniWriting, TheFirstOfDuplicateKeysIsReplaced) {
    expect_writings({
        {"same spelling", "[tyxo]\r\nalpha=1\r\nalpha=2\r\n", "[tyxo]\r\nalpha=9\r\nalpha=2\r\n"},
        {"other case", "[tyxo]\r\nALPHA=1\r\nalpha=2\r\n", "[tyxo]\r\nALPHA=9\r\nalpha=2\r\n"},
    });
}

TEST(IniWriting, AnotherSectionsKeyOfTheSameNameStays) {
    expect_writings({
        {"in front", "[other]\r\nalpha=1\r\n[tyxo]\r\nalpha=2\r\n",
         "[other]\r\nalpha=1\r\n[tyxo]\r\nalpha=9\r\n"},
        {"behind", "[tyxo]\r\nalpha=2\r\n[other]\r\nalpha=1\r\n",
         "[tyxo]\r\nalpha=9\r\n[other]\r\nalpha=1\r\n"},
    });
}

TEST(IniWriting, AKeyInAnotherSpellingIsTheSameKey) {
    const std::string text = set_key("[TYXO]\r\nIPPORT=1\r\n", "tyxo", "IPPort", " 502");
    EXPECT_EQ(get_key(text, "tyxo", "IPport"), "502");
    EXPECT_EQ(text.find("502"), text.rfind("502"));
    EXPECT_EQ(text.find("[", 1), text.npos) << "one section";
    EXPECT_EQ(std::count(text.begin(), text.end(), '='), 1) << "one key";
}

TEST(IniWriting, TheValueIsWrittenAsItStands) {
    for (const std::string_view value : {" 500", "-3", "C:\\logs\\", "a;b", "a=b", "M\xFCller", "", "[x]"}) {
        EXPECT_EQ(set_key("", "tyxo", "alpha", value), "[tyxo]\r\nalpha=" + std::string(value) + "\r\n");
        EXPECT_EQ(set_key("[tyxo]\r\nalpha=old\r\nb=1\r\n", "tyxo", "alpha", value),
                  "[tyxo]\r\nalpha=" + std::string(value) + "\r\nb=1\r\n");
    }
}

TEST(IniWriting, AnIndentedKeyKeepsItsIndentation) {
    EXPECT_EQ(set_key("[tyxo]\r\n  alpha =1\r\n", "tyxo", "alpha", "9"), "[tyxo]\r\n  alpha =9\r\n");
}

TEST(IniWriting, WritingTwiceGivesTheTextOfWritingOnce) {
    const std::string once = set_key("[tyxo]\r\na=1\r\n", "tyxo", "alpha", " 9");
    EXPECT_EQ(set_key(once, "tyxo", "alpha", " 9"), once);
}

} // namespace
} // namespace tyxo::Ini
