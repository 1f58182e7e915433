#include "evaluator.h"

#include "faults.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

namespace months {

namespace sim = tyxo::evaluator_sim;

namespace {

constexpr std::array<std::string_view, 9> engines{
    "inline1-4", "inline6-4", "inline9-4", "inline5-2", "inline12-2", "v8-4", "v12-4", "v16-4", "v24-4"};
constexpr std::array<std::string_view, 5> firmwares{"V4.31", "V3.02", "V4.29", "T4.31", "V2.00"};
/// From frame to frame: an engine at work, one that idles, one that is hardly worth a look.
constexpr std::array<std::int64_t, 4> paces{1000, 2000, 2000, 2500};
constexpr std::int64_t hurry_pace = 29; // ms: 110 characters of 3840 a second
constexpr std::int64_t parameter_pause = 60'000;
constexpr std::size_t curve_every = 150; // frames
constexpr double full_level = 32767;

sim::Curve any_curve(chance& dice, double level) {
    sim::Curve curve{};
    const double turns = static_cast<double>(dice.between(1, 12));
    for (std::size_t sample = 0; sample < curve.size(); ++sample) {
        const double angle = static_cast<double>(sample) * turns * 6.283185307179586 / 256;
        const double value = level * (1 + 0.2 * std::sin(angle)) + static_cast<double>(dice.between(-3, 3));
        curve.at(sample) = static_cast<std::uint16_t>(std::clamp(value, 0.0, full_level));
    }
    return curve;
}

} // namespace

evaluator::evaluator(std::uint64_t seed) : chance_(seed) {
    new_engine(chance_.next());
    due_ = chance_.between(50, 3000);
}

void evaluator::new_engine(std::uint64_t seed) {
    chance dice(seed);
    parameters_ = *sim::engine_preset(dice.one_of(engines));
    parameters_.alarmlevel = static_cast<int>(dice.between(0, 5));
    parameters_.dcalarmpercent = static_cast<int>(dice.between(50, 150));
    parameters_.alminhibit_time = static_cast<int>(dice.between(0, 600));
    parameters_.theff_alm = static_cast<int>(dice.between(0, 1));
    parameter_form_ = static_cast<sim::ParameterForm>(dice.below(7));
    values_form_ = static_cast<sim::ValuesForm>(dice.below(5));
    status_form_ = dice.once_in(4) ? sim::StatusForm::brief : sim::StatusForm::full;
    status_.firmware = dice.one_of(firmwares);
    status_.mode = static_cast<int>(dice.one_of(std::array{0, 1, 1, 99}));
    pace_ms_ = dice.one_of(paces);
    values_.speed = parameters_.ratedspeed;
    values_.tsignal = 40;
    values_.voltage = 12;
    values_.effective_dc = 35;
    values_.effective_ac = 20;
    last_parameters_ = -parameter_pause;
}

void evaluator::alarm_bits(std::uint64_t pattern) {
    // The alarm bits and the relays that belong to them; most of the error bits are rarely set.
    constexpr unsigned alarms = 0x2020U | 0xC16FU;
    status_.alarm = static_cast<unsigned>(pattern) & alarms & ~0x0080U;
    status_.error = chance_.once_in(3) ? static_cast<unsigned>(pattern >> 16U) & 0xF07FU : 0;
}

void evaluator::main_alarm(bool on) {
    status_.alarm = on ? status_.alarm | 0x8082U : status_.alarm & ~0x8082U;
}

void evaluator::inhibit(bool on, int left) {
    status_.inhibit_on = on;
    status_.inhibit_left = left;
}

void evaluator::test_signal(int state) {
    values_.test_signal = state;
}

void evaluator::hurry(std::int64_t until_ms) {
    hurries_until_ = until_ms;
}

void evaluator::silence(std::int64_t until_ms) {
    pieces_.clear(); // what was being said breaks off
    due_ = std::max(due_, until_ms);
}

void evaluator::hurt_next(damage how, int frames) {
    damage_ = how;
    damaged_frames_ = frames;
}

void evaluator::parameters_soon() {
    last_parameters_ = due_ - parameter_pause;
}

std::string evaluator::speak() {
    if (pieces_.empty()) queue(hurt(next_frame()));
    std::string bytes = std::move(pieces_.front());
    pieces_.pop_front();
    if (!pieces_.empty()) {
        due_ += chance_.between(1, 8);
    } else if (due_ < hurries_until_) {
        due_ += hurry_pace;
    } else {
        due_ += pace_ms_ + chance_.between(-pace_ms_ / 10, pace_ms_ / 10);
    }
    return bytes;
}

std::string evaluator::next_frame() {
    if (due_ - last_parameters_ >= parameter_pause && chance_.once_in(3)) {
        last_parameters_ = due_;
        return sim::close_frame(sim::parameters_body(parameters_, parameter_form_));
    }
    if (chance_.once_in(curve_every)) return whole_curve(chance_.once_in(2) ? 3 : 4);
    if (chance_.once_in(500)) return sim::close_frame(sim::identification_body({}));
    if (++turn_ % 2 == 0) {
        if (status_.inhibit_left > 0) --status_.inhibit_left;
        return sim::close_frame(sim::status_body(status_, status_form_));
    }
    const auto walk = [this](double& value, double step, double least, double most) {
        value = std::clamp(value + step * static_cast<double>(chance_.between(-5, 5)), least, most);
    };
    walk(values_.tsignal, 0.7, -30, 160);
    walk(values_.speed, 1.3, 0, 1.2 * parameters_.overspeed);
    walk(values_.voltage, 0.3, -50, 300);
    walk(values_.effective_dc, 0.5, 0, 200);
    walk(values_.effective_ac, 0.5, 0, 200);
    return sim::close_frame(sim::values_body(values_, values_form_));
}

std::string evaluator::whole_curve(int code) {
    const bool thermo = code == 3;
    const sim::Curve curve = any_curve(chance_, thermo ? 479 + values_.tsignal : 3000);
    std::array<int, sim::curve_blocks> order{1, 2, 3, 4};
    if (damage_ == damage::wrong_order && damaged_frames_ > 0) {
        --damaged_frames_;
        std::swap(order[chance_.below(4)], order[chance_.below(4)]);
    }
    std::string bytes;
    for (const int block : order)
        bytes += sim::close_frame(sim::curve_body(code, block, curve));
    return bytes;
}

std::string evaluator::hurt(std::string frame) {
    if (damaged_frames_ == 0 || damage_ == damage::wrong_order) return frame; // that waits for a curve
    --damaged_frames_;
    sim::Random random(chance_.next());
    switch (damage_) {
    case damage::wrong_check:
        return sim::with_bad_check(frame);
    case damage::cut:
        return sim::cut_frame(frame, random);
    case damage::noise_before:
        return sim::noise_bytes(random.between(1, 40), random) + frame;
    case damage::twice:
        return frame + frame;
    case damage::upper_case:
        return sim::with_upper_check(frame);
    case damage::wrong_order:
    case damage::none:
        break;
    }
    return frame;
}

/// Most frames arrive as one event of the port, others in pieces or byte by byte.
void evaluator::queue(std::string bytes) {
    if (!chance_.once_in(4)) {
        pieces_.push_back(std::move(bytes));
        return;
    }
    const std::size_t most = chance_.once_in(20) ? 1 : 31;
    while (!bytes.empty()) {
        const std::size_t length = std::min(bytes.size(), 1 + chance_.below(most));
        pieces_.push_back(bytes.substr(0, length));
        bytes.erase(0, length);
    }
}

} // namespace months
