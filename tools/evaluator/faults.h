// Damage to frames on the line, on command or by chance.
#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace tyxo::evaluator_sim {

enum class Fault {
    badcheck,   ///< wrong check digits
    uppercheck, ///< right check digits in upper case
    cut,        ///< the rest of the frame, with its end, is missing
    noise,      ///< bytes of nothing before the frame
    order,      ///< the blocks of a curve in the order 1, 3, 2, 4
};

constexpr std::array<std::string_view, 5> fault_names = {"badcheck", "uppercheck", "cut", "noise", "order"};

/// Random numbers that are the same for a seed on every platform.
class Random {
  public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}
    /// 0 up to, not including, 1.
    double share() { return static_cast<double>(engine_() >> 11) / 9007199254740992.0; }
    /// low to high, both included.
    size_t between(size_t low, size_t high) { return low + engine_() % (high - low + 1); }

  private:
    std::mt19937_64 engine_;
};

/// Which faults strike the next frames.
class Faults {
  public:
    void set_probability(Fault fault, double probability) { probability_.at(index(fault)) = probability; }
    void add_pending(Fault fault, int count) { pending_.at(index(fault)) += count; }
    void clear();
    /// Whether the fault strikes now; a pending one is used up.
    bool strikes(Fault fault, Random& random);

  private:
    static size_t index(Fault fault) { return static_cast<size_t>(fault); }
    std::array<double, fault_names.size()> probability_{};
    std::array<int, fault_names.size()> pending_{};
};

/// `count` bytes of every value but ":", so that noise can end a frame but never begin one.
std::string noise_bytes(size_t count, Random& random);

/// The complete frame with other check digits.
std::string with_bad_check(std::string frame);

/// Whether upper case makes a difference to the check digits of the complete frame.
bool check_has_letters(std::string_view frame);

/// The complete frame with its check digits in upper case.
std::string with_upper_check(std::string frame);

/// The beginning of the complete frame; at least its ":" stays, and its check digits and CR LF go.
std::string cut_frame(const std::string& frame, Random& random);

} // namespace tyxo::evaluator_sim
