// Hexadecimal fields and the check of a frame.

#include "link/hex.h"

#include "basics/failure.h"
#include "link/frames.h"

#include <gtest/gtest.h>

namespace tyxo::funct {
namespace {

using link_testing::check_of;

TEST(hex_fields, of_two_digits) {
    EXPECT_EQ(hex2(0), "00");
    EXPECT_EQ(hex2(5), "05");
    EXPECT_EQ(hex2(15), "0F");
    EXPECT_EQ(hex2(16), "10");
    EXPECT_EQ(hex2(255), "FF");
    EXPECT_EQ(hex2(256), "100");
    EXPECT_EQ(hex2(32767), "7FFF");
    EXPECT_EQ(hex2(-1), "FFFF");
}

TEST(hex_fields, of_four_digits) {
    EXPECT_EQ(hex4(0), "0000");
    EXPECT_EQ(hex4(255), "00FF");
    EXPECT_EQ(hex4(43981), "ABCD");
    EXPECT_EQ(hex4(65535), "FFFF");
    EXPECT_EQ(hex4(65536), "10000");
    EXPECT_EQ(hex4(2147483647), "7FFFFFFF");
    EXPECT_EQ(hex4(-1), "FFFFFFFF");
}

TEST(hex_fields, read_as_unsigned_numbers_of_either_case) {
    EXPECT_EQ(hex_to_long("0"), 0);
    EXPECT_EQ(hex_to_long("FFFF"), 65535);
    EXPECT_EQ(hex_to_long("abCD"), 43981);
    EXPECT_EQ(hex_to_long("8000"), 32768);
    EXPECT_EQ(hex_to_long("00000000001"), 1);
    EXPECT_EQ(hex_to_long("7FFFFFFF"), 2147483647);
}

TEST(hex_fields, read_as_sixteen_bits) {
    EXPECT_EQ(hex_to_int("7FFF"), 32767);
    EXPECT_EQ(hex_to_int("8000"), -32768);
    EXPECT_EQ(hex_to_int("FFFF"), -1);
    EXPECT_EQ(hex_to_int("0a"), 10);
    EXPECT_THROW((void)hex_to_int("10000"), failure);
    EXPECT_THROW((void)hex_to_int("G"), failure);
    EXPECT_THROW((void)hex_to_int(""), failure);
}

TEST(hex_fields, every_character_but_the_hexadecimal_digits_fails) {
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

TEST(hex_fields, empty_or_too_large_fails) {
    EXPECT_THROW((void)hex_to_long(""), failure);
    EXPECT_THROW((void)hex_to_long("80000000"), failure);
    EXPECT_THROW((void)hex_to_long(std::string(1000, 'F')), failure);
}

TEST(hex_fields, read_what_was_written) {
    for (i32 value = 0; value <= 0xFFFF; ++value)
        ASSERT_EQ(hex_to_long(hex4(value)), value);
}

TEST(frame_check, known_values) {
    EXPECT_EQ(frame_lrc(":00"), "a0");
    EXPECT_EQ(frame_lrc(":03"), "9d");
    EXPECT_EQ(frame_lrc(":04"), "9c");
    EXPECT_EQ(frame_lrc(":06"), "9a");
    EXPECT_EQ(frame_lrc(":08"), "98");
    EXPECT_EQ(frame_lrc(":8009"), "2f");
}

TEST(frame_check, has_a_leading_zero_and_wraps_to_zero) {
    EXPECT_EQ(frame_lrc(":"), "00");
    EXPECT_EQ(frame_lrc(":\x7F\x81"), "00");
    EXPECT_EQ(frame_lrc(":\x7F\x80"), "01");
    EXPECT_EQ(frame_lrc(":\xFF\xFF"), "02");
}

TEST(frame_check, leaves_the_first_character_out) {
    EXPECT_EQ(frame_lrc("x06"), "9a");
    EXPECT_EQ(frame_lrc(""), "00");
}

TEST(frame_check, every_character_takes_part) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string body = std::string(":A") + static_cast<char>(byte) + "Z";
        ASSERT_EQ(frame_lrc(body), check_of(body)) << byte;
    }
}

TEST(frame_check, accepts_lower_case_only) {
    EXPECT_TRUE(frame_lrc_ok(":00a0\r\n"));
    EXPECT_FALSE(frame_lrc_ok(":00A0\r\n"));
    EXPECT_TRUE(frame_lrc_ok(":8009"
                             "2f\r\n"));
    EXPECT_FALSE(frame_lrc_ok(":8009"
                              "2F\r\n"));
}

TEST(frame_check, refuses_every_single_changed_character) {
    const std::string frame = link_testing::measured({});
    ASSERT_TRUE(frame_lrc_ok(frame));
    for (std::size_t index = 1; index < frame.size() - 2; ++index) {
        std::string changed = frame;
        changed[index] = static_cast<char>(changed[index] + 1);
        EXPECT_FALSE(frame_lrc_ok(changed)) << index;
    }
}

TEST(frame_check, refuses_frames_too_short_to_carry_one) {
    for (const char* frame : {"", ":", "\r\n", ":\r\n", ":0\r\n"})
        EXPECT_FALSE(frame_lrc_ok(frame)) << frame;
    EXPECT_TRUE(frame_lrc_ok(":00\r\n")); // no data at all: its check is 00
}

TEST(frame_trim, cuts_behind_the_first_line_end) {
    EXPECT_EQ(frame_trim(":00a0\r\n"), ":00a0\r\n");
    EXPECT_EQ(frame_trim(":00a0\r\n:03\r\n"), ":00a0\r\n");
    EXPECT_EQ(frame_trim("\r\n:00a0\r\n"), "\r\n");
    EXPECT_EQ(frame_trim(":0\n\r0\r\n"), ":0\n\r0\r\n");
    EXPECT_EQ(frame_trim(":0\r\r\n0"), ":0\r\r\n");
    EXPECT_EQ(frame_trim(""), "");
}

} // namespace
} // namespace tyxo::funct
