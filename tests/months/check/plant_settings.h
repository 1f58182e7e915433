#pragma once
// The settings that the checker has to know, from the content of the settings file and from dialogs.

#include "cylinders.h"

#include <array>
#include <string>
#include <string_view>

namespace months::check {

struct channel_settings {
    std::string location, typecode;
    std::string folder_root, folder_name; ///< of the logs, as they stand in the file
    bool test_signal_visible = false, gauge_shows_teff = false;
};

struct plant_settings {
    std::array<channel_settings, 4> channel;
    int max_sensors = 0, upd_periode = 0, log_mode = 0, resolution = 0;
    double scale_polar_a = 0, scale_polar_t = 0;
    cylinder_settings cylinders;
    bool event_file = false;
    std::string event_path;
    int ip_auto = 0, ip_linear = 0, ip_status = 0, ip_polar = 0, ip_refresh = 0;
    int register_base = 0;

    /// One key. What is in force with the next start only is taken with `at_start`.
    void set(std::string_view key, std::string_view value, bool at_start);
};

/// Of a whole settings file.
[[nodiscard]] plant_settings read_settings(std::string_view content);

} // namespace months::check
