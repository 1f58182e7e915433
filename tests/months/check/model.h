#pragma once
// The checker's own picture of the program: what it knows, and what it has to do at each input.

#include "checker.h"
#include "header.h"
#include "ledger.h"
#include "line.h"
#include "plant_settings.h"
#include "record.h"
#include "registers.h"
#include "words.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace months::check {

/// What a channel's instruments show; nothing is known of them before they were written first.
struct shown_instruments {
    bool bar_known = false, rest_known = false;
    double speed = 0, bar = 0, digits = 0, tmv = 0;
    bool alarm_lamp = false, prealarm_lamp = false, ready_lamp = false, inhibit = false;
    std::int64_t rows = 0;
    std::array<double, 6> row{};
    bool row_has_speed = false;
};

struct channel_model {
    channel_record record;
    frame_assembler line;
    bool running = false, connected = true, chart_is_set_up = false;
    int log_state = 0; ///< 0 no log, 1 wanted, 2 begun
    ledger_file* log = nullptr;
    std::int64_t silent_at = 0; ///< the link is given up then
    clock_now due;              ///< the first moment told at which the timer was due
    std::int64_t due_of = -1;   ///< of which `silent_at` that was
    bool tie = false;           ///< bytes came in when the timer of a lost link may have ticked already
    bool bytes_behind =
        false;            ///< the same of a link that stood: bytes may have brought it back in this handler
    unsigned latches = 0; ///< by the row of the message
    bool alert_latched = false;
    bool reset_due = false; ///< the restart of the inhibit time has to be sent
    shown_instruments shown;
};

struct checker::model {
    clock_now now;
    complaint_book book{now};
    ledger files{book, now};
    plant_settings plant;
    register_cycle cycle;
    std::array<channel_model, channels> channel;
    bool runs = false, ever_started = false, files_disturbed = false;

    ledger_file* events = nullptr;
    bool events_failed = false;
    std::int64_t log_period = 0;
    int folders_made = 0; ///< tries in this handler
    bool chart_on = false;
    std::int64_t last_tick_ms = 0;
    bool alert_open = false;
    std::string box; ///< what has to be appended to the status text
    std::uint64_t box_end = 0;
    std::size_t box_length = 0;
    std::string line;                      ///< one line in the making
    bool failed = false, may_fail = false; ///< a frame of the bytes at hand could not be decoded

    struct debug_line {
        std::string text;
        bool goes_on;          ///< more may stand behind the text
        bool may_miss = false; ///< or it may not come at all
    };
    std::vector<debug_line> debug;
    std::vector<std::string> messages;

    // Inputs.
    void time_is(std::int64_t ms, const wall_time& local);
    void program_starts(std::string_view settings);
    void program_gone(ledger_file::loss may_miss);
    void arrives(int index, std::string_view bytes);
    void start(int index, bool port_opens);
    void stop(int index);
    void setting(std::string_view key, std::string_view value);
    void chart_tick();

    // What they demand.
    void frame(int index);
    void curve(int index, int code);
    void status_update(int index);
    void status_row(int index, int row, bool set);
    void link_lost(int index);
    void link_back(int index);
    void tell(std::string_view who, std::string_view name, std::string_view what);
    void event(std::string_view who, std::string_view name, std::string_view what);
    void expect_debug(std::string_view text, bool goes_on = false) {
        debug.push_back({std::string(text), goes_on});
    }

    // Logs.
    [[nodiscard]] bool logs(int index); ///< runs the check of the period, too
    void log_comment(int index, std::string_view text);
    void log_note(int index, std::string_view text);
    void log_values(int index);
    void log_curve(int index, int code);
    void create_log(int index);
    void close_log(int index);
    void check_period();
    [[nodiscard]] std::int64_t period() const;
    [[nodiscard]] std::string new_header(int index, std::string_view file_name) const;

    /// A link whose time is up may be given up now. True if there was one; then it is.
    bool settle();

    // Outputs.
    void appended(std::string_view path, std::string_view text);
    void refused(std::string_view path, std::string_view text);
    void to_line(int index, std::string_view bytes);
    void to_controller(std::string_view frame);
    void debug_output(std::string_view text);
    void message(std::string_view text);
    void handler_ended(const seen& seen);
    void found(std::string_view path, std::string_view content);

    [[nodiscard]] bool tolerated(std::string_view debug_text) const;
    [[nodiscard]] bool box_fits(const seen& seen) const;
    [[nodiscard]] bool channel_fits(int index, const seen_channel& seen) const;
    void compare(const seen& seen);
    void compare_channel(int index, const seen_channel& seen);
};

} // namespace months::check
