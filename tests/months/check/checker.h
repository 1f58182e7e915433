#pragma once
// Says whether what the program did is what it had to do. It knows the lines of an Evaluator, the files and
// the registers from their formats alone and shares nothing with the program: no header, no table, no text.
//
// It is told what happens in the order in which it happens: an input before the program handles it, an output
// while it does, and at the end of each handler what is to be seen. It never looks into the program itself.
// That a link has timed out it finds out by itself, from the times at which it is told what the time is.

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace months::check {

inline constexpr int channels = 4;

/// What the wall clock shows.
struct wall_time {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    bool operator==(const wall_time&) const = default;
};

/// What stands on the screen and in the program's memory about one channel, as the windows are given it.
struct seen_channel {
    bool measuring = false; ///< its port is open and its menu entry offers the stop
    bool latched = false;   ///< the alert has been raised for the alarm that stands
    bool alarm_lamp = false, prealarm_lamp = false, ready_lamp = false;
    bool inhibit_shown = false;     ///< "Alarm inhibit!" stands in the place of the relays' names
    std::array<double, 5> values{}; ///< tsignal, speed, tvoltage, teff_dc, teff_ac of the record
    int status_alarm = 0, status_error = 0, status_ext = 0; ///< of the record
    int alminhibit_left = 0;
    double panel_speed = 0, panel_tsignal = 0; ///< what needle and bar point at
    double digits_tsignal = 0, digits_tmv = 0; ///< what the digits beside them show
    std::int64_t chart_rows = 0;               ///< rows that the chart took since the program's start
    std::array<double, 6> chart_last{};        ///< values of its last row, NaN where it has none
};
struct seen {
    std::array<seen_channel, channels> channel;
    bool alert_open = false;
    std::uint64_t status_text_end = 0; ///< characters appended to the status text since the program's start
    std::string_view status_text;      ///< what it holds now
};

/// Something that is wrong.
struct complaint {
    std::int64_t ms = 0;
    std::string what;
};

class checker {
  public:
    checker();
    ~checker();

    // What happens outside. Starts and stops are told when they are carried out, with the password given.
    void time(std::int64_t ms, const wall_time& local); ///< from now on; ms never goes back
    void program_starts(std::string_view settings);     ///< with the content of its settings file
    void close_asked();  ///< the main window's cross or a signal, whatever comes of it
    void program_ends(); ///< by its own will, behind `close_asked`; all is written
    void killed();       ///< the program is gone, the machine goes on
    void power_cut();    ///< both are gone

    void arrives(int channel, std::string_view bytes); ///< at an open port, as one event
    void start_asked(int channel, bool port_opens);    ///< also by "all" and by autostart, in their order
    void stop_asked(int channel);                      ///< also by "all", for each configured channel
    void alert_confirmed();
    void inhibit_reset(int channel); ///< "Restart" was pressed
    /// A key of the settings file that a dialog has accepted and stored, in force from now on: `location 2`,
    /// `log_mode`, `upd_periode`, `IPRefresh`, and `th_dig_val 1` for a click on a gauge's name. Those of one
    /// "OK" are told one by one before it is handled. Beside them `resolution`: 0 to 3, the time of the
    /// charts.
    void setting(std::string_view key, std::string_view value);
    /// The controller closes, falls silent, comes back, or the operator connects or disconnects: blocks may
    /// be missing before the next one. `close_asked` says so too.
    void controller_disturbed();
    void file_gone(std::string_view path); ///< moved or deleted, whoever has it open
    /// So long the disk takes for a sync from now on; 0 in the beginning. A power cut takes what waits for
    /// it.
    void disk_takes(std::int64_t ms);

    // What the program does.
    void file_created(std::string_view path);
    void file_appended(std::string_view path, std::string_view text); ///< an end of a torn line included
    /// The disk took nothing of it. An empty text: the file could not be opened or created.
    void file_refused(std::string_view path, std::string_view text);
    void sent_to_line(int channel, std::string_view bytes);
    void sent_to_controller(std::string_view frame);
    void debug_output(std::string_view line); ///< without its line end
    void message_shown(std::string_view text);
    void chart_tick(); ///< the display timer ticks: what `seen` shows behind it is the record of this moment

    void handler_ended(const seen& now); ///< all that the inputs since the last one demand has been done

    // Files as they stand: before the first start, behind a kill or a power cut, at the end.
    void file_found(std::string_view path, std::string_view content);
    void all_files_found(); ///< no other file of the program is there

    [[nodiscard]] const std::vector<complaint>& complaints() const;

  private:
    struct model;
    std::unique_ptr<model> model_;
};

} // namespace months::check
