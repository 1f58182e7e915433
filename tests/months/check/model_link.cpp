// What the lines of the Evaluators, and their silence, demand.

#include "messages.h"
#include "model.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace months::check {

namespace {

constexpr std::int64_t silence_ms = 3000;
constexpr std::int64_t late_ms = 25; ///< so late a timer may be

} // namespace

void checker::model::time_is(std::int64_t ms, const wall_time& local) {
    now.set(ms, local);
    for (int index = 0; index < channels; ++index) {
        channel_model& c = channel[index];
        while (c.running && c.silent_at <= ms) {
            if (c.due_of != c.silent_at) c.due = now;
            c.due_of = c.silent_at;
            if (c.silent_at + late_ms >= ms) break;
            // The timer may have ticked before the bytes that came with it.
            const bool before = c.tie && c.connected;
            c.tie = false;
            if (before) {
                c.silent_at += silence_ms;
            } else {
                // Within a long handler nothing was to be seen of it at that moment.
                std::swap(now, c.due);
                link_lost(index);
                std::swap(now, c.due);
            }
        }
    }
}

bool checker::model::settle() {
    int first = -1;
    for (int index = 0; index < channels; ++index) {
        const channel_model& c = channel[index];
        if (!c.running || c.silent_at > now.ms) continue;
        if (first < 0 || c.silent_at < channel[first].silent_at) first = index;
    }
    if (first >= 0) {
        link_lost(first);
        return true;
    }
    const auto back = std::ranges::find_if(
        channel, [](const channel_model& c) { return c.running && !c.connected && c.bytes_behind; });
    if (back == channel.end()) return false;
    back->bytes_behind = false;
    link_back(static_cast<int>(back - channel.begin()));
    return true;
}

void checker::model::link_lost(int index) {
    channel_model& c = channel[index];
    c.silent_at += silence_ms;
    c.tie = false;
    c.record.tsignal = c.record.speed = 0;
    if (c.connected) {
        c.connected = false;
        status_update(index);
    }
    c.shown.rest_known = true;
    c.shown.speed = c.shown.digits = c.shown.tmv = 0;
    c.shown.alarm_lamp = c.shown.prealarm_lamp = c.shown.ready_lamp = false;
}

void checker::model::link_back(int index) {
    channel[index].connected = true;
    const char number[] = {static_cast<char>('1' + index), 0};
    tell("Evaluator", number, " connected");
    log_comment(index, "Evaluator connected");
    event("Evaluator", number, " connected");
    status_update(index);
}

void checker::model::arrives(int index, std::string_view bytes) {
    channel_model& c = channel[index];
    if (!c.running) return;
    if (c.silent_at <= now.ms) (c.connected ? c.bytes_behind : c.tie) = true;
    failed = may_fail = false;
    for (const char byte : bytes)
        if (c.line.take(byte)) frame(index);
    if (!c.connected) link_back(index);
    if (failed || may_fail) debug.push_back({"mscomm: ", true, !failed});
}

void checker::model::frame(int index) {
    channel_model& c = channel[index];
    c.silent_at = now.ms + silence_ms;
    c.tie = c.bytes_behind = false;
    const frame_fields fields(c.line.frame());
    if (fields.length() < 4) {
        expect_debug("LRC Error"); // too short even for check digits
        debug.back().may_miss = may_fail = true;
        return;
    }
    if (!fields.check_is_right()) {
        expect_debug("LRC Error");
        return;
    }
    const demands what = decode(c.record, fields, plant.channel[index].test_signal_visible);
    if (!what.note.empty()) log_note(index, what.note);
    if (!what.debug.empty()) expect_debug(what.debug);
    failed = failed || what.mscomm;
    may_fail = may_fail || what.mscomm_allowed;
    if (what.curve != 0) curve(index, what.curve);
    if (what.record == 1) log_values(index);
    if (what.parameters) {
        if (c.log_state == 1) {
            create_log(index);
            c.log_state = 2;
        }
        c.record.param_valid = true;
    }
    if (what.status) status_update(index);
}

void checker::model::curve(int index, int code) {
    channel_record& r = channel[index].record;
    const samples& curve = code == 3 ? r.thermo : r.acceleration;
    bool none = false;
    if (std::accumulate(curve.begin(), curve.end(), std::int64_t{0}) > 0) {
        (code == 3 ? r.cylinder_thermo : r.cylinder_acceleration) = curve;
        none = !(code == 3 ? compute_thermo(r, plant.cylinders) : compute_speeds(r, plant.cylinders));
    }
    if (none && code == 4) { // the curve ends there, and the next one is refused block by block
        failed = true;
        return;
    }
    if (none) expect_debug("error: disp thermosignal ", true);
    (code == 3 ? r.thermo_block : r.acceleration_block) = 0;
    log_curve(index, code);
}

void checker::model::tell(std::string_view who, std::string_view name, std::string_view what) {
    box.append(now.mdy).append(" ").append(now.hms).append(" ").append(who).append(" ");
    box.append(name).append(what).append("\r\n");
}

void checker::model::event(std::string_view who, std::string_view name, std::string_view what) {
    if (!plant.event_file || events_failed) return;
    line.assign("##;").append(now.mdy).append(";").append(now.hms).append(";").append(who);
    if (!who.empty()) line += ' ';
    line.append(name).append(what).append("\r\n");
    if (!events->exists) events->asked = true;
    files.demand(*events, line);
}

void checker::model::status_row(int index, int row, bool set) {
    channel_model& c = channel[index];
    const status_message& m = status_messages[row];
    const unsigned latch = 1u << row;
    if (set == ((c.latches & latch) != 0)) return;
    c.latches ^= latch;
    if (!set && m.box_off.empty()) return;
    const std::string_view location = plant.channel[index].location;
    tell(m.who, location, set ? m.box : m.box_off);
    const std::string_view note = set ? m.note : m.note_off;
    if (!note.empty()) log_comment(index, note);
    const char number[] = {static_cast<char>('1' + index), 0};
    event(m.who, set && row == prealarm_row ? std::string_view(number) : location,
          set ? m.event : m.event_off);
}

void checker::model::status_update(int index) {
    channel_model& c = channel[index];
    const channel_record& r = c.record;
    if (box_length + box.size() > 60000) box_length = 60000 - box.size();
    for (int row = 0; row < inhibit_row; ++row) {
        const status_message& m = status_messages[row];
        const int word = m.alarm_word ? r.status_alarm : r.status_error;
        status_row(index, row, (word & m.bits) == m.bits);
    }
    status_row(index, inhibit_row, r.alminhibit_on == 1);

    c.shown.alarm_lamp = (r.status_alarm & 0x80) != 0;
    if (c.shown.alarm_lamp && !c.alert_latched) alert_open = true;
    c.alert_latched = c.shown.alarm_lamp;
    c.shown.prealarm_lamp = (r.status_alarm & 0x40) != 0;
    c.shown.ready_lamp = (r.status_alarm & 0x20) != 0;
    if (!c.connected) {
        const char number[] = {static_cast<char>('1' + index), 0};
        tell("Evaluator", number, " not connected");
        log_comment(index, "Evaluator not connected");
        event("Evaluator", number, " not connected");
    }
    c.shown.inhibit = r.alminhibit_on == 1;
}

void checker::model::start(int index, bool port_opens) {
    channel_model& c = channel[index];
    c.running = true;
    if (!chart_on) last_tick_ms = now.ms;
    chart_on = true;
    c.log_state = 1;
    c.silent_at = now.ms + silence_ms;
    c.tie = false;
    if (!port_opens) {
        messages.push_back("no Comport configurated for sensor nr. " + std::to_string(index + 1));
        stop(index);
        chart_on = true; // the display timer goes on
        c.log_state = 0;
        return;
    }
    tell("KVD", plant.channel[index].location, " ## Measure started ");
    event("KVD", plant.channel[index].location, " ## Measure started ");
}

void checker::model::stop(int index) {
    channel_model& c = channel[index];
    close_log(index);
    c.running = false;
    if (std::none_of(channel.begin(), channel.end(), [](const auto& one) { return one.running; })) {
        chart_on = false;
    }
    tell("KVD", plant.channel[index].location, " ## Measure stopped ");
    event("KVD", plant.channel[index].location, " ## Measure stopped ");
}

void checker::model::setting(std::string_view key, std::string_view value) {
    plant.set(key, value, false);
    if (lower(key).starts_with("ip") || lower(key) == "regbase") cycle.disturb();
    last_tick_ms = now.ms;
}

} // namespace months::check
