#pragma once
// A started program with channels that log to "C:\logs", and what stands in their files.

#include "app/mainfrm.h"
#include "app/wiring.h"
#include "link/calls.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "link/start_stop.h"
#include "logging/evaluator_frames.h"
#include "platform/simulation.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo::simulation {

/// The settings of channels in use, each with a port, a location "Engine 1" and the log folder.
inline std::string logging_settings(i16 used, std::string_view more = "") {
    std::string text = "[tyxo]\r\nupd_periode= 500\r\nadc_offset=479\r\nzyl_speed_range=1\r\n"
                       "scale_polar_a= 2.5\r\nscale_polar_t= .75\r\nmax_sensors= " +
                       std::to_string(used) + "\r\n";
    for (i16 channel = 0; channel < used; ++channel) {
        const std::string number = std::to_string(channel + 1);
        text += "comport " + number + "= " + number + "\r\nlocation " + number + "=Engine " + number +
                "\r\nlogpath " + number + "=C:\\logs\\\r\n";
    }
    return text + std::string(more);
}

/// A new machine with these settings, and the program started on it.
inline void start_on(std::string_view settings_text) {
    fresh_world();
    world().folders.insert("C:");
    world().folders.insert("C:/logs");
    put_file("tyxo.ini", settings_text);
    wire();
    calls.stop_lock = [](std::string_view) { return true; }; // nobody sits there to be asked
    mainfrm::start_program(1280, 960);
    world().debug.clear();
}

/// One frame from the channel's Evaluator.
inline void feed(i16 channel, std::string_view body) {
    receive(channel, closed(body));
}

/// Starts a channel and lets its log begin.
inline void start_logging(i16 channel, const parameter_values& values = {},
                          parameter_form form = parameter_form::full) {
    mainfrm::start_channel_click(channel);
    feed(channel, parameter_body(values, form));
}

/// The file of a channel: `digits` are those of its name.
inline std::string log_path(i16 channel, std::string_view digits = "20260702") {
    const std::string location = "Engine " + std::to_string(channel + 1);
    return "C:/logs/" + location + "/" + std::string(digits) + "Qu_" + location + ".xlg";
}

inline std::vector<std::string> lines_of(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const auto end = text.find("\r\n");
        if (end == text.npos) {
            lines.push_back("no line end: " + std::string(text));
            break;
        }
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 2);
    }
    return lines;
}

/// The lines behind the header of a log; one text of complaint when there is no header.
inline std::vector<std::string> behind_header(std::string_view path) {
    std::vector<std::string> lines = lines_of(file(path));
    for (std::size_t index = 0; index < lines.size(); ++index) {
        if (lines[index] == "<LOG>")
            return {lines.begin() + static_cast<std::ptrdiff_t>(index) + 1, lines.end()};
    }
    return {"no header in " + std::string(path)};
}

inline std::vector<std::string> logged(i16 channel, std::string_view digits = "20260702") {
    return behind_header(log_path(channel, digits));
}

inline bool exists(std::string_view path) {
    return world().files.contains(normalised(path));
}

/// A file from the folder "golden" beside this header.
inline std::string golden(std::string_view name) {
    const auto path = std::filesystem::path(__FILE__).parent_path() / "golden" / name;
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream) << "no golden file " << path;
    return {std::istreambuf_iterator<char>(stream), {}};
}

using text_lines = std::vector<std::string>;

} // namespace tyxo::simulation
