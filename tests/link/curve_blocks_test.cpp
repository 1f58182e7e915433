// The ":03" and ":04" frames: four blocks make a curve.

#include "basics/failure.h"
#include "link/frames.h"
#include "link/link_world.h"

#include <algorithm>

namespace tyxo::link_testing {
namespace {

constexpr const char* block_error = "blocknummerfehler thermospannung";

/// What tells the two kinds of curve apart.
struct curve_kind {
    const char* name;
    const char* code;
    std::array<i32, curve_samples + 1> channel_rec::*data;
    per_channel<i16>* block_last;
    std::function<void(i16)> link_calls::*process;
    const char* process_call;
    const char* record_call;
};

class CurveBlocks : public link_world, public testing::WithParamInterface<curve_kind> {
  protected:
    [[nodiscard]] const auto& data(i16 channel = 0) const { return record(channel).*GetParam().data; }
    [[nodiscard]] i16 block_last(i16 channel = 0) const { return (*GetParam().block_last)[channel]; }
    /// Blocks by their numbers; the samples count up from `first` over the whole curve.
    void send(const std::vector<i32>& blocks, i32 first = 0, i16 channel = 0) {
        for (const i32 block : blocks)
            receive(curve_block(GetParam().code, block, first + 64 * (block - 1)), channel);
    }
    [[nodiscard]] lines processed_once() const { return {GetParam().process_call, GetParam().record_call}; }
    [[nodiscard]] std::ptrdiff_t block_errors() const { return std::ranges::count(debug(), block_error); }
    void expect_curve_from(i32 first) const {
        for (i32 sample = 0; sample < curve_samples; ++sample)
            ASSERT_EQ(data()[static_cast<std::size_t>(sample)], (first + sample) & 0xFFFF) << sample;
        EXPECT_EQ(data()[curve_samples], 0);
    }
};

TEST_P(CurveBlocks, FourInOrderMakeACurveThatIsProcessedAndThenRecorded) {
    send({1, 2, 3});
    EXPECT_TRUE(said.empty());
    EXPECT_EQ(block_last(), 3);
    send({4});
    EXPECT_EQ(said, processed_once());
    EXPECT_EQ(block_last(), 0);
    expect_curve_from(0);
    EXPECT_TRUE(debug().empty());
}

TEST_P(CurveBlocks, SamplesKeepAllSixteenBits) {
    send({1, 2, 3, 4}, 65535 - 100);
    expect_curve_from(65535 - 100);
}

TEST_P(CurveBlocks, Blocks124Then1234ProcessTheCurveOnce) {
    send({1, 2}, 1000);
    EXPECT_EQ(block_errors(), 0);
    send({4}, 1000);
    EXPECT_EQ(debug(), lines{block_error});
    EXPECT_EQ(block_last(), 0);
    EXPECT_EQ(data()[192], 0);   // dropped
    EXPECT_EQ(data()[64], 1064); // the earlier blocks stay
    send({1, 2, 3, 4}, 2000);
    EXPECT_EQ(said, processed_once());
    EXPECT_EQ(debug(), lines{block_error});
    expect_curve_from(2000);
}

TEST_P(CurveBlocks, ARepeatedBlockStartsOverAndIsDroppedItself) {
    send({1, 1});
    EXPECT_EQ(block_last(), 0);
    send({2});
    EXPECT_EQ(block_errors(), 2);
    send({1, 2, 3, 4});
    EXPECT_EQ(said, processed_once());
}

TEST_P(CurveBlocks, FirstBlockMustBeNumber1) {
    for (const i32 block : {2, 3, 4})
        send({block}, 500);
    EXPECT_EQ(block_errors(), 3);
    EXPECT_TRUE(std::ranges::all_of(data(), [](i32 sample) { return sample == 0; }));
}

TEST_P(CurveBlocks, Numbers0And5AreIgnoredAndDoNotDisturbTheCurve) {
    send({1, 2});
    for (const i32 block : {0, 5, 6, 255}) {
        send({block}, 3000);
        EXPECT_EQ(block_last(), 2);
    }
    send({3, 4});
    EXPECT_EQ(said, processed_once());
    EXPECT_TRUE(debug().empty());
    expect_curve_from(0);
}

TEST_P(CurveBlocks, FramesUnder11CharactersAreIgnored) {
    send({1});
    for (std::size_t length = 7; length < 11; ++length)
        receive(frame_text(GetParam().code, length).str());
    receive(closed(":" + std::string(GetParam().code) + "XX"));
    EXPECT_EQ(block_last(), 1);
    EXPECT_TRUE(debug().empty());
    receive(closed(":" + std::string(GetParam().code) + "XX00")); // 11 characters
    EXPECT_EQ(debug(), lines{"mscomm: Type mismatch"});
}

TEST_P(CurveBlocks, ABlockThatBreaksOffKeepsTheSamplesBeforeAndMayBeRepeated) {
    send({1});
    receive(closed(curve_block(GetParam().code, 2, 7000).substr(0, 5 + 4 * 10)));
    EXPECT_EQ(data()[64], 7000);
    EXPECT_EQ(data()[73], 7009);
    EXPECT_EQ(data()[75], 0);
    EXPECT_EQ(block_last(), 1);
    send({2, 3, 4});
    EXPECT_EQ(said, processed_once());
    expect_curve_from(0);
}

TEST_P(CurveBlocks, AFailingProcessLeavesTheCounterAt3AndCostsTheNextCurve) {
    bool fails = true;
    int processed = 0;
    calls.*GetParam().process = [&](i16) {
        ++processed;
        if (fails) failures::overflow();
    };
    send({1, 2, 3, 4});
    EXPECT_EQ(block_last(), 3);
    EXPECT_EQ(debug(), lines{"mscomm: Overflow"});
    EXPECT_TRUE(said.empty());
    fails = false;
    send({1, 2, 3, 4});
    EXPECT_EQ(processed, 1);
    EXPECT_EQ(block_errors(), 4);
    EXPECT_EQ(block_last(), 0);
    send({1, 2, 3, 4});
    EXPECT_EQ(processed, 2);
    EXPECT_EQ(said, lines{GetParam().record_call});
}

TEST_P(CurveBlocks, TheCounterIsClearedBetweenProcessingAndRecording) {
    std::vector<i16> seen;
    calls.*GetParam().process = [&](i16) { seen.push_back(block_last()); };
    calls.log_record = [&](i16, std::string_view) { seen.push_back(block_last()); };
    send({1, 2, 3, 4});
    EXPECT_EQ(seen, (std::vector<i16>{3, 0}));
}

TEST_P(CurveBlocks, AFailingRecordDoesNotDisturbTheNextCurve) {
    calls.log_record = [](i16, std::string_view) { throw failure("Disk full"); };
    send({1, 2, 3, 4});
    EXPECT_EQ(debug(), lines{"mscomm: Disk full"});
    EXPECT_EQ(block_last(), 0);
    send({1, 2, 3, 4});
    EXPECT_EQ(said, (lines{GetParam().process_call, GetParam().process_call}));
}

TEST_P(CurveBlocks, ChannelsCountTheirOwnBlocks) {
    send({1, 2}, 0, 0);
    send({1}, 9000, 1);
    EXPECT_EQ(block_last(0), 2);
    EXPECT_EQ(block_last(1), 1);
    send({3, 4}, 0, 0);
    EXPECT_EQ(said, processed_once());
    EXPECT_EQ(data(1)[0], 9000);
    expect_curve_from(0);
}

INSTANTIATE_TEST_SUITE_P(
    kinds, CurveBlocks,
    testing::Values(curve_kind{"thermo", "03", &channel_rec::thermo_data, &sensor::state.thermo_block_last,
                               &link_calls::process_thermo, "process_thermo 1", "log_record 1 3"},
                    curve_kind{"angacc", "04", &channel_rec::angacc_data, &sensor::state.angacc_block_last,
                               &link_calls::process_angacc, "process_angacc 1", "log_record 1 4"}),
    [](const auto& info) { return info.param.name; });

class BothCurves : public link_world {};

TEST_F(BothCurves, MayInterleaveFreely) {
    for (const i32 block : {1, 2})
        dispatch(curve_block("03", block, 64 * block));
    dispatch(curve_block("04", 1, 5000));
    dispatch(curve_block("03", 3, 64 * 3));
    for (const i32 block : {2, 3, 4})
        dispatch(curve_block("04", block, 5000));
    dispatch(curve_block("03", 4, 64 * 4));
    EXPECT_EQ(said, (lines{"process_angacc 1", "log_record 1 4", "process_thermo 1", "log_record 1 3"}));
    EXPECT_TRUE(debug().empty());
}

TEST_F(BothCurves, ABlockErrorOfOneDoesNotTouchTheOther) {
    dispatch(curve_block("03", 1, 0));
    dispatch(curve_block("04", 2, 0));
    EXPECT_EQ(sensor::state.thermo_block_last[0], 1);
    EXPECT_EQ(debug(), lines{block_error});
}

} // namespace
} // namespace tyxo::link_testing
