#include "platform/timer.h"

#include "platform/simulation.h"

#include <algorithm>

namespace tyxo {

struct Timer::state {
    int interval = 0;
    bool enabled = false;
    bool ticking = false;
    std::int64_t due = 0; ///< virtual time of the next tick
    std::function<void()> handler;

    void restart() { due = simulation::world().now_ms + interval; }
    [[nodiscard]] bool runs() const { return enabled && interval > 0 && !ticking; }
};

namespace {

/// Every timer there is, in the order of their making; never destroyed, as the timers are global too.
std::vector<Timer::state*>& all_timers() {
    static auto* const timers = new std::vector<Timer::state*>;
    return *timers;
}

Timer::state* next_timer() {
    Timer::state* next = nullptr;
    for (Timer::state* timer : all_timers()) {
        if (timer->runs() && (next == nullptr || timer->due < next->due)) next = timer;
    }
    return next;
}

void tick(Timer::state& timer) {
    timer.due += timer.interval;
    if (simulation::world().events_held || !timer.handler) return;
    timer.ticking = true;
    timer.handler();
    timer.ticking = false;
}

} // namespace

Timer::Timer() : state_(std::make_unique<state>()) {
    all_timers().push_back(state_.get());
}

Timer::~Timer() {
    std::erase(all_timers(), state_.get());
}

void Timer::Interval(int milliseconds) {
    state_->interval = milliseconds;
    state_->restart();
}

int Timer::Interval() const {
    return state_->interval;
}

void Timer::Enabled(bool on) {
    state_->enabled = on;
    state_->restart();
}

bool Timer::Enabled() const {
    return state_->enabled;
}

void Timer::on_tick(std::function<void()> handler) {
    state_->handler = std::move(handler);
}

namespace simulation {

void advance(std::int64_t milliseconds) {
    const std::int64_t end = world().now_ms + milliseconds;
    for (Timer::state* timer = next_timer(); timer != nullptr && timer->due <= end; timer = next_timer()) {
        world().now_ms = std::max(world().now_ms, timer->due);
        tick(*timer);
    }
    world().now_ms = end;
}

} // namespace simulation
} // namespace tyxo
