#pragma once
// A program that is started on a prepared machine, and what it leaves behind.

#include "logging/logging_machine.h"

#include <string>
#include <string_view>

namespace tyxo::simulation {

inline constexpr std::string_view events_path = "C:/logs/TY_all_events.txt";
inline constexpr std::string_view with_events = "eventfile_ena=1\r\nevtpath=C:\\logs\\\r\n";
inline constexpr std::string_view start_line = "##;07-02-2026;13:05:09;Tyxo Logger software started !";
inline constexpr std::string_view stop_line = "##;07-02-2026;13:05:09;Tyxo Data Logger software stopped !";
inline constexpr std::string_view no_port_text = "no Comport configurated for sensor nr. ";
inline constexpr std::string_view no_sensor_text = "No sensor configurated\r\nPlease setup first";

/// A new machine with these settings; the program is wired, grants every stop, and is not yet started.
inline void prepare(std::string_view settings_text) {
    fresh_world();
    world().folders.insert("C:");
    world().folders.insert("C:/logs");
    put_file("tyxo.ini", settings_text);
    wire();
    calls.stop_lock = [](std::string_view) { return true; }; // nobody sits there to be asked
}

inline text_lines event_lines() {
    return lines_of(file(events_path));
}

inline text_lines box_texts() {
    text_lines texts;
    for (const shown_box& box : world().boxes)
        texts.push_back(box.text);
    return texts;
}

} // namespace tyxo::simulation
