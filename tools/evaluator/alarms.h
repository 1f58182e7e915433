// The alarm decisions of an Evaluator: comparison with the levels, alarm inhibit time, status words.
#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace tyxo::evaluator_sim {

/// Bits of the alarm status word.
namespace alarm_bit {
constexpr unsigned main = 0x8000;
constexpr unsigned pre = 0x4000;
constexpr unsigned overspeed = 0x2000;
constexpr unsigned main_error = 0x0100;
constexpr unsigned main_relay = 0x0080;
constexpr unsigned pre_relay = 0x0040;
constexpr unsigned ready = 0x0020;
constexpr unsigned main_ac = 0x0008;
constexpr unsigned pre_ac = 0x0004;
constexpr unsigned main_dc = 0x0002;
constexpr unsigned pre_dc = 0x0001;
} // namespace alarm_bit

/// A bit, or a group of bits, of the error status word by its name.
struct ErrorName {
    std::string_view name;
    unsigned bits;
};

std::span<const ErrorName> error_names();

/// What an alarm follows: the measured signals, or a command.
enum class Force { automatic, off, dc, ac, both };

/// What a single bit follows.
enum class Switch { automatic, off, on };

/// The alarms as commands have set them.
struct AlarmSettings {
    Force main = Force::automatic;
    Force pre = Force::automatic;
    Switch overspeed = Switch::automatic;
    Switch ready = Switch::automatic; ///< automatic: ready while there is no error
    unsigned errors = 0;              ///< error status word
    std::optional<unsigned> word;     ///< the whole alarm status word instead of everything else
};

/// What the comparison sees.
struct AlarmInputs {
    double dc = 0; ///< % of the DC alarm level
    double ac = 0; ///< % of the AC alarm level
    bool measures_ac = true;
    double speed = 0;      ///< rpm
    int overspeed = 0;     ///< rpm; 0 compares nothing
    int prealarmlevel = 0; ///< % of the alarm level; 0 compares nothing
};

/// Result of the comparisons. An alarm goes off only some way below its level, so that noise at the level
/// does not make it flutter.
struct AlarmLatches {
    bool main_dc = false;
    bool main_ac = false;
    bool pre_dc = false;
    bool pre_ac = false;
    bool overspeed = false;
};

AlarmLatches compare(const AlarmLatches& before, const AlarmInputs& inputs);

/// The alarm status word. While alarms are inhibited the relays stay open; the alarm bits show all the same.
unsigned alarm_word(const AlarmLatches& latches, const AlarmSettings& settings, bool inhibited);

/// The alarm inhibit time.
class Inhibit {
  public:
    /// Begins the time anew, however much of an earlier one was left.
    void start(double time, double seconds) { end_ = time + seconds; }
    void stop() { end_ = 0; }
    bool on(double time) const { return time < end_; }
    /// Seconds left, a begun second counting as a whole one; 0 when off.
    int left(double time) const;

  private:
    double end_ = 0;
};

} // namespace tyxo::evaluator_sim
