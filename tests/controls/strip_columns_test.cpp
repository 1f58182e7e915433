// The line of a strip chart column by column, as a picture that moves by whole columns asks for it.

#include "controls/strip_model.h"

#include "basics/failure.h"

#include <gtest/gtest.h>

#include <random>

namespace tyxo {
namespace {

constexpr i32 columns = 600;
constexpr double column = static_cast<double>(two_minutes) / columns;

line points_from(const strip_window& window, std::int64_t first) {
    line points;
    window.points_from(0, column, first, points);
    return points;
}

/// The points from a column on. A gap in front of them all joins nothing and separates nothing.
line cut(const line& points, std::int64_t first) {
    line rest;
    for (const strip_point& point : points) {
        if (point.time < static_cast<double>(first) * column || (rest.empty() && is_gap(point))) continue;
        rest.push_back(point);
    }
    return rest;
}

/// The points before a column.
line before(const line& points, std::int64_t end) {
    line rest;
    for (const strip_point& point : points)
        if (point.time < static_cast<double>(end) * column) rest.push_back(point);
    return rest;
}

/// Gaps have no value to be compared by.
void expect_same(const line& one, const line& other, const std::string& what) {
    ASSERT_EQ(one.size(), other.size()) << what;
    for (std::size_t index = 0; index < one.size(); ++index) {
        EXPECT_EQ(one[index].time, other[index].time) << what;
        EXPECT_EQ(is_gap(one[index]), is_gap(other[index])) << what;
        if (is_gap(one[index])) continue;
        EXPECT_EQ(one[index].value, other[index].value) << what;
    }
}

/// Rows with pauses and without values here and there.
class StripColumns : public testing::Test {
  protected:
    void append() {
        time_ += random_() % 50 == 0 ? static_cast<std::int64_t>(random_() % 8000)
                                     : static_cast<std::int64_t>(random_() % 300);
        window_.append(row_at(time_, random_() % 20 == 0 ? no_value : static_cast<float>(random_() % 100)));
    }
    void append(int rows) {
        for (int row = 0; row < rows; ++row)
            append();
    }

    std::mt19937 random_{7}; // NOLINT: the same rows in each run
    std::int64_t time_ = 5000;
    strip_window window_{two_minutes};
};

TEST_F(StripColumns, OfAnEmptyWindowAreNone) {
    EXPECT_TRUE(points_from(window_, 0).empty());
    EXPECT_EQ(window_.first_open_column(column), 0);
    EXPECT_EQ(window_.begun(), 0);
}

TEST_F(StripColumns, FromOneOnAreAsInTheWholeLine) {
    for (int round = 0; round < 200; ++round) {
        append(10);
        const auto newest = static_cast<std::int64_t>(static_cast<double>(window_.newest()) / column);
        const std::int64_t first = newest - static_cast<std::int64_t>(random_() % columns);
        const line part = points_from(window_, first);
        const std::string what = std::to_string(round);
        expect_same(cut(part, first), cut(points_of(window_, columns), first), what);
        EXPECT_LE(part.size(), points_of(window_, columns).size() + 4) << what;
    }
}

TEST_F(StripColumns, ALineComesInFromTheRowBefore) {
    window_.append(row_at(10'000, 1));
    window_.append(row_at(10'000 + longest_join, 2));
    const auto first = static_cast<std::int64_t>((10'000 + longest_join) / column);
    const line part = points_from(window_, first);
    ASSERT_EQ(part.size(), 2U);
    EXPECT_EQ(part[0], (strip_point{10'000, 1}));
}

TEST_F(StripColumns, BeforeTheFirstOpenOneAreFinal) {
    for (int round = 0; round < 2000; ++round) {
        append();
        const std::int64_t open = window_.first_open_column(column);
        const line earlier = points_of(window_, columns);
        append();
        const line later = points_of(window_, columns);
        if (later.empty() || earlier.empty()) continue;
        const auto oldest = static_cast<std::int64_t>(later.front().time / column) + 2;
        expect_same(cut(before(earlier, open), oldest), cut(before(later, open), oldest),
                    std::to_string(round));
    }
}

TEST_F(StripColumns, TheNewestRowsOwnIsOpen) {
    for (int round = 0; round < 500; ++round) {
        append();
        EXPECT_LE(static_cast<double>(window_.first_open_column(column)) * column,
                  static_cast<double>(window_.newest()));
    }
}

TEST_F(StripColumns, OfACurveThatIsUnknownFail) {
    line points;
    EXPECT_THROW(window_.points_from(strip_curves, column, 0, points), failure);
    EXPECT_THROW((void)window_.newest_value(strip_curves), failure);
}

TEST_F(StripColumns, TheNewestValueIsTheLastOneInTheWindow) {
    EXPECT_TRUE(std::isnan(window_.newest_value(0)));
    window_.append(row_at(1000, 5));
    window_.append(row_at(1001, 4));
    window_.append(row_at(2000, no_value));
    EXPECT_EQ(window_.newest_value(0), 4);
    EXPECT_TRUE(std::isnan(window_.newest_value(1)));
    window_.append(row_at(1000 + two_minutes, no_value));
    EXPECT_EQ(window_.newest_value(0), 4);
    window_.append(row_at(2000 + two_minutes, no_value));
    EXPECT_TRUE(std::isnan(window_.newest_value(0)));
}

TEST_F(StripColumns, TheFirstRowsTimeStays) {
    append(100);
    const std::int64_t begun = window_.begun();
    EXPECT_GT(begun, 0);
    append(2000);
    EXPECT_EQ(window_.begun(), begun);
}

} // namespace
} // namespace tyxo
