#pragma once
// A strip chart that keeps all its rows, to compare with.

#include "controls/strip_history.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

namespace tyxo {

using line = std::vector<strip_point>;

inline constexpr std::int64_t two_minutes = strip_spans[0];

inline strip_row row_at(std::int64_t time, float value, std::size_t curve = 0) {
    strip_row row;
    row.time = time;
    row.values[curve] = value;
    return row;
}

inline line points_of(const strip_window& window, i32 columns = 600, std::size_t curve = 0) {
    line points;
    window.points(curve, columns, points);
    return points;
}

inline bool is_gap(const strip_point& point) {
    return std::isnan(point.value);
}

inline std::ptrdiff_t gaps(const line& points) {
    return std::count_if(points.begin(), points.end(), is_gap);
}

/// A window and, beside it, all of its rows.
class both {
  public:
    explicit both(std::int64_t span) : window(span) {}

    void append(std::int64_t time, float value) {
        window.append(row_at(time, value));
        rows.push_back(row_at(time, value));
    }

    /// That the line of the window tells what the rows tell, to a column.
    void check(i32 columns) const {
        points_ = points_of(window, columns);
        blur_ = window.bucket_length() + window.span() / columns + 1;
        check_order_and_count(columns);
        check_points_are_rows();
        check_rows_are_on_the_line();
        check_gaps();
    }

    strip_window window;
    std::vector<strip_row> rows;

  private:
    [[nodiscard]] std::int64_t left() const { return window.newest() - window.span(); }

    void check_order_and_count(i32 columns) const {
        std::map<std::int64_t, int> in_column;
        const auto length = static_cast<double>(window.span()) / columns;
        for (std::size_t point = 0; point < points_.size(); ++point) {
            const double before = points_[point > 0 ? point - 1 : 0].time;
            EXPECT_LE(before, points_[point].time);
            EXPECT_LE(points_[point].time, static_cast<double>(window.newest()));
            if (!is_gap(points_[point])) ++in_column[std::llround(points_[point].time / length)];
        }
        for (const auto& [column, count] : in_column)
            EXPECT_LE(count, 8) << column; // a column of its own count touches two of the picture's
        EXPECT_LE(points_.size(), (static_cast<std::size_t>(columns) + 3) * 5);
        EXPECT_LE(points_.size(), strip_buckets * 5);
        if (!points_.empty()) {
            EXPECT_FALSE(is_gap(points_.front()));
            EXPECT_FALSE(is_gap(points_.back()));
        }
    }

    void check_points_are_rows() const {
        const std::int64_t bucket = window.bucket_length();
        for (const strip_point& point : points_) {
            EXPECT_GE(point.time, static_cast<double>(left() - longest_join - bucket));
            if (is_gap(point)) continue;
            const auto near = std::lower_bound(
                rows.begin(), rows.end(), point.time - static_cast<double>(bucket),
                [](const strip_row& row, double time) { return static_cast<double>(row.time) < time; });
            const bool found = std::any_of(near, rows.end(), [&](const strip_row& row) {
                return row.values[0] == point.value &&
                       std::abs(static_cast<double>(row.time) - point.time) <= static_cast<double>(bucket);
            });
            EXPECT_TRUE(found) << point.time << " has no row of " << point.value;
        }
    }

    /// The line comes as high and as low as each row, within the blur.
    void check_rows_are_on_the_line() const {
        std::size_t begin = 0;
        for (const strip_row& row : rows) {
            if (row.time < left() || std::isnan(row.values[0])) continue;
            const auto from = static_cast<double>(row.time - blur_);
            const auto to = static_cast<double>(row.time + blur_);
            while (begin + 1 < points_.size() && points_[begin + 1].time < from)
                ++begin;
            bool above = false;
            bool below = false;
            for (std::size_t point = begin; point < points_.size() && !(above && below); ++point) {
                if (points_[point].time > to && point > begin + 1 && points_[point - 1].time > to) break;
                above = above || points_[point].value >= row.values[0];
                below = below || points_[point].value <= row.values[0];
            }
            ASSERT_TRUE(above && below) << row.time << " of " << row.values[0] << " is not on the line";
        }
    }

    /// A break wherever the rows have one that is longer than the blur, and none elsewhere.
    void check_gaps() const {
        const strip_row* before = nullptr;
        bool missing = false;
        std::vector<std::pair<std::int64_t, std::int64_t>> breaks;
        for (const strip_row& row : rows) {
            if (std::isnan(row.values[0])) {
                missing = true;
                continue;
            }
            if (before != nullptr && (missing || row.time - before->time > longest_join))
                breaks.emplace_back(before->time, row.time);
            before = &row;
            missing = false;
        }
        const auto gap_between = [&](std::int64_t from, std::int64_t to) {
            return std::any_of(points_.begin(), points_.end(), [&](const strip_point& point) {
                return is_gap(point) && point.time >= static_cast<double>(from) &&
                       point.time <= static_cast<double>(to);
            });
        };
        for (const auto& [from, to] : breaks) {
            if (from < left()) continue;
            const bool long_enough = to - from > longest_join + 2 * blur_;
            EXPECT_TRUE(!long_enough || gap_between(from, to)) << from << " to " << to;
        }
        for (const strip_point& point : points_) {
            if (!is_gap(point)) continue;
            EXPECT_TRUE(std::any_of(breaks.begin(), breaks.end(),
                                    [&](const auto& gap) {
                                        return point.time >= static_cast<double>(gap.first - blur_) &&
                                               point.time <= static_cast<double>(gap.second + blur_);
                                    }))
                << "no reason to break at " << point.time;
        }
    }

    mutable line points_;
    mutable std::int64_t blur_ = 0;
};

} // namespace tyxo
