#pragma once
// The settings file of a test.

#include "platform/simulation.h"

#include <string>
#include <string_view>

namespace tyxo::simulation {

inline constexpr std::string_view settings_file = "tyxo.ini";

/// Puts a settings file with these lines on the disk; each line ends with LF here and with CR LF there.
inline void put_settings(std::string_view lines) {
    std::string text = "[tyxo]\r\n";
    for (const char letter : lines) {
        if (letter == '\n') text += '\r';
        text += letter;
    }
    put_file(settings_file, text);
}

} // namespace tyxo::simulation
