#include "platform/simulation.h"

#include "simulated_ports.h"

#include "app/mainfrm.h"
#include "dialogs/frmabort.h"
#include "dialogs/frmalert.h"
#include "dialogs/frmbrowse.h"
#include "dialogs/frmlog.h"
#include "dialogs/frmpwd.h"
#include "dialogs/frmresetinhtime.h"
#include "dialogs/frmscale_polar.h"
#include "dialogs/frmselectprint.h"
#include "dialogs/frmsplash.h"
#include "dialogs/frmstatustext.h"
#include "dialogs/setup/frmsetup.h"
#include "displays/bar_diagram.h"
#include "displays/chart.h"
#include "displays/frmdetailedpic.h"
#include "displays/panel.h"
#include "gateway/connection.h"
#include "gateway/frmsetuptcp.h"
#include "gateway/modbus.h"
#include "link/calls.h"
#include "link/channel_rec.h"
#include "link/frame_dispatch.h"
#include "link/indicators.h"
#include "link/main_timers.h"
#include "link/serial.h"
#include "link/supervision.h"
#include "logging/event_file.h"
#include "logging/log.h"
#include "platform/awake.h"
#include "platform/clock.h"
#include "platform/debug_output.h"
#include "platform/printer.h"
#include "platform/sound.h"
#include "settings/serial_ports.h"
#include "settings/settings.h"

#include <algorithm>
#include <chrono>
#include <memory>

namespace tyxo {

namespace simulation {

machine& world() {
    static machine the_machine;
    return the_machine;
}

namespace {

/// Every state is made anew, as it is when the program starts.
template <class... State> void renew(State&... states) {
    const auto one = [](auto& state) {
        std::destroy_at(&state);
        std::construct_at(&state);
    };
    (one(states), ...);
}

} // namespace

// The list that a test compares with the writable symbols of the core.
void fresh_world() {
    renew(sensor::state, mainfrm::timers, serial::state, serial::serial_ports, calls, indicators, settings,
          panels, charts, frmdetailedpic::state, frmbarpic::state, Frmbarpic2::state, FrmSetupTCP::state,
          gateway, modbus, tcp, log::state, event_file, frmscale_polar::state, frmselectprint::state,
          FrmAbort::state, FrmAlert::state, FrmAlert::timer_alert, Frmlog::state, frmpwd::state,
          FrmResetInhTime::state, frmSetup::state, frmbrowse::state, frmSplash::state, frmstatustext::state,
          mainfrm::state);
    world() = {};
}

void set_local(const local_time& moment) {
    world().local = moment;
    world().local_set_ms = world().now_ms;
}

} // namespace simulation

using simulation::world;

local_time local_now() {
    return local_at(world().now_ms);
}

double seconds_of_day() {
    const local_time time = local_now();
    const std::int64_t part = (world().now_ms - world().local_set_ms) % 1000;
    return 3600.0 * time.hour + 60.0 * time.minute + time.second + static_cast<double>(part) / 1000;
}

std::int64_t running_ms() {
    return world().now_ms;
}

local_time local_at(std::int64_t running) {
    // The wall clock runs with the virtual one from where it was set; no time zone takes part.
    const simulation::machine& machine = world();
    const std::int64_t since = running - machine.local_set_ms;
    const std::int64_t seconds = since >= 0 ? since / 1000 : -((999 - since) / 1000);
    const local_time& set = machine.local;
    if (seconds == 0) return set;
    using namespace std::chrono;
    const sys_days day = year(set.year) / set.month / set.day;
    const sys_seconds moment = day + hours(set.hour) + minutes(set.minute) +
                               std::chrono::seconds(set.second) + std::chrono::seconds(seconds);
    const auto midnight = floor<days>(moment);
    const year_month_day date(midnight);
    const hh_mm_ss time(moment - midnight);
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(time.hours().count()),
            static_cast<int>(time.minutes().count()),
            static_cast<int>(time.seconds().count())};
}

void debug_output(std::string_view message) {
    if (message.ends_with("\r\n")) message.remove_suffix(2);
    world().debug.emplace_back(message);
}

box_answer message_box(std::string_view text, box_icon icon, box_buttons buttons, std::string_view title) {
    simulation::machine& machine = world();
    const bool waits = buttons != box_buttons::ok || !machine.events_held;
    machine.boxes.push_back({std::string(text), icon, buttons, std::string(title), waits});
    if (machine.during_box) machine.during_box();
    if (!waits) return box_answer::ok;
    if (machine.answers.empty()) return box_answer::ok;
    const box_answer answer = machine.answers.front();
    machine.answers.pop_front();
    return answer;
}

void print_chart(const iStripChartX& chart, const strip_window& rows) {
    world().prints.push_back({chart, rows});
    if (world().during_print) world().during_print();
}

void PlaySoundA(std::string_view name, i32 flags) {
    world().sounds.push_back({std::string(name), flags});
}

void GetShortPathNameA(std::string_view name, std::string& buffer) {
    if (world().files.contains(std::string(name))) buffer.replace(0, name.size(), name);
}

void keep_awake(bool on) {
    world().awake = on;
}

void wake_screen() {
    ++world().wakes;
}

void beep() {
    ++world().beeps;
}

std::string executable_name() {
    return world().executable;
}

std::optional<std::string> folder_holder() {
    return world().folder_holder;
}

void end_program(int exit_code) {
    if (!world().exit_code) world().exit_code = exit_code;
}

void do_events() {
    ++world().do_events_calls;
    if (world().during_do_events) world().during_do_events();
}

void wait_events(int milliseconds) {
    const std::int64_t end = world().now_ms + milliseconds;
    if (!simulation::happen_next(end)) world().now_ms = end;
}

void hold_events(bool held) {
    world().events_held = held;
    if (!held) simulation::deliver_waiting();
}

screen_size screen() {
    return world().screen;
}

std::optional<std::vector<port_name>> list_ports(int& error_code) {
    if (world().port_list_unreadable) {
        error_code = world().port_list_error;
        return std::nullopt;
    }
    return world().port_names;
}

std::string system_error_text(int error_code) {
    const auto found = world().error_texts.find(error_code);
    return found == world().error_texts.end() ? std::string() : found->second;
}

} // namespace tyxo
