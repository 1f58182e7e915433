// The pieces in which an answer goes out, for every manner.

#include "controller/behaviour.h"
#include "controller_frames.h"

#include <gtest/gtest.h>

namespace tyxo::controller_sim {
namespace {

const std::string right = bytes({0, 0, 0, 0, 0, 6, 1, 16, 0, 5, 0, 1});

class ControllerBehaviour : public testing::Test {
  protected:
    std::vector<Piece> answer(Manner manner, int value = 0) {
        std::vector<Piece> pieces;
        outcome = answer_to(write_frame(5, {77}), image, {manner, value}, chance, pieces).outcome;
        return pieces;
    }
    Image image = Image(registers);
    std::mt19937 chance;
    Outcome outcome = Outcome::refused;
};

TEST_F(ControllerBehaviour, NormalIsTheAnswerAtOnce) {
    const auto pieces = answer(Manner::normal);
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_EQ(pieces[0].bytes, right);
    EXPECT_EQ(pieces[0].delay, 0);
    EXPECT_EQ(image[5], 77);
}

TEST_F(ControllerBehaviour, SilentWritesAndSaysNothing) {
    EXPECT_TRUE(answer(Manner::silent).empty());
    EXPECT_EQ(image[5], 77);
    EXPECT_EQ(outcome, Outcome::written);
}

TEST_F(ControllerBehaviour, LateIsTheAnswerAfterItsMilliseconds) {
    const auto pieces = answer(Manner::late, 90);
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_EQ(pieces[0].bytes, right);
    EXPECT_DOUBLE_EQ(pieces[0].delay, 0.09);
}

TEST_F(ControllerBehaviour, ExceptionWritesNothing) {
    const auto pieces = answer(Manner::exception, 4);
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_EQ(pieces[0].bytes, bytes({0, 0, 0, 0, 0, 3, 1, 144, 4}));
    EXPECT_EQ(image[5], 0);
    EXPECT_EQ(outcome, Outcome::refused);
}

TEST_F(ControllerBehaviour, SplitGivesTwoPiecesWithAGap) {
    const auto pieces = answer(Manner::split, 5);
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_EQ(pieces[0].bytes, right.substr(0, 5));
    EXPECT_EQ(pieces[0].delay, 0);
    EXPECT_EQ(pieces[1].bytes, right.substr(5));
    EXPECT_GT(pieces[1].delay, 0);
}

TEST_F(ControllerBehaviour, SplitBehindTheEndIsOnePiece) {
    for (const int first : {12, 13, 259}) {
        const auto pieces = answer(Manner::split, first);
        ASSERT_EQ(pieces.size(), 1U);
        EXPECT_EQ(pieces[0].bytes, right);
    }
}

TEST_F(ControllerBehaviour, BytewiseGivesEveryByteItsOwnPiece) {
    const auto pieces = answer(Manner::bytewise);
    ASSERT_EQ(pieces.size(), right.size());
    std::string all;
    for (const Piece& piece : pieces) {
        EXPECT_EQ(piece.bytes.size(), 1U);
        EXPECT_GT(piece.delay, 0);
        all += piece.bytes;
    }
    EXPECT_EQ(all, right);
}

TEST_F(ControllerBehaviour, TooMuchBeginsWithTheAnswer) {
    const auto pieces = answer(Manner::too_much);
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_EQ(pieces[0].bytes, right + std::string(300 - right.size(), '\0'));
}

TEST_F(ControllerBehaviour, WrongFunctionAnswersAWriteAsAReadAndTheOtherWayRound) {
    EXPECT_EQ(answer(Manner::wrong_function).at(0).bytes[7], 3);
    std::vector<Piece> pieces;
    answer_to(read_frame(5, 1), image, {Manner::wrong_function, 0}, chance, pieces);
    EXPECT_EQ(pieces.at(0).bytes, bytes({0, 0, 0, 0, 0, 5, 1, 16, 2, 0, 77}));
}

TEST_F(ControllerBehaviour, GarbageHasTheSizeOfTheAnswer) {
    const auto pieces = answer(Manner::garbage);
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_EQ(pieces[0].bytes.size(), right.size());
    EXPECT_NE(pieces[0].bytes, right);
    EXPECT_NE(answer(Manner::garbage).at(0).bytes, pieces[0].bytes);
}

} // namespace
} // namespace tyxo::controller_sim
