#pragma once
// What a strip chart remembers: per time window a ring of buckets, so that a chart costs the same time and
// memory after a month as after a minute.

#include "basics/types.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace tyxo {

inline constexpr std::size_t strip_curves = 6;     ///< in the order of the charts' table of curves
inline constexpr std::size_t strip_buckets = 2000; ///< per window
inline constexpr float no_value = std::numeric_limits<float>::quiet_NaN();

/// Lengths of the time windows, in ms, ascending.
inline constexpr std::array<std::int64_t, 4> strip_spans{120'000, 900'000, 3'600'000, 86'400'000};

/// Two rows further apart than this, in ms, are not joined by a line: nothing was measured between them.
inline constexpr std::int64_t longest_join = 3000;

/// The number of rows after one more. It is no more than tells old from new, and after the greatest goes on
/// with 1: at ten rows a second the greatest comes after six years.
[[nodiscard]] constexpr i32 one_more_row(i32 rows) {
    return rows < std::numeric_limits<i32>::max() ? rows + 1 : 1;
}

/// One row of a chart.
struct strip_row {
    std::int64_t time = 0; ///< ms of `running_ms`; never before that of the row before
    std::array<float, strip_curves> values = no_values();

    [[nodiscard]] static constexpr std::array<float, strip_curves> no_values() {
        std::array<float, strip_curves> none{};
        none.fill(no_value);
        return none;
    }
};

/// A point of a curve as it is drawn; `no_value` breaks the line.
struct strip_point {
    double time = 0; ///< ms
    float value = no_value;
    bool operator==(const strip_point&) const = default;
};

/// The rows of one time window: those of the last `span` ms, in a ring of buckets. The buckets are a little
/// longer than `span` / `strip_buckets`, so that the ring also holds the row before the window, from which
/// the line comes in. A copy is independent.
class strip_window {
  public:
    explicit strip_window(std::int64_t span = strip_spans[0]) : span_(span) {}

    /// Touches one bucket. A row that is older than the one before counts as of the same time.
    void append(const strip_row& row);

    [[nodiscard]] std::int64_t span() const { return span_; }

    /// Appended so far, those forgotten too, by `one_more_row`; 0 only before the first row.
    [[nodiscard]] i32 rows() const { return rows_; }
    [[nodiscard]] std::int64_t newest() const { return newest_; } ///< time of the last row; 0 before any
    /// Time of the first row, which tells one history from another; 0 before any.
    [[nodiscard]] std::int64_t begun() const { return begun_; }

    /// The time that one bucket spans, in ms: what happens inside of it has no order but first and last.
    [[nodiscard]] std::int64_t bucket_length() const;

    /// The line of a curve for a picture that is `columns` pixels wide and ends at the newest row: at most
    /// four points a column, oldest first, and `no_value` between points that are not joined. Points of the
    /// same bucket as the row before the window lead the line in. `points` is overwritten. Costs the same
    /// whatever was appended.
    void points(std::size_t curve, i32 columns, std::vector<strip_point>& points) const;

    /// The same line in columns of `column` ms, which are counted from time 0, from column `first` on. It
    /// begins so far before that all that is drawn in `first` and later is as in the whole line.
    void points_from(std::size_t curve, double column, std::int64_t first,
                     std::vector<strip_point>& points) const;

    /// The first column that the next row may change; the line before it is final.
    [[nodiscard]] std::int64_t first_open_column(double column) const;

    /// The newest value of a curve; `no_value` if there is none in the window.
    [[nodiscard]] float newest_value(std::size_t curve) const;

  private:
    struct extent {
        float first = no_value;
        float least = no_value;
        float greatest = no_value;
        float last = no_value;
    };
    struct bucket {
        std::int64_t index = never; ///< since time 0
        std::int64_t first_time = 0;
        std::int64_t last_time = 0;
        std::array<extent, strip_curves> curves;
    };
    static constexpr std::int64_t never = std::numeric_limits<std::int64_t>::min();

    [[nodiscard]] std::int64_t bucket_of(std::int64_t time) const;
    [[nodiscard]] static std::size_t slot_of(std::int64_t index);
    /// The column that the points of a bucket are gathered in: that of its beginning.
    [[nodiscard]] std::int64_t column_of_bucket(std::int64_t index, double column) const;
    [[nodiscard]] std::int64_t oldest_bucket() const;
    void collect(std::size_t curve, double column, std::int64_t oldest,
                 std::vector<strip_point>& points) const;

    std::int64_t span_;
    std::int64_t begun_ = 0;
    std::int64_t newest_ = 0;
    i32 rows_ = 0;
    std::vector<bucket> ring_; // made with the first row
};

/// The rows of a chart in all its time windows.
class strip_history {
  public:
    /// Returns the row's index, counted from 0; after the greatest number from 0 again.
    i32 append(const strip_row& row);
    void clear();

    /// The shortest window that holds `span` ms, else the longest.
    [[nodiscard]] const strip_window& window(std::int64_t span) const;

  private:
    std::array<strip_window, strip_spans.size()> windows_{
        strip_window(strip_spans[0]), strip_window(strip_spans[1]), strip_window(strip_spans[2]),
        strip_window(strip_spans[3])};
};

} // namespace tyxo
