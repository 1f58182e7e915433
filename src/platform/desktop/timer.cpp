#include "platform/timer.h"

#include "platform/desktop/handlers.h"

#include <QTimer>

#include <algorithm>

namespace tyxo {

namespace {

constexpr int shortest_interval = 16; // ms: the classic system clock ticks 64 times a second

} // namespace

struct Timer::state {
    int interval = 0;
    bool enabled = false;
    bool ticking = false;
    std::function<void()> handler;
    std::unique_ptr<QTimer> clock; // made at first use, when the application exists

    void restart() {
        if (!enabled || interval <= 0) {
            if (clock) clock->stop();
            return;
        }
        if (!clock) make_clock();
        clock->start(std::max(interval, shortest_interval));
    }

    void make_clock() {
        clock = std::make_unique<QTimer>();
        clock->setTimerType(Qt::PreciseTimer);
        QObject::connect(clock.get(), &QTimer::timeout, [this] { tick(); });
    }

    void tick() {
        if (ticking || desktop::events_held() || !handler) return;
        ticking = true;
        desktop::run_handler(desktop::source::device, handler);
        ticking = false;
    }
};

Timer::Timer() : state_(std::make_unique<state>()) {}
Timer::~Timer() = default;

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

} // namespace tyxo
