// What the checker is told of the program, and what else is looked at while a history runs.

#include "plant.h"

#include "displays/chart.h"
#include "displays/panel.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "platform/clock.h"
#include "platform/simulation.h"

#include <malloc.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <utility>

namespace months {

using namespace tyxo;
using simulation::world;

namespace {

constexpr std::int64_t day = 86'400'000;
/// An attempt to connect gives up after half a second, and after five where the clock is set meanwhile.
constexpr std::int64_t longest_tick = 5200; // ms
/// Charts remember 3.8 MB, the rest is small, however long the program runs.
constexpr std::size_t most_memory = 12'000'000;
/// The checker keeps the name of every log there was.
constexpr std::size_t names_of_a_day = 300'000;

} // namespace

/// Of the process, without the simulated disk; 0 under the sanitizers, which keep memory by themselves.
std::size_t plant::memory_in_use() {
    const auto heap = mallinfo2();
    std::size_t disk = 0;
    for (const auto& [path, content] : world().files)
        disk += content.capacity();
    return std::max(heap.uordblks + heap.hblkhd, disk) - disk;
}

void plant::watch_machine() {
    simulation::machine& machine = world();
    machine.on_disk = [this](simulation::disk_act act, const std::string& path, std::string_view text) {
        checker_.time(world().now_ms, wall());
        constexpr std::array<std::string_view, 4> done{"created", "appended", "refused", "taken away"};
        if (story_ != nullptr)
            remember(std::string(done.at(static_cast<std::size_t>(act))) + ' ' + path, text);
        using enum simulation::disk_act;
        switch (act) {
        case created:
            checker_.file_created(path);
            break;
        case refused:
            checker_.file_refused(path, text);
            break;
        case taken_away:
            checker_.file_gone(path);
            break;
        case appended:
            ++outcome_.lines;
            checker_.file_appended(path, text);
            for (int channel = 0; channel < used_; ++channel) {
                if (path.find('/' + location(channel) + '/') != path.npos) newest_log_.at(channel) = path;
            }
            break;
        }
    };
    machine.on_input = [this](i16 channel, std::string_view bytes) {
        outcome_.bytes += static_cast<std::int64_t>(bytes.size());
        checker_.time(world().now_ms, wall());
        if (story_ != nullptr) remember("channel " + std::to_string(channel + 1) + " receives", bytes);
        checker_.arrives(channel, bytes);
    };
    machine.on_output = [this](i16 channel, std::string_view bytes) {
        checker_.time(world().now_ms, wall());
        checker_.sent_to_line(channel, bytes);
    };
}

void plant::handler_has_ended() {
    simulation::machine& machine = world();
    ++outcome_.events;
    checker_.time(machine.now_ms, wall());
    for (const std::string& line : machine.debug) {
        if (story_ != nullptr) remember("debug output", line);
        if (!belongs_to_a_fault(line)) checker_.debug_output(line);
    }
    machine.debug.clear();
    looked_ms_ = machine.now_ms;
    machine.plant.frames.clear();
    machine.plant.attempts.clear();
    machine.opened.clear();
    machine.synced.clear();
    for (const simulation::shown_box& box : machine.boxes)
        checker_.message_shown(box.text);
    machine.boxes.clear();
    machine.sounds.clear();
    machine.prints.clear();
    check::seen& now = seen_;
    for (i16 channel = 0; channel < channel_count; ++channel) {
        const channel_rec& rec = sensor::state.channels[channel];
        check::seen_channel& seen = now.channel.at(channel);
        seen.measuring = sensor::state.channel_running[channel];
        seen.latched = sensor::state.alert_latched[channel];
        seen.alarm_lamp = indicators.LED_Alarm[channel].Active;
        seen.prealarm_lamp = indicators.LED_prealarm[channel].Active;
        seen.ready_lamp = indicators.LED_Rdy[channel].Active;
        seen.inhibit_shown = indicators.Lbl_alminhibit[channel].Visible;
        seen.values = {static_cast<double>(rec.tsignal), static_cast<double>(rec.speed), rec.tvoltage,
                       static_cast<double>(rec.teff_dc), static_cast<double>(rec.teff_ac)};
        seen.status_alarm = rec.status_alarm;
        seen.status_error = rec.status_error;
        seen.status_ext = rec.status_ext;
        seen.alminhibit_left = rec.alminhibit_left;
        seen.panel_speed = indicators.drehzahl[channel].Position;
        seen.panel_tsignal = panels.Gauge_thermo[channel].Position;
        seen.digits_tsignal = indicators.digi_Thermo[channel].Value;
        seen.digits_tmv = indicators.t_mv[channel].Value;
        const strip_window& rows = charts.rows[channel].window(strip_spans[0]);
        seen.chart_rows = rows.rows();
        if (std::exchange(rows_seen_.at(channel), rows.rows()) == rows.rows()) continue;
        for (std::size_t curve = 0; curve < strip_curves; ++curve)
            seen.chart_last.at(curve) = rows.newest_value(curve);
    }
    now.alert_open = sensor::state.alert_open;
    now.status_text_end = indicators.Text_status.appended();
    now.status_text = indicators.Text_status.text();
    checker_.handler_ended(now);
    if (machine.exit_code) end_by("the program has ended", false);
    outcome_.longest_wait = std::max(outcome_.longest_wait, machine.longest_tick);
    if (machine.longest_tick > longest_tick)
        wrong("a tick took " + std::to_string(machine.longest_tick) + " ms");
    archive_old_files();
    if (outcome_.memory_early == 0 && machine.now_ms > day) outcome_.memory_early = memory_in_use();
}

/// The last things that happened, for the story's end.
void plant::remember(std::string_view what, std::string_view text) {
    constexpr std::size_t most = 40;
    constexpr std::size_t longest = 120;
    if (recent_.size() == most) recent_.pop_front();
    std::string line = day_and_time(world().now_ms) + "    " + std::string(what) + ": ";
    for (const char letter : text.substr(0, longest)) {
        const auto code = static_cast<unsigned char>(letter);
        if (code >= ' ' && code < 127)
            line += letter;
        else
            line += std::string("\\x") + "0123456789abcdef"[code / 16] + "0123456789abcdef"[code % 16];
    }
    recent_.push_back(line + (text.size() > longest ? " ..." : ""));
}

/// What the program says of a line that cannot be read or a controller that sends what is no answer.
bool plant::belongs_to_a_fault(std::string_view line) const {
    const auto unreadable = [](const auto& port) { return port.second.refuses_input; };
    if (line == "mscomm: Device unavailable") return std::ranges::any_of(world().ports, unreadable);
    const auto refusing = [](const auto& port) {
        return port.second.refuses_to_open || port.second.refuses_output;
    };
    if (line == "Port already open" || line == "Device unavailable")
        return std::ranges::any_of(world().ports, refusing);
    return line == "Subscript out of range" && looked_ms_ < controller_lies_until_;
}

/// Once a day somebody takes the logs of the days before; the machine of the test has memory for its disk.
void plant::archive_old_files() {
    if (world().now_ms / day == archived_day_) return;
    archived_day_ = world().now_ms / day;
    const std::size_t memory = memory_in_use();
    const std::size_t names = static_cast<std::size_t>(archived_day_) * names_of_a_day;
    if (memory > most_memory + names) wrong("memory has grown to " + std::to_string(memory) + " bytes");
    for (auto file = world().files.begin(); file != world().files.end();) {
        const bool old =
            file->first.ends_with(".xlg") && std::ranges::find(newest_log_, file->first) == newest_log_.end();
        if (old) {
            keep_file(file->first, file->second);
            checker_.file_gone(file->first);
            world().risks.erase(file->first);
        }
        file = old ? world().files.erase(file) : std::next(file);
    }
}

/// Under its path in the simulated machine. A name that comes again has the day of its archiving behind it.
void plant::keep_file(const std::string& path, const std::string& content) const {
    if (keep_.empty() || !(path.ends_with(".xlg") || path.ends_with(".txt"))) return;
    std::filesystem::path to = keep_ / path;
    if (exists(to)) to += "." + std::to_string(archived_day_);
    create_directories(to.parent_path());
    std::ofstream(to, std::ios::binary) << content;
}

void plant::wrong(const std::string& what) {
    outcome_.complaints.push_back(day_and_time(world().now_ms) + what);
}

check::wall_time plant::wall() const {
    const local_time now = local_now();
    return {now.year, now.month, now.day, now.hour, now.minute, now.second};
}

std::string plant::location(int channel) const {
    return sensor::state.channels[static_cast<i16>(channel)].location;
}

} // namespace months
