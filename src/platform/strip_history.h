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

inline constexpr std::size_t strip_curves = 6;
inline constexpr std::size_t strip_buckets = 2000; ///< per window
inline constexpr float no_value = std::numeric_limits<float>::quiet_NaN();

/// Lengths of the time windows, in ms, ascending.
inline constexpr std::array<std::int64_t, 4> strip_spans{120'000, 900'000, 3'600'000, 86'400'000};

/// Two rows further apart than this, in ms, are not joined by a line: nothing was measured between them.
inline constexpr std::int64_t longest_join = 3000;

/// One row of a chart.
struct strip_row {
    std::int64_t time = 0; ///< ms of `running_ms`; never before that of the row before
    std::array<float, strip_curves> values{no_value, no_value, no_value, no_value, no_value, no_value};
};

/// A point of a curve as it is drawn; `no_value` breaks the line.
struct strip_point {
    double time = 0; ///< ms
    float value = no_value;
    bool operator==(const strip_point&) const = default;
};

/// The rows of one time window. Holds the last `span` ms, in buckets of `span` / `strip_buckets`.
class strip_window {
  public:
    explicit strip_window(std::int64_t span = strip_spans[0]) : span_(span) {}

    void append(const strip_row& row);

    [[nodiscard]] std::int64_t span() const { return span_; }
    [[nodiscard]] i32 rows() const { return rows_; }              ///< appended so far, those forgotten too
    [[nodiscard]] std::int64_t newest() const { return newest_; } ///< time of the last row; 0 before any

    /// The line of a curve for a picture that is `columns` pixels wide and ends at the newest row: at most
    /// four points a column, oldest first. `points` is overwritten. Costs the same whatever was appended.
    void points(std::size_t curve, i32 columns, std::vector<strip_point>& points) const;

  private:
    struct extent {
        float first = no_value;
        float least = no_value;
        float greatest = no_value;
        float last = no_value;
    };
    struct bucket {
        std::int64_t index = -1;
        std::int64_t first_time = 0;
        std::int64_t last_time = 0;
        std::array<extent, strip_curves> curves;
    };

    std::int64_t span_;
    std::int64_t newest_ = 0;
    i32 rows_ = 0;
    std::vector<bucket> ring_; // made with the first row
};

/// The rows of a chart in all its time windows.
class strip_history {
  public:
    /// Returns the row's index, counted from 0.
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
