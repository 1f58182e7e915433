// Windows-1252 beside UTF-8.

#include "basics/ansi.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>

namespace tyxo {
namespace {

constexpr std::array<unsigned char, 5> bytes_without_a_character{0x81, 0x8D, 0x8F, 0x90, 0x9D};

bool has_character(unsigned char byte) {
    return std::ranges::find(bytes_without_a_character, byte) == bytes_without_a_character.end();
}

std::string one(int byte) {
    return std::string(1, static_cast<char>(byte));
}

struct pair_of_texts {
    unsigned char ansi;
    const char* utf8;
};

// The characters of 0x80 to 0x9F by their UTF-8 bytes.
constexpr std::array<pair_of_texts, 27> upper_controls{{
    {0x80, "\u20AC"}, {0x82, "\u201A"}, {0x83, "\u0192"}, {0x84, "\u201E"}, {0x85, "\u2026"},
    {0x86, "\u2020"}, {0x87, "\u2021"}, {0x88, "\u02C6"}, {0x89, "\u2030"}, {0x8A, "\u0160"},
    {0x8B, "\u2039"}, {0x8C, "\u0152"}, {0x8E, "\u017D"}, {0x91, "\u2018"}, {0x92, "\u2019"},
    {0x93, "\u201C"}, {0x94, "\u201D"}, {0x95, "\u2022"}, {0x96, "\u2013"}, {0x97, "\u2014"},
    {0x98, "\u02DC"}, {0x99, "\u2122"}, {0x9A, "\u0161"}, {0x9B, "\u203A"}, {0x9C, "\u0153"},
    {0x9E, "\u017E"}, {0x9F, "\u0178"},
}};

TEST(Ansi, LowerHalfIsTheSameInBoth) {
    for (int byte = 0; byte < 0x80; ++byte) {
        EXPECT_EQ(utf8_from_ansi(one(byte)), one(byte)) << byte;
        EXPECT_EQ(ansi_from_utf8(one(byte)), one(byte)) << byte;
    }
}

TEST(Ansi, LatinLettersAreTwoBytesOfUtf8) {
    for (int byte = 0xA0; byte < 0x100; ++byte) {
        const std::string utf8 = one(0xC0 + byte / 64) + one(0x80 + byte % 64);
        EXPECT_EQ(utf8_from_ansi(one(byte)), utf8) << byte;
        EXPECT_EQ(ansi_from_utf8(utf8), one(byte)) << byte;
    }
}

TEST(Ansi, UpperControlsHaveTheirCharacters) {
    for (const pair_of_texts& row : upper_controls) {
        EXPECT_EQ(utf8_from_ansi(one(row.ansi)), row.utf8) << int{row.ansi};
        EXPECT_EQ(ansi_from_utf8(row.utf8), one(row.ansi)) << int{row.ansi};
    }
}

TEST(Ansi, FiveBytesHaveNoCharacter) {
    for (const unsigned char byte : bytes_without_a_character)
        EXPECT_EQ(utf8_from_ansi(one(byte)), "\uFFFD") << int{byte};
}

TEST(Ansi, EveryByteWithACharacterSurvivesTheWayThereAndBack) {
    std::set<std::string> characters;
    for (int byte = 0; byte < 256; ++byte) {
        const std::string utf8 = utf8_from_ansi(one(byte));
        if (!has_character(static_cast<unsigned char>(byte))) continue;
        EXPECT_EQ(ansi_from_utf8(utf8), one(byte)) << byte;
        characters.insert(utf8);
    }
    EXPECT_EQ(characters.size(), 256 - bytes_without_a_character.size());
}

TEST(Ansi, AWholeTextKeepsItsOrder) {
    const std::string ansi = "M\xFChle 1 \x80 ok";
    EXPECT_EQ(utf8_from_ansi(ansi), "M\u00FChle 1 \u20AC ok");
    EXPECT_EQ(ansi_from_utf8(utf8_from_ansi(ansi)), ansi);
}

TEST(Ansi, OtherCharactersBecomeAQuestionMark) {
    EXPECT_EQ(ansi_from_utf8("\uFFFD"), "?");
    EXPECT_EQ(ansi_from_utf8("a\u0416b"), "a?b");
    EXPECT_EQ(ansi_from_utf8("\u65E5\u672C"), "??");
    EXPECT_EQ(ansi_from_utf8("x\U0001F600y"), "x?y");
    EXPECT_EQ(ansi_from_utf8("\u0080\u009F"), "??");
}

TEST(Ansi, BrokenUtf8LeavesItsNeighboursAlone) {
    EXPECT_EQ(ansi_from_utf8("a\xC3"), "a?");
    for (const std::string broken : {"\x80", "\xC3", "\xE2\x82", "\xF0\x9F\x98"}) {
        const std::string ansi = ansi_from_utf8("a" + broken + "z");
        ASSERT_GE(ansi.size(), 3U);
        EXPECT_EQ(ansi, "a" + std::string(ansi.size() - 2, '?') + "z");
    }
}

TEST(Ansi, ALeadByteOfMoreThanFourIsNoCharacter) {
    for (const int lead : {0xF8, 0xFC, 0xFF})
        EXPECT_EQ(ansi_from_utf8(one(lead) + "\x80\x80\x80" + "a"), "????a") << lead;
}

} // namespace
} // namespace tyxo
