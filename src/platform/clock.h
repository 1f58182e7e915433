#pragma once
// The local wall clock of the machine.

#include "basics/clock_text.h"

#include <cstdint>

namespace tyxo {

/// The local time now, in the machine's time zone. It may jump either way: daylight saving, a corrected
/// clock.
[[nodiscard]] local_time local_now();

/// Seconds since local midnight, with fractions.
[[nodiscard]] double seconds_of_day();

/// Milliseconds since a fixed moment before the start. It never goes back or jumps, and runs on while the
/// machine sleeps.
[[nodiscard]] std::int64_t running_ms();

/// The local time that belongs to a moment of `running_ms`, by today's setting of the clock: a clock that is
/// corrected by more than 20 ms moves all moments alike. Daylight saving is that of the moment itself.
[[nodiscard]] local_time local_at(std::int64_t running);

} // namespace tyxo
