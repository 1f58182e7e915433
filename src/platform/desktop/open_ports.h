#pragma once
// All serial ports of the program together.

namespace tyxo::desktop {

/// Closes every open port, so that its last bytes reach the line and no lock file stays behind: for an end of
/// the program that destroys nothing. All ports together take a second at most.
void close_ports();

} // namespace tyxo::desktop
