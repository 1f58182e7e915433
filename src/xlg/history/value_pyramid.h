#pragma once
// What a log's records hold, second by second and in coarser steps, so that a picture of any span looks at
// few numbers.

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace tyxo::xlg {

/// Seconds since 1970-01-01 00:00 by the clock on the wall, as if there were no time zones: a log knows none.
using log_seconds = std::int64_t;

/// The values of REC1 in their order: Tsig %, rpm, 1/100 mV, Teff DC %, Teff AC %.
inline constexpr std::size_t value_count = 5;
using measured = std::array<std::uint16_t, value_count>;

/// Least and greatest of each value in a time.
struct extremes {
    measured least = filled(std::numeric_limits<std::uint16_t>::max());
    measured greatest = filled(0);

    [[nodiscard]] bool any() const { return least[0] <= greatest[0]; }
    void take(const measured& values) { take({values, values}); }
    void take(const extremes& others);
    bool operator==(const extremes&) const = default;

  private:
    static constexpr measured filled(std::uint16_t value) {
        measured all{};
        all.fill(value);
        return all;
    }
};

/// Each level joins four of the one below; the lowest one has a second each. Twenty bytes a second, and a
/// third more for all levels above.
class value_pyramid {
  public:
    static constexpr int levels = 7; ///< the highest one has 4,096 seconds each
    static constexpr log_seconds step(int level) { return log_seconds{1} << (2 * level); }

    /// In any order; a second may come again, as when the clock was set back. It is seen when `settle` was
    /// called. The memory is that of the time from the first to the last second.
    void add(log_seconds second, const measured& values);
    /// Brings the levels above up to date.
    void settle();

    [[nodiscard]] bool empty() const { return nodes_[0].empty(); }

    /// The highest level whose steps are no longer than so many seconds, at least the lowest.
    [[nodiscard]] static int level_for(double longest_step);

    /// Calls `take(first second, extremes)` for each step of the level that has values and meets the time
    /// from `from` to before `to`, oldest first.
    template <class Take> void each(int level, log_seconds from, log_seconds to, Take take) const {
        const std::vector<extremes>& all = nodes_[static_cast<std::size_t>(level)];
        const log_seconds length = step(level);
        const auto index_of = [&](log_seconds time) { return (time - origin_) / length; };
        const log_seconds first = from <= origin_ ? 0 : index_of(from);
        const log_seconds end = to <= origin_ ? 0 : index_of(to + length - 1);
        for (auto index = static_cast<std::size_t>(first);
             index < all.size() && index < static_cast<std::size_t>(end); ++index)
            if (all[index].any()) take(origin_ + static_cast<log_seconds>(index) * length, all[index]);
    }

  private:
    void make_room_before(log_seconds second);

    std::array<std::vector<extremes>, levels> nodes_;
    log_seconds origin_ = 0; ///< of all levels, a multiple of the longest step
    std::size_t changed_from_ = 0;
    std::size_t changed_to_ = 0; ///< seconds that the levels above do not have yet, if it is the greater one
};

} // namespace tyxo::xlg
