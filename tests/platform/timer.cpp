#include "platform/timer.h"

#include "platform/simulation.h"

#include <algorithm>

namespace tyxo {

struct Timer::clock {
    std::int64_t due = 0; ///< virtual time of the next tick
    std::function<bool()> runs;
    std::function<void()> tick;
};

namespace {

/// Every timer there is, in the order of their making; never destroyed, as the timers are global too.
std::vector<Timer::clock*>& all_clocks() {
    static auto* const clocks = new std::vector<Timer::clock*>;
    return *clocks;
}

Timer::clock* next_clock() {
    Timer::clock* next = nullptr;
    for (Timer::clock* clock : all_clocks()) {
        if (clock->runs() && (next == nullptr || clock->due < next->due)) next = clock;
    }
    return next;
}

} // namespace

Timer::Timer() : clock_(std::make_unique<clock>()) {
    clock_->runs = [this] { return runs() && !ticking_; };
    clock_->tick = [this] { tick(); };
    all_clocks().push_back(clock_.get());
}

Timer::~Timer() {
    std::erase(all_clocks(), clock_.get());
}

void Timer::restart() {
    clock_->due = simulation::world().now_ms + interval_;
}

void Timer::tick() {
    clock_->due += interval_;
    if (simulation::world().events_held || !handler_) return;
    ticking_ = true;
    handler_();
    ticking_ = false;
}

namespace simulation {

void advance(std::int64_t milliseconds) {
    const std::int64_t end = world().now_ms + milliseconds;
    for (Timer::clock* clock = next_clock(); clock != nullptr && clock->due <= end; clock = next_clock()) {
        world().now_ms = std::max(world().now_ms, clock->due);
        clock->tick();
    }
    world().now_ms = end;
}

} // namespace simulation
} // namespace tyxo
