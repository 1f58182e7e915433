#include "plant.h"

#include "app/mainfrm.h"
#include "app/wiring.h"
#include "dialogs/frmabort.h"
#include "displays/panel.h"
#include "link/calls.h"
#include "link/main_timers.h"
#include "link/supervision.h"
#include "platform/simulated_ports.h"
#include "platform/simulation.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace months {

using namespace tyxo;
using simulation::world;

namespace {

constexpr std::int64_t day = 86'400'000;

/// Unwinds whatever the program was doing: the process has gone.
struct gone {
    bool power; ///< with what was not on the disk
    bool ended; ///< of its own will
    std::string why;
};

} // namespace

plant::plant(const history& what, std::ostream* story, std::filesystem::path keep)
    : history_(what), story_(story), keep_(std::move(keep)),
      dice_(what.seed ^ 0x5EEDU), evaluators_{evaluator(dice_.next()), evaluator(dice_.next()),
                                              evaluator(dice_.next()), evaluator(dice_.next())} {}

outcome plant::run() {
    set_up();
    const std::int64_t end = history_.days * day;
    while (world().now_ms < end && checker_.complaints().empty() && outcome_.complaints.empty()) {
        try {
            if (!std::exchange(runs_, true)) program_starts();
            if (!simulation::happen_next(end)) world().now_ms = end;
            handler_has_ended();
            continue;
        } catch (const gone& how) {
            tell(how.why);
            checker_.time(world().now_ms, wall());
            if (how.power) {
                simulation::lose_power([this](std::size_t most) { return dice_.below(most + 1); });
                ++outcome_.cuts;
                checker_.power_cut();
            } else if (!how.ended) {
                checker_.killed();
            } else {
                checker_.program_ends();
            }
        }
        program_has_gone(dice_.between(2000, 120'000));
    }
    if (!checker_.complaints().empty() || !outcome_.complaints.empty()) {
        for (const std::string& line : recent_)
            tell(line);
    }
    for (const check::complaint& each : checker_.complaints())
        outcome_.complaints.push_back(day_and_time(each.ms) + each.what);
    for (const auto& [path, content] : world().files)
        keep_file(path, content);
    outcome_.memory_late = memory_in_use();
    return std::move(outcome_);
}

void plant::set_up() {
    simulation::fresh_world();
    simulation::machine& machine = world();
    for (const char* folder : {"C:", "C:/logs", "D:", "D:/engines"})
        machine.folders.insert(folder);
    machine.local = {2026,
                     static_cast<int>(dice_.between(1, 12)),
                     static_cast<int>(dice_.between(1, 28)),
                     static_cast<int>(dice_.between(0, 23)),
                     static_cast<int>(dice_.between(0, 59)),
                     0};
    for (const char* port : {"COM1", "COM2", "COM3", "COM4", "COM65"})
        machine.port_names.push_back({"", port});
    chance dice(0);
    at_controller({0, act_kind::controller_answers, 0, 0}, dice);
    simulation::put_file("ralarm_1.wav", "sound");
    simulation::put_file("tyxo.ini", settings_text());
}

void plant::program_starts() {
    ++outcome_.starts;
    watch_machine();
    plan();
    wire();
    calls.stop_lock = [this](std::string_view words) {
        const bool granted = FrmAbort::stop_lock(words);
        checker_.time(world().now_ms, wall());
        if (granted && !right_password_) wrong("the stop lock took a wrong password");
        for (int channel = 0; granted && channel < used_; ++channel) {
            if (stopping_ < 0 || stopping_ == channel) checker_.stop_asked(channel);
        }
        return granted;
    };
    mainfrm::timers.Timer_chart_upd.on_tick([this] {
        checker_.time(world().now_ms, wall());
        checker_.chart_tick();
        mainfrm::Timer_chart_upd_tick();
    });
    for (i16 channel = 0; channel < channel_count; ++channel) {
        mainfrm::timers.Timer_timeout[channel].on_tick([this, channel] {
            checker_.time(world().now_ms, wall());
            sensor::link_timed_out(channel);
        });
    }
    password_ = setting_in_file("passwd");
    checker_.time(world().now_ms, wall());
    check_settings_file();
    for (const auto& [path, content] : world().files) {
        if (path.find('/') != path.npos) checker_.file_found(path, content); // logs and event file
    }
    checker_.all_files_found();
    checker_.program_starts(simulation::file("tyxo.ini"));
    if (setting_in_file("autostart") == "1") tell_start(-1);
    mainfrm::start_program(1280, 960);
    if (world().exit_code)
        wrong("the program did not start: " +
              (world().boxes.empty() ? std::string() : world().boxes.back().text));
}

/// The disk, the ports, the clock and the controller are the same when the program comes back; its memory is
/// not.
void plant::program_has_gone(std::int64_t for_ms) {
    simulation::machine kept = std::move(world());
    kept.planned.clear();
    kept.on_disk = nullptr;
    kept.on_input = nullptr;
    kept.on_output = nullptr;
    runs_ = by_hand_ = false;
    seen_ = {};
    rows_seen_.fill(0);
    simulation::fresh_world();
    kept.exit_code.reset();
    kept.events_held = false;
    kept.ticks_running = 0;
    kept.boxes.clear();
    kept.answers.clear();
    kept.now_ms += for_ms;
    world() = std::move(kept);
    for (evaluator& each : evaluators_)
        each.silence(world().now_ms + dice_.between(0, 3000));
}

void plant::plan() {
    for (int channel = 0; channel < 4; ++channel)
        plan_evaluator(channel);
    plan_act();
}

void plant::plan_evaluator(int channel) {
    evaluator& each = evaluators_.at(channel);
    world().planned.push_back({each.due(), [this, channel, &each] {
                                   const std::string bytes = each.speak();
                                   plan_evaluator(channel);
                                   if (channel < used_) simulation::receive(static_cast<i16>(channel), bytes);
                               }});
}

void plant::plan_act() {
    const auto& acts = history_.acts;
    while (next_act_ < acts.size() && acts[next_act_].ms < world().now_ms)
        ++next_act_; // the program was not there
    if (next_act_ == acts.size()) return;
    world().planned.push_back({acts[next_act_].ms, [this] {
                                   const act& what = history_.acts[next_act_++];
                                   plan_act();
                                   carry_out(what);
                               }});
}

void plant::carry_out(const act& what) {
    chance dice(what.choice);
    const act_handler handler = handler_of(what.kind);
    // A command waits while a tick waits, as it does on the desktop.
    if (handler == &plant::by_operator && what.kind != act_kind::confirm && world().ticks_running > 0) {
        simulation::after(20, [this, what] { carry_out(what); });
        return;
    }
    if (story_ != nullptr) tell(words_of(what));
    checker_.time(world().now_ms, wall());
    (this->*handler)(what, dice);
}

plant::act_handler plant::handler_of(act_kind kind) {
    using enum act_kind;
    if (kind < port_refuses_to_open) return &plant::at_evaluator;
    if (kind < writes_fail) return &plant::at_port;
    if (kind < power_cut) return &plant::at_disk;
    if (kind < controller_answers) return &plant::at_machine;
    if (kind < start_all) return &plant::at_controller;
    return &plant::by_operator;
}

void plant::end_by(const char* why, bool power) {
    throw gone{power, world().exit_code.has_value(), why};
}

void plant::tell(const std::string& line) {
    if (story_ != nullptr) *story_ << line << '\n';
}

outcome run(const history& what, std::ostream* story, const std::filesystem::path& keep) {
    return plant(what, story, keep).run();
}

} // namespace months
