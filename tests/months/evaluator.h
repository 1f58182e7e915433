#pragma once
// One Evaluator of the simulated plant: an engine that somebody else alarms, warms and stops, and the line
// that it talks over. It counts time in milliseconds and says by itself when it has something to say.

#include "chance.h"

#include "frames.h"
#include "parameters.h"

#include <cstdint>
#include <deque>
#include <string>

namespace months {

/// What the line does to a frame.
enum class damage { none, wrong_check, cut, noise_before, twice, wrong_order, upper_case };
inline constexpr std::size_t damages = 7;

class evaluator {
  public:
    explicit evaluator(std::uint64_t seed);

    /// When it next puts bytes on its line.
    [[nodiscard]] std::int64_t due() const { return due_; }
    /// The bytes that arrive together at `due`, one event of the port.
    std::string speak();

    // What happens to it.
    void alarm_bits(std::uint64_t pattern); ///< other alarm and error bits
    void main_alarm(bool on);
    void inhibit(bool on, int left);
    void test_signal(int state);
    void new_engine(std::uint64_t seed); ///< other engine, firmware and lengths of frames
    void hurry(std::int64_t until_ms);   ///< as fast as the line takes it
    void silence(std::int64_t until_ms);
    void hurt_next(damage how, int frames);
    void parameters_soon(); ///< the parameter frame comes next

  private:
    std::string next_frame();
    std::string whole_curve(int code);
    std::string hurt(std::string frame);
    void queue(std::string bytes);

    chance chance_;
    tyxo::evaluator_sim::Parameters parameters_;
    tyxo::evaluator_sim::ParameterForm parameter_form_{};
    tyxo::evaluator_sim::ValuesForm values_form_{};
    tyxo::evaluator_sim::StatusForm status_form_{};
    tyxo::evaluator_sim::Values values_;
    tyxo::evaluator_sim::Status status_;
    std::deque<std::string> pieces_; ///< of what is being said
    std::int64_t due_ = 0;
    std::int64_t pace_ms_ = 2000; ///< from frame to frame
    std::int64_t hurries_until_ = 0;
    std::int64_t last_parameters_ = -1'000'000;
    damage damage_ = damage::none;
    int damaged_frames_ = 0;
    int turn_ = 0;
};

} // namespace months
