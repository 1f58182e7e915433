#pragma once
// Rounding to even and narrowing with a range check: the only ways from a wider number to a narrower one.

#include "basics/failure.h"
#include "basics/types.h"

#include <cmath>
#include <limits>
#include <type_traits>

namespace tyxo {

/// The integer as a narrower type; an overflow failure when it does not fit.
template <class To, class From> [[nodiscard]] constexpr To narrow(From value) {
    static_assert(std::is_integral_v<To> && std::is_integral_v<From>);
    const auto result = static_cast<To>(value);
    if (static_cast<From>(result) != value || ((result < To{}) != (value < From{}))) failures::overflow();
    return result;
}

/// The nearest whole number, a half to the even neighbour; an overflow failure when `To` cannot hold it.
template <class To> [[nodiscard]] To round_even(double value) {
    static_assert(std::is_integral_v<To> && sizeof(To) <= 4);
    const double whole = std::nearbyint(value); // the default rounding mode is to nearest, ties to even
    if (!(whole >= static_cast<double>(std::numeric_limits<To>::min()) &&
          whole <= static_cast<double>(std::numeric_limits<To>::max()))) {
        failures::overflow();
    }
    return static_cast<To>(whole);
}

/// The quotient of two integers, rounded like `round_even`; no float is involved.
/// `dividend` is at least 0, `divisor` above 0.
[[nodiscard]] constexpr i32 divide_even(i32 dividend, i32 divisor) {
    if (divisor == 0) failures::division_by_zero();
    const i32 quotient = dividend / divisor;
    const std::int64_t twice = 2 * static_cast<std::int64_t>(dividend % divisor);
    const bool up = twice > divisor || (twice == divisor && quotient % 2 != 0);
    return up ? quotient + 1 : quotient;
}

} // namespace tyxo
