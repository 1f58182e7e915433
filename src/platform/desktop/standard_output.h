#pragma once
// The standard descriptors, and the debug output on one of them. Nothing here waits for whoever reads it.

namespace tyxo::desktop {

/// To be called before anything else. Closed standard descriptors are opened on the null device, so that no
/// other file gets their numbers. Pipes and terminals at the outputs get descriptions of this process's own
/// that never wait, so that libraries which write there cannot hold up the program either.
void prepare_standard_descriptors();

/// Sends Qt's own messages to the debug output. Behind the one that tells a lost Wayland connection Qt ends
/// the process at once, without the exit handlers: `display_lost` is called between the two.
void take_qt_messages(void (*display_lost)());

} // namespace tyxo::desktop
