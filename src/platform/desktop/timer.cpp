// A watchdog is restarted with every frame, and an event loop's timer is dear to restart. So the loop's timer
// is left alone when the end of a period moves away: it runs out early and goes on for the rest.

#include "platform/timer.h"

#include "platform/desktop/handlers.h"

#include <QTimer>

#include <algorithm>
#include <chrono>

namespace tyxo {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock; // the event loop's own

constexpr int shortest_interval = 16; // ms: the classic system clock ticks 64 times a second

milliseconds period(int interval) {
    return milliseconds(std::max(interval, shortest_interval));
}

} // namespace

struct Timer::clock : QTimer {
    steady_clock::time_point due; ///< end of the period
    steady_clock::time_point out; ///< when it runs out, while it is active

    /// Runs out at the end of the period.
    void arm(steady_clock::time_point now) {
        out = due;
        start(std::chrono::ceil<milliseconds>(std::max(due - now, steady_clock::duration::zero())));
    }
};

Timer::Timer() = default; // the clock is made at first use, when the application exists
Timer::~Timer() = default;

void Timer::restart() {
    if (!runs()) return; // it runs out in vain
    if (!clock_) {
        clock_ = std::make_unique<clock>();
        clock_->setTimerType(Qt::PreciseTimer);
        clock_->setSingleShot(true);
        QObject::connect(clock_.get(), &QTimer::timeout, [this] { tick(); });
    }
    const auto now = steady_clock::now();
    clock_->due = now + period(interval_);
    if (!clock_->isActive() || clock_->due < clock_->out) clock_->arm(now);
}

void Timer::tick() {
    if (!runs()) return;
    const auto now = steady_clock::now();
    const bool over = clock_->due <= now;
    if (over) clock_->due += period(interval_);
    if (clock_->due < now) clock_->due = now + period(interval_); // later by a period than it should be
    clock_->arm(now);
    if (!over || ticking_ || desktop::events_held() || !handler_) return;
    ticking_ = true;
    desktop::run_handler(desktop::source::device, handler_);
    ticking_ = false;
}

} // namespace tyxo
