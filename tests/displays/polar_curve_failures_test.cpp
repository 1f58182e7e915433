// Curves and parameters that no engine has: each ends as it must, and the next curve is drawn again.

#include "displays/polar_surface.h"

#include <limits>

namespace tyxo {
namespace {

struct failing_row {
    i32 alarmlevel;
    bool dcpercent_valid;
    i32 dcalarmpercent;
    i32 sample;
    void (*description)();
};

constexpr i32 most = std::numeric_limits<i32>::max();

const std::vector<failing_row> failing_rows{
    {6, false, 50, 500, failures::subscript},
    {-1, false, 50, 500, failures::subscript},
    {6, true, 50, 500, failures::subscript},
    {1, true, 0, 500, failures::division_by_zero},
    {0, true, 0, 479, failures::division_by_zero},
    {5, true, 4772186, 500, failures::overflow}, // x 450 is just beyond 32 bits
    {5, true, -4772186, 500, failures::overflow},
    {1, false, 50, 479 + 21474837, failures::overflow}, // x 100 likewise
    {1, false, 50, -most - 1, failures::overflow},
};

TEST_F(PolarCurves, AFailureEndsThePassAndTheNextCurveDrawsAgain) {
    for (const failing_row& row : failing_rows) {
        channel_rec& rec = sensor::state.channels[0];
        rec = engine(4, 6, in_line);
        take_curves(rec);
        rec.alarmlevel = row.alarmlevel;
        rec.dcpercent_valid = row.dcpercent_valid;
        rec.dcalarmpercent = row.dcalarmpercent;
        const i32 before = sensor::state.detail_thermo[200];
        sensor::state.detail_thermo[200] = row.sample;
        sensor::state.scale_polar_t = 0;
        const std::string what = std::to_string(row.alarmlevel) + " " + std::to_string(row.dcalarmpercent);
        clear();
        EXPECT_EQ(failure_of(frmdetailedpic::draw_curves), failure_of(row.description)) << what;
        // The relative thermosignal was drawn, unless its mean was negative; nothing of what follows.
        EXPECT_EQ(strokes().size(), row.sample < 0 ? 0 : diagram_strokes) << what;
        EXPECT_EQ(texts().size(), row.sample < 0 ? 0U : 1U) << what;
        sensor::state.detail_thermo[200] = before;
        rec.alarmlevel = 5;
        rec.dcpercent_valid = false;
        EXPECT_EQ(failure_of(draw_pass), "") << what;
    }
}

TEST_F(PolarCurves, ProductsJustWithin32BitsAreDrawn) {
    sensor::state.channels[0].alarmlevel = 5;
    sensor::state.channels[0].dcpercent_valid = true;
    sensor::state.channels[0].dcalarmpercent = 4772185;
    sensor::state.detail_thermo.fill(479 + 21474836);
    EXPECT_EQ(failure_of(frmdetailedpic::draw_thermo_abs), "");
}

TEST_F(PolarCurves, ADcPercentageOfNoughtDoesNoHarmWhileItIsNotValid) {
    sensor::state.channels[0].dcalarmpercent = 0;
    EXPECT_EQ(failure_of(frmdetailedpic::draw_thermo_abs), "");
}

TEST_F(PolarCurves, StrangeCurvesAndScalesAreDrawnInFull) {
    const std::vector<std::function<i32(i32)>> curves{
        [](i32) { return 0; },
        [](i32) { return 65535; },
        [](i32) { return 479; },
        [](i32 k) { return k % 2 == 0 ? 0 : 65535; },
    };
    for (const auto& curve : curves) {
        for (const double scale : {0.0, 1e-300, 1.0, 1e300}) {
            samples(sensor::state.detail_thermo, curve);
            samples(sensor::state.detail_angacc, curve);
            sensor::state.scale_polar_t = sensor::state.scale_polar_a = scale;
            clear();
            EXPECT_EQ(failure_of(frmdetailedpic::draw_curves), "");
            ASSERT_EQ(strokes().size(), 3 * diagram_strokes);
            for (const stroke& one : strokes()) {
                EXPECT_TRUE(std::isfinite(one.x1 + one.x2));
                EXPECT_TRUE(std::isfinite(one.y1) && std::isfinite(one.y2));
            }
        }
    }
}

TEST_F(PolarCurves, AnInfiniteScaleHurtsNobody) {
    take_curves(sensor::state.channels[0]);
    for (const double scale : {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::max(),
                               std::numeric_limits<double>::quiet_NaN()}) {
        sensor::state.scale_polar_t = sensor::state.scale_polar_a = scale;
        EXPECT_EQ(failure_of(draw_pass), "");
    }
    sensor::state.scale_polar_t = sensor::state.scale_polar_a = 1;
    draw_pass();
    for (const stroke& one : strokes())
        EXPECT_TRUE(std::isfinite(one.y2));
}

} // namespace
} // namespace tyxo
