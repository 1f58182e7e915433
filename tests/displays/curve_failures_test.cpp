// Failures while a finished curve is processed: the thermosignal goes on past them, the acceleration does
// not.

#include "displays/finished_curves.h"

#include <cmath>

namespace tyxo::curve_testing {
namespace {

class ThermoFailures : public curve_test {};
class AngaccFailures : public curve_test {};

/// A curve whose samples 0 and 2 can be drawn with the greatest scale, and whose other samples cannot.
constexpr double greatest_scale = 1.7e308;
void overflow_some(std::array<i32, curve_samples + 1>& data) {
    for (std::size_t index = 0; index < curve_samples; ++index)
        data[index] = index % 2 == 0 ? 998 : 1002;
    data[0] = data[2] = 1000;
    data[3] = 998; // the mean stays 1000
}

TEST_P(ThermoFailures, OfASampleSkipItsRadiusAndReportTheLastFailureAtTheEnd) {
    overflow_some(data());
    *kind().scale = greatest_scale;
    process();
    ASSERT_EQ(drawn().points.size(), 256U);
    for (const plot_point& point : drawn().points)
        EXPECT_NEAR(std::hypot(point.x, point.y), 30, 1e-6); // the radius of the sample before
    EXPECT_EQ((*kind().mb)[0], samples());
    EXPECT_EQ(calculated.size(), 1U);
    EXPECT_EQ(world().debug, text_lines{"error: disp thermosignal Overflow"});
}

TEST_P(ThermoFailures, OfAConsumerDoNotRise) {
    fill();
    during_calc = [] { failures::division_by_zero(); };
    EXPECT_NO_THROW(process());
    EXPECT_EQ(world().debug, text_lines{"error: disp thermosignal Division by zero"});
}

TEST_P(ThermoFailures, ShowOnlyTheirLastDescription) {
    overflow_some(data());
    *kind().scale = greatest_scale;
    during_calc = [] { failures::division_by_zero(); };
    process();
    EXPECT_EQ(world().debug, text_lines{"error: disp thermosignal Division by zero"});
}

TEST_P(ThermoFailures, OfAChannelThatDoesNotExistAreReportedToo) {
    EXPECT_NO_THROW(kind().process(7));
    EXPECT_NO_THROW(kind().process(-1));
    EXPECT_EQ(world().debug, text_lines(2, "error: disp thermosignal Subscript out of range"));
    EXPECT_TRUE(calculated.empty());
}

TEST_P(ThermoFailures, DoNotDisturbTheNextCurveNorTheRecord) {
    *kind().scale = greatest_scale;
    feed_curve(0, 1000);
    EXPECT_EQ(world().debug, text_lines{"error: disp thermosignal Overflow"});
    EXPECT_EQ(sensor::state.thermo_block_last[0], 0);
    EXPECT_EQ(records(), 1);
    *kind().scale = 1;
    feed_curve(0, 1100);
    EXPECT_EQ(records(), 2);
    EXPECT_EQ(world().debug.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(kind, ThermoFailures, testing::Values(thermo_kind),
                         [](const auto& info) { return info.param.name; });

TEST_P(AngaccFailures, EndTheDrawingWhereTheyHappenAndRise) {
    overflow_some(data());
    *kind().scale = greatest_scale;
    EXPECT_THROW(process(), failure);
    EXPECT_EQ(drawn().points.size(), 1U);
    EXPECT_EQ((*kind().mb)[0][0], 1000);
    EXPECT_EQ((*kind().mb)[0][1], 0);
    EXPECT_TRUE(calculated.empty());
    EXPECT_TRUE(world().debug.empty());
}

TEST_P(AngaccFailures, OfAConsumerRise) {
    fill();
    during_calc = [] { failures::division_by_zero(); };
    EXPECT_THROW(process(), failure);
    EXPECT_TRUE(world().debug.empty());
}

TEST_P(AngaccFailures, OfAChannelThatDoesNotExistRise) {
    EXPECT_THROW(kind().process(7), failure);
    EXPECT_THROW(kind().process(-1), failure);
}

TEST_P(AngaccFailures, LeaveTheBlockCounterAtThreeAndCostTheNextCurve) {
    *kind().scale = greatest_scale;
    feed_curve(0, 1000);
    EXPECT_EQ(world().debug, text_lines{"mscomm: Overflow"});
    EXPECT_EQ(sensor::state.angacc_block_last[0], 3);
    EXPECT_EQ(records(), 0);
    *kind().scale = 1;
    world().debug.clear();
    feed_curve(0, 2000);
    EXPECT_EQ(world().debug, text_lines(4, "blocknummerfehler thermospannung"));
    EXPECT_TRUE(drawn().points.empty());
    feed_curve(0, 3000);
    EXPECT_EQ(drawn().points.size(), 256U);
    EXPECT_EQ((*kind().mb)[0], samples());
    EXPECT_EQ(records(), 1);
}

INSTANTIATE_TEST_SUITE_P(kind, AngaccFailures, testing::Values(angacc_kind),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace tyxo::curve_testing
