// Hexadecimal fields and the check of a frame.

#include "link/hex.h"

#include "basics/failure.h"
#include "link/frames.h"

#include <gtest/gtest.h>

namespace tyxo::funct {
namespace {

using link_testing::check_of;

TEST(HexFields, OfTwoDigits) {
    EXPECT_EQ(hex2(0), "00");
    EXPECT_EQ(hex2(5), "05");
    EXPECT_EQ(hex2(15), "0F");
    EXPECT_EQ(hex2(16), "10");
    EXPECT_EQ(hex2(255), "FF");
    EXPECT_EQ(hex2(256), "100");
    EXPECT_EQ(hex2(32767), "7FFF");
    EXPECT_EQ(hex2(-1), "FFFF");
}

TEST(HexFields, OfFourDigits) {
    EXPECT_EQ(hex4(0), "0000");
    EXPECT_EQ(hex4(255), "00FF");
    EXPECT_EQ(hex4(43981), "ABCD");
    EXPECT_EQ(hex4(65535), "FFFF");
    EXPECT_EQ(hex4(65536), "10000");
    EXPECT_EQ(hex4(2147483647), "7FFFFFFF");
    EXPECT_EQ(hex4(-1), "FFFFFFFF");
}

TEST(HexFields, ReadAsUnsignedNumbersOfEitherCase) {
    EXPECT_EQ(hex_to_long("0"), 0);
    EXPECT_EQ(hex_to_long("FFFF"), 65535);
    EXPECT_EQ(hex_to_long("abCD"), 43981);
    EXPECT_EQ(hex_to_long("8000"), 32768);
    EXPECT_EQ(hex_to_long("00000000001"), 1);
    EXPECT_EQ(hex_to_long("7FFFFFFF"), 2147483647);
}

TEST(HexFields, ReadAsSixteenBits) {
    EXPECT_EQ(hex_to_int("7FFF"), 32767);
    EXPECT_EQ(hex_to_int("8000"), -32768);
    EXPECT_EQ(hex_to_int("FFFF"), -1);
    EXPECT_EQ(hex_to_int("0a"), 10);
    EXPECT_THROW((void)hex_to_int("10000"), failure);
    EXPECT_THROW((void)hex_to_int("G"), failure);
    EXPECT_THROW((void)hex_to_int(""), failure);
}

TEST(HexFields, EveryCharacterButTheHexadecimalDigitsFails) {
    for (int byte = 0; byte < 256; ++byte) {
        const char letter = static_cast<char>(byte);
        const std::string text{'1', letter};
        if (std::string_view("0123456789abcdefABCDEF").find(letter) != std::string_view::npos) {
            EXPECT_EQ(hex_to_long(text), std::stoi(text, nullptr, 16)) << byte;
        } else {
            EXPECT_THROW((void)hex_to_long(text), failure) << byte;
        }
    }
}

TEST(HexFields, EmptyOrTooLargeFails) {
    EXPECT_THROW((void)hex_to_long(""), failure);
    EXPECT_THROW((void)hex_to_long("80000000"), failure);
    EXPECT_THROW((void)hex_to_long(std::string(1000, 'F')), failure);
}

TEST(HexFields, ReadWhatWasWritten) {
    for (i32 value = 0; value <= 0xFFFF; ++value)
        ASSERT_EQ(hex_to_long(hex4(value)), value);
}

TEST(FrameCheck, KnownValues) {
    EXPECT_EQ(frame_lrc(":00"), "a0");
    EXPECT_EQ(frame_lrc(":03"), "9d");
    EXPECT_EQ(frame_lrc(":04"), "9c");
    EXPECT_EQ(frame_lrc(":06"), "9a");
    EXPECT_EQ(frame_lrc(":08"), "98");
    EXPECT_EQ(frame_lrc(":8009"), "2f");
}

TEST(FrameCheck, HasALeadingZeroAndWrapsToZero) {
    EXPECT_EQ(frame_lrc(":"), "00");
    EXPECT_EQ(frame_lrc(":\x7F\x81"), "00");
    EXPECT_EQ(frame_lrc(":\x7F\x80"), "01");
    EXPECT_EQ(frame_lrc(":\xFF\xFF"), "02");
}

TEST(FrameCheck, LeavesTheFirstCharacterOut) {
    EXPECT_EQ(frame_lrc("x06"), "9a");
    EXPECT_EQ(frame_lrc(""), "00");
}

TEST(FrameCheck, EveryCharacterTakesPart) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string body = std::string(":A") + static_cast<char>(byte) + "Z";
        ASSERT_EQ(frame_lrc(body), check_of(body)) << byte;
    }
}

TEST(FrameCheck, AcceptsLowerCaseOnly) {
    EXPECT_TRUE(frame_lrc_ok(":00a0\r\n"));
    EXPECT_FALSE(frame_lrc_ok(":00A0\r\n"));
    EXPECT_TRUE(frame_lrc_ok(":8009"
                             "2f\r\n"));
    EXPECT_FALSE(frame_lrc_ok(":8009"
                              "2F\r\n"));
}

TEST(FrameCheck, RefusesEverySingleChangedCharacter) {
    const std::string frame = link_testing::measured({});
    ASSERT_TRUE(frame_lrc_ok(frame));
    for (std::size_t index = 1; index < frame.size() - 2; ++index) {
        std::string changed = frame;
        changed[index] = static_cast<char>(changed[index] + 1);
        EXPECT_FALSE(frame_lrc_ok(changed)) << index;
    }
}

TEST(FrameCheck, RefusesFramesTooShortToCarryOne) {
    for (const char* frame : {"", ":", "\r\n", ":\r\n", ":0\r\n"})
        EXPECT_FALSE(frame_lrc_ok(frame)) << frame;
    EXPECT_TRUE(frame_lrc_ok(":00\r\n")); // no data at all: its check is 00
}

TEST(FrameTrim, CutsBehindTheFirstLineEnd) {
    EXPECT_EQ(frame_trim(":00a0\r\n"), ":00a0\r\n");
    EXPECT_EQ(frame_trim(":00a0\r\n:03\r\n"), ":00a0\r\n");
    EXPECT_EQ(frame_trim("\r\n:00a0\r\n"), "\r\n");
    EXPECT_EQ(frame_trim(":0\n\r0\r\n"), ":0\n\r0\r\n");
    EXPECT_EQ(frame_trim(":0\r\r\n0"), ":0\r\r\n");
    EXPECT_EQ(frame_trim(""), "");
}

} // namespace
} // namespace tyxo::funct
