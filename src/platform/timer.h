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
    [[nodiscard]] int Interval() const { return interval_; }

    /// Enabling a timer that is disabled starts a whole period. One that is enabled already goes on with its
    /// period, so that nobody can put a tick off by asking for it again and again.
    void Enabled(bool on);
    [[nodiscard]] bool Enabled() const { return enabled_; }

    void on_tick(std::function<void()> handler) { handler_ = std::move(handler); }

    struct clock; ///< the platform's own

  private:
    [[nodiscard]] bool runs() const { return enabled_ && interval_ > 0; }
    void restart(); ///< the platform's: a whole period from now, or none when the timer does not run
    void tick();    ///< the period is over

    int interval_ = 0;
    bool enabled_ = false;
    bool ticking_ = false;
    std::function<void()> handler_;
    std::unique_ptr<clock> clock_;
};

} // namespace tyxo
