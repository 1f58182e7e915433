// Where the curve of a strip chart is broken, and where not.

#include "controls/strip_model.h"

#include "basics/failure.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

TEST(StripGaps, RowsWithoutAValueBreakTheLine) {
    strip_window window(two_minutes);
    for (int row = 0; row < 30; ++row)
        window.append(row_at(1000 * row, row >= 10 && row < 20 ? no_value : 4.0F));
    const line points = points_of(window);
    ASSERT_EQ(points.size(), 5U);
    EXPECT_EQ(points[0], (strip_point{0, 4}));
    EXPECT_EQ(points[1], (strip_point{9000, 4}));
    EXPECT_TRUE(is_gap(points[2]));
    EXPECT_GT(points[2].time, 9000);
    EXPECT_LT(points[2].time, 20000);
    EXPECT_EQ(points[3], (strip_point{20000, 4}));
    EXPECT_EQ(points[4], (strip_point{29000, 4}));
}

TEST(StripGaps, ASingleRowWithoutAValueBreaksTheLine) {
    strip_window window(two_minutes);
    for (int row = 0; row < 30; ++row)
        window.append(row_at(1000 * row, row == 15 ? no_value : static_cast<float>(row)));
    EXPECT_EQ(gaps(points_of(window)), 1);
}

TEST(StripGaps, CurvesHaveTheirOwnValuesAndGaps) {
    strip_window window(two_minutes);
    for (int row = 0; row < 10; ++row) {
        strip_row values;
        values.time = 1000 * row;
        for (std::size_t curve = 0; curve < strip_curves; ++curve)
            if (curve != 1) values.values[curve] = static_cast<float>(curve);
        window.append(values);
    }
    for (std::size_t curve = 0; curve < strip_curves; ++curve) {
        const auto height = static_cast<float>(curve);
        EXPECT_EQ(points_of(window, 600, curve), curve == 1 ? line{} : (line{{0, height}, {9000, height}}));
    }
    line points;
    EXPECT_THROW(window.points(strip_curves, 600, points), failure);
}

TEST(StripGaps, AStoppedChannelLeavesAGap) {
    for (const std::int64_t pause : {longest_join, longest_join + 1, std::int64_t{30'000}}) {
        strip_window window(two_minutes);
        window.append(row_at(1000, 1));
        window.append(row_at(2000, 1));
        window.append(row_at(2000 + pause, 1));
        window.append(row_at(3000 + pause, 1));
        EXPECT_EQ(gaps(points_of(window)), pause > longest_join ? 1 : 0) << pause;
    }
}

TEST(StripGaps, AChannelThatMeasuresHasNoGapInAnyWindow) {
    strip_history history;
    for (int row = 0; row <= 90'000; ++row)
        history.append(row_at(1000 * row, static_cast<float>(row % 100)));
    for (const std::int64_t span : strip_spans)
        for (const i32 columns : {1, 7, 575, 1920, 3840})
            EXPECT_EQ(gaps(points_of(history.window(span), columns)), 0) << span << " in " << columns;
}

} // namespace
} // namespace tyxo
