#include "view/plant_settings.h"

#include "basics/failure.h"
#include "basics/number.h"
#include "basics/number_text.h"
#include "link/channel_rec.h"
#include "platform/debug_output.h"
#include "settings/ini_text.h"
#include "settings/settings.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace tyxo::view {

namespace {

constexpr int folders_above = 3;
constexpr std::streamsize longest_file = 1 << 20;

/// What a plant begins with: packaging/installed/tyxo.ini.
struct pictures {
    double scale_polar_a = 0.5;
    double scale_polar_t = 1;
    i16 adc_offset = 479;
    i16 zyl_speed_range = 5;
    i16 speedbar_mode = 0;
    i16 curve = 1; ///< shown
};

std::string text_of_file(std::ifstream& file) {
    std::string text(longest_file, '\0');
    file.read(text.data(), longest_file);
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

std::string text_of_plant(const std::string& log) {
    std::error_code error;
    std::filesystem::path folder = std::filesystem::absolute(log, error).parent_path();
    for (int above = 0; above <= folders_above; ++above, folder = folder.parent_path()) {
        std::ifstream file(folder / "tyxo.ini", std::ios::binary);
        if (file) return text_of_file(file);
    }
    return {};
}

/// A key that is missing or out of its range leaves the value.
template <class Number>
void take(const std::string& text, const char* key, Number& value, double least, double most) {
    const std::string found = Ini::get_key(text, "tyxo", key);
    if (found.empty()) return;
    const auto why = attempt([&] {
        const double number = leading_number(found);
        if (number < least || number > most) return;
        if constexpr (std::is_same_v<Number, double>)
            value = number;
        else
            value = round_even<Number>(number);
    });
    if (why) debug_output(std::string(key) + ": " + *why);
}

std::string text_of_named(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    std::string text;
    if (file) text = text_of_file(file);
    if (file.bad() || text.empty()) throw failure("cannot read " + name);
    return text;
}

void take_curves(const std::string& text) {
    const auto shown = [&text](const char* key) {
        i16 value = pictures().curve;
        take(text, key, value, -32768, 32767);
        return value;
    };
    settings.xy_tmv = shown("xy_tmv");
    settings.xy_theff = shown("xy_theff");
    settings.xy_theff_AC = shown("xy_theff_AC");
    settings.xy_tha = shown("xy_tha");
}

} // namespace

void load_plant_settings(const std::string& log, const std::string& file) {
    const std::string text = file.empty() ? text_of_plant(log) : text_of_named(file);
    take_curves(text);
    pictures of;
    take(text, "scale_polar_a", of.scale_polar_a, 0, 1e6);
    take(text, "scale_polar_t", of.scale_polar_t, 0, 1e6);
    take(text, "adc_offset", of.adc_offset, 460, 520);
    take(text, "zyl_speed_range", of.zyl_speed_range, 1, 20);
    take(text, "speedbar_mode", of.speedbar_mode, -1000, 1000);
    sensor::state.scale_polar_a = of.scale_polar_a;
    sensor::state.scale_polar_t = of.scale_polar_t;
    sensor::state.adc_offset = of.adc_offset;
    sensor::state.zyl_speed_range = of.zyl_speed_range;
    settings.speedbar_mode = of.speedbar_mode;
}

} // namespace tyxo::view
