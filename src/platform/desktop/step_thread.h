#pragma once
// A thread that does one step after another, for steps that may take as long as a disk takes. Whoever hands
// one over waits for its end only as long as he likes.

#include <chrono>
#include <functional>
#include <memory>

namespace tyxo::desktop {

class step_thread {
  public:
    using clock = std::chrono::steady_clock;

    step_thread();
    ~step_thread(); ///< what was handed over is still done
    step_thread(const step_thread&) = delete;
    step_thread& operator=(const step_thread&) = delete;

    /// Hands a step over and waits for its end until then. True if it has ended. Failure: that of the step; a
    /// later one is told in the debug output.
    bool run(std::function<void()> step, clock::time_point until);
    /// True once if a step has failed that nobody waited for.
    [[nodiscard]] bool failed_late();
    /// Steps that have not begun.
    [[nodiscard]] std::size_t waiting();
    /// True if every step has ended.
    [[nodiscard]] bool idle();
    /// Waits until every step has ended; false when `until` comes first.
    [[nodiscard]] bool finish(clock::time_point until);

  private:
    struct work;
    std::shared_ptr<work> work_;
};

} // namespace tyxo::desktop
