#include "alarms.h"

#include <cmath>

namespace tyxo::evaluator_sim {

namespace {

constexpr double alarm_level = 100;
constexpr double release_percent = 3;      // below the level, percentage points
constexpr double release_overspeed = 0.99; // of the overspeed

bool exceeds(bool before, double value, double level) {
    return level > 0 && value >= (before ? level - release_percent : level);
}

constexpr ErrorName errors[] = {
    {"memory_overflow", 0x8000}, {"crc", 0x4000},  {"memory_timeout", 0x2000}, {"memory", 0x1000},
    {"testsignal", 0x0020},      {"sync", 0x0010}, {"incb", 0x0008},           {"inca", 0x0004},
    {"not_connected", 0x0063},
};

bool has_dc(Force force, bool measured) {
    return force == Force::automatic ? measured : force == Force::dc || force == Force::both;
}

bool has_ac(Force force, bool measured) {
    return force == Force::automatic ? measured : force == Force::ac || force == Force::both;
}

} // namespace

std::span<const ErrorName> error_names() {
    return errors;
}

AlarmLatches compare(const AlarmLatches& before, const AlarmInputs& inputs) {
    AlarmLatches now;
    now.main_dc = exceeds(before.main_dc, inputs.dc, alarm_level);
    now.pre_dc = exceeds(before.pre_dc, inputs.dc, inputs.prealarmlevel);
    now.main_ac = inputs.measures_ac && exceeds(before.main_ac, inputs.ac, alarm_level);
    now.pre_ac = inputs.measures_ac && exceeds(before.pre_ac, inputs.ac, inputs.prealarmlevel);
    const double limit = before.overspeed ? inputs.overspeed * release_overspeed : inputs.overspeed;
    now.overspeed = inputs.overspeed > 0 && inputs.speed > limit;
    return now;
}

unsigned alarm_word(const AlarmLatches& latches, const AlarmSettings& settings, bool inhibited) {
    if (settings.word) return *settings.word;
    const bool main_dc = has_dc(settings.main, latches.main_dc);
    const bool main_ac = has_ac(settings.main, latches.main_ac);
    const bool pre_dc = has_dc(settings.pre, latches.pre_dc);
    const bool pre_ac = has_ac(settings.pre, latches.pre_ac);
    const bool main = main_dc || main_ac;
    const bool pre = pre_dc || pre_ac;
    const bool overspeed =
        settings.overspeed == Switch::automatic ? latches.overspeed : settings.overspeed == Switch::on;
    const bool ready =
        settings.ready == Switch::automatic ? settings.errors == 0 : settings.ready == Switch::on;

    unsigned word = 0;
    const auto set = [&word](bool condition, unsigned bit) { word |= condition ? bit : 0; };
    set(main, alarm_bit::main);
    set(pre, alarm_bit::pre);
    set(overspeed, alarm_bit::overspeed);
    set(settings.errors != 0, alarm_bit::main_error);
    set(main && !inhibited, alarm_bit::main_relay);
    set(pre && !inhibited, alarm_bit::pre_relay);
    set(ready, alarm_bit::ready);
    set(main_ac, alarm_bit::main_ac);
    set(pre_ac, alarm_bit::pre_ac);
    set(main_dc, alarm_bit::main_dc);
    set(pre_dc, alarm_bit::pre_dc);
    return word;
}

int Inhibit::left(double time) const {
    return on(time) ? static_cast<int>(std::ceil(end_ - time)) : 0;
}

} // namespace tyxo::evaluator_sim
