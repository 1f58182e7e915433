#include "xlg/history/value_pyramid.h"

#include <algorithm>

namespace tyxo::xlg {

namespace {

constexpr log_seconds longest_step = value_pyramid::step(value_pyramid::levels - 1);

log_seconds floor_of(log_seconds second) {
    const log_seconds rest = second % longest_step;
    return second - (rest < 0 ? rest + longest_step : rest);
}

} // namespace

void extremes::take(const extremes& others) {
    for (std::size_t value = 0; value < value_count; ++value) {
        least[value] = std::min(least[value], others.least[value]);
        greatest[value] = std::max(greatest[value], others.greatest[value]);
    }
}

void value_pyramid::add(log_seconds second, const measured& values) {
    std::vector<extremes>& seconds = nodes_[0];
    if (seconds.empty()) origin_ = floor_of(second);
    if (second < origin_) make_room_before(second);
    const auto index = static_cast<std::size_t>(second - origin_);
    if (index >= seconds.size()) seconds.resize(index + 1);
    seconds[index].take(values);
    const bool nothing_else = changed_from_ >= changed_to_;
    changed_from_ = nothing_else ? index : std::min(changed_from_, index);
    changed_to_ = nothing_else ? index + 1 : std::max(changed_to_, index + 1);
}

/// The clock went back behind the first line.
void value_pyramid::make_room_before(log_seconds second) {
    const log_seconds origin = floor_of(second);
    const auto more = static_cast<std::size_t>(origin_ - origin);
    for (int level = 0; level < levels; ++level) {
        std::vector<extremes>& all = nodes_[static_cast<std::size_t>(level)];
        all.insert(all.begin(), more / static_cast<std::size_t>(step(level)), extremes());
    }
    origin_ = origin;
    if (changed_from_ >= changed_to_) return;
    changed_from_ += more;
    changed_to_ += more;
}

void value_pyramid::settle() {
    std::size_t from = changed_from_;
    std::size_t to = changed_to_;
    changed_from_ = changed_to_ = 0;
    for (std::size_t level = 1; level < levels && from < to; ++level) {
        const std::vector<extremes>& below = nodes_[level - 1];
        std::vector<extremes>& all = nodes_[level];
        from /= 4;
        to = (to + 3) / 4;
        all.resize((below.size() + 3) / 4);
        for (std::size_t index = from; index < to; ++index) {
            all[index] = {};
            const std::size_t end = std::min(4 * index + 4, below.size());
            for (std::size_t part = 4 * index; part < end; ++part)
                all[index].take(below[part]);
        }
    }
}

int value_pyramid::level_for(double longest) {
    int level = 0;
    while (level + 1 < levels && static_cast<double>(step(level + 1)) <= longest)
        ++level;
    return level;
}

} // namespace tyxo::xlg
