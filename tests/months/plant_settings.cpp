// The settings file of a simulated plant.

#include "plant.h"

#include "platform/simulation.h"

#include <algorithm>

namespace months {

using namespace tyxo;

std::string plant::setting_in_file(std::string_view key) {
    const std::string text = simulation::file("tyxo.ini");
    const auto begin = text.find("\r\n" + std::string(key) + "=");
    if (begin == text.npos) return {};
    const auto value = begin + key.size() + 3;
    return text.substr(value, text.find("\r\n", value) - value);
}

std::vector<std::string> plant::keys_of(std::string_view settings) {
    std::vector<std::string> keys;
    while (!settings.empty()) {
        const auto end = settings.find("\r\n");
        if (end == settings.npos) return {"no end: " + std::string(settings)};
        keys.emplace_back(settings.substr(0, std::min(end, settings.find('='))));
        settings.remove_prefix(end + 2);
    }
    return keys;
}

/// Whatever is written and whenever it is cut off, the file holds all its keys once, in their order; new ones
/// stand behind them.
void plant::check_settings_file() {
    const std::vector<std::string> now = keys_of(simulation::file("tyxo.ini"));
    if (keys_.empty()) keys_ = now;
    if (now.size() < keys_.size() || !std::equal(keys_.begin(), keys_.end(), now.begin()))
        wrong("the settings file is broken");
    if (now.size() > keys_.size() + 20) wrong("keys come again and again");
}

std::string plant::settings_text() {
    used_ = dice_.once_in(3) ? static_cast<int>(dice_.between(1, 4)) : 4;
    password_ = dice_.once_in(4) ? "" : "Ruhe7";
    const auto number = [](auto value) { return std::to_string(value); };
    std::string text =
        "[tyxo]\r\nupd_periode=" + number(dice_.one_of(std::array{1000, 1000, 1000, 500, 250})) +
        "\r\nmax_sensors=" + number(used_) + "\r\nscale_polar_a=0.5\r\nscale_polar_t=3\r\n" +
        "adc_offset=479\r\nzyl_speed_range=" + number(dice_.between(1, 20)) +
        "\r\nlog_mode=" + number(dice_.below(2)) + "\r\npasswd=" + password_ +
        "\r\nautostart=" + number(dice_.below(4) != 0 ? 1 : 0) +
        "\r\nspeedbar_mode=" + number(dice_.below(2)) +
        "\r\neventfile_ena=" + number(dice_.once_in(8) ? 0 : 1) +
        "\r\nevtpath=C:\\logs\\\r\nIPAdr=10.0.0.5\r\n" +
        "IPport=502\r\nIPAutoC=" + number(dice_.once_in(4) ? 0 : 1) +
        "\r\nIPenaTRS=1\r\nIPpolar=" + number(dice_.below(2)) + "\r\nIPsysstat=" + number(dice_.below(2)) +
        "\r\nIPRefresh=" + number(dice_.below(3)) + "\r\nREGBase=" + number(dice_.between(0, 2000)) +
        "\r\nREGNumber=10\r\n" + "xy_tmv=1\r\nxy_theff=1\r\nxy_theff_AC=1\r\nxy_tha=1\r\n";
    constexpr std::array<std::string_view, 4> names{"Engine 1",
                                                    "Maschine \xDC"
                                                    "ber",
                                                    "No. 3 (spare)", "A name that is longer than 25 letters"};
    for (int channel = 0; channel < 4; ++channel) {
        const std::string n = ' ' + number(channel + 1) + '=';
        text += "comport" + n + number(channel + 1) + "\r\nlocation" + n + std::string(names.at(channel)) +
                "\r\nlogpath" + n + (channel == 3 ? "D:\\engines\\" : "C:\\logs\\") + "\r\ntypecode" + n +
                "T" + number(channel) + "\r\ntstsig_visible" + n + number(dice_.below(2)) + "\r\n";
    }
    return text;
}

} // namespace months
