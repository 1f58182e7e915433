#pragma once
// What the alarm alert asks of the machine's loudspeaker.

#include "basics/types.h"

#include <string>
#include <string_view>

namespace tyxo {

/// Flags of `PlaySoundA`: the name is that of a file; play it and do not wait for its end; no other sound
/// when there is no such file.
inline constexpr i32 snd_async = 0x0001;
inline constexpr i32 snd_nodefault = 0x0002;
inline constexpr i32 snd_filename = 0x20000;

/// Starts the sound in a file from its beginning, also when it plays already. Blanks at the end of `name` do
/// not count. Never waits. Nothing is heard of a file that does not exist, or where there is no sound server
/// or device; the debug output says so, once in an alarm.
void PlaySoundA(std::string_view name, i32 flags);

/// Writes the path of an existing file to the front of `buffer`, and leaves the rest of it as it is: of the
/// file in the working folder, else of the one that was installed with the program. Without such a file the
/// buffer stays as it is.
void GetShortPathNameA(std::string_view name, std::string& buffer);

/// The machine's own beep.
void beep();

} // namespace tyxo
