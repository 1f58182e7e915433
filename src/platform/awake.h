#pragma once
// Screen and machine stay awake while something is measured. Nothing here waits for the desktop.

namespace tyxo {

/// While on, the desktop is asked not to darken the screen, and the machine not to sleep by itself. Asking
/// twice counts once. Where nobody takes the request, nothing happens.
void keep_awake(bool on);

/// Lights the screen up when it is dark.
void wake_screen();

} // namespace tyxo
