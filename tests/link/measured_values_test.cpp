// The ":01" frame: its fields by length, scales and roundings, test signals.

#include "link/frames.h"
#include "link/link_world.h"

namespace tyxo::link_testing {
namespace {

class MeasuredValues : public link_world {
  protected:
    MeasuredValues() {
        channel_rec& rec = record(0);
        rec.tsignal = rec.speed = rec.teff_dc = rec.teff_ac = rec.tstsig_state = -1;
        rec.tvoltage = -1;
    }
    /// Five values: thermosignal, speed, voltage, both effective values.
    static std::vector<double> values() {
        const channel_rec& rec = record(0);
        return {double(rec.tsignal), double(rec.speed), rec.tvoltage, double(rec.teff_dc),
                double(rec.teff_ac)};
    }
};

constexpr raw_values full{
    .tsignal = 33768, .speed = 15000, .test_signal = 0, .tvoltage = 33000, .teff_dc = 450, .teff_ac = 670};

TEST_F(MeasuredValues, EveryFieldOfTheFullFrame) {
    dispatch(measured(full));
    EXPECT_EQ(values(), (std::vector<double>{100, 1500, 232, 45, 67}));
    EXPECT_EQ(record(0).tstsig_state, 0);
    EXPECT_EQ(said, lines{"log_record 1 1"});
}

TEST_F(MeasuredValues, AFrameOf15CharactersHasSignalAndSpeedOnly) {
    record(0).tstsig_prev = 1;
    dispatch(measured(full, 15));
    EXPECT_EQ(values(), (std::vector<double>{100, 1500, -1, -1, -1}));
    EXPECT_EQ(record(0).tstsig_state, -1);
    EXPECT_EQ(record(0).tstsig_prev, 1);
    EXPECT_EQ(said, lines{"log_record 1 1"});
}

struct length_case {
    std::size_t length;
    bool has_test_signal;
    bool has_voltage;
    bool has_dc;
    bool has_ac;
};

class MeasuredLengthOf : public MeasuredValues, public testing::WithParamInterface<length_case> {};

TEST_P(MeasuredLengthOf, DecidesWhichFieldsAreRead) {
    const length_case& row = GetParam();
    dispatch(measured(full, row.length));
    EXPECT_EQ(record(0).tsignal, 100);
    EXPECT_EQ(record(0).speed, 1500);
    EXPECT_EQ(record(0).tvoltage != -1, row.has_voltage);
    EXPECT_EQ(record(0).teff_dc != -1, row.has_dc);
    EXPECT_EQ(record(0).teff_ac != -1, row.has_ac);
    EXPECT_EQ(record(0).tstsig_state != -1, row.has_test_signal);
}

INSTANTIATE_TEST_SUITE_P(
    lengths, MeasuredLengthOf,
    testing::Values(length_case{15, false, false, false, false}, length_case{16, false, false, false, false},
                    length_case{19, true, false, false, false}, length_case{20, true, false, false, false},
                    length_case{21, true, true, false, false}, length_case{24, true, true, false, false},
                    length_case{25, true, true, true, false}, length_case{28, true, true, true, false},
                    length_case{29, true, true, true, true}, length_case{31, true, true, true, true}),
    [](const auto& info) { return "length_" + std::to_string(info.param.length); });

// A field that begins above its threshold is read at its place, check digits included.
TEST_F(MeasuredValues, Of17CharactersTakesCheckDigitsIntoTheTestSignal) {
    record(0).tstsig_visible = -1;
    const std::string frame = frame_text("01", 17).text(4, "80001388").str();
    dispatch(frame);
    EXPECT_EQ(record(0).tstsig_state, std::stoi(frame.substr(11, 4), nullptr, 16));
    EXPECT_EQ(record(0).speed, 500);
    EXPECT_EQ(record(0).tsignal, 0);
}

TEST_F(MeasuredValues, Of21CharactersTakesCheckDigitsIntoTheVoltage) {
    const std::string frame = frame_text("01", 21).text(4, "80001388").str();
    dispatch(frame);
    EXPECT_EQ(record(0).tvoltage, 32768 - std::stoi(frame.substr(15, 4), nullptr, 16));
}

TEST_F(MeasuredValues, Of12CharactersStoreTheSignalBeforeTheFailure) {
    EXPECT_THROW(dispatch(closed(":0183E81")), failure);
    EXPECT_EQ(record(0).tsignal, 100);
    EXPECT_EQ(record(0).speed, -1);
    EXPECT_TRUE(said.empty());
}

struct rounding_case {
    i32 raw;
    i32 value;
};

class TsignalOf : public MeasuredValues, public testing::WithParamInterface<rounding_case> {};

TEST_P(TsignalOf, IsATenthOfTheDistanceFromZeroRoundedToEven) {
    for (const std::size_t length : {std::size_t{15}, measured_length}) {
        record(0).tsignal = -1;
        dispatch(measured({.tsignal = GetParam().raw}, length));
        EXPECT_EQ(record(0).tsignal, GetParam().value) << length;
    }
}

INSTANTIATE_TEST_SUITE_P(raw_values, TsignalOf,
                         testing::Values(rounding_case{32768, 0}, rounding_case{32763, 0},
                                         rounding_case{32773, 0}, rounding_case{32783, 2},
                                         rounding_case{32753, 2}, rounding_case{32793, 2},
                                         rounding_case{32774, 1}, rounding_case{32762, 1},
                                         rounding_case{32792, 2}, rounding_case{32794, 3},
                                         rounding_case{0, 3277}, rounding_case{65535, 3277},
                                         rounding_case{33768, 100}, rounding_case{31768, 100}),
                         [](const auto& info) { return "raw_" + std::to_string(info.param.raw); });

class TenthOf : public MeasuredValues, public testing::WithParamInterface<rounding_case> {};

TEST_P(TenthOf, SpeedAndEffectiveValuesAreRoundedToEven) {
    const i32 raw = GetParam().raw;
    dispatch(measured({.speed = raw, .teff_dc = raw, .teff_ac = raw}));
    EXPECT_EQ(record(0).speed, GetParam().value);
    EXPECT_EQ(record(0).teff_dc, GetParam().value);
    EXPECT_EQ(record(0).teff_ac, GetParam().value);
    dispatch(measured({.speed = raw}, 15));
    EXPECT_EQ(record(0).speed, GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(raw_values, TenthOf,
                         testing::Values(rounding_case{0, 0}, rounding_case{4, 0}, rounding_case{5, 0},
                                         rounding_case{6, 1}, rounding_case{15, 2}, rounding_case{25, 2},
                                         rounding_case{26, 3}, rounding_case{35, 4},
                                         rounding_case{32768, 3277}, rounding_case{65535, 6554},
                                         rounding_case{65525, 6552}),
                         [](const auto& info) { return "raw_" + std::to_string(info.param.raw); });

TEST_F(MeasuredValues, VoltageIsTheDistanceFromZeroUndivided) {
    for (const auto& [raw, value] :
         std::vector<rounding_case>{{32768, 0}, {32763, 5}, {32773, 5}, {0, 32768}, {65535, 32767}}) {
        dispatch(measured({.tvoltage = raw}));
        EXPECT_EQ(record(0).tvoltage, value) << raw;
    }
}

TEST_F(MeasuredValues, DigitsOfEitherCaseCount) {
    dispatch(frame_text("01", 15).text(4, "83e800fF").str());
    EXPECT_EQ(record(0).tsignal, 100);
    EXPECT_EQ(record(0).speed, 26);
}

TEST_F(MeasuredValues, StandStillDuringATestSignalButForSpeedAndEffectiveValues) {
    dispatch(measured(full));
    dispatch(measured({.tsignal = 40000,
                       .speed = 9000,
                       .test_signal = 1,
                       .tvoltage = 40000,
                       .teff_dc = 10,
                       .teff_ac = 20}));
    EXPECT_EQ(values(), (std::vector<double>{100, 900, 232, 1, 2}));
    dispatch(measured({.tsignal = 32868, .speed = 8000, .tvoltage = 32770}));
    EXPECT_EQ(values(), (std::vector<double>{10, 800, 2, 0, 0}));
}

TEST_F(MeasuredValues, FollowAVisibleTestSignal) {
    for (const number_flag visible : {number_flag{-1}, number_flag{1}}) {
        record(0).tstsig_visible = visible;
        dispatch(
            measured({.tsignal = 33768 + visible * 10, .test_signal = 2, .tvoltage = 32768 + 100 * visible}));
        EXPECT_EQ(record(0).tsignal, 100 + visible);
        EXPECT_EQ(record(0).tvoltage, 100);
        record(0).tvoltage = -1;
    }
}

TEST_F(MeasuredValues, EachChangeOfTheTestSignalIsOneNote) {
    for (const i32 state : {0, 1, 1, 2, 2, 0, 0, 2, 1})
        dispatch(measured({.test_signal = state}));
    EXPECT_EQ(told("log_note"), (lines{"1 Testsignal1 ON", "1 Testsignal2 ON", "1 Testsignal OFF",
                                       "1 Testsignal2 ON", "1 Testsignal1 ON"}));
    EXPECT_EQ(record(0).tstsig_prev, 1);
}

TEST_F(MeasuredValues, AnUnknownTestSignalIsStoredAndNotAnnounced) {
    dispatch(measured({.test_signal = 1}));
    dispatch(measured({.test_signal = 3}));
    EXPECT_EQ(record(0).tstsig_state, 3);
    EXPECT_EQ(record(0).tstsig_prev, 1);
    dispatch(measured({.test_signal = 1}));
    dispatch(measured({.test_signal = 65535}));
    EXPECT_EQ(told("log_note"), lines{"1 Testsignal1 ON"});
    dispatch(measured({.test_signal = 0}));
    EXPECT_EQ(told("log_note").back(), "1 Testsignal OFF");
}

TEST_F(MeasuredValues, TheNoteComesBeforeTheValuesAndTheRecordBehindThem) {
    std::vector<i32> seen;
    calls.log_note = [&](i16 channel, std::string_view) { seen.push_back(record(channel).speed); };
    calls.log_record = [&](i16 channel, std::string_view) { seen.push_back(record(channel).speed); };
    dispatch(measured({.speed = 7000, .test_signal = 1}));
    EXPECT_EQ(seen, (std::vector{-1, 700}));
}

TEST_F(MeasuredValues, TheTestSignalIsAnnouncedBeforeALaterFieldFails) {
    std::string body = measured({.speed = 7000, .test_signal = 2});
    body.resize(body.size() - 4);
    body[8] = 'x';
    EXPECT_THROW(dispatch(closed(body)), failure);
    EXPECT_EQ(said, lines{"log_note 1 Testsignal2 ON"});
    EXPECT_EQ(record(0).speed, -1);
}

} // namespace
} // namespace tyxo::link_testing
