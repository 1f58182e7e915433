#pragma once
// The process among the others of its machine: what ends it from outside.

namespace tyxo::desktop {

/// Nobody can be shown anything any more: message boxes go to the debug output from here on.
void screen_lost();

/// Where the session has no message bus, or one that hangs, the libraries go on without one; else they would
/// start one, or wait for it without end. To be called before any of them is used.
void start_no_session_bus();

/// Calls `end` from the event loop, also inside a wait, when SIGTERM, SIGINT or SIGHUP has come; one that was
/// ignored when the process started stays so. From here on broken pipes and files at their size limit are
/// errors of a single write and end nothing.
void on_end_signal(void (*end)());

} // namespace tyxo::desktop
