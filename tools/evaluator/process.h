// What the simulators share as processes: signals that ask for an end, and a clock.
#pragma once

namespace tyxo::evaluator_sim {

/// From now on SIGTERM, SIGINT and SIGHUP ask for an end instead of making one, and a reader that goes away
/// or a terminal that gives no input to the background stops nothing.
void watch_signals();

/// True once an end was asked for.
bool stop_requested();

/// Seconds since the first call.
double now();

} // namespace tyxo::evaluator_sim
