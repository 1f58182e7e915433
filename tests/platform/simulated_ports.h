#pragma once
// What the parts of the simulated machine need of each other.

#include <cstdint>

namespace tyxo::simulation {

/// Delivers the bytes that waited while events were held.
void deliver_waiting();

/// The next tick or planned event that is due by `end`; false when there is none.
bool happen_next(std::int64_t end);

} // namespace tyxo::simulation
