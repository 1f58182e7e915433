// The strokes that a curve on a strip chart is painted with.

#include "controls/curve_strokes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>
#include <random>

namespace tyxo {

void PrintTo(const curve_stroke& stroke, std::ostream* out) {
    *out << stroke.left << ',' << stroke.top << ' ' << stroke.width << 'x' << stroke.height;
}

namespace {

using corners = std::vector<curve_corner>;
using strokes = std::vector<curve_stroke>;

constexpr double broken = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr curve_area area{40, 140, 20, 120};

strokes drawn(const corners& curve, i32 thickness = 1, const curve_area& on = area) {
    curve_painter painter;
    return painter.strokes(curve, on, thickness);
}

TEST(CurveStrokes, ALevelLineIsOneStroke) {
    EXPECT_EQ(drawn({{40, 50.5}, {90, 50.5}, {139.9, 50.5}}), (strokes{{40, 50, 100, 1}}));
    EXPECT_EQ(drawn({{50, 50.2}, {60.5, 50.2}}), (strokes{{50, 50, 11, 1}}));
}

TEST(CurveStrokes, AThickLineHasItsMiddleWhereAThinOneIs) {
    EXPECT_EQ(drawn({{50, 50}, {60.5, 50}}, 2), (strokes{{50, 49, 12, 2}}));
    EXPECT_EQ(drawn({{50, 50.5}, {60.5, 50.5}}, 3), (strokes{{50, 49, 13, 3}}));
}

TEST(CurveStrokes, ASpikeWithinAColumnIsSeenWhole) {
    EXPECT_EQ(drawn({{50.1, 80.5}, {50.4, 30.5}, {50.7, 90.5}}), (strokes{{50, 30, 1, 61}}));
}

TEST(CurveStrokes, ASlopeGoesDownAStepAColumn) {
    EXPECT_EQ(drawn({{50, 60}, {52, 80}}), (strokes{{50, 60, 1, 11}, {51, 70, 1, 11}, {52, 80, 1, 1}}));
}

TEST(CurveStrokes, ACornerAloneIsADot) {
    EXPECT_EQ(drawn({{50.5, 60.5}}), (strokes{{50, 60, 1, 1}}));
    EXPECT_EQ(drawn({{50, 60}, {50, broken}, {60.5, 70.5}}, 2), (strokes{{50, 59, 2, 2}, {60, 70, 2, 2}}));
}

TEST(CurveStrokes, ABreakIsLeftOut) {
    EXPECT_EQ(drawn({{50, 60.5}, {55.5, 60.5}, {57, broken}, {60, 60.5}, {65.5, 60.5}}),
              (strokes{{50, 60, 6, 1}, {60, 60, 6, 1}}));
    EXPECT_EQ(drawn({{broken, 1}, {50, broken}, {broken, broken}}), strokes{});
}

TEST(CurveStrokes, WhatIsBesideTheAreaIsCutOffAndWhatCrossesItsEdgeComesIn) {
    EXPECT_EQ(drawn({{0, 60}, {39.9, 60}}), strokes{});
    EXPECT_EQ(drawn({{140, 60}, {300, 60}}), strokes{});
    EXPECT_EQ(drawn({{0, 60.5}, {300, 60.5}}), (strokes{{40, 60, 100, 1}}));
    // From 30,50 to 50,70: 60 at the left edge.
    const strokes slope = drawn({{30, 50}, {50, 70}});
    EXPECT_EQ(slope.front(), (curve_stroke{40, 60, 1, 2}));
}

TEST(CurveStrokes, WhatIsAboveOrBelowEndsJustOutside) {
    for (const curve_stroke& stroke :
         drawn({{50, -1e300}, {60, 1e300}, {70, infinite}, {80, -infinite}}, 3)) {
        EXPECT_GE(stroke.top, 0);
        EXPECT_LE(stroke.top + stroke.height, 140);
    }
    const strokes above = drawn({{50, -1e9}, {60, -1e9}});
    ASSERT_EQ(above.size(), 1U);
    EXPECT_LT(above[0].top + above[0].height, area.top);
}

TEST(CurveStrokes, OddAreasAndCornersAreAnswered) {
    EXPECT_EQ(drawn({{50, 60}}, 0), strokes{});
    EXPECT_EQ(drawn({{50, 60}}, 1, {40, 40, 0, 100}), strokes{});
    EXPECT_EQ(drawn({{50, 60}}, 1, {60, 40, 0, 100}), strokes{});
    EXPECT_EQ(drawn({{50, 60}}, 1, {0, 100, 50, 50}), strokes{});
    EXPECT_EQ(drawn({}), strokes{});
    drawn({{-infinite, 60}, {infinite, 70}, {-1e300, 1}, {1e300, 2}, {60, 3}, {50, 4}});
}

TEST(CurveStrokes, CoverWhatAFinePenCovers) {
    std::mt19937 chance(11);
    std::uniform_real_distribution<double> step(0, 4);
    std::uniform_real_distribution<double> height(0, 140);
    for (int round = 0; round < 200; ++round) {
        corners curve;
        const double longest = round % 2 == 0 ? 0.1 : 1;
        for (double x = 20; x < 160; x += step(chance) * longest)
            curve.push_back({x, chance() % 10 == 0 ? broken : height(chance)});
        std::vector<double> top(100, infinite);
        std::vector<double> bottom(100, -infinite);
        const auto touch = [&](double x, double y) {
            if (std::isnan(y) || x < area.left || x >= area.right) return;
            const auto column = static_cast<std::size_t>(x) - 40;
            top[column] = std::min(top[column], y);
            bottom[column] = std::max(bottom[column], y);
        };
        for (std::size_t corner = 0; corner < curve.size(); ++corner) {
            const curve_corner& from = curve[corner];
            const curve_corner& to = curve[std::min(corner + 1, curve.size() - 1)];
            touch(from.x, from.y); // a dot, if it stands alone
            for (int part = 0; part <= 500; ++part)
                touch(from.x + (to.x - from.x) * part / 500, from.y + (to.y - from.y) * part / 500);
        }
        std::vector<bool> covered(100, false);
        i32 last = 39;
        for (const curve_stroke& stroke : drawn(curve)) {
            EXPECT_GT(stroke.left, last);
            last = stroke.left + stroke.width - 1;
            for (i32 x = stroke.left; x <= last; ++x) {
                const auto column = static_cast<std::size_t>(x) - 40;
                ASSERT_LT(column, 100U);
                covered[column] = true;
                EXPECT_NEAR(stroke.top, std::clamp(top[column], 12.0, 128.0), 2.5) << round << ": " << x;
                EXPECT_NEAR(stroke.top + stroke.height - 1, std::clamp(bottom[column], 12.0, 128.0), 2.5)
                    << round << ": " << x;
            }
        }
        for (std::size_t column = 0; column < 100; ++column)
            EXPECT_EQ(covered[column], top[column] != infinite) << round << ": " << column;
    }
}

} // namespace
} // namespace tyxo
