#include "plant_settings.h"

#include "words.h"

#include <set>

namespace months::check {

namespace {

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\r' || text.back() == '\t'))
        text.remove_suffix(1);
    return text;
}

int whole(std::string_view value) {
    return static_cast<int>(nearest(leading_number(value)));
}

bool set_channel(channel_settings& channel, std::string_view stem, std::string_view value) {
    if (stem == "location") {
        channel.location = value;
        channel.folder_name = value.substr(0, 69);
    } else if (stem == "logpath") {
        channel.folder_root = value.substr(0, 69);
    } else if (stem == "typecode") {
        channel.typecode = value.empty() ? "unknown" : value;
    } else if (stem == "tstsig_visible") {
        channel.test_signal_visible = whole(value) != 0;
    } else if (stem == "th_dig_val") {
        channel.gauge_shows_teff = whole(value) != 0;
    } else {
        return false;
    }
    return true;
}

} // namespace

void plant_settings::set(std::string_view any_key, std::string_view value, bool at_start) {
    const std::string key = lower(any_key);
    const auto blank = key.rfind(' ');
    if (blank != key.npos && blank + 2 == key.size() && key.back() >= '1' && key.back() <= '4') {
        auto& one = channel[static_cast<std::size_t>(key.back() - '1')];
        if (set_channel(one, std::string_view(key).substr(0, blank), value)) return;
    }
    const std::pair<const char*, int*> numbers[] = {
        {"max_sensors", &max_sensors}, {"upd_periode", &upd_periode}, {"log_mode", &log_mode},
        {"resolution", &resolution},   {"ipautoc", &ip_auto},         {"ipenatrs", &ip_linear},
        {"ipsysstat", &ip_status},     {"ippolar", &ip_polar},        {"iprefresh", &ip_refresh},
        {"regbase", &register_base}};
    for (const auto& [name, number] : numbers)
        if (key == name) *number = whole(value);
    if (key == "scale_polar_a") scale_polar_a = leading_number(value);
    if (key == "scale_polar_t") scale_polar_t = leading_number(value);
    if (!at_start) return;
    if (key == "eventfile_ena") event_file = whole(value) == 1;
    if (key == "evtpath") event_path = plain_path(std::string(value.substr(0, 69)) + "TY_all_events.txt");
    const int number = whole(value);
    if (key == "adc_offset") cylinders.zero_point = number < 460 || number > 520 ? 479 : number;
    if (key == "zyl_speed_range") cylinders.half_width = number < 1 || number > 20 ? 1 : number;
}

plant_settings read_settings(std::string_view content) {
    plant_settings result;
    result.event_path = "TY_all_events.txt";
    for (auto& channel : result.channel)
        channel.typecode = "unknown";
    std::set<std::string> known;
    while (!content.empty()) {
        const auto end = std::min(content.find('\n'), content.size());
        const std::string_view line = trimmed(content.substr(0, end));
        content.remove_prefix(std::min(end + 1, content.size()));
        const auto equals = line.find('=');
        if (equals == line.npos || line.starts_with(';')) continue;
        const std::string_view key = trimmed(line.substr(0, equals));
        if (!known.insert(lower(key)).second) continue; // the first one counts
        result.set(key, trimmed(line.substr(equals + 1)).substr(0, 69), true);
    }
    return result;
}

} // namespace months::check
