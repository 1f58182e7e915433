#include "controls/time_axis.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace tyxo {

namespace {

constexpr std::int64_t second = 1000;
constexpr std::int64_t minute = 60 * second;
constexpr std::int64_t hour = 60 * minute;
constexpr std::int64_t day = 24 * hour;

// All but the last divide a day, so that labels stand at the same times every day.
constexpr std::array<std::int64_t, 21> steps{
    second,     2 * second, 5 * second, 10 * second, 20 * second, 30 * second, minute,
    2 * minute, 3 * minute, 5 * minute, 10 * minute, 15 * minute, 30 * minute, hour,
    2 * hour,   3 * hour,   4 * hour,   6 * hour,    12 * hour,   day,         7 * day};

constexpr std::int64_t most_labels = 100;
constexpr std::int64_t jitter = 5;    // ms by which two readings of the same clock may differ
constexpr int most_clock_changes = 8; // in one picture; a year has two

/// What the local clock shows, as ms since a fixed midnight of a world without time zones.
std::int64_t shown_ms(const local_time& moment) {
    using namespace std::chrono;
    const sys_days date = year(moment.year) / month(static_cast<unsigned>(moment.month)) /
                          std::chrono::day(static_cast<unsigned>(moment.day));
    return date.time_since_epoch().count() * day + moment.hour * hour + moment.minute * minute +
           moment.second * second;
}

local_time moment_of(std::int64_t shown) {
    using namespace std::chrono;
    const auto days_since = floor<days>(milliseconds(shown));
    const year_month_day date{sys_days(days_since)};
    const auto seconds = static_cast<i32>((milliseconds(shown) - days_since).count() / second);
    return {static_cast<int>(date.year()),
            static_cast<i32>(static_cast<unsigned>(date.month())),
            static_cast<i32>(static_cast<unsigned>(date.day())),
            seconds / 3600,
            seconds / 60 % 60,
            seconds % 60};
}

std::int64_t floor_to(std::int64_t value, std::int64_t step) {
    const std::int64_t rest = value % step;
    return value - (rest < 0 ? rest + step : rest);
}

/// A stretch in which the local clock runs evenly.
struct even_stretch {
    std::int64_t from;
    std::int64_t to;
    std::int64_t offset; ///< clock minus `running_ms`
};

class clock_reader {
  public:
    explicit clock_reader(const local_clock& clock) : clock_(clock) {}

    /// The stretch that begins at `from`, up to `to` or to the last moment before the clock is changed.
    [[nodiscard]] even_stretch stretch(std::int64_t from, std::int64_t to) const {
        const std::int64_t start = at(from);
        const auto even = [&](std::int64_t moment) {
            const std::int64_t strayed = (at(moment) - start) - (moment - from);
            return strayed <= second && strayed >= -second; // the clock shows no parts of a second
        };
        std::int64_t last = to;
        if (!even(to)) last = last_before(from, to, even);
        return {from, last, offset(from, last)};
    }

  private:
    [[nodiscard]] std::int64_t at(std::int64_t moment) const { return shown_ms(clock_(moment)); }

    /// The last moment that `holds`, which is so at `yes` and not so at `no`.
    template <class Holds> static std::int64_t last_before(std::int64_t yes, std::int64_t no, Holds holds) {
        while (no - yes > 1) {
            const std::int64_t middle = yes + (no - yes) / 2;
            (holds(middle) ? yes : no) = middle;
        }
        return yes;
    }

    /// To the millisecond, where the clock shows a new second.
    [[nodiscard]] std::int64_t offset(std::int64_t from, std::int64_t to) const {
        const std::int64_t start = at(from);
        const std::int64_t end = std::min(to, from + second);
        if (at(end) == start) return start - from;
        const std::int64_t last =
            last_before(from, end, [&](std::int64_t moment) { return at(moment) == start; });
        return start + second - (last + 1);
    }

    const local_clock& clock_;
};

int value_of(char letter, const local_time& moment) {
    switch (letter) {
    case 'd':
        return moment.day;
    case 'm':
        return moment.month;
    case 'y':
        return moment.year % 100;
    case 'h':
        return moment.hour;
    case 'n':
        return moment.minute;
    case 's':
        return moment.second;
    default:
        return -1;
    }
}

} // namespace

std::int64_t label_step(std::int64_t least_distance) {
    const auto* const found = std::lower_bound(steps.begin(), steps.end(), least_distance);
    return found == steps.end() ? floor_to(least_distance, day) + day : *found;
}

time_ticks ticks_of(const time_axis& axis, const local_clock& clock) {
    time_ticks ticks;
    if (axis.to < axis.from) return ticks;
    // More than the hundredth part, or labels at both ends would be one too many.
    const std::int64_t least = std::max(axis.least_distance, (axis.to - axis.from) / most_labels + 1);
    const std::int64_t step = label_step(least);
    const int parts = std::clamp(axis.minor_count, 0, 99) + 1;
    const auto visible = [&](std::int64_t time) { return time >= axis.from && time <= axis.to; };

    // One step earlier, so that a label that is left out beside one before the picture stays out.
    const clock_reader reader(clock);
    std::int64_t from = axis.from - step;
    std::int64_t last_label = from - least;
    for (int change = 0; change <= most_clock_changes && from <= axis.to; ++change) {
        const even_stretch even = reader.stretch(from, axis.to);
        const auto inside = [&](std::int64_t time) { return time >= even.from - jitter && time <= even.to; };
        for (std::int64_t shown = floor_to(even.from + even.offset, step); shown - even.offset <= even.to;
             shown += step) {
            const std::int64_t time = shown - even.offset;
            if (inside(time) && time - last_label >= least) {
                if (visible(time)) ticks.labels.push_back({time, formatted(axis.format, moment_of(shown))});
                last_label = time;
            }
            for (int part = 1; part < parts; ++part) {
                const std::int64_t minor = time + part * step / parts;
                if (inside(minor) && visible(minor)) ticks.minor.push_back(minor);
            }
        }
        from = even.to + 1;
    }
    return ticks;
}

std::string formatted(std::string_view format, const local_time& moment) {
    std::string text;
    for (std::size_t begin = 0; begin < format.size();) {
        const std::size_t end = std::min(format.find_first_not_of(format[begin], begin), format.size());
        const int value = value_of(format[begin], moment);
        if (value < 0) {
            text.append(format.substr(begin, end - begin));
        } else {
            const std::string digits = std::to_string(value);
            if (end - begin > 1 && digits.size() == 1) text += '0';
            text.append(digits);
        }
        begin = end;
    }
    return text;
}

} // namespace tyxo
