// Requests cut out of a stream, carried out on the registers, or refused.

#include "controller/protocol.h"
#include "controller_frames.h"

#include <gtest/gtest.h>

#include <random>

namespace tyxo::controller_sim {
namespace {

class ControllerProtocol : public testing::Test {
  protected:
    std::string answer(const std::string& frame) { return serve(frame, image).bytes; }
    Image image = Image(registers);
};

TEST_F(ControllerProtocol, AWriteIsStoredAndEchoesAddressAndCount) {
    const Answer result = serve(write_frame(1230, {1, 0xFFFF, 0x8000}), image);
    EXPECT_EQ(result.bytes, bytes({0, 0, 0, 0, 0, 6, 1, 16, 4, 206, 0, 3}));
    EXPECT_EQ(result.outcome, Outcome::written);
    EXPECT_EQ(result.address, 1230U);
    EXPECT_EQ(result.count, 3U);
    EXPECT_EQ(image[1230], 1);
    EXPECT_EQ(image[1231], 0xFFFF);
    EXPECT_EQ(image[1232], 0x8000);
    EXPECT_EQ(image[1229] + image[1233], 0);
}

TEST_F(ControllerProtocol, AReadAnswersWithWhatWasWritten) {
    serve(write_frame(65534, {0x1234, 0xABCD}), image);
    const Answer result = serve(read_frame(65534, 2), image);
    EXPECT_EQ(result.bytes, bytes({0, 0, 0, 0, 0, 7, 1, 3, 4, 0x12, 0x34, 0xAB, 0xCD}));
    EXPECT_EQ(result.outcome, Outcome::read);
}

TEST_F(ControllerProtocol, TransactionAndUnitIdentifiersAreEchoed) {
    std::string frame = read_frame(0, 1);
    frame[0] = 7;
    frame[1] = 9;
    frame[6] = 17;
    const std::string echoed = answer(frame);
    EXPECT_EQ(echoed.substr(0, 2), bytes({7, 9}));
    EXPECT_EQ(echoed[6], 17);
}

TEST_F(ControllerProtocol, TheLargestWriteAndReadAreCarriedOut) {
    std::vector<unsigned> values(123);
    for (unsigned i = 0; i < 123; ++i)
        values[i] = 1000 + i;
    const std::string frame = write_frame(65410, values);
    EXPECT_EQ(frame.size(), 259U);
    EXPECT_EQ(answer(frame), bytes({0, 0, 0, 0, 0, 6, 1, 16, 255, 130, 0, 123}));
    EXPECT_EQ(image[65532], 1122);
    EXPECT_EQ(answer(read_frame(0, 125)).size(), 259U);
}

TEST_F(ControllerProtocol, WhatCannotBeDoneIsRefusedWithItsExceptionAndChangesNothing) {
    std::string wrong_size = write_frame(0, {5, 6});
    wrong_size[12] = 3;
    struct Case {
        std::string frame;
        int function;
        int code;
    };
    const Case cases[] = {
        {write_frame(0, {}), 144, 3},
        {write_frame(0, std::vector<unsigned>(124, 5)), 144, 3},
        {wrong_size, 144, 3},
        {write_frame(0, {5}).substr(0, 12), 144, 3},
        {write_frame(65535, {5, 6}), 144, 2},
        {read_frame(0, 0), 131, 3},
        {read_frame(0, 126), 131, 3},
        {read_frame(65535, 2), 131, 2},
        {read_frame(0, 1) + "x", 131, 3},
        {bytes({0, 0, 0, 0, 0, 2, 1, 3}), 131, 3},
        {bytes({0, 0, 0, 0, 0, 2, 1, 16}), 144, 3},
        {bytes({0, 0, 0, 0, 0, 6, 1, 6, 0, 0, 0, 5}), 134, 1},
    };
    for (const Case& one : cases) {
        const Answer result = serve(one.frame, image);
        EXPECT_EQ(result.bytes, bytes({0, 0, 0, 0, 0, 3, 1, one.function, one.code}));
        EXPECT_EQ(result.outcome, Outcome::refused);
    }
    EXPECT_EQ(image, Image(registers));
}

TEST_F(ControllerProtocol, AFrameIsTakenWhenItsLastByteIsThere) {
    const std::string frame = write_frame(3, {4, 5});
    std::string stream;
    for (std::size_t i = 0; i + 1 < frame.size(); ++i) {
        stream += frame[i];
        ASSERT_FALSE(take_frame(stream)) << i;
    }
    stream += frame.back() + read_frame(1, 2) + "\x01";
    EXPECT_EQ(take_frame(stream), frame);
    EXPECT_EQ(take_frame(stream), read_frame(1, 2));
    EXPECT_FALSE(take_frame(stream));
    EXPECT_EQ(stream, "\x01");
}

TEST_F(ControllerProtocol, AStreamWithoutSenseIsBroken) {
    for (const auto& header :
         {bytes({0, 0, 0, 1, 0, 6}), bytes({0, 0, 0, 0, 0, 1}), bytes({0, 0, 0, 0, 0, 0}),
          bytes({0, 0, 0, 0, 0, 255}), bytes({0, 0, 0, 0, 255, 255})}) {
        std::string stream = header;
        EXPECT_THROW(take_frame(stream), BrokenStream);
    }
    std::string longest = bytes({0, 0, 0, 0, 0, 254}) + std::string(254, '\x01');
    EXPECT_EQ(take_frame(longest)->size(), longest_frame);
}

TEST_F(ControllerProtocol, RandomFramesAreAnsweredOrRefusedWithoutHarm) {
    std::mt19937 chance(2026);
    for (int round = 0; round < 20000; ++round) {
        std::string body(1 + chance() % 253, '\0');
        for (char& byte : body)
            byte = static_cast<char>(chance() % 256);
        body[0] = static_cast<char>(chance() % 3 == 0 ? 16 : chance() % 20);
        const std::string frame =
            bytes({0, 0, 0, 0}) + word(static_cast<unsigned>(body.size() + 1)) + bytes({1}) + body;
        std::string stream = answer(frame);
        const std::size_t size = stream.size();
        const auto taken = take_frame(stream);
        ASSERT_TRUE(taken && taken->size() == size) << "seed 2026, round " << round;
    }
}

} // namespace
} // namespace tyxo::controller_sim
