#include "platform/timer.h"

namespace tyxo {

void Timer::Interval(int milliseconds) {
    interval_ = milliseconds;
    restart();
}

void Timer::Enabled(bool on) {
    if (on == enabled_) return;
    enabled_ = on;
    restart();
}

} // namespace tyxo
