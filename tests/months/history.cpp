#include "history.h"

#include "chance.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace months {

namespace {

constexpr std::int64_t second = 1000;
constexpr std::int64_t minute = 60 * second;
constexpr std::int64_t hour = 60 * minute;
constexpr std::int64_t day = 24 * hour;

/// How often an act happens, and the act that ends it within some time.
struct row {
    act_kind kind;
    std::string_view name;
    int in_ten_days; ///< on average; 0 for what only ends something
    act_kind ends_with = act_kind::count;
    std::int64_t lasts_at_most = 0;
};

using enum act_kind;
constexpr std::array rows = std::to_array<row>({
    // clang-format off
    {status_bits, "status bits", 80},
    {main_alarm, "main alarm", 40, alarm_ends, hour},
    {alarm_ends, "alarm ends", 0},
    {alarm_storm, "alarm storm", 4},
    {inhibit_begins, "inhibit begins", 10},
    {test_signal, "test signal", 10},
    {engine_changes, "engine changes", 3},
    {hurry, "full pace", 6},
    {silence, "silence", 15},
    {damaged_frames, "damaged frames", 40},
    {noise, "noise", 25},
    {port_refuses_to_open, "port refuses to open", 4, port_recovers, hour},
    {port_refuses_output, "port refuses output", 3, port_recovers, hour},
    {port_refuses_input, "port refuses input", 3, port_recovers, 10 * minute},
    {port_brings_bytes_while_closing, "port brings bytes while closing", 3, port_recovers, 6 * hour},
    {port_recovers, "port recovers", 0},
    {line_error, "line error", 10},
    {writes_fail, "writes fail", 12},
    {disk_full, "disk full", 3, disk_has_room, 20 * minute},
    {disk_has_room, "disk has room", 0},
    {folder_read_only, "folder read only", 3, disk_writable, 20 * minute},
    {file_read_only, "file read only", 3, disk_writable, 20 * minute},
    {disk_writable, "disk writable", 0},
    {log_moved_away, "log moved away", 6},
    {events_moved_away, "event file moved away", 3},
    {folder_vanishes, "folder vanishes", 3},
    {disk_vanishes, "disk vanishes", 2, disk_returns, 20 * minute},
    {disk_returns, "disk returns", 0},
    {slow_syncs, "slow syncs", 4, quick_syncs, hour},
    {quick_syncs, "quick syncs", 0},
    {power_cut, "power cut", 6},
    {process_killed, "process killed", 4},
    {session_ends, "session ends", 3},
    {clock_corrected, "clock corrected", 10},
    {clock_an_hour_forward, "clock an hour forward", 1},
    {clock_an_hour_back, "clock an hour back", 1},
    {clock_to_midnight, "clock to midnight", 1},
    {clock_to_month_end, "clock to month end", 1},
    {controller_answers, "controller answers", 0},
    {controller_slow, "controller slow", 6, controller_answers, 10 * minute},
    {controller_silent, "controller silent", 4, controller_answers, 10 * minute},
    {controller_lies, "controller lies", 6, controller_answers, 10 * minute},
    {controller_refuses, "controller refuses", 4, controller_answers, hour},
    {controller_unreachable, "controller unreachable", 3, controller_answers, hour},
    {controller_closes, "controller closes", 6},
    {controller_floods, "controller floods", 6},
    {controller_breaks, "controller breaks", 4},
    {start_all, "start all", 30},
    {start_or_stop_one, "start or stop one", 20},
    {stop_all, "stop all", 8},
    {confirm, "confirm", 80},
    {open_windows, "open windows", 20},
    {close_windows, "close windows", 20},
    {wrong_password, "wrong password", 5},
    {change_password, "change password", 3},
    {reset_inhibit, "reset inhibit", 8},
    {freeze_chart, "freeze chart", 15},
    {change_resolution, "change resolution", 15},
    {change_scales, "change scales", 5},
    {change_setup, "change setup", 5},
    {gateway_settings, "gateway settings", 6},
    {gateway_by_hand, "gateway by hand", 8},
    {print_chart, "print chart", 4},
    {look_at_status, "look at status", 10},
    // clang-format on
});
static_assert(rows.size() == static_cast<std::size_t>(act_kind::count));

const row& row_of(act_kind kind) {
    return rows.at(static_cast<std::size_t>(kind));
}

} // namespace

std::string_view name_of(act_kind kind) {
    return row_of(kind).name;
}

history history_of(std::uint64_t seed, int days) {
    chance dice(seed);
    history made{seed, days, {}};
    const std::int64_t end = days * day;
    const auto add = [&](std::int64_t ms, act_kind kind, int channel) {
        if (ms < end) made.acts.push_back({ms, kind, channel, dice.next()});
    };
    add(minute, start_all, 0); // a plant where nothing measures for hours shows little
    for (const row& each : rows) {
        // A plant has some faults often and others never.
        const std::int64_t often = each.in_ten_days * days * dice.between(0, 4);
        for (std::int64_t tenth = often / 2; tenth > 0; tenth -= 10) {
            if (tenth < 10 && dice.below(10) >= static_cast<std::size_t>(tenth)) break;
            const std::int64_t at = dice.between(0, end - 1);
            const int channel = static_cast<int>(dice.below(4));
            add(at, each.kind, channel);
            if (each.lasts_at_most > 0)
                add(at + dice.between(second, each.lasts_at_most), each.ends_with, channel);
        }
    }
    std::ranges::stable_sort(made.acts, {}, &act::ms);
    return made;
}

std::string day_and_time(std::int64_t ms) {
    std::array<char, 64> time{};
    std::snprintf(time.data(), time.size(), "day %2d %02d:%02d:%02d.%03d  ", static_cast<int>(ms / day) + 1,
                  static_cast<int>(ms % day / hour), static_cast<int>(ms % hour / minute),
                  static_cast<int>(ms % minute / second), static_cast<int>(ms % second));
    return time.data();
}

std::string words_of(const act& what) {
    return day_and_time(what.ms) + std::string(name_of(what.kind)) + ", channel " +
           std::to_string(what.channel + 1);
}

} // namespace months
