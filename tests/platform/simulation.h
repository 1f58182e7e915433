#pragma once
// The simulated machine that the core is tested on: a clock that only moves when told, ports and files that
// do what the test wants, and a memory of everything that the system asked for.

#include "basics/clock_text.h"
#include "basics/types.h"
#include "controls/strip_chart.h"
#include "controls/strip_history.h"
#include "platform/controller.h"
#include "platform/message_box.h"
#include "platform/port_list.h"
#include "platform/program.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo::simulation {

/// What the machine does with one serial port number.
struct port_behaviour {
    bool refuses_to_open = false;
    bool refuses_output = false;
    bool refuses_input = false;
    std::string arrives_while_closing;
};

/// A message box that was shown.
struct shown_box {
    std::string text;
    box_icon icon;
    box_buttons buttons;
    std::string title;
    bool waits; ///< for the operator
};

/// A strip chart that was printed.
struct printed_chart {
    iStripChartX chart;
    strip_window rows;
};

/// A sound that was started.
struct played_sound {
    std::string name;
    i32 flags;
};

/// What the disk did for a file of lines.
enum class disk_act { created, appended, refused, taken_away };

/// A sync that was asked for.
struct sync_under_way {
    std::int64_t due = 0;
    std::size_t size = 0; ///< bytes that it brings to the disk: what stood in the file when it was asked for
};

/// What a file would lose if the power went now.
struct at_risk {
    std::size_t durable = 0;           ///< bytes that stay
    bool named = false;                ///< the file itself stays
    std::vector<sync_under_way> syncs; ///< in the order in which they were asked for
    std::optional<std::string> before; ///< content that a file had before it was replaced
    std::int64_t replaced_ms = 0;
};

/// Something that is going to happen.
struct planned_event {
    std::int64_t due = 0; ///< virtual time
    std::function<void()> happen;
};

struct machine {
    std::int64_t now_ms = 0;                ///< virtual time since the start of the test
    local_time local{2026, 7, 2, 13, 5, 9}; ///< what the wall clock showed at `local_set_ms`
    std::int64_t local_set_ms = 0;

    std::vector<planned_event> planned;

    controller plant;

    std::vector<std::string> debug; ///< every message, CR LF at its end dropped

    std::vector<shown_box> boxes;
    std::deque<box_answer> answers;   ///< of the next boxes; `ok` when there are no more
    std::function<void()> during_box; ///< runs when a box comes up

    std::vector<printed_chart> prints;
    std::function<void()> during_print; ///< runs while a chart is printed

    std::vector<played_sound> sounds;
    int beeps = 0;
    bool awake = false; ///< kept from sleeping
    int wakes = 0;      ///< of the screen

    std::string executable = "tyxo";
    std::optional<std::string> folder_holder; ///< another program in the working folder

    bool events_held = false;
    int ticks_running = 0;         ///< one inside the wait of another
    std::int64_t longest_tick = 0; ///< ms of virtual time from its beginning to its end
    int do_events_calls = 0;
    std::function<void()> during_do_events;
    std::optional<int> exit_code; ///< set when the program ended itself

    screen_size screen{1280, 1024};

    std::map<i16, port_behaviour> ports;
    std::function<void(i16 channel, std::string_view bytes)> on_input; ///< sees what it takes, or cannot take
    std::function<void(i16 channel, std::string_view bytes)> on_output; ///< and what it sends
    std::vector<port_name> port_names;
    bool port_list_unreadable = false;
    int port_list_error = 5;
    std::map<int, std::string> error_texts;

    std::map<std::string, std::string> files; ///< by normalised path
    std::set<std::string> folders{"."};
    std::set<std::string> unreadable;       ///< files that exist and cannot be opened for reading
    std::set<std::string> unwritable;       ///< files and folders that cannot be written
    std::function<void()> during_open;      ///< runs while a file is opened for writing
    bool late_failure = false;              ///< a line that nobody waited for was lost
    int refused_writes = 0;                 ///< so many of the next writes fail
    std::optional<std::size_t> disk_space;  ///< bytes left; nothing for no limit
    std::vector<std::string> opened;        ///< every path that was opened for writing, in order
    std::vector<std::string> synced;        ///< every path that was brought to the disk at once, in order
    int replacements = 0;                   ///< of whole files
    std::map<std::string, int> generations; ///< how often a file was taken away from its path
    std::map<std::string, at_risk> risks;   ///< of files that were written
    std::int64_t sync_ms = 0;               ///< how long a sync takes that is asked for at once
    std::function<void(disk_act, const std::string& path, std::string_view text)> on_disk; ///< watches it
};

/// The machine of the running test.
[[nodiscard]] machine& world();

/// A new machine, and all state of the system as it is before the program starts. Nothing is wired.
void fresh_world();

/// Moves the virtual clock; timers that come due tick at their time and planned events happen, in order. A
/// handler that waits for events may move it further.
void advance(std::int64_t milliseconds);

/// Plans an event, from now on.
void after(std::int64_t milliseconds, std::function<void()> happen);

/// Sets the wall clock, which runs on from there.
void set_local(const local_time& moment);

/// Bytes arrive at the open port of a channel, as one receive event. With `held` events or a closed port they
/// wait or are lost, as on a real line. True if the system took them.
bool receive(i16 channel, std::string_view bytes);

/// Another event of the port: a line change or an error.
void port_event(i16 channel, i32 event);

/// Everything that the system sent to the line of a channel.
[[nodiscard]] std::string& sent(i16 channel);

/// What the channel's port was set to.
struct port_settings {
    bool open = false;
    i16 number = 0;
    std::string settings;
    i32 input_mode = 0;
    bool rts = true;
    i32 r_threshold = 0;
    i32 s_threshold = 0;
    i32 handshaking = -1;
    int opened = 0; ///< how often
};
[[nodiscard]] const port_settings& port(i16 channel);

/// The path as the simulated disk knows it: "/" between folders, no "./" in front.
[[nodiscard]] std::string normalised(std::string_view path);

/// The content of a file; an empty text when there is none.
[[nodiscard]] std::string file(std::string_view path);
void put_file(std::string_view path, std::string_view content);

/// The power goes: each file keeps what was synced and a part of the rest, from its beginning on, that `kept`
/// chooses of the bytes that may be lost; a new or replaced file that is not synced may be as it was before.
void lose_power(const std::function<std::size_t(std::size_t most)>& kept);

/// Moves a file to where nobody looks, under whoever has it open; the result is what it held.
std::string take_file_away(std::string_view path);

} // namespace tyxo::simulation
