// What is to be seen at the end of a handler.

#include "model.h"

#include <algorithm>
#include <cmath>

namespace months::check {

namespace {

constexpr std::int64_t tickless_ms = 10'000; ///< so long the display may wait for a gateway that waits

bool same(double a, double b) {
    return a == b || std::abs(a - b) <= 1e-6 * std::abs(b); // a chart keeps its values short
}

} // namespace

void checker::model::chart_tick() {
    if (!chart_on) book.add("the display timer ticks though nothing measures");
    last_tick_ms = now.ms;
    for (int index = 0; index < plant.max_sensors; ++index) {
        channel_model& c = channel[index];
        if (!c.running) continue;
        const channel_record& r = c.record;
        const int divisor = r.overspeed < 120    ? 1
                            : r.overspeed < 400  ? 5
                            : r.overspeed < 1400 ? 10
                            : r.overspeed < 2900 ? 20
                                                 : 25;
        shown_instruments& s = c.shown;
        ++s.rows;
        s.row_has_speed = r.param_valid;
        s.row = {double(r.tsignal), double(r.speed) / divisor, 100.0,
                 r.tvoltage / 2.0,  double(r.teff_dc),         double(r.teff_ac)};
        s.bar_known = s.rest_known = true;
        s.speed = r.speed;
        s.bar = s.digits = plant.channel[index].gauge_shows_teff ? r.teff_dc : r.tsignal;
        s.tmv = r.tvoltage / 100.0;
    }
}

bool checker::model::box_fits(const seen& seen) const {
    if (seen.status_text_end != box_end + box.size()) return false;
    return box.empty() || seen.status_text.ends_with(box.size() > 60000 ? "" : std::string_view(box));
}

bool checker::model::channel_fits(int index, const seen_channel& seen) const {
    const channel_model& c = channel[index];
    const channel_record& r = c.record;
    const shown_instruments& s = c.shown;
    if (seen.measuring != c.running || seen.latched != c.alert_latched || seen.alarm_lamp != s.alarm_lamp ||
        seen.prealarm_lamp != s.prealarm_lamp || seen.ready_lamp != s.ready_lamp ||
        seen.inhibit_shown != s.inhibit) {
        return false;
    }
    if (seen.values[0] != r.tsignal || seen.values[1] != r.speed || seen.values[2] != r.tvoltage ||
        seen.values[3] != r.teff_dc || seen.values[4] != r.teff_ac || seen.status_alarm != r.status_alarm ||
        seen.status_error != r.status_error || seen.status_ext != r.status_ext ||
        seen.alminhibit_left != r.alminhibit_left) {
        return false;
    }
    if (s.bar_known && !same(seen.panel_tsignal, s.bar)) return false;
    if (s.rest_known && (!same(seen.panel_speed, s.speed) || !same(seen.digits_tsignal, s.digits) ||
                         !same(seen.digits_tmv, s.tmv))) {
        return false;
    }
    if (seen.chart_rows != s.rows) return false;
    for (std::size_t i = 0; s.rows > 0 && i < s.row.size(); ++i)
        if ((i != 1 || s.row_has_speed) && !same(seen.chart_last[i], s.row[i])) return false;
    return true;
}

void checker::model::compare_channel(int index, const seen_channel& seen) {
    const channel_model& c = channel[index];
    const channel_record& r = c.record;
    const shown_instruments& s = c.shown;
    const std::string of = "channel " + std::to_string(index + 1) + ": ";
    const auto flag = [&](const char* what, bool is, bool should) {
        if (is != should) book.add(of + what + (should ? " should be on, is off" : " should be off, is on"));
    };
    const auto number = [&](const std::string& what, double is, double should) {
        if (same(is, should)) return;
        const auto text = [](double value) { return std::isnan(value) ? " nothing" : blank_number(value); };
        book.add(of + what + " should be" + text(should) + ", is" + text(is));
    };
    flag("its measurement", seen.measuring, c.running);
    flag("the latch of its alert", seen.latched, c.alert_latched);
    flag("its alarm lamp", seen.alarm_lamp, s.alarm_lamp);
    flag("its prealarm lamp", seen.prealarm_lamp, s.prealarm_lamp);
    flag("its lamp of readiness", seen.ready_lamp, s.ready_lamp);
    flag("its label of the inhibit time", seen.inhibit_shown, s.inhibit);
    const char* const names[] = {"tsignal", "speed", "tvoltage", "teff_dc", "teff_ac"};
    const int values[] = {r.tsignal, r.speed, r.tvoltage, r.teff_dc, r.teff_ac};
    for (std::size_t i = 0; i < std::size(values); ++i)
        number(names[i], seen.values[i], values[i]);
    number("its alarm status", seen.status_alarm, r.status_alarm);
    number("its error status", seen.status_error, r.status_error);
    number("the end of its status", seen.status_ext, r.status_ext);
    number("its inhibit time", seen.alminhibit_left, r.alminhibit_left);
    if (s.bar_known) number("its thermo gauge", seen.panel_tsignal, s.bar);
    if (s.rest_known) {
        number("its speed gauge", seen.panel_speed, s.speed);
        number("its thermo digits", seen.digits_tsignal, s.digits);
        number("its thermovoltage digits", seen.digits_tmv, s.tmv);
    }
    number("the number of rows of its chart", static_cast<double>(seen.chart_rows),
           static_cast<double>(s.rows));
    for (std::size_t i = 0; s.rows > 0 && i < s.row.size(); ++i) {
        if (i == 1 && !s.row_has_speed) continue;
        number("curve " + std::to_string(i) + " of its chart's last row", seen.chart_last[i], s.row[i]);
    }
}

void checker::model::compare(const seen& seen) {
    if (!box_fits(seen)) {
        const std::uint64_t added = seen.status_text_end - std::min(box_end, seen.status_text_end);
        const auto from = seen.status_text.size() - std::min<std::uint64_t>(added, seen.status_text.size());
        book.add("the status text should get " + shown(box) + ", got " +
                 shown(seen.status_text.substr(from)));
    }
    if (seen.alert_open != alert_open) {
        book.add(alert_open ? "the alert should be open, is closed" : "the alert should be closed, is open");
        alert_open = seen.alert_open;
    }
    box_length += seen.status_text_end - std::min(box_end, seen.status_text_end);
    if (seen.status_text.size() != box_length) {
        book.add("the status text should be " + std::to_string(box_length) + " characters long, is " +
                 std::to_string(seen.status_text.size()));
        box_length = seen.status_text.size();
    }
    for (int index = 0; index < channels; ++index)
        if (!channel_fits(index, seen.channel[index])) compare_channel(index, seen.channel[index]);
}

void checker::model::handler_ended(const seen& seen) {
    const auto fits = [&] {
        if (!box_fits(seen) || seen.alert_open != alert_open) return false;
        for (int index = 0; index < channels; ++index)
            if (!channel_fits(index, seen.channel[index])) return false;
        return true;
    };
    while (!fits() && settle()) {
    }
    compare(seen);
    box_end = seen.status_text_end;
    box.clear();
    files.handler_ended();
    for (const debug_line& missing : debug)
        if (!missing.may_miss) book.add("the debug output lacks " + shown(missing.text));
    debug.clear();
    for (channel_model& c : channel)
        c.bytes_behind = false;
    for (const std::string& missing : messages)
        book.add("a message is missing: " + shown(missing));
    messages.clear();
    for (int index = 0; index < channels; ++index) {
        if (!channel[index].reset_due) continue;
        book.add("channel " + std::to_string(index + 1) + ": the restart of the inhibit time was not sent");
        channel[index].reset_due = false;
    }
    folders_made = 0;
    const bool any_runs = std::ranges::any_of(channel, &channel_model::running);
    if (!any_runs) last_tick_ms = now.ms;
    if (chart_on && plant.upd_periode > 0 && now.ms - last_tick_ms > tickless_ms + 2 * plant.upd_periode) {
        book.add("the display timer has not ticked for " + std::to_string(now.ms - last_tick_ms) + " ms");
        last_tick_ms = now.ms;
    }
}

} // namespace months::check
