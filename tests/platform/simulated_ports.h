#pragma once
// What the parts of the simulated machine need of each other.

namespace tyxo::simulation {

/// Closes and forgets all ports.
void reset_ports();

/// Delivers the bytes that waited while events were held.
void deliver_waiting();

} // namespace tyxo::simulation
