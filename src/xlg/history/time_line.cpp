#include "xlg/history/time_line.h"

#include <algorithm>
#include <utility>

namespace tyxo::xlg {

void time_line::add(std::shared_ptr<measured_log> log) {
    logs_.push_back(std::move(log));
    std::ranges::stable_sort(logs_, {}, [](const auto& one) { return one->first(); });
    sum_up();
}

bool time_line::has(const std::string& file) const {
    return std::ranges::any_of(logs_, [&](const auto& log) { return log->name() == file; });
}

bool time_line::read_on() {
    // The one before still gets the line that ends it.
    const std::size_t growing = std::min<std::size_t>(logs_.size(), 2);
    bool more = false;
    for (const auto& log : std::span(logs_).last(growing))
        more = log->read_on() || more;
    if (more) sum_up();
    return more;
}

void time_line::sum_up() {
    first_ = 1;
    last_ = 0;
    std::size_t marks = 0;
    for (const auto& log : logs_) {
        if (!log->any()) continue;
        first_ = any() ? std::min(first_, log->first()) : log->first();
        last_ = std::max(last_, log->last());
        marks += log->marks().size();
    }
    if (marks == marks_.size()) return;
    marks_.clear();
    for (const auto& log : logs_)
        marks_.insert(marks_.end(), log->marks().begin(), log->marks().end());
    std::ranges::stable_sort(marks_, {}, &log_mark::time);
}

std::vector<measured_row> time_line::rows(log_seconds from, log_seconds to) const {
    std::vector<measured_row> all;
    for (const auto& log : logs_) {
        if (!log->any() || log->last() < from || log->first() > to) continue;
        const std::vector<measured_row> some = log->rows(from, to);
        all.insert(all.end(), some.begin(), some.end());
    }
    std::ranges::stable_sort(all, {}, &measured_row::ms);
    return all;
}

logged_cycle time_line::cycle_at(log_seconds time) const {
    logged_cycle found;
    for (std::size_t index = logs_.size(); index-- > 0 && !(found.thermo && found.angacc);) {
        const measured_log& log = *logs_[index];
        if (!log.any() || log.first() > time) continue;
        logged_cycle here = log.cycle_at(time);
        if (!found.thermo) found.thermo = here.thermo;
        if (!found.angacc) found.angacc = here.angacc;
    }
    return found;
}

std::optional<log_seconds> time_line::next_curve(log_seconds time) const {
    for (const auto& log : logs_) {
        if (!log->any() || log->last() < time) continue;
        if (const auto found = log->next_curve(time)) return found;
    }
    return std::nullopt;
}

std::optional<log_seconds> time_line::previous_curve(log_seconds time) const {
    for (std::size_t index = logs_.size(); index-- > 0;) {
        if (!logs_[index]->any() || logs_[index]->first() > time) continue;
        if (const auto found = logs_[index]->previous_curve(time)) return found;
    }
    return std::nullopt;
}

const measured_log* time_line::log_at(log_seconds time) const {
    const measured_log* found = nullptr;
    for (const auto& log : logs_)
        if (found == nullptr || log->first() <= time) found = log.get();
    return found;
}

} // namespace tyxo::xlg
