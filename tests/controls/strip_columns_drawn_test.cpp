// The line of a strip chart column by column, as a picture that moves on asks for it.

#include "controls/strip_model.h"

#include "basics/failure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace tyxo {
namespace {

constexpr std::size_t other_curve = 1;

/// A row whose second curve has its own value.
strip_row row_of(std::int64_t time, float first, float second) {
    strip_row row = row_at(time, first);
    row.values[other_curve] = second;
    return row;
}

/// The points from a time on; those of a gap as text, since no value is no number.
std::vector<std::string> told(const line& points, double from, double to) {
    std::vector<std::string> texts;
    for (const strip_point& point : points) {
        const auto time = static_cast<double>(point.time);
        if (time < from || time >= to) continue;
        texts.push_back(std::to_string(point.time) + ' ' +
                        (is_gap(point) ? "gap" : std::to_string(point.value)));
    }
    return texts;
}

/// The same without the gaps, which draw nothing.
std::vector<std::string> drawn(const line& points, double from, double to) {
    std::vector<std::string> texts = told(points, from, to);
    std::erase_if(texts, [](const std::string& text) { return text.ends_with("gap"); });
    return texts;
}

line from_column(const strip_window& window, double column, std::int64_t first) {
    line points;
    window.points_from(0, column, first, points);
    return points;
}

constexpr double beyond = 1e15;

/// Rows at uneven times, with missing values and pauses, the same ones in every run.
class StripColumnsDrawn : public testing::Test {
  protected:
    void append() {
        time += random() % 20 == 0 ? 4000 : static_cast<std::int64_t>(random() % 700);
        const float value = random() % 9 == 0 ? no_value : static_cast<float>(random() % 150);
        const float second = random() % 3 == 0 ? no_value : 5.0F;
        window.append(row_of(time, value, second));
    }

    std::mt19937 random{7};
    std::int64_t time = 0;
    strip_window window{two_minutes};
    double column = static_cast<double>(two_minutes) / 600;
};

TEST_F(StripColumnsDrawn, ALineFromAColumnOnIsTheEndOfTheWholeLine) {
    for (int row = 0; row < 600; ++row) {
        append();
        if (row % 25 != 0) continue;
        const line whole = points_of(window, 600);
        const auto newest = static_cast<std::int64_t>(static_cast<double>(window.newest()) / column);
        for (const std::int64_t first : {newest, newest - 3, newest - 40, newest - 300}) {
            if (static_cast<double>(first) * column < static_cast<double>(window.newest() - two_minutes))
                continue;
            const double from = static_cast<double>(first) * column;
            EXPECT_EQ(told(from_column(window, column, first), from, beyond), told(whole, from, beyond))
                << row << ' ' << first;
        }
    }
}

TEST_F(StripColumnsDrawn, ALineThatComesInBeginsWithThePointBefore) {
    window.append(row_at(10'000, 1));
    window.append(row_at(12'900, 2)); // joined, though far in the columns behind
    const line points = from_column(window, column, static_cast<std::int64_t>(12'800 / column));
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[0], (strip_point{10'000, 1}));
    EXPECT_EQ(points[1], (strip_point{12'900, 2}));
}

TEST_F(StripColumnsDrawn, ALineBeginsNotMuchBeforeItsFirstColumn) {
    for (int row = 0; row < 1000; ++row)
        window.append(row_at(100 * row, static_cast<float>(row % 7)));
    const auto first = static_cast<std::int64_t>(90'000 / column);
    const line points = from_column(window, column, first);
    ASSERT_FALSE(points.empty());
    const double lead = static_cast<double>(longest_join) + 2 * static_cast<double>(window.bucket_length());
    EXPECT_GE(static_cast<double>(points.front().time), 90'000 - lead - 4 * column);
    EXPECT_LE(static_cast<double>(points.front().time), 90'000 - static_cast<double>(longest_join));
}

TEST_F(StripColumnsDrawn, WhatStandsBeforeTheFirstOpenColumnIsFinal) {
    for (int row = 0; row < 600; ++row) {
        append();
        const std::int64_t open = window.first_open_column(column);
        const double end = static_cast<double>(open) * column - static_cast<double>(window.bucket_length());
        const double begin = end - 5000;
        const auto before = drawn(points_of(window, 600), begin, end);
        strip_window later = window;
        later.append(row_of(time + 50, 3, 3));
        EXPECT_EQ(drawn(points_of(later, 600), begin, end), before) << row;
    }
}

TEST_F(StripColumnsDrawn, TheOpenColumnIsThatOfTheNewestValues) {
    EXPECT_EQ(window.first_open_column(100), 0);
    strip_row row;
    for (std::int64_t now = 0; now <= 50'000; now += 500) {
        row.time = now;
        row.values.fill(4);
        window.append(row);
    }
    const std::int64_t bucket = 50'000 / window.bucket_length() * window.bucket_length();
    EXPECT_EQ(window.first_open_column(100), bucket / 100);
    // A curve that has no value any more is open from its last value on, until that is too old to be joined.
    for (std::int64_t now = 50'500; now <= 52'500; now += 500) {
        row.time = now;
        row.values[other_curve] = no_value;
        window.append(row);
    }
    EXPECT_EQ(window.first_open_column(100), bucket / 100);
    for (std::int64_t now = 53'000; now <= 56'000; now += 500) {
        row.time = now;
        window.append(row);
    }
    EXPECT_EQ(window.first_open_column(100), 56'000 / window.bucket_length() * window.bucket_length() / 100);
}

TEST_F(StripColumnsDrawn, TheNewestValueIsThatOfTheLastRowThatHasOne) {
    EXPECT_TRUE(std::isnan(window.newest_value(0)));
    window.append(row_of(1000, 7, 9));
    window.append(row_of(1100, 8, no_value));
    window.append(row_of(5000, no_value, no_value));
    EXPECT_EQ(window.newest_value(0), 8);
    EXPECT_EQ(window.newest_value(other_curve), 9);
    EXPECT_TRUE(std::isnan(window.newest_value(2)));
    EXPECT_THROW((void)window.newest_value(strip_curves), failure);
    window.append(row_of(5001, 2, no_value));
    EXPECT_EQ(window.newest_value(0), 2);
}

TEST_F(StripColumnsDrawn, AValueThatHasLeftTheWindowIsNoneAnyMore) {
    window.append(row_of(0, 7, 9));
    window.append(row_of(two_minutes, no_value, no_value));
    EXPECT_EQ(window.newest_value(0), 7);
    window.append(row_of(two_minutes + window.bucket_length(), no_value, no_value));
    EXPECT_TRUE(std::isnan(window.newest_value(0)));
}

} // namespace
} // namespace tyxo
