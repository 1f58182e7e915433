#pragma once
// The simulated machine of a fuzzer: a program started on it, commands as the desktop runs them, and what
// always holds of the files and windows.

#include "fuzz/input.h"

#include "settings/settings.h"

#include <functional>
#include <string>
#include <string_view>

namespace tyxo::fuzzing {

/// A settings file of four channels with a log folder each; `more` are further lines.
[[nodiscard]] std::string plant_settings(std::string_view more = "");

/// A new machine with this settings file, the folders "C:\logs" for logs and events, and four ports; the
/// program is wired and started, every stop is granted.
void start_program_on(std::string_view settings_text);

/// The same with `plant_settings` and an event file, in a tenth of the time: all but the first start are
/// copied from that one. Then changes the settings, starts all channels, and the gateway if they want it.
void start_plant(const std::function<void(settings_rec&)>& change);

/// Runs a command as the desktop does: a failure ends in the debug output.
template <class Command> void command(const Command& run) {
    static_cast<void>(attempt(run));
}

/// Up to 255 characters that can be typed: no box takes a line break.
[[nodiscard]] std::string typed_text(input& in);

/// What is read of a settings value that was written.
[[nodiscard]] std::string read_of(std::string_view value);

/// Two upper-case hexadecimal digits.
void append_hex(std::string& text, u8 value);

/// A body of a frame, from ":" on, with its check and CR LF, received by a channel.
void receive_frame(i16 channel, std::string_view body);

/// The four blocks of a curve, whose samples go up and down by `step` from `first`.
void receive_curve(i16 channel, std::string_view code, i32 first, i32 step);

/// The parameters of an engine with six cylinders, for a channel whose log is to begin.
void receive_parameters(i16 channel);

/// Ends the process if a log or the event file is no whole lines, or begins in another way than it should.
void check_files();

/// Ends the process if a record holds what it never should.
void check_records();

/// The same of windows.
void check_windows();

/// The same of records, windows, and frames to the controller.
void check_state();

} // namespace tyxo::fuzzing
