#pragma once
// A Detailed Display of 280 x 190 units, and what was drawn on it.

#include "displays/engines.h"
#include "displays/frmdetailedpic.h"
#include "platform/simulation.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace tyxo {

inline constexpr colour black = rgb(0, 0, 0);
inline constexpr colour white = rgb(255, 255, 255);
inline constexpr colour orange = rgb(255, 128, 0);
inline constexpr colour red = rgb(255, 0, 0);
inline constexpr colour yellow = rgb(255, 255, 0);
inline constexpr colour blue = rgb(0, 0, 255);

inline constexpr double near_enough = 1e-9;

/// C, L and S of the surface.
inline constexpr double centre_x = 61;
inline constexpr double centre_y = 95;
inline constexpr double left_end = 130;
inline constexpr double base = 175;

class PolarSurface : public testing::Test {
  protected:
    void SetUp() override {
        simulation::fresh_world();
        frmdetailedpic::state.surface.ScaleWidth = 280;
        frmdetailedpic::state.surface.ScaleHeight = 190;
    }

    static const std::vector<stroke>& strokes() { return frmdetailedpic::state.surface.strokes; }
    static const std::vector<canvas_text>& texts() { return frmdetailedpic::state.surface.texts; }
    static void clear() { frmdetailedpic::state.surface.clear(); }

    /// Strokes and texts of a single element.
    static void only(const std::function<void()>& draw) {
        clear();
        draw();
    }

    /// The description of the failure, or nothing.
    static std::string failure_of(const std::function<void()>& draw) {
        return attempt(draw).value_or(std::string());
    }
};

inline constexpr std::size_t circle_strokes = 256;
inline constexpr std::size_t diagram_strokes = 512; ///< 256 and the legend's, then 255

class PolarCurves : public PolarSurface {
  protected:
    void SetUp() override {
        PolarSurface::SetUp();
        sensor::state.max_sensors = sensor::state.polar_channel = 1;
        sensor::state.adc_offset = 479;
        sensor::state.scale_polar_t = sensor::state.scale_polar_a = 1;
        sensor::state.channels[0] = engine(4, 6, in_line);
        frmdetailedpic::state.Chck_tsrel = frmdetailedpic::state.Chck_tsabs = frmdetailedpic::state.Chck_aa =
            1;
    }
    static void samples(sensor::curve& curve, const std::function<i32(i32 k)>& value) {
        for (i32 k = 0; k < 256; ++k)
            at(curve, k) = value(k);
    }
    /// All samples the zero point, but for the first.
    static void first_deviates(i32 by) {
        sensor::state.detail_thermo.fill(sensor::state.adc_offset);
        sensor::state.detail_thermo[0] += by;
    }
    static const stroke& round_part(std::size_t k) { return strokes().at(k); }
    static const stroke& straight_part(std::size_t k) { return strokes().at(circle_strokes + 1 + k); }
    /// Radius of the first point, which lies straight above the centre.
    static double first_radius() { return centre_y - round_part(0).y1; }
    static double first_height() { return base - straight_part(0).y1; }
};

inline void expect_stroke(const stroke& one, const stroke& expected, const std::string& what = {}) {
    EXPECT_NEAR(one.x1, expected.x1, near_enough) << what;
    EXPECT_NEAR(one.y1, expected.y1, near_enough) << what;
    EXPECT_NEAR(one.x2, expected.x2, near_enough) << what;
    EXPECT_NEAR(one.y2, expected.y2, near_enough) << what;
    EXPECT_EQ(one.ForeColor, expected.ForeColor) << what;
}

/// The strokes from `first` on join `count` points in their order.
inline void expect_joined(const std::vector<stroke>& strokes, std::size_t first, std::size_t count) {
    ASSERT_GE(strokes.size(), first + count);
    for (std::size_t k = first + 1; k < first + count; ++k) {
        EXPECT_EQ(strokes[k].x1, strokes[k - 1].x2) << k;
        EXPECT_EQ(strokes[k].y1, strokes[k - 1].y2) << k;
    }
}

inline void expect_text(const canvas_text& one, double x, double y, std::string_view text) {
    EXPECT_EQ(one.x, x) << text;
    EXPECT_EQ(one.y, y) << text;
    EXPECT_EQ(one.text, text);
    EXPECT_EQ(one.ForeColor, black) << text;
}

} // namespace tyxo
