// The line of a strip chart column by column, as a picture that moves by whole columns asks for it.

#include "controls/strip_model.h"

#include "basics/failure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace tyxo {
namespace {

constexpr i32 columns = 600;
constexpr double column = static_cast<double>(two_minutes) / columns;
constexpr std::size_t other_curve = 1;

double begin_of(std::int64_t number) {
    return static_cast<double>(number) * column;
}

std::int64_t column_of(double time) {
    return static_cast<std::int64_t>(time / column);
}

/// A row whose second curve has its own value.
strip_row row_of(std::int64_t time, float first, float second) {
    strip_row row = row_at(time, first);
    row.values[other_curve] = second;
    return row;
}

line points_from(const strip_window& window, std::int64_t first) {
    line points;
    window.points_from(0, column, first, points);
    return points;
}

/// The points between two times. A gap, which has no value to be compared by, has one that no row has.
line told(const line& points, double from, double to) {
    line part;
    for (const strip_point& point : points)
        if (point.time >= from && point.time < to)
            part.push_back({point.time, is_gap(point) ? -1 : point.value});
    return part;
}

/// The same without gaps at its ends, which join nothing and separate nothing.
line drawn(const line& points, double from, double to) {
    line part = told(points, from, to);
    const auto no_gap = [](const strip_point& point) { return point.value >= 0; };
    part.erase(part.begin(), std::find_if(part.begin(), part.end(), no_gap));
    part.erase(std::find_if(part.rbegin(), part.rend(), no_gap).base(), part.end());
    return part;
}

/// How soon rows come and how long they pause, in ms, and how seldom they pause and have no value.
struct row_kind {
    unsigned step, least_pause, longest_pause, pauses, no_values;
};
constexpr row_kind dense{.step = 300, .least_pause = 0, .longest_pause = 8000, .pauses = 50, .no_values = 20};
constexpr row_kind sparse{
    .step = 700, .least_pause = 4000, .longest_pause = 4000, .pauses = 20, .no_values = 9};

/// Rows at uneven times, with pauses and without values here and there.
class StripColumns : public testing::Test {
  protected:
    bool one_in(unsigned number) { return random() % number == 0; }
    void append(const row_kind& kind) {
        const auto pause = kind.least_pause + random() % (kind.longest_pause - kind.least_pause + 1);
        time += one_in(kind.pauses) ? pause : random() % kind.step;
        const float value = one_in(kind.no_values) ? no_value : static_cast<float>(random() % 150);
        window.append(row_of(time, value, one_in(3) ? no_value : 5.0F));
    }
    void append(const row_kind& kind, int rows) {
        for (int row = 0; row < rows; ++row)
            append(kind);
    }

    std::mt19937 random{7}; // NOLINT: the same rows in each run
    std::int64_t time = 5000;
    strip_window window{two_minutes};
};

TEST_F(StripColumns, OfAnEmptyWindowAreNone) {
    EXPECT_TRUE(points_from(window, 0).empty());
    EXPECT_EQ(window.first_open_column(column), 0);
    EXPECT_EQ(window.first_open_column(100), 0);
    EXPECT_EQ(window.begun(), 0);
}

TEST_F(StripColumns, FromOneOnAreAsInTheWholeLine) {
    for (int round = 0; round < 260; ++round) {
        const bool long_pauses = round < 200; // a gap in front of all may begin too early to be seen
        append(long_pauses ? dense : sparse, 10);
        const auto& seen = long_pauses ? drawn : told;
        const line whole = points_of(window, columns);
        const std::int64_t newest = column_of(static_cast<double>(window.newest()));
        for (const std::int64_t back : {0, 3, 40, 300, columns - 1, static_cast<i32>(random() % columns)}) {
            const std::int64_t first = newest - back;
            const double from = begin_of(first);
            const line part = points_from(window, first);
            EXPECT_EQ(seen(part, from, HUGE_VAL), seen(whole, from, HUGE_VAL)) << round << ' ' << first;
            EXPECT_LE(part.size(), whole.size() + 4) << round << ' ' << first;
        }
    }
}

TEST_F(StripColumns, ALineComesInFromTheRowBefore) {
    for (const std::int64_t joined : {std::int64_t{12'900}, 10'000 + longest_join}) {
        window = strip_window(two_minutes);
        window.append(row_at(10'000, 1));
        window.append(row_at(joined, 2)); // though far in the columns behind
        const line part = points_from(window, column_of(static_cast<double>(joined)));
        ASSERT_EQ(part.size(), 2U);
        EXPECT_EQ(part[0], (strip_point{10'000, 1}));
        EXPECT_EQ(part[1], (strip_point{static_cast<double>(joined), 2}));
    }
}

TEST_F(StripColumns, ALineBeginsNotMuchBeforeItsFirstOne) {
    for (int row = 0; row < 1000; ++row)
        window.append(row_at(100 * row, static_cast<float>(row % 7)));
    const line points = points_from(window, column_of(90'000));
    ASSERT_FALSE(points.empty());
    const double lead = static_cast<double>(longest_join) + 2 * static_cast<double>(window.bucket_length());
    EXPECT_GE(points.front().time, 90'000 - lead - 4 * column);
    EXPECT_LE(points.front().time, 90'000 - static_cast<double>(longest_join));
}

TEST_F(StripColumns, BeforeTheFirstOpenOneAreFinal) {
    for (int round = 0; round < 2600; ++round) {
        const row_kind& kind = round < 2000 ? dense : sparse;
        append(kind);
        const double open = begin_of(window.first_open_column(column));
        const line earlier = points_of(window, columns);
        const auto newest = static_cast<double>(window.newest());
        strip_window soon = window;
        soon.append(row_of(time + 50, 3, 3));
        append(kind);
        for (const line& later : {points_of(soon, columns), points_of(window, columns)}) {
            if (later.empty() || earlier.empty()) continue;
            // A gap behind a value that is too old to be joined comes with the next value.
            const bool joined = newest - earlier.back().time <= longest_join;
            const auto& seen = joined ? told : drawn;
            const double oldest = begin_of(column_of(later.front().time) + 2);
            EXPECT_EQ(seen(earlier, oldest, open), seen(later, oldest, open)) << round;
        }
    }
}

TEST_F(StripColumns, TheNewestRowsOwnIsOpen) {
    for (int row = 0; row < 500; ++row) {
        append(dense);
        EXPECT_LE(begin_of(window.first_open_column(column)), static_cast<double>(window.newest()));
    }
}

TEST_F(StripColumns, TheFirstOpenOneIsThatOfTheNewestValues) {
    const auto append_until = [this](std::int64_t end, float second) {
        for (; time <= end; time += 500) {
            strip_row row;
            row.time = time;
            row.values.fill(4);
            row.values[other_curve] = second;
            window.append(row);
        }
    };
    const auto bucket_before = [this](std::int64_t end) {
        return end / window.bucket_length() * window.bucket_length();
    };
    time = 0;
    append_until(50'000, 4);
    EXPECT_EQ(window.first_open_column(100), bucket_before(50'000) / 100);
    // A curve that has no value any more is open from its last value on, until that is too old to be joined.
    append_until(52'500, no_value);
    EXPECT_EQ(window.first_open_column(100), bucket_before(50'000) / 100);
    append_until(56'000, no_value);
    EXPECT_EQ(window.first_open_column(100), bucket_before(56'000) / 100);
}

TEST_F(StripColumns, OfACurveThatIsUnknownFail) {
    line points;
    EXPECT_THROW(window.points_from(strip_curves, column, 0, points), failure);
    EXPECT_THROW((void)window.newest_value(strip_curves), failure);
    append(dense);
    EXPECT_THROW((void)window.newest_value(strip_curves), failure);
}

TEST_F(StripColumns, TheNewestValueIsThatOfTheLastRowThatHasOne) {
    EXPECT_TRUE(std::isnan(window.newest_value(0)));
    window.append(row_of(1000, 5, 9));
    window.append(row_of(1001, 4, no_value)); // in the same bucket
    window.append(row_of(2000, no_value, no_value));
    EXPECT_EQ(window.newest_value(0), 4);
    EXPECT_EQ(window.newest_value(other_curve), 9);
    EXPECT_TRUE(std::isnan(window.newest_value(2)));
    window.append(row_of(2100, 8, no_value));
    window.append(row_of(5000, no_value, no_value));
    EXPECT_EQ(window.newest_value(0), 8);
    window.append(row_of(5001, 2, no_value));
    EXPECT_EQ(window.newest_value(0), 2);
}

TEST_F(StripColumns, AValueThatHasLeftTheWindowIsNoneAnyMore) {
    for (const std::int64_t begin : {0, 1001}) {
        window = strip_window(two_minutes);
        window.append(row_of(begin, 7, 9));
        window.append(row_of(begin + two_minutes, no_value, no_value));
        EXPECT_EQ(window.newest_value(0), 7);
        window.append(row_of(begin + two_minutes + window.bucket_length(), no_value, no_value));
        EXPECT_TRUE(std::isnan(window.newest_value(0)));
    }
}

TEST_F(StripColumns, TheFirstRowsTimeStays) {
    append(dense, 100);
    const std::int64_t begun = window.begun();
    EXPECT_GT(begun, 0);
    append(dense, 2000);
    EXPECT_EQ(window.begun(), begun);
}

} // namespace
} // namespace tyxo
