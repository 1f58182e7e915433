#include "schedule.h"

#include <cstddef>

namespace tyxo::evaluator_sim {

namespace {

// Parameters first: a log begins with them. Curves last: they keep the line busy longest.
constexpr int sending_order[] = {0, 6, 8, 1, 2, 5, 7, 3, 4};

} // namespace

void Schedule::restart(double time) {
    for (Entry& entry : entries_)
        entry.next = time;
    entries_[4].next = time + entries_[4].period / 2;
}

void Schedule::set_pace(Pace pace, double time) {
    pace_ = pace;
    restart(time);
}

void Schedule::set_period(int code, double seconds, double time) {
    entries_.at(static_cast<size_t>(code)) = {seconds, time};
}

void Schedule::resume(double time) {
    paused_ = false;
    restart(time);
}

std::vector<int> Schedule::due(double time) {
    std::vector<int> codes;
    if (pace_ == Pace::off || paused_) return codes;
    for (const int code : sending_order) {
        Entry& entry = entries_.at(static_cast<size_t>(code));
        const bool by_filling = pace_ == Pace::full && (code == 1 || code == 3 || code == 4);
        if (entry.period <= 0 || by_filling || time < entry.next) continue;
        codes.push_back(code);
        entry.next += entry.period;
        if (entry.next <= time) entry.next = time + entry.period;
    }
    return codes;
}

} // namespace tyxo::evaluator_sim
