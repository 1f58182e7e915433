#pragma once
// The local wall clock of the machine.

#include "basics/clock_text.h"

namespace tyxo {

/// The local time now, in the machine's time zone. It may jump either way: daylight saving, a corrected
/// clock.
[[nodiscard]] local_time local_now();

} // namespace tyxo
