// How the text of a settings file is read.

#include "settings/ini_text.h"

#include <gtest/gtest.h>

namespace tyxo::Ini {
namespace {

struct reading {
    std::string_view rule;
    std::string_view text;
    std::string_view value; ///< of the key "alpha" in the section "tyxo"
};

void expect_readings(std::initializer_list<reading> rows) {
    for (const reading& row : rows) {
        EXPECT_EQ(get_key(row.text, "tyxo", "alpha"), row.value) << row.rule;
    }
}

TEST(IniReading, LineEndsOfBothKindsEndAValue) {
    expect_readings({
        {"CR LF", "[tyxo]\r\nalpha=1\r\nbeta=2\r\n", "1"},
        {"LF", "[tyxo]\nalpha=1\nbeta=2\n", "1"},
        {"CR LF behind LF", "[tyxo]\nalpha=1\r\nbeta=2\n", "1"},
        {"LF behind CR LF", "[tyxo]\r\nalpha=1\nbeta=2\r\n", "1"},
        {"none at the end", "[tyxo]\r\nalpha=1", "1"},
        {"none, and a CR", "[tyxo]\nalpha=1\r", "1"},
        {"blank lines between", "\r\n\r\n[tyxo]\r\n\r\n\n\r\nalpha=1\r\n", "1"},
    });
}

TEST(IniReading, NamesAreMatchedWithoutRegardToCase) {
    expect_readings({
        {"key", "[tyxo]\r\nALPHA=1\r\n", "1"},
        {"key of both cases", "[tyxo]\r\naLpHa=1\r\n", "1"},
        {"section", "[TYXO]\r\nalpha=1\r\n", "1"},
        {"section of both cases", "[TyXo]\r\nAlpha=1\r\n", "1"},
    });
    EXPECT_EQ(get_key("[TYXO]\nIPPort=502\n", "tyxo", "IPport"), "502");
    EXPECT_EQ(get_key("[tyxo]\nIpenaTRS=1\n", "TYXO", "IPenaTRS"), "1");
}

TEST(IniReading, OnlyLettersHaveACase) {
    EXPECT_EQ(get_key("[tyxo]\nk[=1\n", "tyxo", "k{"), "");
    EXPECT_EQ(get_key("[tyxo]\n@a=1\n", "tyxo", "`a"), "");
    EXPECT_EQ(get_key("[tyxo]\nk_=1\n", "tyxo", "k\x7F"), "");
}

TEST(IniReading, BlanksAroundKeyAndValueAreDropped) {
    expect_readings({
        {"behind the equals sign", "[tyxo]\r\nalpha= 500\r\n", "500"},
        {"behind the value", "[tyxo]\r\nalpha=500  \r\n", "500"},
        {"around the key", "[tyxo]\r\n  alpha  =500\r\n", "500"},
        {"tabulators", "[tyxo]\r\n\talpha\t=\t500\t\r\n", "500"},
        {"around the section", "[tyxo]\r\nalpha=500\r\n", "500"},
        {"in front of the section line", "  [tyxo]  \r\nalpha=500\r\n", "500"},
        {"blanks within stay", "[tyxo]\r\nalpha= Engine  number 1 \r\n", "Engine  number 1"},
        {"nothing but blanks", "[tyxo]\r\nalpha=   \r\n", ""},
    });
    EXPECT_EQ(get_key("[tyxo]\nlocation 1=A\nlocation  2=B\n", "tyxo", "location 1"), "A");
    EXPECT_EQ(get_key("[tyxo]\nlocation  2=B\n", "tyxo", "location 2"), "");
}

TEST(IniReading, OnePairOfEnclosingQuotesIsDropped) {
    expect_readings({
        {"double quotes", "[tyxo]\nalpha=\"abc\"\n", "abc"},
        {"single quotes", "[tyxo]\nalpha='abc'\n", "abc"},
        {"blanks in quotes stay", "[tyxo]\nalpha=\" abc \"\n", " abc "},
        {"one pair of two", "[tyxo]\nalpha=\"\"abc\"\"\n", "\"abc\""},
        {"the outer pair of two kinds", "[tyxo]\nalpha='\"abc\"'\n", "\"abc\""},
        {"two different quotes", "[tyxo]\nalpha='abc\"\n", "'abc\""},
        {"only in front", "[tyxo]\nalpha=\"abc\n", "\"abc"},
        {"only behind", "[tyxo]\nalpha=abc\"\n", "abc\""},
        {"a single quote sign", "[tyxo]\nalpha=\"\n", "\""},
        {"an empty pair", "[tyxo]\nalpha=\"\"\n", ""},
        {"within", "[tyxo]\nalpha=a\"b\"c\n", "a\"b\"c"},
    });
}

TEST(IniReading, TheFirstOfDuplicateKeysCounts) {
    expect_readings({
        {"same spelling", "[tyxo]\nalpha=1\nalpha=2\n", "1"},
        {"other case", "[tyxo]\nALPHA=1\nalpha=2\n", "1"},
        {"the first one empty", "[tyxo]\nalpha=\nalpha=2\n", ""},
    });
}

TEST(IniReading, LinesThatBeginWithASemicolonAreComments) {
    expect_readings({
        {"commented key", "[tyxo]\n;alpha=1\nalpha=2\n", "2"},
        {"comment behind blanks", "[tyxo]\n  ;alpha=1\nalpha=2\n", "2"},
        {"commented section", "[tyxo]\n;[other]\nalpha=2\n", "2"},
        {"commented section in front", ";[tyxo]\nalpha=1\n[tyxo]\nalpha=2\n", "2"},
        {"a semicolon in the value is text", "[tyxo]\nalpha=1;2 ; 3\n", "1;2 ; 3"},
        {"a semicolon begins the value", "[tyxo]\nalpha=;2\n", ";2"},
    });
    EXPECT_EQ(get_key("[tyxo]\n;alpha=1\n", "tyxo", ";alpha"), "");
}

TEST(IniReading, LinesWithoutAnEqualsSignAreNoKeys) {
    expect_readings({
        {"alone", "[tyxo]\nalpha\n", ""},
        {"in front of the key", "[tyxo]\nalpha\nalpha=2\n", "2"},
        {"text of other kinds", "[tyxo]\nalpha 1\nalpha: 1\nalpha=2\n", "2"},
    });
}

TEST(IniReading, OnlyTheFirstEqualsSignDivides) {
    expect_readings({
        {"in the value", "[tyxo]\nalpha=1=2=3\n", "1=2=3"},
        {"as the value", "[tyxo]\nalpha==\n", "="},
    });
}

TEST(IniReading, AKeyIsFoundInItsSectionOnly) {
    expect_readings({
        {"section in front", "[other]\nalpha=1\n[tyxo]\nalpha=2\n", "2"},
        {"section behind", "[tyxo]\nalpha=2\n[other]\nalpha=1\n", "2"},
        {"only in another section", "[tyxo]\nbeta=2\n[other]\nalpha=1\n", ""},
        {"only in front of all sections", "alpha=1\n[tyxo]\nbeta=2\n", ""},
        {"a section whose name begins alike", "[tyxo2]\nalpha=1\n[tyxo]\nalpha=2\n", "2"},
        {"a section whose name ends alike", "[my tyxo]\nalpha=1\n[tyxo]\nalpha=2\n", "2"},
        {"no section at all", "alpha=1\n", ""},
        {"no such section", "[other]\nalpha=1\n", ""},
        {"a key that begins alike", "[tyxo]\nalpha2=1\nalph=3\nalpha=2\n", "2"},
    });
}

TEST(IniReading, MissingAndEmptyKeysReadAsTheEmptyText) {
    expect_readings({
        {"empty file", "", ""},
        {"only line ends", "\r\n\r\n\n", ""},
        {"only a section", "[tyxo]", ""},
        {"empty value", "[tyxo]\nalpha=\nbeta=3\n", ""},
        {"empty value at the end of the file", "[tyxo]\nalpha=", ""},
    });
}

TEST(IniReading, BytesAboveAsciiPassUnchanged) {
    const std::string value = "M\xFCller \x80 \xDF\x9F\xA0\xFF|";
    EXPECT_EQ(get_key("[tyxo]\r\nalpha=" + value + "\r\n", "tyxo", "alpha"), value);
}

TEST(IniReading, LettersAboveAsciiInNamesAreThemselves) {
    const std::string text = "[tyxo]\nM\xFChle=1\n";
    EXPECT_EQ(get_key(text, "tyxo", "m\xFChle"), "1");
    EXPECT_EQ(get_key(text, "tyxo", "mhle"), "");
}

TEST(IniReading, AThousandOtherKeysAreInNobodysWay) {
    std::string text = "[tyxo]\r\n";
    for (int key = 0; key < 1000; ++key) {
        text += "unknown" + std::to_string(key) + "=" + std::to_string(-key) + "\r\n";
        if (key == 500) text += "alpha=right\r\n";
    }
    EXPECT_EQ(get_key(text, "tyxo", "alpha"), "right");
    EXPECT_EQ(get_key(text, "tyxo", "unknown999"), "-999");
    EXPECT_EQ(get_key(text, "tyxo", "unknown1000"), "");
}

TEST(IniReading, ALineWithoutItsClosingBracketIsNoSection) {
    expect_readings({
        {"none at all", "[tyxo\r\nalpha=1\r\n", ""},
        {"no opening one", "tyxo]\r\nalpha=1\r\n", ""},
        {"behind a section, which it ends", "[tyxo]\r\n[other\r\nalpha=1\r\n", ""},
    });
}

} // namespace
} // namespace tyxo::Ini
