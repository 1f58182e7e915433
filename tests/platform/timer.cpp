#include "platform/timer.h"

#include "simulated_ports.h"

#include "basics/failure.h"
#include "platform/debug_output.h"
#include "platform/simulation.h"

#include <algorithm>
#include <utility>

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
    if (runs()) clock_->due = simulation::world().now_ms + interval_;
}

void Timer::tick() {
    clock_->due += interval_;
    if (simulation::world().events_held || !handler_) return;
    ticking_ = true;
    simulation::machine& machine = simulation::world();
    const std::int64_t begin = machine.now_ms;
    ++machine.ticks_running;
    if (const auto why = attempt(handler_)) debug_output(*why);
    --machine.ticks_running;
    machine.longest_tick = std::max(machine.longest_tick, machine.now_ms - begin);
    ticking_ = false;
    // Ticks that came due inside this one are lost.
    const std::int64_t late = simulation::world().now_ms - clock_->due;
    if (late >= 0 && interval_ > 0) clock_->due += (late / interval_ + 1) * interval_;
}

namespace simulation {

namespace {

bool tick_next(Timer::clock& clock) {
    world().now_ms = std::max(world().now_ms, clock.due);
    clock.tick();
    return true;
}

} // namespace

bool happen_next(std::int64_t end) {
    Timer::clock* const clock = next_clock();
    auto& planned = world().planned;
    const auto event = std::ranges::min_element(planned, {}, &planned_event::due); // the first of equals
    const bool tick_due = clock != nullptr && clock->due <= end;
    if (event == planned.end() || event->due > end) return tick_due && tick_next(*clock);
    if (tick_due && clock->due < event->due) return tick_next(*clock);
    const planned_event now = std::move(*event);
    planned.erase(event);
    world().now_ms = std::max(world().now_ms, now.due);
    now.happen();
    return true;
}

void after(std::int64_t milliseconds, std::function<void()> happen) {
    world().planned.push_back({world().now_ms + milliseconds, std::move(happen)});
}

void advance(std::int64_t milliseconds) {
    const std::int64_t end = world().now_ms + milliseconds;
    while (happen_next(end)) {
    }
    world().now_ms = std::max(world().now_ms, end);
}

} // namespace simulation
} // namespace tyxo
