// Registers in plain words, and which block a frame is.

#include "controller/register_map.h"
#include "controller/session.h"

#include <gtest/gtest.h>

namespace tyxo::controller_sim {
namespace {

constexpr std::size_t base = 1000;

TEST(ControllerWords, EveryBlockOfEveryChannelIsKnown) {
    for (std::size_t channel = 0; channel < channels; ++channel)
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            const auto place = place_of(base + 110 * channel + blocks[i].offset, blocks[i].count, base);
            ASSERT_TRUE(place);
            EXPECT_EQ(place->channel, channel);
            EXPECT_EQ(place->block, i);
        }
    EXPECT_EQ(place_of(1230, 50, base)->channel, 2U);
    EXPECT_EQ(blocks[place_of(1230, 50, base)->block].code, 3);
    EXPECT_EQ(blocks[place_of(1226, 3, base)->block].code, 8);
}

TEST(ControllerWords, AWriteElsewhereIsNoBlock) {
    EXPECT_FALSE(place_of(999, 6, base));
    EXPECT_FALSE(place_of(1440, 6, base));
    EXPECT_FALSE(place_of(1009, 1, base));
    EXPECT_FALSE(place_of(1000, 5, base));
    EXPECT_FALSE(place_of(1006, 6, base));
}

TEST(ControllerWords, EveryAlarmBitHasItsWords) {
    const std::pair<unsigned, const char*> words[] = {
        {0x0001, "Prealarm DC"},
        {0x0002, "Main Alarm DC"},
        {0x0004, "Prealarm AC"},
        {0x0008, "Main Alarm AC"},
        {0x0020, "unit ready"},
        {0x0040, "prealarm relay"},
        {0x0080, "main alarm relay"},
        {0x0100, "Main Error"},
        {0x2000, "Overspeed Alarm"},
        {0x4000, "Prealarm"},
        {0x8000, "Main Alarm"},
        {0x0010, "bits 0010"},
        {0x1E00, "bits 1E00"},
        {0x0000, "-"},
        {0x4061, "unit ready, Prealarm, Prealarm DC, prealarm relay"},
    };
    for (const auto& [status, text] : words)
        EXPECT_EQ(alarm_words(status), text);
}

TEST(ControllerWords, EveryErrorBitHasItsWords) {
    const std::pair<unsigned, const char*> words[] = {
        {0x0004, "INCA signal error"},
        {0x0008, "INCB signal error"},
        {0x0010, "sync signal error"},
        {0x0020, "test signal error"},
        {0x1000, "memory error"},
        {0x2000, "memory timeout"},
        {0x4000, "CRC error"},
        {0x8000, "memory overflow"},
        {0x0043, "bits 0043"},
        {0x0063, "Not connected"},
        {0x4063, "Not connected, CRC error"},
        {0x0000, "-"},
    };
    for (const auto& [status, text] : words)
        EXPECT_EQ(error_words(status), text);
}

/// Registers of channel 2 with three cylinders.
Image example() {
    Image image(registers);
    const std::size_t first = base + 110;
    const std::uint16_t head[] = {2, 41, 723, 1234, 38, 12, 2, 0x0020, 0x0010, 0};
    std::copy(std::begin(head), std::end(head), image.begin() + static_cast<std::ptrdiff_t>(first));
    image[first + 10] = 2;
    image[first + 11] = 3;
    image[first + 12] = 745;
    image[first + 13] = 739;
    image[first + 14] = 742;
    image[first + 36] = 3;
    image[first + 37] = 0xFFFD;
    image[first + 60] = 2;
    image[first + 61] = 3;
    image[first + 62] = 40;
    image[first + 63] = 41;
    image[first + 64] = 200;
    image[first + 86] = 0xFFFF;
    image[first + 88] = 159;
    return image;
}

TEST(ControllerWords, AChannelReadsAsAnEngineerWouldSayIt) {
    const std::vector<std::string> expected = {
        "channel 2: thermosignal 41 %, speed 723 rpm, thermovoltage 12.34 mV, effective DC 38 %, "
        "effective AC 12 %",
        "channel 2: status: unit ready; errors: sync signal error",
        "channel 2: speed of 3 cylinders: cylinder 1: 745 rpm (+3), cylinder 2: 739 rpm (-3), "
        "cylinder 3: 742 rpm (0)",
        "channel 2: thermosignal of 3 cylinders: cylinder 1: 40 % (-1), cylinder 2: 41 % (0), "
        "cylinder 3: 200 % (+159)"};
    EXPECT_EQ(channel_in_words(example(), base, 1, {1, 1, 1, 1}), expected);
}

TEST(ControllerWords, ABlockThatNeverCameIsNotTold) {
    const Image image = example();
    EXPECT_TRUE(channel_in_words(image, base, 1, {0, 0, 0, 0}).empty());
    for (std::size_t block = 0; block < blocks.size(); ++block) {
        std::array<std::size_t, blocks.size()> frames{};
        frames.at(block) = 1;
        EXPECT_EQ(channel_in_words(image, base, 1, frames).size(), 1U);
    }
}

TEST(ControllerWords, NumbersWithoutSenseHarmNothing) {
    Image image(registers, 0xFFFF);
    const auto lines = channel_in_words(image, base, 0, {1, 1, 1, 1});
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_NE(lines[0].find("655.35 mV"), std::string::npos);
    EXPECT_NE(lines[0].find("(in registers of channel 65535)"), std::string::npos);
    EXPECT_NE(lines[2].find("cylinder 24: 65535 rpm (-1)"), std::string::npos);
    EXPECT_EQ(lines[2].find("cylinder 25"), std::string::npos);
    EXPECT_EQ(channel_in_words(image, registers - 1, 3, {1, 1, 1, 1}).size(), 4U);
}

} // namespace
} // namespace tyxo::controller_sim
