// The rows that a strip chart remembers, and the points that it draws of them.

#include "controls/strip_model.h"

#include "basics/failure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace tyxo {
namespace {

constexpr std::int64_t a_day = strip_spans[3];

TEST(StripHistory, IsEmptyAtFirst) {
    const strip_window window;
    EXPECT_EQ(window.rows(), 0);
    EXPECT_EQ(window.newest(), 0);
    line points{{1, 2}};
    window.points(0, 600, points);
    EXPECT_TRUE(points.empty());
}

TEST(StripHistory, RowsAreNumberedFrom0) {
    strip_history history;
    for (i32 row = 0; row < 5; ++row)
        EXPECT_EQ(history.append(row_at(row * 100, 1)), row);
    for (const std::int64_t span : strip_spans)
        EXPECT_EQ(history.window(span).rows(), 5);
    history.clear();
    EXPECT_EQ(history.window(0).rows(), 0);
    EXPECT_TRUE(points_of(history.window(0)).empty());
    EXPECT_EQ(history.append(row_at(0, 1)), 0);
}

TEST(StripHistory, TheNumberOfRowsNeverOverflows) {
    EXPECT_EQ(one_more_row(0), 1);
    EXPECT_EQ(one_more_row(std::numeric_limits<i32>::max() - 1), std::numeric_limits<i32>::max());
    EXPECT_EQ(one_more_row(std::numeric_limits<i32>::max()), 1);
}

TEST(StripHistory, AWindowIsTheShortestThatHoldsTheSpan) {
    const strip_history history;
    EXPECT_EQ(history.window(0).span(), 120'000);
    EXPECT_EQ(history.window(120'000).span(), 120'000);
    EXPECT_EQ(history.window(120'001).span(), 900'000);
    EXPECT_EQ(history.window(900'000).span(), 900'000);
    EXPECT_EQ(history.window(3'600'000).span(), 3'600'000);
    EXPECT_EQ(history.window(86'400'000).span(), 86'400'000);
    EXPECT_EQ(history.window(std::numeric_limits<std::int64_t>::max()).span(), 86'400'000);
}

TEST(StripHistory, TheRingHoldsTheWindowAndTheRowBeforeIt) {
    for (const std::int64_t span : strip_spans) {
        const std::int64_t held =
            strip_window(span).bucket_length() * static_cast<std::int64_t>(strip_buckets - 1);
        EXPECT_GE(held, span + longest_join) << span;
        EXPECT_LE(held, span * 103 / 100 + longest_join) << span;
    }
}

TEST(StripHistory, EachRowIsAPointWhileAColumnHasRoom) {
    strip_window window(two_minutes);
    line expected;
    for (int row = 0; row < 50; ++row) {
        const auto value = static_cast<float>(row % 7);
        window.append(row_at(1'000'000 + 500 * row, value));
        expected.push_back({1e6 + 500.0 * row, value});
    }
    EXPECT_EQ(points_of(window), expected);
}

TEST(StripHistory, ACurveOfOneValueIsALineOfTwoPoints) {
    for (const float value : {0.0F, 100.0F, -5.0F, 65535.0F}) {
        strip_window window(two_minutes);
        for (int row = 0; row <= 1200; ++row)
            window.append(row_at(100 * row, value));
        EXPECT_EQ(points_of(window), (line{{0, value}, {120'000, value}}));
    }
}

TEST(StripHistory, ASingleRowIsASinglePoint) {
    strip_window window(a_day);
    window.append(row_at(77, 3));
    EXPECT_EQ(points_of(window), (line{{77, 3}}));
}

TEST(StripHistory, RowsOfTheSameMomentAllCount) {
    strip_window window(two_minutes);
    for (const float value : {5.0F, 9.0F, 1.0F, 6.0F})
        window.append(row_at(1000, value));
    EXPECT_EQ(window.rows(), 4);
    EXPECT_EQ(points_of(window), (line{{1000, 5}, {1000, 9}, {1000, 1}, {1000, 6}}));
}

TEST(StripHistory, TheExtremesOfABucketStandInTheOrderOfTheShorterWay) {
    const auto bucket = [](std::initializer_list<float> values) {
        strip_window window(two_minutes);
        for (const float value : values)
            window.append(row_at(1000, value));
        line points = points_of(window);
        std::vector<float> heights;
        for (const strip_point& point : points)
            heights.push_back(point.value);
        return heights;
    };
    EXPECT_EQ(bucket({5, 1, 9, 6}), (std::vector<float>{5, 9, 1, 6}));
    EXPECT_EQ(bucket({5, 1, 12, 6}), (std::vector<float>{5, 1, 12, 6}));
    EXPECT_EQ(bucket({5, 9, 6}), (std::vector<float>{5, 9, 6}));
    EXPECT_EQ(bucket({5, 2, 4}), (std::vector<float>{5, 2, 4}));
    EXPECT_EQ(bucket({5, 6, 7, 8}), (std::vector<float>{5, 8}));
}

TEST(StripHistory, ARowThatIsOlderThanTheLastCountsAsOfItsTime) {
    strip_window window(two_minutes);
    window.append(row_at(5000, 1));
    window.append(row_at(4000, 2));
    EXPECT_EQ(window.newest(), 5000);
    EXPECT_EQ(points_of(window), (line{{5000, 1}, {5000, 2}}));
}

TEST(StripHistory, ASpikeIsSeenInEveryWindow) {
    strip_history history;
    for (int row = 0; row <= 36'000; ++row)
        history.append(row_at(100 * row, row == 35'500 ? 140.0F : 20.0F));
    for (const std::int64_t span : strip_spans) {
        for (const i32 columns : {1, 3, 300, 3840}) {
            const line points = points_of(history.window(span), columns);
            EXPECT_TRUE(
                std::any_of(points.begin(), points.end(), [](auto& point) { return point.value == 140; }))
                << span << " in " << columns;
        }
    }
}

TEST(StripHistory, ForgottenRowsNeverComeBack) {
    for (const std::int64_t span : strip_spans) {
        for (const std::int64_t pause :
             {span + span / 10, 2 * span, strip_window(span).bucket_length() * 2000,
              strip_window(span).bucket_length() * 2'000'000}) {
            strip_window window(span);
            for (int row = 0; row <= 4000; ++row)
                window.append(row_at(row * (span / 2000), 9));
            const std::int64_t again = window.newest() + pause;
            window.append(row_at(again, 1));
            EXPECT_EQ(points_of(window), (line{{static_cast<double>(again), 1}})) << span << ", " << pause;
        }
    }
}

TEST(StripHistory, TheLineComesInFromTheLeftEdge) {
    for (const std::int64_t span : strip_spans) {
        for (const std::int64_t step : {std::int64_t{100}, std::int64_t{1000}, longest_join - 1}) {
            strip_window window(span);
            std::int64_t time = 0;
            for (; time <= span + span / 10; time += step)
                window.append(row_at(time, static_cast<float>(time / step % 3)));
            for (int later = 0; later < 100; ++later, time += step) {
                window.append(row_at(time, static_cast<float>(time / step % 3)));
                const auto left = static_cast<double>(window.newest() - span);
                const double first = points_of(window, 3840).front().time;
                ASSERT_LE(first, left) << span << ", " << step;
                ASSERT_GE(first, left - static_cast<double>(longest_join + window.bucket_length()));
            }
        }
    }
}

TEST(StripHistory, Time0PartsBucketsLikeAnyOtherTime) {
    strip_window window(two_minutes);
    for (const auto& [time, value] : {std::pair{-40, 1.0F}, std::pair{10, 3.0F}, std::pair{40, 2.0F}})
        window.append(row_at(time, value));
    EXPECT_EQ(points_of(window, 3840), (line{{-40, 1}, {10, 3}, {40, 2}}));
}

TEST(StripHistory, ACopyKeepsWhatItHad) {
    strip_window window(two_minutes);
    for (int row = 0; row < 100; ++row)
        window.append(row_at(100 * row, static_cast<float>(row)));
    const strip_window frozen = window;
    const line before = points_of(window);
    for (int row = 100; row < 5000; ++row)
        window.append(row_at(100 * row, 7));
    EXPECT_EQ(points_of(frozen), before);
    EXPECT_EQ(frozen.rows(), 100);
    EXPECT_EQ(frozen.newest(), 9900);
    EXPECT_NE(points_of(window), before);
}

TEST(StripHistory, APictureThatMovesOnKeepsItsPoints) {
    strip_window window(two_minutes);
    std::mt19937 chance(3);
    line before;
    for (int row = 0; row < 3000; ++row) {
        window.append(row_at(100 * row, static_cast<float>(chance() % 150)));
        line now = points_of(window, 211);
        if (row > 2000 && row % 10 != 0) {
            // All but the ends, which change.
            const auto from = std::find(before.begin(), before.end(), now[5]);
            ASSERT_NE(from, before.end()) << row;
            ASSERT_TRUE(std::equal(from, before.end() - 5, now.begin() + 5)) << row;
        }
        before = now;
    }
}

TEST(StripHistory, ValuesWithoutBoundsAreKept) {
    strip_window window(two_minutes);
    constexpr float infinite = std::numeric_limits<float>::infinity();
    window.append(row_at(0, infinite));
    window.append(row_at(1000, -infinite));
    window.append(row_at(2000, 3.4e38F));
    EXPECT_EQ(points_of(window), (line{{0, infinite}, {1000, -infinite}, {2000, 3.4e38F}}));
}

TEST(StripHistory, OddWidthsAreAnswered) {
    both model(two_minutes);
    for (int row = 0; row < 3000; ++row)
        model.append(100 * row, static_cast<float>(row % 150));
    for (const i32 columns : {0, -1, std::numeric_limits<i32>::min()})
        EXPECT_LE(points_of(model.window, columns).size(), 12U);
    EXPECT_LE(points_of(model.window, std::numeric_limits<i32>::max()).size(), strip_buckets * 5);
    for (i32 columns = 1; columns <= 3840; columns += 1 + columns / 5)
        model.check(columns);
}

TEST(StripHistory, NegativeTimesAreTimes) {
    both model(two_minutes);
    for (int row = -2000; row < 500; ++row)
        model.append(100 * row, static_cast<float>(row % 37));
    model.check(575);
    model.check(1);
}

TEST(StripHistory, ZerosAndFullScaleInTurnKeepBoth) {
    for (const std::int64_t span : strip_spans) {
        both model(span);
        for (int row = 0; row < 20'000; ++row)
            model.append(row * (span / 10'000), row % 2 == 0 ? 0.0F : 65535.0F);
        for (const i32 columns : {1, 2, 575, 1000, 3840})
            model.check(columns);
    }
}

TEST(StripHistory, TellsWhatAllRowsWouldTell) {
    for (unsigned seed = 1; seed <= 120; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 chance(seed);
        const auto below = [&chance](std::uint32_t end) { return chance() % end; };
        const std::int64_t span = strip_spans[below(4)];
        both model(span);
        std::int64_t time = below(100'000'000);
        float value = 0;
        bool measured = true;
        const std::uint32_t longest_step = below(2) == 0 ? 110 : static_cast<std::uint32_t>(span / 500);
        for (int row = 0; row < 4000; ++row) {
            time += below(longest_step);
            if (below(500) == 0) time += below(static_cast<std::uint32_t>(span / 10));
            if (below(200) == 0) measured = !measured;
            if (below(3) == 0) value = static_cast<float>(below(200));
            model.append(time, measured ? value : no_value);
            if (row % 1000 == 999) model.check(static_cast<i32>(1 + below(below(2) == 0 ? 100 : 3840)));
            if (testing::Test::HasFailure()) return;
        }
    }
}

TEST(StripHistory, ThirtyDaysOfRowsCostNoMoreMemoryAndShowTheSame) {
    strip_history history;
    constexpr int month = 30 * 24 * 36'000;
    constexpr std::int64_t last = 100LL * (month - 1);
    const auto value = [](std::int64_t row) { return static_cast<float>(row % 1000) / 10; };
    for (std::int64_t row = 0; row < month; ++row)
        history.append(row_at(100 * row, value(row)));
    EXPECT_EQ(history.window(0).rows(), month);

    // A chart that knows only the last day shows the same.
    strip_history young;
    for (std::int64_t row = month - 900'000; row < month; ++row)
        young.append(row_at(100 * row, value(row)));
    for (const std::int64_t span : strip_spans) {
        const line points = points_of(history.window(span));
        EXPECT_EQ(points, points_of(young.window(span))) << span;
        EXPECT_EQ(points.back().time, static_cast<double>(last));
        EXPECT_GT(points.size(), 500U);
    }
}

} // namespace
} // namespace tyxo
