#include "xlg/history/measured_log.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tyxo::xlg {

namespace {

constexpr log_seconds day = 86'400;
/// The minute of lines that are left out.
constexpr std::int64_t never = std::numeric_limits<std::int64_t>::min();

std::int64_t minute_of(log_seconds time) {
    return time / 60 - (time % 60 < 0 ? 1 : 0);
}

/// Calls `take` with each number between blanks.
template <class Take> void each_number(std::string_view body, Take take) {
    std::uint32_t number = 0;
    bool any = false;
    for (const char character : body) {
        if (character == ' ') {
            if (any) take(number);
            number = 0;
            any = false;
        } else {
            number = number * 10 + static_cast<std::uint32_t>(character - '0');
            any = true;
        }
    }
    if (any) take(number);
}

logged_curve curve_of(const entry& one, log_seconds time) {
    logged_curve curve{time, {}};
    std::size_t sample = 0;
    each_number(one.body, [&](std::uint32_t number) {
        if (sample < curve.samples.size()) curve.samples[sample++] = static_cast<i32>(number);
    });
    return curve;
}

const record_form& thermo_form() {
    return record_forms()[1];
}

const record_form& angacc_form() {
    return record_forms()[2];
}

void spread_within_seconds(std::vector<measured_row>& rows) {
    for (std::size_t begin = 0, end = 0; begin < rows.size(); begin = end) {
        while (end < rows.size() && rows[end].ms == rows[begin].ms)
            ++end;
        const std::size_t count = end - begin;
        for (std::size_t row = begin; row < end; ++row)
            rows[row].ms += static_cast<std::int64_t>(1000 * (row - begin) / count);
    }
}

} // namespace

measured values_of_record(std::string_view body) {
    measured values{};
    std::size_t index = 0;
    each_number(body, [&](std::uint32_t number) {
        if (index < values.size()) values[index++] = static_cast<std::uint16_t>(number);
    });
    return values;
}

void take_values(channel_rec& rec, const measured& values) {
    rec.tsignal = values[0];
    rec.speed = values[1];
    rec.tvoltage = values[2];
    rec.teff_dc = values[3];
    rec.teff_ac = values[4];
}

measured_log::measured_log(std::string name, std::function<void(std::size_t)> on_read)
    : file_(std::move(name)), on_read_(std::move(on_read)) {
    begin_again();
}

void measured_log::begin_again() {
    file_.begin_again();
    content_ = std::make_unique<found>([this](std::span<char> room) {
        const std::size_t length = file_.read(room);
        if (on_read_) on_read_(length);
        return length;
    });
}

bool measured_log::read_on() {
    const bool same = file_.open();
    if (!same) begin_again();
    struct closing {
        measured_log& log;
        ~closing() {
            log.file_.close();
            log.content_->values.settle();
        }
    } const at_the_end{*this};
    const std::int64_t before = content_->place;
    entry one;
    while (content_->reader.next(one))
        take(one);
    return !same || content_->place != before;
}

void measured_log::take(const entry& one) {
    const std::int64_t begin = content_->place;
    content_->place += one.at.length + (one.at.end == line_end::cr_lf ? 2 : 1);
    if (!one.sound()) ++content_->left_out;
    if (one.seconds < 0 || !one.sound()) return;
    content_->clock.take(one.seconds);
    if (!content_->midnight) {
        auto date = date_of_name(name());
        if (!date) date = date_of_digits(header().value("LOGDATE"));
        content_->midnight = date ? midnight_of(*date) : 0;
    }
    const log_seconds time = *content_->midnight + content_->clock.day() * day + one.seconds;
    const bool of_no_log = any() && (time > content_->first + longest || time < content_->last - longest);
    const std::int64_t minute = of_no_log ? never : minute_of(time);
    if (content_->stretches.empty() || content_->stretches.back().minute != minute)
        content_->stretches.push_back({minute, begin});
    if (of_no_log) {
        ++content_->left_out;
        return;
    }
    content_->first = any() ? std::min(content_->first, time) : time;
    content_->last = std::max(content_->last, time);
    take_timed(one, time);
}

void measured_log::take_timed(const entry& one, log_seconds time) {
    if (one.kind != line_kind::record) {
        content_->marks.push_back({time, std::string(one.body), begins_alarm(one.body)});
        return;
    }
    stretch& here = content_->stretches.back();
    if (one.form == &record_forms()[0]) content_->values.add(time, values_of_record(one.body));
    if (one.form == &thermo_form()) here.thermo = true;
    if (one.form == &angacc_form()) here.angacc = true;
}

std::int64_t measured_log::end_of(std::size_t index) const {
    const std::vector<stretch>& all = content_->stretches;
    return index + 1 < all.size() ? all[index + 1].place : content_->place;
}

template <class Take> void measured_log::each_line(std::size_t index, Take take) const {
    const stretch& here = content_->stretches[index];
    const std::string text = file_.bytes(here.place, end_of(index));
    std::size_t given = 0;
    line_reader lines([&](std::span<char> room) {
        const std::size_t length = text.copy(room.data(), room.size(), given);
        given += length;
        return length;
    });
    entry one;
    while (lines.next(one.at)) {
        one.state = damage::none;
        one.form = nullptr;
        one.seconds = -1;
        read_log_line(one);
        if (one.sound() && one.seconds >= 0) take(one, here.minute * 60 + one.seconds % 60);
    }
}

std::vector<measured_row> measured_log::rows(log_seconds from, log_seconds to) const {
    std::vector<measured_row> found;
    const std::vector<stretch>& all = content_->stretches;
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (all[index].minute < minute_of(from) || all[index].minute > minute_of(to)) continue;
        each_line(index, [&](const entry& one, log_seconds time) {
            if (one.form == &record_forms()[0] && time >= from && time <= to)
                found.push_back({time * 1000, values_of_record(one.body)});
        });
    }
    std::ranges::stable_sort(found, {}, &measured_row::ms);
    spread_within_seconds(found);
    return found;
}

std::optional<logged_curve> measured_log::last_curve(log_seconds time, bool stretch::*has,
                                                     const record_form& form) const {
    const std::vector<stretch>& all = content_->stretches;
    std::optional<logged_curve> found;
    for (std::size_t index = all.size(); index-- > 0 && !found;) {
        if (!(all[index].*has) || all[index].minute > minute_of(time)) continue;
        each_line(index, [&](const entry& one, log_seconds at) {
            if (one.form == &form && at <= time) found = curve_of(one, at);
        });
    }
    return found;
}

logged_cycle measured_log::cycle_at(log_seconds time) const {
    return {last_curve(time, &stretch::thermo, thermo_form()),
            last_curve(time, &stretch::angacc, angacc_form())};
}

std::optional<log_seconds> measured_log::next_curve(log_seconds time) const {
    std::optional<log_seconds> found;
    const std::vector<stretch>& all = content_->stretches;
    for (std::size_t index = 0; index < all.size() && !found; ++index) {
        if (!(all[index].thermo || all[index].angacc) || all[index].minute < minute_of(time)) continue;
        each_line(index, [&](const entry& one, log_seconds at) {
            if (one.form != nullptr && one.form->curve && at > time && !found) found = at;
        });
    }
    return found;
}

std::optional<log_seconds> measured_log::previous_curve(log_seconds time) const {
    std::optional<log_seconds> found;
    const std::vector<stretch>& all = content_->stretches;
    for (std::size_t index = all.size(); index-- > 0 && !found;) {
        if (!(all[index].thermo || all[index].angacc) || all[index].minute > minute_of(time)) continue;
        each_line(index, [&](const entry& one, log_seconds at) {
            if (one.form != nullptr && one.form->curve && at < time) found = at;
        });
    }
    return found;
}

} // namespace tyxo::xlg
