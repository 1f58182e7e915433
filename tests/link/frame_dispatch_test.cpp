// The door of the dispatcher, the function codes, and the frames with few fields.

#include "basics/failure.h"
#include "link/frames.h"
#include "link/link_world.h"
#include "link/record_text.h"

namespace tyxo::link_testing {
namespace {

class FrameDispatch : public link_world {
  protected:
    static std::string identification(std::string_view code) {
        return frame_text(code, 37).text(4, "AAAAAAABBBBBBBCCCCCCDDDDDDDDDD").str();
    }
};

TEST_F(FrameDispatch, WithoutAColonInFrontDropsTheFrameSilently) {
    const std::string before = record_text(record(0));
    for (const char* frame : {"", "\r\n", "01", "0 1\r\n", " :00a0\r\n", "x00a0\r\n"})
        dispatch(frame);
    EXPECT_EQ(record_text(record(0)), before);
    EXPECT_TRUE(debug().empty());
    EXPECT_TRUE(said.empty());
}

TEST_F(FrameDispatch, LooksAtTheFrameUpToItsFirstLineEndOnly) {
    dispatch(measured({.speed = 5000}) + "rest");
    EXPECT_EQ(record(0).speed, 500);
    dispatch(identification("00").insert(10, "\r\n"));
    EXPECT_EQ(debug(), lines{"LRC Error"});
}

TEST_F(FrameDispatch, ARightCheckEmptiesTheStatusBarAWrongOneDoesNot) {
    indicators.StatusBar = "Sensor 3 not connected";
    dispatch(":0200\r\n");
    EXPECT_EQ(indicators.StatusBar, "Sensor 3 not connected");
    EXPECT_EQ(debug(), lines{"LRC Error"});
    dispatch(closed(":02"));
    EXPECT_EQ(indicators.StatusBar, "");
}

TEST_F(FrameDispatch, AChannelThatDoesNotExistIsAFailure) {
    EXPECT_THROW(dispatch(measured({}), -1), failure);
    EXPECT_THROW(dispatch(measured({}), 4), failure);
}

TEST_F(FrameDispatch, EveryChannelHasItsOwnRecord) {
    for (i16 channel = 0; channel < channel_count; ++channel)
        dispatch(measured({.speed = 1000 * (channel + 1)}), channel);
    for (i16 channel = 0; channel < channel_count; ++channel)
        EXPECT_EQ(record(channel).speed, 100 * (channel + 1));
    EXPECT_EQ(told("log_record"), (lines{"1 1", "2 1", "3 1", "4 1"}));
}

TEST_F(FrameDispatch, IdentificationFillsFourTexts) {
    dispatch(identification("00"), 1);
    EXPECT_EQ(record(1).id_text1, "AAAAAAA");
    EXPECT_EQ(record(1).id_text2, "BBBBBBB");
    EXPECT_EQ(record(1).id_text3, "CCCCCC");
    EXPECT_EQ(record(1).id_text4, "DDDDDDDDDD");
    EXPECT_TRUE(said.empty());
}

TEST_F(FrameDispatch, IdentificationThatEndsEarlyKeepsTheTextsBefore) {
    dispatch(identification("00"));
    const std::string short_frame = closed(":00aaaaaaabbbbbbbcccccc");
    EXPECT_THROW(dispatch(short_frame), failure);
    EXPECT_EQ(record(0).id_text3, "cccccc");
    EXPECT_EQ(record(0).id_text4, "DDDDDDDDDD");
}

class CodeTextZero : public FrameDispatch, public testing::WithParamInterface<const char*> {};

TEST_P(CodeTextZero, CountsAsIdentification) {
    dispatch(identification(GetParam()));
    EXPECT_EQ(record(0).id_text4, "DDDDDDDDDD");
}

INSTANTIATE_TEST_SUITE_P(texts, CodeTextZero,
                         testing::Values("00", "0A", "0 ", "A0", "AB", " 1", "-1", "+8", "0."),
                         [](const auto& info) { return "row_" + std::to_string(info.index); });

struct code_case {
    const char* code;
    i32 speed;
};

class CodeTextOfValues : public FrameDispatch, public testing::WithParamInterface<code_case> {};

TEST_P(CodeTextOfValues, IsDecimalUpToTheFirstOtherCharacter) {
    dispatch(frame_text(GetParam().code, 15).text(4, "80001388").str());
    EXPECT_EQ(record(0).speed, GetParam().speed);
}

INSTANTIATE_TEST_SUITE_P(texts, CodeTextOfValues,
                         testing::Values(code_case{"01", 500}, code_case{"1A", 500}, code_case{"1 ", 500},
                                         code_case{"9 ", 0}, code_case{"10", 0}, code_case{"11", 0},
                                         code_case{"81", 0}),
                         [](const auto& info) { return "row_" + std::to_string(info.index); });

TEST_F(FrameDispatch, CodesWithoutAMeaningAreIgnored) {
    const std::string before = record_text(record(0));
    for (i32 code = 0; code < 100; ++code) {
        if (code <= 1 || code == 3 || code == 4 || (code >= 6 && code <= 8)) continue;
        dispatch(frame_text(padded(code, 2), 265).str());
    }
    EXPECT_EQ(record_text(record(0)), before);
    EXPECT_TRUE(debug().empty());
    EXPECT_TRUE(said.empty());
}

struct answer_case {
    const char* result;
    const char* line;
};

class WriteAnswer : public FrameDispatch, public testing::WithParamInterface<answer_case> {};

TEST_P(WriteAnswer, GoesToTheDebugOutputOnly) {
    const std::string before = record_text(record(0));
    dispatch(frame_text("07", 9).text(4, GetParam().result).str());
    EXPECT_EQ(debug(), lines{GetParam().line});
    EXPECT_EQ(record_text(record(0)), before);
    EXPECT_TRUE(said.empty());
    EXPECT_EQ(box(), "");
}

INSTANTIATE_TEST_SUITE_P(results, WriteAnswer,
                         testing::Values(answer_case{"01", "write parameter OK"},
                                         answer_case{"00", "write parameter Not OK"},
                                         answer_case{"02", "write parameter Not OK"},
                                         answer_case{"10", "write parameter Not OK"},
                                         answer_case{"ff", "write parameter Not OK"}),
                         [](const auto& info) { return std::string("result_") + info.param.result; });

TEST_F(FrameDispatch, ShortStatusMakesAStandardEvaluatorWithoutInhibit) {
    record(0).eva_mode = 0;
    record(0).alminhibit_on = 1;
    record(0).alminhibit_left = 77;
    record(0).status_ext = 66;
    dispatch(status({.alarm = 0x0020, .error = 0x0010}, 30));
    EXPECT_EQ(record(0).fwvers, "V2.10");
    EXPECT_EQ(record(0).status_alarm, 0x0020);
    EXPECT_EQ(record(0).status_error, 0x0010);
    EXPECT_TRUE(record(0).status_valid);
    EXPECT_EQ(record(0).eva_mode, 1);
    EXPECT_EQ(record(0).alminhibit_on, 0);
    EXPECT_EQ(record(0).alminhibit_left, 77);
    EXPECT_EQ(record(0).status_ext, 66);
    EXPECT_TRUE(indicators.LED_Rdy[0].Active);
}

TEST_F(FrameDispatch, LongStatusFillsEveryField) {
    dispatch(status(
        {.alarm = 0x0021, .error = 0x0018, .mode = 99, .inhibit_on = 1, .inhibit_left = 1234, .ext = 0xAB}));
    EXPECT_EQ(record(0).fwvers, "V2.10");
    EXPECT_EQ(record(0).status_alarm, 0x0021);
    EXPECT_EQ(record(0).status_error, 0x0018);
    EXPECT_EQ(record(0).eva_mode, 99);
    EXPECT_EQ(record(0).alminhibit_on, 1);
    EXPECT_EQ(record(0).alminhibit_left, 1234);
    EXPECT_EQ(record(0).status_ext, 0xAB);
    EXPECT_EQ(indicators.Lbl_inhtime[0].Caption, "1234");
}

TEST_F(FrameDispatch, StatusThatBreaksOffDoesNotReachTheStatusMachine) {
    EXPECT_THROW(dispatch(status({.alarm = 0x8000, .mode = 5, .inhibit_on = 1}, 31)), failure);
    EXPECT_EQ(record(0).status_alarm, 0x8000);
    EXPECT_EQ(record(0).eva_mode, 5);
    EXPECT_TRUE(record(0).status_valid);
    EXPECT_EQ(box(), "");
    EXPECT_TRUE(said.empty());
}

TEST_F(FrameDispatch, StatusWithoutItsWordsIsNotValid) {
    EXPECT_THROW(dispatch(closed(":08V2.10800X0000")), failure);
    EXPECT_EQ(record(0).fwvers, "V2.10");
    EXPECT_FALSE(record(0).status_valid);
}

} // namespace
} // namespace tyxo::link_testing
