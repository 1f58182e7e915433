// The ":06" frame: its fields by length, the gauge and the chart's speed line, the beginning of a log.

#include "basics/failure.h"
#include "link/frames.h"
#include "link/link_world.h"
#include "link/speed_bands.h"

namespace tyxo::link_testing {
namespace {

class ParameterValues : public link_world {};

TEST_F(ParameterValues, EveryFieldOfTheFullFrame) {
    dispatch(parameters(0x0204), 2);
    const channel_rec& rec = record(2);
    EXPECT_EQ(rec.alarmlevel, 0x0101);
    EXPECT_EQ(rec.prealarmlevel, 0x0102);
    EXPECT_EQ(rec.ratedspeed, 0x0203);
    EXPECT_EQ(rec.overspeed, 0x0204);
    EXPECT_EQ(rec.enginetype, 4);
    EXPECT_EQ(rec.numzyl, 12);
    EXPECT_EQ(rec.cylconf, 2);
    for (i32 index = 0; index < 24; ++index) {
        EXPECT_EQ(rec.firingorder[static_cast<std::size_t>(index)], 101 + index);
        EXPECT_EQ(rec.firingangle[static_cast<std::size_t>(index)], 1000 + 30 * index);
    }
    EXPECT_EQ(rec.impoffset, 0x0A01);
    EXPECT_EQ(rec.tsttime, 0x0A02);
    EXPECT_EQ(rec.tstlen, 0x0A03);
    EXPECT_EQ(rec.aimp_level_cur, 0xA4);
    EXPECT_EQ(rec.ialarmlevel1, 0x0A05);
    EXPECT_EQ(rec.ialarmlevel2, 0x0A06);
    EXPECT_EQ(rec.ialmrpm, 0x0A07);
    EXPECT_EQ(rec.fwvers_ext, "V3.21 beta");
    EXPECT_EQ(rec.ialarmdelay, 0x0A08);
    EXPECT_EQ(rec.ialarmlen, 0x0A09);
    EXPECT_EQ(rec.ialarmlevel, 0x0A0A);
    EXPECT_EQ(rec.theff_alm, 0x0A0B);
    EXPECT_EQ(rec.theff_cnt, 0x0A0C);
    EXPECT_EQ(rec.alminhibit_time, 0x0A0D);
    EXPECT_EQ(rec.evasnr, "SN-00815");
    EXPECT_EQ(rec.dcalarmpercent, 0x0A0E);
    EXPECT_TRUE(rec.param_valid && rec.tst_valid && rec.ext1_valid && rec.ext2_valid && rec.dcpercent_valid);
}

TEST_F(ParameterValues, FiringOrderKeepsTheBankInItsNumber) {
    const std::string order = std::string("05") + "69" + "CD" + "64" + "C8";
    std::string body = parameters(1500);
    body.resize(body.size() - 4);
    dispatch(closed(body.replace(31, order.size(), order)));
    EXPECT_EQ(record(0).firingorder[0], 5);
    EXPECT_EQ(record(0).firingorder[1], 105);
    EXPECT_EQ(record(0).firingorder[2], 205);
    EXPECT_EQ(record(0).firingorder[3], 100);
    EXPECT_EQ(record(0).firingorder[4], 200);
}

/// Which groups an Evaluator of each generation sends.
struct form {
    std::size_t length;
    bool tst, ext1, ext2, theff, inhibit, percent;
};

class ParameterForm : public ParameterValues, public testing::WithParamInterface<form> {};

TEST_P(ParameterForm, HasTheGroupsOfItsLengthAndForgetsTheOthers) {
    const form& expected = GetParam();
    dispatch(parameters(1500)); // all groups
    dispatch(parameters(1500, expected.length));
    const channel_rec& rec = record(0);
    EXPECT_EQ(rec.tst_valid, expected.tst);
    EXPECT_EQ(rec.ext1_valid, expected.ext1);
    EXPECT_EQ(rec.ext2_valid, expected.ext2);
    EXPECT_EQ(rec.dcpercent_valid, expected.percent);
    EXPECT_EQ(rec.theff_alm == 9999, !expected.theff);
    EXPECT_EQ(rec.theff_cnt == 9999, !expected.theff);
    EXPECT_EQ(rec.alminhibit_time == 99999, !expected.inhibit);
    EXPECT_EQ(rec.evasnr == "inactive", !expected.inhibit);
    EXPECT_EQ(rec.impoffset, 0x0A01);
    EXPECT_TRUE(rec.param_valid);
}

INSTANTIATE_TEST_SUITE_P(
    lengths, ParameterForm,
    testing::Values(
        form{183, false, false, false, false, false, false},
        form{185, false, false, false, false, false, false},
        form{189, true, false, false, false, false, false},
        form{190, true, false, false, false, false, false},
        form{191, true, false, false, false, false, false}, form{211, true, true, false, false, false, false},
        form{215, true, true, false, false, false, false}, form{220, true, true, false, false, false, false},
        form{225, true, true, true, false, false, false}, form{230, true, true, true, false, false, false},
        form{233, true, true, true, true, false, false}, form{236, true, true, true, true, false, false},
        form{243, true, true, true, true, true, false}, form{247, true, true, true, true, true, false},
        form{249, true, true, true, true, true, true}, form{251, true, true, true, true, true, true},
        form{260, true, true, true, true, true, true}),
    [](const auto& info) { return "length_" + std::to_string(info.param.length); });

class BrokenForm : public ParameterValues, public testing::WithParamInterface<std::size_t> {};

// The threshold of a group lies below the length that holds the group: such frames break off in it.
TEST_P(BrokenForm, ThatEndsInsideAGroupLeavesTheFlagsBehindItAsTheyWere) {
    dispatch(parameters(1500));
    dispatch(parameters(1600, 183));
    record(0).log_state = log_states::wanted;
    record(0).param_valid = false;
    said.clear();
    EXPECT_THROW(dispatch(parameters(2900, GetParam())), failure);
    const channel_rec& rec = record(0);
    EXPECT_EQ(rec.overspeed, 2900);
    EXPECT_EQ(rec.tst_valid, GetParam() >= 192);
    EXPECT_EQ(rec.ext1_valid, GetParam() >= 221);
    EXPECT_EQ(rec.ext2_valid, GetParam() >= 231);
    EXPECT_FALSE(rec.dcpercent_valid);
    EXPECT_EQ(rec.speed_unit, "RPM /20");
    EXPECT_EQ(rec.log_state, log_states::wanted);
    EXPECT_FALSE(rec.param_valid);
    EXPECT_TRUE(said.empty());
    EXPECT_EQ(indicators.drehzahl[0].PositionMax, 4000);
}

INSTANTIATE_TEST_SUITE_P(lengths, BrokenForm,
                         testing::Values(186, 188, 192, 200, 210, 221, 224, 231, 232, 237, 242, 248),
                         [](const auto& info) { return "length_" + std::to_string(info.param); });

struct gauge_case {
    i32 overspeed;
    double end;
    i32 ticks;
};

class GaugeOf : public ParameterValues, public testing::WithParamInterface<gauge_case> {};

TEST_P(GaugeOf, TheOverspeedLimitHasItsEndAndTicks) {
    dispatch(parameters(GetParam().overspeed), 1);
    EXPECT_EQ(indicators.drehzahl[1].PositionMax, GetParam().end);
    EXPECT_EQ(indicators.drehzahl[1].TickMajorCount, GetParam().ticks);
    EXPECT_EQ(indicators.drehzahl[0].PositionMax, iAngularGaugeX{}.PositionMax);
}

INSTANTIATE_TEST_SUITE_P(
    bands, GaugeOf,
    testing::Values(gauge_case{0, 120, 13}, gauge_case{10, 120, 13}, gauge_case{119, 120, 13},
                    gauge_case{120, 300, 11}, gauge_case{299, 300, 11}, gauge_case{300, 700, 8},
                    gauge_case{699, 700, 8}, gauge_case{700, 1400, 9}, gauge_case{1399, 1400, 9},
                    gauge_case{1400, 3000, 7}, gauge_case{2899, 3000, 7}, gauge_case{2900, 4000, 9},
                    gauge_case{65535, 4000, 9}),
    [](const auto& info) { return "overspeed_" + std::to_string(info.param.overspeed); });

struct line_case {
    i32 overspeed;
    double scale;
    const char* unit;
};

class SpeedLineOf : public ParameterValues, public testing::WithParamInterface<line_case> {};

TEST_P(SpeedLineOf, TheOverspeedLimitHasItsScaleAndUnit) {
    dispatch(parameters(GetParam().overspeed));
    EXPECT_EQ(record(0).speed_scale, GetParam().scale);
    EXPECT_EQ(record(0).speed_unit, GetParam().unit);
}

INSTANTIATE_TEST_SUITE_P(bands, SpeedLineOf,
                         testing::Values(line_case{0, 1.0, "RPM"}, line_case{119, 1.0, "RPM"},
                                         line_case{120, 0.2, "RPM /5"}, line_case{399, 0.2, "RPM /5"},
                                         line_case{400, 0.1, "RPM /10"}, line_case{1399, 0.1, "RPM /10"},
                                         line_case{1400, 0.05, "RPM /20"}, line_case{2899, 0.05, "RPM /20"},
                                         line_case{2900, 0.04, "RPM /25"}, line_case{65535, 0.04, "RPM /25"}),
                         [](const auto& info) {
                             return "overspeed_" + std::to_string(info.param.overspeed);
                         });

TEST_F(ParameterValues, SectionsOfTheGaugeFollowLimitsOver10Only) {
    iAngularGaugeX& gauge = indicators.drehzahl[0];
    dispatch(parameters(11, parameter_length, 11));
    EXPECT_EQ(gauge.SectionEnd, (std::array<double, 2>{11, 11}));
    dispatch(parameters(1500, parameter_length, 1300));
    EXPECT_EQ(gauge.SectionEnd, (std::array<double, 2>{1300, 1500}));
    dispatch(parameters(10, parameter_length, 10));
    EXPECT_EQ(gauge.SectionEnd, (std::array<double, 2>{1300, 1500}));
    EXPECT_EQ(gauge.PositionMax, 120);
    dispatch(parameters(10, parameter_length, 1200));
    EXPECT_EQ(gauge.SectionEnd, (std::array<double, 2>{1200, 1500}));
}

TEST_F(ParameterValues, TheGaugeHasFollowedWhenALaterFieldFails) {
    EXPECT_THROW(dispatch(closed(parameters(2900, 40).substr(0, 25))), failure);
    EXPECT_EQ(indicators.drehzahl[0].PositionMax, 4000);
    EXPECT_EQ(record(0).speed_unit, "");
}

TEST_F(ParameterValues, BeginsTheWantedLogOnceEverythingIsStored) {
    i16 state_seen = -1;
    bool valid_seen = true;
    std::string unit_seen;
    calls.createlog = [&](i16 channel) {
        state_seen = record(channel).log_state;
        valid_seen = record(channel).param_valid;
        unit_seen = record(channel).speed_unit;
    };
    record(1).log_state = log_states::wanted;
    dispatch(parameters(1500), 1);
    EXPECT_EQ(state_seen, log_states::wanted);
    EXPECT_FALSE(valid_seen);
    EXPECT_EQ(unit_seen, "RPM /20");
    EXPECT_EQ(record(1).log_state, log_states::open);
    EXPECT_TRUE(record(1).param_valid);
}

TEST_F(ParameterValues, BeginsOneLogOnly) {
    record(0).log_state = log_states::wanted;
    dispatch(parameters(1500));
    dispatch(parameters(1500));
    EXPECT_EQ(said, lines{"createlog 1"});
}

TEST_F(ParameterValues, BeginsNoLogThatNobodyWants) {
    record(0).log_state = log_states::none;
    dispatch(parameters(1500));
    EXPECT_EQ(record(0).log_state, log_states::none);
    EXPECT_TRUE(said.empty());
    EXPECT_TRUE(record(0).param_valid);
}

TEST_F(ParameterValues, AFailingLogLeavesItWantedAndTheParametersNotValid) {
    record(0).log_state = log_states::wanted;
    calls.createlog = [](i16) { failures::overflow(); };
    receive(parameters(1500));
    EXPECT_EQ(debug(), lines{"mscomm: Overflow"});
    EXPECT_EQ(record(0).log_state, log_states::wanted);
    EXPECT_FALSE(record(0).param_valid);
}

} // namespace
} // namespace tyxo::link_testing
