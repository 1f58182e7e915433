#pragma once
// Changes of the status words become messages; lamps and inhibit labels follow their bits.

#include "basics/types.h"

#include <cstddef>

namespace tyxo::sensor {

/// `Text_status` is cut to this many characters, its last ones, at the start of a run.
inline constexpr std::size_t status_text_limit = 60000;

/// One run over all rows for the channel. It runs after a status frame, and once when the link is lost and
/// once when it returns: while `connected` is False every run writes the "not connected" line.
void status_update(i16 channel);

} // namespace tyxo::sensor
