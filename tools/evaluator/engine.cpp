#include "engine.h"

#include <algorithm>
#include <cmath>

namespace tyxo::evaluator_sim {

namespace {

constexpr double adc_zero = 479;
constexpr double usual_level = 40; // % of alarm level of the hottest cylinder of a sound engine
constexpr double usual_spread = 7; // percentage points between the cylinders
constexpr double speed_ripple = 0.012;

/// A number in 0 to 1 that seed, topic and index determine.
double hashed(std::uint64_t seed, std::uint64_t topic, std::uint64_t index) {
    std::uint64_t x = seed + topic * 0x9E3779B97F4A7C15ULL + index * 0xD1B54A32D192ED03ULL;
    x ^= x >> 30;
    x *= 0xBF58476D1CE4E5B9ULL;
    x ^= x >> 27;
    x *= 0x94D049BB133111EBULL;
    x ^= x >> 31;
    return static_cast<double>(x >> 11) / 9007199254740992.0;
}

/// Noise in -1 to 1 that holds for a twentieth of a second.
double jitter(const EngineState& state, std::uint64_t topic, double time) {
    const auto slot = static_cast<std::uint64_t>(std::max(0.0, time) * 20);
    return 2 * hashed(state.seed, topic, slot) - 1;
}

/// A slow wave in -1 to 1 with a phase of its own.
double wave(const EngineState& state, std::uint64_t topic, double period, double time) {
    return std::sin(turn * (time / period + hashed(state.seed, topic, 0)));
}

double spread_of(const EngineState& state, size_t cylinder) {
    return -usual_spread * hashed(state.seed, 1, cylinder);
}

/// A standing engine has no thermosignal worth the name.
double signal_share(double speed, int ratedspeed) {
    return ratedspeed > 0 ? std::clamp(speed / (0.25 * ratedspeed), 0.0, 1.0) : 1.0;
}

} // namespace

double Ramp::at(double time) const {
    if (time >= start + duration) return to;
    if (time <= start) return from;
    return from + (to - from) * (time - start) / duration;
}

EngineState running_engine(const Parameters& parameters, std::uint64_t seed) {
    EngineState state;
    state.seed = seed;
    const double speed = parameters.ratedspeed;
    state.speed = {speed, speed, 0, 0};
    warm_all(state, usual_level, 0, 0);
    for (size_t i = 0; i < state.power.size(); ++i)
        state.power[i] = 0.9 + 0.2 * hashed(seed, 2, i);
    return state;
}

void warm_all(EngineState& state, double percent, double time, double seconds) {
    double hottest = -usual_spread;
    for (size_t i = 0; i < state.level.size(); ++i)
        hottest = std::max(hottest, spread_of(state, i));
    for (size_t i = 0; i < state.level.size(); ++i)
        state.level[i] = state.level[i].toward(percent + spread_of(state, i) - hottest, time, seconds);
}

void warm_cylinder(EngineState& state, int cylinder, double percent, double time, double seconds) {
    Ramp& level = state.level.at(static_cast<size_t>(cylinder - 1));
    level = level.toward(percent, time, seconds);
}

double engine_speed(const EngineState& state, double time) {
    const double speed = state.speed.at(time);
    if (state.steady) return speed;
    return speed * (1 + 0.0012 * wave(state, 3, 31, time) + 0.0006 * wave(state, 4, 3.7, time) +
                    0.0004 * jitter(state, 5, time));
}

std::array<double, 256> thermo_percent(const EngineState& state, const Geometry& geometry,
                                       const Parameters& parameters, double time) {
    const double share = signal_share(state.speed.at(time), parameters.ratedspeed);
    const double drift = state.steady ? 0
                                      : 0.8 * wave(state, 6, 47, time) + 0.5 * wave(state, 7, 13, time) +
                                            0.3 * jitter(state, 8, time);
    std::array<double, max_cylinders> level{};
    for (size_t place = 0; place < geometry.places(); ++place)
        level.at(place) = (state.level.at(geometry.cylinder_at(place)).at(time) + drift) * share;
    std::array<double, 256> percent{};
    for (size_t k = 0; k < percent.size(); ++k)
        for (size_t place = 0; place < geometry.places(); ++place)
            percent[k] += geometry.influence(k, place) * level[place];
    return percent;
}

Curve thermo_curve(const std::array<double, 256>& percent, double counts_of_full_level) {
    Curve curve{};
    for (size_t k = 0; k < curve.size(); ++k) {
        const double counts = adc_zero + percent[k] * counts_of_full_level / 100;
        curve[k] = static_cast<std::uint16_t>(std::lround(std::clamp(counts, 0.0, 65535.0)));
    }
    return curve;
}

Curve acceleration_curve(const EngineState& state, const Geometry& geometry, double tick, double time) {
    std::array<double, 256> push{};
    double mean = 0;
    for (size_t k = 0; k < push.size(); ++k) {
        for (size_t place = 0; place < geometry.places(); ++place)
            push[k] += geometry.push(k, place) * state.power.at(geometry.cylinder_at(place));
        mean += push[k] / static_cast<double>(push.size());
    }
    const double speed = engine_speed(state, time);
    Curve curve{};
    for (size_t k = 0; k < curve.size(); ++k) {
        const double moment = speed * (1 + speed_ripple * (push[k] - mean));
        const double ticks = moment > 0 ? 60 / (moment * 256 * tick) : 65535;
        curve[k] = static_cast<std::uint16_t>(std::lround(std::clamp(ticks, 1.0, 65535.0)));
    }
    return curve;
}

double clock_tick(std::string_view firmware) {
    return firmware.size() > 1 && firmware[1] == '2' ? 0.0000004 : 0.000000333;
}

Values measure(const EngineState& state, const Geometry& geometry, const Parameters& parameters,
               ParameterForm form, double time) {
    const std::array<double, 256> percent = thermo_percent(state, geometry, parameters, time);
    double sum = 0;
    double squares = 0;
    for (const double value : percent) {
        sum += value;
        squares += value * value;
    }
    const double mean = sum / 256;
    const double mean_square = squares / 256;
    const double dc = dc_gain(parameters, form);
    Values values;
    values.tsignal = *std::max_element(percent.begin(), percent.end());
    values.speed = engine_speed(state, time);
    values.voltage = values.tsignal * dc / 10000; // 100 ADC counts are one millivolt
    values.effective_dc = std::sqrt(mean_square);
    values.effective_ac =
        std::sqrt(std::max(0.0, mean_square - mean * mean)) * dc / ac_gain(parameters, form);
    return values;
}

} // namespace tyxo::evaluator_sim
