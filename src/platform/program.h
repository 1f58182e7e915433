#pragma once
// The process and its event loop.

#include <optional>
#include <string>
#include <string_view>

namespace tyxo {

/// As the title of the main window, the logs and the printouts give it.
inline constexpr std::string_view program_version = "Version 2.10_4";

/// The name of the program's own file without its extension, in Windows-1252; "tyxo" unless somebody copied
/// it under another name.
[[nodiscard]] std::string executable_name();

/// Takes the working folder for this process for as long as it lives. Nothing, or the words for who holds the
/// folder already. Where folders cannot be locked at all, the debug output says so.
[[nodiscard]] std::optional<std::string> folder_holder();

/// Ends the process from where it stands: no window is asked, nothing is destroyed. What was sent and written
/// before gets a second to leave the ports and a second to come to the disk.
void end_program(int exit_code);

/// Lets the event loop handle what waits, once. Handlers run inside; a failure of theirs does not come out.
void do_events();

/// Lets the event loop run until something has happened in it, or for `milliseconds`; uses no processor time
/// while nothing happens. For loops that wait for an event.
void wait_events(int milliseconds);

/// While events are held, timers and serial ports deliver nothing; sockets and windows go on. Bytes that
/// arrive meanwhile are delivered at the release.
void hold_events(bool held);

/// The screen in the dots that windows are laid out in; a scaled desktop has fewer of them than pixels.
struct screen_size {
    int width = 0;
    int height = 0;
};
[[nodiscard]] screen_size screen();

} // namespace tyxo
