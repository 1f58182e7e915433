// Lines and numbers as the tool tells them.

#include "xlg/words.h"

#include <gtest/gtest.h>

namespace tyxo::xlg {
namespace {

TEST(XlgWords, NumbersAreGrouped) {
    EXPECT_EQ(grouped(0), "0");
    EXPECT_EQ(grouped(999), "999");
    EXPECT_EQ(grouped(1000), "1,000");
    EXPECT_EQ(grouped(12'345'678'901), "12,345,678,901");
    EXPECT_EQ(counted(1, "line", "lines"), "1 line");
    EXPECT_EQ(counted(0, "line", "lines"), "0 lines");
    EXPECT_EQ(counted(1001, "line", "lines"), "1,001 lines");
}

TEST(XlgWords, LengthsOfTime) {
    EXPECT_EQ(duration(0), "0 s");
    EXPECT_EQ(duration(59), "59 s");
    EXPECT_EQ(duration(60), "1 min 0 s");
    EXPECT_EQ(duration(3599), "59 min 59 s");
    EXPECT_EQ(duration(3600), "1 h 0 min");
    EXPECT_EQ(duration(90'061), "25 h 1 min");
}

TEST(XlgWords, TextsAreUtf8WithoutControlCharacters) {
    EXPECT_EQ(shortened("KVD Maschine \xDC \x80"), "KVD Maschine \u00DC \u20AC");
    EXPECT_EQ(shortened(std::string("a\0\t\x7F\x81\x9D", 6)), "a\\x00\\x09\\x7F\\x81\\x9D");
    EXPECT_EQ(shortened("abcdef", 6), "abcdef");
    EXPECT_EQ(shortened("abcdefg", 6), "abcdef...");
    EXPECT_EQ(shortened(""), "");
}

TEST(XlgWords, BytesThatAreNoText) {
    EXPECT_EQ(bytes_fault(""), "");
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    EXPECT_EQ(bytes_fault(all), "38 bytes are no text, the first one 0x00 at character 1")
        << "32 below the blank, 0x7F, and five without a character";
    EXPECT_EQ(bytes_fault("abc\x9D"), "1 byte is no text, the first one 0x9D at character 4");
    EXPECT_EQ(bytes_fault("\xE4\x80 <>&\"~"), "");
}

} // namespace
} // namespace tyxo::xlg
