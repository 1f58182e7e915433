#include "settings/settings.h"

#include "basics/number.h"
#include "basics/number_text.h"
#include "settings/ini.h"

namespace tyxo::Ini {

namespace {

constexpr repair adc_offset_repair{460, 520, 479};
constexpr repair zyl_speed_range_repair{1, 20, 1};

constexpr std::array<global_key, 14> before_channels{{
    {"upd_periode", &sensor::state.upd_periode},
    {"cmd_periode", &sensor::state.cmd_periode},
    {"max_sensors", &sensor::state.max_sensors},
    {"scale_polar_a", &sensor::state.scale_polar_a},
    {"scale_polar_t", &sensor::state.scale_polar_t},
    {"adc_offset", &sensor::state.adc_offset, &adc_offset_repair},
    {"zyl_speed_range", &sensor::state.zyl_speed_range, &zyl_speed_range_repair},
    {"log_mode", &settings.log_mode},
    {"xy_tmv", &settings.xy_tmv},
    {"xy_theff", &settings.xy_theff},
    {"xy_theff_AC", &settings.xy_theff_AC},
    {"xy_tha", &settings.xy_tha},
    {"passwd", &settings.passwd},
    {"autostart", &settings.autostart},
}};

constexpr std::array<channel_key, 8> per_channel_keys{{
    {"comport ", &sensor::state.comport, "", true},
    {"location ", &channel_rec::location, "", true},
    {"typecode ", &channel_rec::typecode, unknown::typecode, true},
    {"logpath ", &channel_rec::logpath, "", true},
    {"text_almrel1 ", &channel_rec::text_almrel1, "Alarmrel 1", true},
    {"text_almrel2 ", &channel_rec::text_almrel2, "Alarmrel 2", true},
    {"tstsig_visible ", &channel_rec::tstsig_visible, "", true},
    {"th_dig_val ", &channel_rec::th_dig_val, "", false},
}};

// Some of these keys are written by their dialog in another spelling, which finds the same key.
constexpr std::array<global_key, 15> behind_channels{{
    {"speedbar_mode", &settings.speedbar_mode},
    {"eventfile_ena", &settings.eventfile_ena},
    {"evtpath", &settings.evtpath},
    {"IPAdr", &settings.IPAdr},
    {"IPport", &settings.IPport},
    {"IPsend", &settings.IPsend},
    {"REGBase", &settings.REGBase},
    {"REGNumber", &settings.REGNumber},
    {"IPAutoC", &settings.IPAutoC},
    {"IPenaTRS", &settings.IPenaTRS},
    {"IPpolar", &settings.IPpolar},
    {"IPsysstat", &settings.IPsysstat},
    {"Sendbase", &settings.Sendbase},
    {"REGView", &settings.REGView},
    {"IPRefresh", &settings.IPRefresh},
}};

constexpr std::array<global_key, 7> saved_by_setup{{
    {"upd_periode", &sensor::state.upd_periode},
    {"cmd_periode", &sensor::state.cmd_periode},
    {"max_sensors", &sensor::state.max_sensors},
    {"speedbar_mode", &settings.speedbar_mode},
    {"eventfile_ena", &settings.eventfile_ena_edit},
    {"evtpath", &settings.evtpath},
    {"autostart", &settings.autostart},
}};

void take(std::string_view text, std::string& value) {
    value = text;
}
void take(std::string_view text, double& value) {
    value = leading_number(text);
}
void take(std::string_view text, bool& value) {
    value = signed_form(leading_number(text)) == " 1";
}
template <class Integer> void take(std::string_view text, Integer& value) {
    value = round_even<Integer>(leading_number(text));
}

std::string text_of(const std::string& value) {
    return value;
}
std::string text_of(bool value) {
    return value ? "1" : "0";
}
template <class Number> std::string text_of(Number value) {
    return signed_form(value);
}

/// The value of a row for one channel.
auto& value_of(per_channel<i16>* values, i16 channel) {
    return (*values)[channel];
}
template <class Value> auto& value_of(Value channel_rec::*member, i16 channel) {
    return sensor::channel_at(channel).*member;
}

/// Runs a step; its failure tells which key of the settings file it is about.
template <class Step> void naming_key(std::string_view key, const Step& step) {
    if (const auto why = attempt(step)) throw failure(std::string(key) + ": " + *why);
}

} // namespace

std::span<const global_key> first_keys() {
    return before_channels;
}
std::span<const channel_key> channel_keys() {
    return per_channel_keys;
}
std::span<const global_key> last_keys() {
    return behind_channels;
}

std::string key_of(std::string_view stem, i16 channel) {
    return std::string(stem) + plain(channel + 1);
}

void load(const global_key& row) {
    const std::string text = ini_read(row.key);
    naming_key(row.key, [&] { std::visit([&](auto* value) { take(text, *value); }, row.target); });
    if (row.repaired == nullptr) return;
    i16& value = *std::get<i16*>(row.target);
    if (value >= row.repaired->least && value <= row.repaired->greatest) return;
    value = row.repaired->value;
    ini_write(row.key, plain(value));
}

void load(const channel_key& row, i16 channel) {
    const std::string key = key_of(row.stem, channel);
    std::string text = ini_read(key);
    if (text.empty()) text = row.when_empty;
    naming_key(key,
               [&] { std::visit([&](auto target) { take(text, value_of(target, channel)); }, row.target); });
}

void var_save() {
    const one_change all_keys;
    for (const global_key& row : saved_by_setup) {
        ini_write(row.key, std::visit([](auto* value) { return text_of(*value); }, row.target));
    }
    for (i16 channel = 0; channel < sensor::state.max_sensors; ++channel) {
        for (const channel_key& row : per_channel_keys) {
            if (!row.saved) continue;
            const auto text = [channel](auto target) { return text_of(value_of(target, channel)); };
            ini_write(key_of(row.stem, channel), std::visit(text, row.target));
        }
    }
}

} // namespace tyxo::Ini
