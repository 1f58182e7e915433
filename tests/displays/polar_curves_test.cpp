// The curves of the Detailed Display, around the circle and along the line.

#include "displays/polar_surface.h"

namespace tyxo {
namespace {

struct diagram_row {
    void (*draw)();
    colour color;
    double line_x, line_y;
    std::string_view legend;
};

const std::vector<diagram_row> diagram_rows{
    {frmdetailedpic::draw_thermo, red, 106, 5, "Thermosignal rel. to average value"},
    {frmdetailedpic::draw_thermo_abs, yellow, 106, 9, "Thermosignal in % Alarmlevel"},
    {frmdetailedpic::draw_angle, blue, 166, 5, "Angular acceleration rel. to average value"},
};

TEST_F(PolarCurves, EachDiagramHasItsColourItsLinesAndItsLegend) {
    take_curves(sensor::state.channels[0]);
    for (const diagram_row& row : diagram_rows) {
        only(row.draw);
        ASSERT_EQ(strokes().size(), diagram_strokes) << row.legend;
        for (const stroke& one : strokes())
            EXPECT_EQ(one.ForeColor, row.color) << row.legend;
        expect_joined(strokes(), 0, circle_strokes);
        EXPECT_EQ(round_part(255).x2, round_part(0).x1) << "closed";
        EXPECT_EQ(round_part(255).y2, round_part(0).y1) << "closed";
        EXPECT_EQ(round_part(256), (stroke{row.line_x, row.line_y, row.line_x + 5, row.line_y, row.color}));
        expect_joined(strokes(), circle_strokes + 1, 255);
        EXPECT_EQ(straight_part(0).x1, left_end);
        EXPECT_NEAR(straight_part(254).x2, 275, near_enough) << "not closed";
        ASSERT_EQ(texts().size(), 1U);
        expect_text(texts()[0], row.line_x + 7, row.line_y - 2, row.legend);
    }
}

struct point_row {
    std::size_t k;
    double round_x, round_y, straight_x, straight_y;
};

/// Samples 1000 + k, so that the mean is 1127.5, with the scale 0.25.
const std::vector<point_row> ramp{
    {0, 61.000000000000, 96.875000000000, 130.000000000000, 134.875},
    {1, 60.960120503650, 96.624510580381, 130.568627450980, 134.625},
    {64, 75.125000000000, 95.000000000000, 166.392156862745, 118.875},
    {127, 61.733169202122, 124.866002208549, 202.215686274510, 103.125},
    {128, 61.000000000000, 125.125000000000, 202.784313725490, 102.875},
    {200, 13.799708380595, 85.611278252974, 243.725490196078, 84.875},
    {255, 59.481511485145, 33.143635593172, 275.000000000000, 71.125},
};

TEST_F(PolarCurves, RelativeDiagramsFollowTheDeviationFromTheMean) {
    const auto one_above_another = [](i32 k) { return 1000 + k; };
    for (const bool thermo : {true, false}) {
        sensor::state.detail_thermo.fill(7);
        sensor::state.detail_angacc.fill(9);
        samples(thermo ? sensor::state.detail_thermo : sensor::state.detail_angacc, one_above_another);
        sensor::state.scale_polar_t = thermo ? 0.25 : 77;
        sensor::state.scale_polar_a = thermo ? 77 : 0.25;
        only(thermo ? frmdetailedpic::draw_thermo : frmdetailedpic::draw_angle);
        for (const point_row& row : ramp) {
            // Stroke k - 1 ends in point k.
            const stroke& around = round_part((row.k + 255) % 256);
            EXPECT_NEAR(around.x2, row.round_x, near_enough) << row.k;
            EXPECT_NEAR(around.y2, row.round_y, near_enough) << row.k;
            const bool first = row.k == 0;
            const stroke& along = straight_part(first ? 0 : row.k - 1);
            EXPECT_NEAR(first ? along.x1 : along.x2, row.straight_x, near_enough) << row.k;
            EXPECT_NEAR(first ? along.y1 : along.y2, row.straight_y, near_enough) << row.k;
        }
    }
}

TEST_F(PolarCurves, ASampleEqualToTheMeanLiesOnTheWhiteCircleAndLine) {
    sensor::state.detail_thermo.fill(600);
    only(frmdetailedpic::draw_refline);
    const double white_line = strokes()[0].y1;
    only(frmdetailedpic::draw_refcircle);
    const std::vector<stroke> white_circle = strokes();
    only(frmdetailedpic::draw_thermo);
    // The circle begins at the right, the curve at the top, a quarter of the way round.
    for (std::size_t k = 0; k < 256; ++k) {
        EXPECT_NEAR(round_part(k).x1, white_circle[(k + 192) % 256].x1, 1e-6);
        EXPECT_NEAR(std::abs(round_part(k).y1 - 95), std::abs(white_circle[(k + 192) % 256].y1 - 95), 1e-6);
    }
    for (std::size_t k = 0; k < 255; ++k)
        EXPECT_EQ(straight_part(k).y1, white_line);
}

struct limit_row {
    i32 deviation; ///< of the first sample from the mean
    double radius;
    double height_y;
};

// The straight diagram ends at 10 above and nowhere below.
const std::vector<limit_row> limit_rows{
    {47, 77, 175 - 72 - 47},
    {48, 78, 175 - 72 - 48},
    {49, 78, 175 - 72 - 49},
    {93, 78, 10},
    {92, 78, 11},
    {1000, 78, 10},
    {-30, 0, 175 - 72 + 30},
    {-79, -49, 175 - 72 + 79},
    {-80, -50, 175 - 72 + 80},
    {-81, -50, 175 - 72 + 81},
    {-100, -50, 175 - 72 + 100},
    {-5000, -50, 175 - 72 + 5000},
};

TEST_F(PolarCurves, RelativeDeviationsAreLimitedOutwardsAndPastTheCentre) {
    for (const limit_row& row : limit_rows) {
        // Two samples deviate against each other, so that the mean is 10000.
        sensor::state.detail_thermo.fill(10000);
        sensor::state.detail_thermo[0] += row.deviation;
        sensor::state.detail_thermo[128] -= row.deviation;
        only(frmdetailedpic::draw_thermo);
        EXPECT_NEAR(first_radius(), row.radius, near_enough) << row.deviation;
        EXPECT_NEAR(round_part(0).x1, centre_x, near_enough) << row.deviation;
        EXPECT_NEAR(straight_part(0).y1, row.height_y, near_enough) << row.deviation;
    }
}

TEST_F(PolarCurves, ANegativeMeanDrawsNothingNotEvenTheLegend) {
    for (auto* const draw : {frmdetailedpic::draw_thermo, frmdetailedpic::draw_angle}) {
        sensor::state.detail_thermo.fill(0);
        sensor::state.detail_angacc.fill(0);
        only(draw);
        EXPECT_EQ(strokes().size(), diagram_strokes) << "a mean of 0 is none";
        sensor::state.detail_thermo[9] = sensor::state.detail_angacc[9] = -1;
        only(draw);
        EXPECT_TRUE(strokes().empty());
        EXPECT_TRUE(texts().empty());
    }
    sensor::state.detail_thermo.fill(-5);
    only(frmdetailedpic::draw_thermo_abs);
    EXPECT_EQ(strokes().size(), diagram_strokes) << "the absolute diagram has no mean";
}

TEST_F(PolarCurves, TheMeanIsNotRounded) {
    sensor::state.detail_thermo.fill(100);
    sensor::state.detail_thermo[128] = 101; // mean 100.00390625
    sensor::state.scale_polar_t = 256;
    only(frmdetailedpic::draw_thermo);
    EXPECT_NEAR(first_radius(), 29, near_enough);
}

struct alarm_row {
    i32 alarmlevel;
    i32 dcalarmpercent; ///< 0: not valid
    i32 deviation;
    double radius;
    double height;
};

const std::vector<alarm_row> alarm_rows{
    {1, 0, 25, 50, 75},  // 100 %
    {1, 0, -25, 50, 75}, // the amount counts
    {1, 0, 34, 68, 102}, //
    {1, 0, 35, 70, 105}, //
    {1, 0, 45, 70, 135}, // limited by the radius
    {1, 0, 55, 70, 165}, // and in the straight diagram at the top
    {1, 0, 56, 70, 165}, //
    {2, 0, 50, 50, 75},  //
    {3, 0, 100, 50, 75}, //
    {4, 0, 225, 50, 75}, //
    {5, 0, 450, 50, 75}, //
    {0, 0, 999, 50, 75}, // near the centre with all that is usual
    {0, 0, 20, 1000.0 / 999, 1500.0 / 999},
    {3, 50, 50, 50, 75}, // half of 100
    {2, 75, 30, 40, 60}, // 37.5
    {1, 10, 1, 20, 30},  // 2.5
    {3, -50, 50, -50, -75},
    {3, -50, 90, -70, -135},
};

TEST_F(PolarCurves, TheAbsoluteDiagramIsInPercentOfTheAlarmLevel) {
    for (const alarm_row& row : alarm_rows) {
        channel_rec& rec = sensor::state.channels[0];
        rec.alarmlevel = row.alarmlevel;
        rec.dcpercent_valid = row.dcalarmpercent != 0;
        rec.dcalarmpercent = row.dcalarmpercent != 0 ? row.dcalarmpercent : 33;
        first_deviates(row.deviation);
        only(frmdetailedpic::draw_thermo_abs);
        const std::string what = std::to_string(row.alarmlevel) + ": " + std::to_string(row.deviation);
        EXPECT_NEAR(first_radius(), row.radius, near_enough) << what;
        EXPECT_NEAR(first_height(), row.height, near_enough) << what;
        EXPECT_NEAR(round_part(100).x1, centre_x, near_enough) << "the zero point is the centre";
        EXPECT_NEAR(straight_part(100).y1, base, near_enough) << "and the baseline";
    }
}

/// Samples 479 + k mod 30 on a channel of alarm level 2.
const std::vector<point_row> saw{
    {0, 61.000000000000, 95.000000000000, 130.000000000000, 175.0},
    {1, 61.024541228523, 94.000301181304, 130.568627450980, 173.5},
    {64, 65.000000000000, 95.000000000000, 166.392156862745, 169.0},
    {119, 67.353935964549, 123.295361771117, 197.666666666667, 131.5},
    {255, 60.631881572156, 80.004517719557, 275.000000000000, 152.5},
};

TEST_F(PolarCurves, TheAbsoluteDiagramRunsClockwiseFromTheTop) {
    samples(sensor::state.detail_thermo, [](i32 k) { return 479 + k % 30; });
    only(frmdetailedpic::draw_thermo_abs);
    for (const point_row& row : saw) {
        const stroke& around = round_part((row.k + 255) % 256);
        EXPECT_NEAR(around.x2, row.round_x, near_enough) << row.k;
        EXPECT_NEAR(around.y2, row.round_y, near_enough) << row.k;
        const stroke& along = straight_part(row.k == 0 ? 0 : row.k - 1);
        EXPECT_NEAR(row.k == 0 ? along.x1 : along.x2, row.straight_x, near_enough) << row.k;
        EXPECT_NEAR(row.k == 0 ? along.y1 : along.y2, row.straight_y, near_enough) << row.k;
    }
}

TEST_F(PolarCurves, AHundredPercentLiesOnTheOrangeCircleAndLine) {
    sensor::state.channels[0].alarmlevel = 1;
    sensor::state.detail_thermo.fill(479 + 25);
    only(frmdetailedpic::draw_almline);
    const double orange_line = strokes()[0].y1;
    only(frmdetailedpic::draw_thermo_abs);
    for (std::size_t k = 0; k < 256; ++k)
        EXPECT_NEAR(std::hypot(round_part(k).x1 - 61, round_part(k).y1 - 95), 50, 1e-6);
    for (std::size_t k = 0; k < 255; ++k)
        EXPECT_EQ(straight_part(k).y1, orange_line);
}

TEST_F(PolarCurves, TheZeroPointCountsAtBothEndsOfItsRange) {
    for (const i16 zero : {i16{460}, i16{520}}) {
        sensor::state.adc_offset = zero;
        first_deviates(25);
        only(frmdetailedpic::draw_thermo_abs);
        EXPECT_NEAR(first_radius(), 25, near_enough) << zero;
        sensor::state.detail_thermo.fill(490);
        only(frmdetailedpic::draw_thermo_abs);
        EXPECT_NEAR(first_radius(), 30, near_enough) << zero;
    }
}

struct box_row {
    i16 tsrel, tsabs, aa;
    std::vector<colour> drawn;
};

TEST_F(PolarCurves, EachDiagramIsDrawnIfItsBoxIsExactlyOneInTheirOrder) {
    take_curves(sensor::state.channels[0]);
    for (const box_row& row : std::vector<box_row>{{1, 1, 1, {red, yellow, blue}},
                                                   {0, 1, 1, {yellow, blue}},
                                                   {1, 0, 1, {red, blue}},
                                                   {1, 1, 0, {red, yellow}},
                                                   {0, 0, 0, {}},
                                                   {2, -1, 1, {blue}}}) {
        frmdetailedpic::state.Chck_tsrel = row.tsrel;
        frmdetailedpic::state.Chck_tsabs = row.tsabs;
        frmdetailedpic::state.Chck_aa = row.aa;
        only(frmdetailedpic::draw_curves);
        ASSERT_EQ(strokes().size(), row.drawn.size() * diagram_strokes);
        for (std::size_t diagram = 0; diagram < row.drawn.size(); ++diagram)
            EXPECT_EQ(strokes()[diagram * diagram_strokes].ForeColor, row.drawn[diagram]);
    }
}

TEST_F(PolarCurves, AChangedScaleShowsWithTheNextCurve) {
    first_deviates(8);
    sensor::state.detail_thermo[128] -= 8;
    only(frmdetailedpic::draw_thermo);
    const double before = first_radius();
    sensor::state.scale_polar_t = 2;
    EXPECT_EQ(first_radius(), before);
    only(frmdetailedpic::draw_thermo);
    EXPECT_NEAR(first_radius() - 30, 2 * (before - 30), near_enough);
}

} // namespace
} // namespace tyxo
