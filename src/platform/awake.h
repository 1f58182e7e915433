#pragma once
// Screen and machine stay awake while something is measured. Nothing here waits for the desktop.

namespace tyxo {

/// While on, the desktop is asked not to darken the screen, and the machine not to sleep by itself. What
/// cannot be asked for is told in the debug output. Asking twice counts once.
void keep_awake(bool on);

/// Lights the screen up when it is dark.
void wake_screen();

} // namespace tyxo
