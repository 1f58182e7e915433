#pragma once
// What follows from an Evaluator's overspeed limit: the scale of the speed gauge, and the scale of the speed
// line in the strip chart and in the log.
//
// Looks like a mistake and stays: the two tables have different limits
// (GaugeOf.TheOverspeedLimitHasItsEndAndTicks,
// SpeedLineOf.TheOverspeedLimitHasItsScaleAndUnit).

#include "basics/types.h"

#include <array>
#include <limits>
#include <string_view>

namespace tyxo {

inline constexpr i32 no_limit = std::numeric_limits<i32>::max();

struct gauge_band {
    i32 below;  ///< rpm; the band holds overspeeds under this limit
    double end; ///< rpm
    i32 major_ticks;
};

inline constexpr std::array<gauge_band, 6> gauge_bands{{
    {120, 120, 13},
    {300, 300, 11},
    {700, 700, 8},
    {1400, 1400, 9},
    {2900, 3000, 7},
    {no_limit, 4000, 9},
}};

struct speed_band {
    i32 below;              ///< rpm, likewise
    i32 divisor;            ///< of the speed in the strip chart
    std::string_view title; ///< of the speed line in the strip chart
    double scale;           ///< the same factor in the log
    std::string_view unit;
};

inline constexpr std::array<speed_band, 5> speed_bands{{
    {120, 1, "RPM   ", 1.0, "RPM"},
    {400, 5, "RPM /5", 0.2, "RPM /5"},
    {1400, 10, "RPM /10", 0.1, "RPM /10"},
    {2900, 20, "RPM /20", 0.05, "RPM /20"},
    {no_limit, 25, "RPM /25", 0.04, "RPM /25"},
}};

/// The band of a table that an overspeed belongs to; a limit itself belongs to the band above it.
template <class Band, std::size_t N>
[[nodiscard]] constexpr const Band& band_of(const std::array<Band, N>& bands, i32 overspeed) {
    std::size_t index = 0;
    while (index + 1 < N && overspeed >= bands[index].below)
        ++index;
    return bands[index];
}

} // namespace tyxo
