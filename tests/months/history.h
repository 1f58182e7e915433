#pragma once
// What happens in the simulated plant beside the frames of its Evaluators: a list of acts, each at its time.
// A seed makes the list; leaving acts out makes a shorter history of the same plant.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace months {

enum class act_kind {
    // The Evaluators.
    status_bits,
    main_alarm,
    alarm_ends,
    alarm_storm,
    inhibit_begins,
    test_signal,
    engine_changes,
    hurry,
    silence,
    damaged_frames,
    noise,
    // The serial lines.
    port_refuses_to_open,
    port_refuses_output,
    port_refuses_input,
    port_brings_bytes_while_closing,
    port_recovers,
    line_error,
    // The disk.
    writes_fail,
    disk_full,
    disk_has_room,
    folder_read_only,
    file_read_only,
    disk_writable,
    log_moved_away,
    events_moved_away,
    folder_vanishes,
    disk_vanishes,
    disk_returns,
    slow_syncs,
    quick_syncs,
    // The machine.
    power_cut,
    process_killed,
    session_ends,
    clock_corrected,
    clock_an_hour_forward,
    clock_an_hour_back,
    clock_to_midnight,
    clock_to_month_end,
    // The controller.
    controller_answers,
    controller_slow,
    controller_silent,
    controller_lies,
    controller_refuses,
    controller_unreachable,
    controller_closes,
    controller_floods,
    controller_breaks,
    // The operator.
    start_all,
    start_or_stop_one,
    stop_all,
    confirm,
    open_windows,
    close_windows,
    wrong_password,
    change_password,
    reset_inhibit,
    freeze_chart,
    change_resolution,
    change_scales,
    change_setup,
    gateway_settings,
    gateway_by_hand,
    print_chart,
    look_at_status,
    count
};

struct act {
    std::int64_t ms = 0; ///< since the plant's beginning
    act_kind kind{};
    int channel = 0;
    std::uint64_t choice = 0; ///< seed of what the act leaves open
};

struct history {
    std::uint64_t seed = 0;
    int days = 0;
    std::vector<act> acts; ///< by time
};

/// As its name stands above, with blanks.
[[nodiscard]] std::string_view name_of(act_kind kind);

/// The whole history of a seed.
[[nodiscard]] history history_of(std::uint64_t seed, int days);

/// "day  3 04:05:06.789  ", since the plant's beginning.
[[nodiscard]] std::string day_and_time(std::int64_t ms);

/// With its time before it.
[[nodiscard]] std::string words_of(const act& what);

} // namespace months
