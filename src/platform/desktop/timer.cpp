#include "platform/timer.h"

#include "platform/desktop/handlers.h"

#include <QTimer>

#include <algorithm>

namespace tyxo {

namespace {

constexpr int shortest_interval = 16; // ms: the classic system clock ticks 64 times a second

} // namespace

struct Timer::clock : QTimer {};

Timer::Timer() = default; // the clock is made at first use, when the application exists
Timer::~Timer() = default;

void Timer::restart() {
    if (!runs()) {
        if (clock_) clock_->stop();
        return;
    }
    if (!clock_) {
        clock_ = std::make_unique<clock>();
        clock_->setTimerType(Qt::PreciseTimer);
        QObject::connect(clock_.get(), &QTimer::timeout, [this] { tick(); });
    }
    clock_->start(std::max(interval_, shortest_interval));
}

void Timer::tick() {
    if (ticking_ || desktop::events_held() || !handler_) return;
    ticking_ = true;
    desktop::run_handler(desktop::source::device, handler_);
    ticking_ = false;
}

} // namespace tyxo
