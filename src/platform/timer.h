#pragma once
// A timer of the event loop.

#include <functional>
#include <memory>

namespace tyxo {

/// Ticks every `Interval` milliseconds while it is enabled. A tick never runs inside an earlier tick of the
/// same timer, and none runs while events are held (`hold_events`). On the desktop the shortest distance of
/// two ticks is 1/64 second, whatever the interval.
class Timer {
  public:
    Timer();
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    /// Milliseconds; 0 never ticks. Setting it starts the running period anew.
    void Interval(int milliseconds);
    [[nodiscard]] int Interval() const;

    /// Enabling starts a whole period, also when the timer was enabled already.
    void Enabled(bool on);
    [[nodiscard]] bool Enabled() const;

    void on_tick(std::function<void()> handler);

    struct state; ///< the platform's own

  private:
    std::unique_ptr<state> state_;
};

} // namespace tyxo
