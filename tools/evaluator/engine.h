// The physics of the engine under watch: speed, thermosignal and curves as pure functions of a state and the
// time.
//
// Nothing here reads a clock or keeps a random generator. The irregularities are hashed from the seed and the
// time, so the same seed and the same commands give the same values.
#pragma once

#include "frames.h"
#include "parameters.h"

#include <array>
#include <cstdint>
#include <numbers>
#include <vector>

namespace tyxo::evaluator_sim {

inline constexpr double turn = 2 * std::numbers::pi;

/// A value that goes from one level to another in a straight line and then stays.
struct Ramp {
    double from = 0;
    double to = 0;
    double start = 0;    ///< seconds
    double duration = 0; ///< seconds; 0 is a step

    double at(double time) const;
    /// The ramp that leaves the present value at `time` for `target`.
    Ramp toward(double target, double time, double seconds) const {
        return {at(time), target, time, seconds};
    }
};

/// What the commands change about an engine.
struct EngineState {
    std::uint64_t seed = 0;
    bool steady = false; ///< no drift, no noise
    Ramp speed;          ///< rpm
    std::array<Ramp, max_cylinders>
        level{}; ///< thermosignal per cylinder (index: number - 1), % of alarm level
    std::array<double, max_cylinders> power{}; ///< share of each cylinder in the drive, 1 is normal
};

/// An engine that runs at its rated speed, cold enough for no alarm.
EngineState running_engine(const Parameters& parameters, std::uint64_t seed);

/// Ramps all cylinders together; the hottest reaches `percent`, the others stay behind by their usual
/// difference.
void warm_all(EngineState& state, double percent, double time, double seconds);

/// Ramps one cylinder, 1 to max_cylinders, to `percent`.
void warm_cylinder(EngineState& state, int cylinder, double percent, double time, double seconds);

/// Where each cylinder acts in the cycle, prepared for the 256 samples. Costly to build, so it is kept while
/// the engine's layout stays.
class Geometry {
  public:
    explicit Geometry(const Parameters& parameters);

    /// Whether this geometry is still that of the parameters.
    bool fits(const Parameters& parameters) const;

    int cylinders() const { return cylinders_; }
    /// Influence of the i-th firing position on a sample; over all positions it adds up to 1.
    double influence(size_t sample, size_t place) const { return share_[sample * places() + place]; }
    /// Push of the i-th firing position on the crankshaft at a sample, 1 at its middle.
    double push(size_t sample, size_t place) const { return push_[sample * places() + place]; }
    /// Index (number - 1) of the cylinder at a firing position; the banks of a V engine alternate.
    size_t cylinder_at(size_t place) const { return cylinder_[place]; }
    size_t places() const { return static_cast<size_t>(cylinders_); }

  private:
    int cylinders_;
    int strokes_;
    std::array<int, max_cylinders> order_;
    std::array<int, max_cylinders> angles_;
    std::vector<size_t> cylinder_;
    std::vector<double> share_;
    std::vector<double> push_;
};

/// Mean engine speed in rpm.
double engine_speed(const EngineState& state, double time);

/// Thermosignal over the cycle in % of the DC alarm level.
std::array<double, 256> thermo_percent(const EngineState& state, const Geometry& geometry,
                                       const Parameters& parameters, double time);

/// Samples of a thermo curve: ADC counts around the converter's zero point.
Curve thermo_curve(const std::array<double, 256>& percent, double counts_of_full_level);

/// Samples of an angular acceleration curve: clock ticks per 1/256 turn, by the unit's clock of `tick`
/// seconds.
Curve acceleration_curve(const EngineState& state, const Geometry& geometry, double tick, double time);

/// Clock period in seconds of a unit with this firmware: its second character tells the clock.
double clock_tick(std::string_view firmware);

/// The scalar values of one moment, without a test signal.
Values measure(const EngineState& state, const Geometry& geometry, const Parameters& parameters,
               ParameterForm form, double time);

} // namespace tyxo::evaluator_sim
