// What happens to the plant from outside: engines, lines, the disk, the machine and the controller.

#include "plant.h"

#include "app/mainfrm.h"
#include "platform/clock.h"
#include "platform/simulation.h"

#include <algorithm>
#include <ctime>
#include <vector>

namespace months {

using namespace tyxo;
using simulation::world;
using enum act_kind;

void plant::at_evaluator(const act& what, chance& dice) {
    evaluator& one = evaluators_.at(what.channel);
    const std::int64_t now = world().now_ms;
    switch (what.kind) {
    case status_bits:
        one.alarm_bits(dice.next());
        break;
    case main_alarm:
        one.main_alarm(true);
        break;
    case alarm_ends:
        one.main_alarm(false);
        break;
    case alarm_storm: // on every line, on and off
        for (int turn = 0; turn < 20; ++turn) {
            simulation::after(turn * 400 + dice.between(0, 300),
                              [this, on = turn % 2 == 0, to = dice.below(4)] {
                                  evaluators_.at(to).main_alarm(on);
                                  evaluators_.at(to).hurry(world().now_ms + 2000);
                              });
        }
        break;
    case inhibit_begins:
        one.inhibit(!dice.once_in(3), static_cast<int>(dice.between(0, 600)));
        break;
    case test_signal:
        one.test_signal(static_cast<int>(dice.below(3)));
        break;
    case engine_changes:
        one.new_engine(dice.next());
        break;
    case hurry:
        one.hurry(now + dice.between(10'000, 120'000));
        break;
    case silence:
        one.silence(now + dice.between(1000, 60'000));
        break;
    case damaged_frames:
        one.hurt_next(static_cast<damage>(1 + dice.below(damages - 1)),
                      static_cast<int>(dice.between(1, 20)));
        break;
    case noise: {
        std::string bytes(dice.below(200) + 1, ' ');
        std::ranges::generate(bytes, [&] { return static_cast<char>(dice.below(256)); });
        if (what.channel < used_) simulation::receive(static_cast<i16>(what.channel), bytes);
        break;
    }
    default:
        break;
    }
}

void plant::at_port(const act& what, chance& dice) {
    const auto number = static_cast<i16>(what.channel + 1);
    simulation::port_behaviour& port = world().ports[number];
    switch (what.kind) {
    case port_refuses_to_open:
        port.refuses_to_open = true;
        for (const int minutes : {1, 3}) { // the operator stops the channel and starts it again
            simulation::after(minutes * 60'000, [this, channel = what.channel, choice = dice.next()] {
                carry_out({world().now_ms, start_or_stop_one, channel, choice});
            });
        }
        break;
    case port_refuses_output:
        port.refuses_output = true;
        break;
    case port_refuses_input:
        port.refuses_input = true;
        break;
    case port_brings_bytes_while_closing:
        port.arrives_while_closing = ":0800\r\n:01";
        break;
    case port_recovers:
        port = {};
        break;
    case line_error:
        if (simulation::port(static_cast<i16>(what.channel)).open) {
            simulation::port_event(static_cast<i16>(what.channel), static_cast<i32>(dice.between(3, 1011)));
        }
        break;
    default:
        break;
    }
}

namespace {

/// With all that is in it.
void remove_folder(const std::string& folder) {
    const auto inside = [&](const std::string& path) {
        return path == folder || path.starts_with(folder + '/');
    };
    std::vector<std::string> files;
    for (const auto& [path, content] : world().files) {
        if (inside(path)) files.push_back(path);
    }
    for (const std::string& path : files)
        simulation::take_file_away(path);
    std::erase_if(world().folders, inside);
}

} // namespace

void plant::at_disk(const act& what, chance& dice) {
    simulation::machine& machine = world();
    const std::string& log = newest_log_.at(what.channel);
    switch (what.kind) {
    case writes_fail:
        machine.refused_writes = static_cast<int>(dice.between(1, 6));
        break;
    case disk_full:
        machine.disk_space = dice.below(3000);
        break;
    case disk_has_room:
        machine.disk_space.reset();
        break;
    case folder_read_only:
        if (!log.empty()) machine.unwritable.insert(log.substr(0, log.rfind('/')));
        break;
    case file_read_only:
        if (!log.empty()) machine.unwritable.insert(log);
        break;
    case disk_writable:
        machine.unwritable.clear();
        break;
    case log_moved_away:
        if (!log.empty()) simulation::take_file_away(log);
        break;
    case events_moved_away:
        simulation::take_file_away("C:/logs/TY_all_events.txt");
        break;
    case folder_vanishes:
        if (!log.empty()) remove_folder(log.substr(0, log.rfind('/')));
        break;
    case disk_vanishes:
        remove_folder("C:/logs");
        break;
    case disk_returns:
        machine.folders.insert("C:/logs");
        break;
    case slow_syncs:
        machine.sync_ms = dice.between(100, 20'000);
        checker_.disk_takes(machine.sync_ms);
        break;
    case quick_syncs:
        machine.sync_ms = 0;
        checker_.disk_takes(0);
        break;
    default:
        break;
    }
}

void plant::set_clock_by(std::int64_t seconds) {
    const local_time set = local_now();
    std::tm parts{};
    parts.tm_year = set.year - 1900;
    parts.tm_mon = set.month - 1;
    parts.tm_mday = set.day;
    parts.tm_hour = set.hour;
    parts.tm_min = set.minute;
    parts.tm_sec = set.second;
    const std::time_t moment = timegm(&parts) + seconds;
    gmtime_r(&moment, &parts);
    simulation::set_local(
        {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec});
}

void plant::at_machine(const act& what, chance& dice) {
    const local_time now = local_now();
    const std::int64_t to_midnight = 86'400 - (3600 * now.hour + 60 * now.minute + now.second);
    switch (what.kind) {
    case power_cut:
        end_by("    the power is off", true);
    case process_killed:
        end_by("    the process is killed", false);
    case session_ends:
        checker_.close_asked();
        mainfrm::end_without_question(0);
        end_by("    the program has ended", false);
    case clock_corrected:
        set_clock_by(dice.between(-90, 90));
        break;
    case clock_an_hour_forward:
        set_clock_by(3600);
        break;
    case clock_an_hour_back:
        set_clock_by(-3600);
        break;
    case clock_to_midnight:
        set_clock_by(to_midnight - dice.between(1, 20));
        break;
    case clock_to_month_end:
        set_clock_by(to_midnight - 5 + 86'400 * std::max(0, 28 - now.day));
        break;
    default:
        break;
    }
    checker_.time(world().now_ms, wall());
}

namespace {

/// What a controller that lies answers: anything but the truth.
simulation::reply lie(const std::string& frame, chance& dice) {
    simulation::reply reply = simulation::answered(frame, dice.between(1, 200));
    std::string& bytes = reply.pieces.front().bytes;
    switch (dice.below(6)) {
    case 0:
        bytes[dice.below(bytes.size())] ^= static_cast<char>(1 + dice.below(255));
        break;
    case 1:
        bytes.resize(dice.below(bytes.size()));
        break;
    case 2:
        bytes += bytes;
        break;
    case 3:
        bytes[7] = static_cast<char>(bytes[7] | 0x80);
        break;
    case 4:
        reply.closes = true;
        break;
    default:
        bytes.assign(dice.below(300), static_cast<char>(dice.below(256)));
        break;
    }
    return reply;
}

} // namespace

void plant::at_controller(const act& what, chance& dice) {
    simulation::controller& peer = world().plant;
    checker_.controller_disturbed();
    // A lying one goes on to lie behind a broken connection.
    if (what.kind == controller_answers) controller_lies_until_ = 0;
    const std::int64_t for_ms = what.kind == controller_lies ? 86'400'000 : 5000;
    controller_lies_until_ = std::max(controller_lies_until_, world().now_ms + for_ms);
    const auto answer_by = [&](auto how) {
        const bool fair = what.kind == controller_answers;
        peer.connects = simulation::connecting::accepted;
        peer.answers = [this, how, fair](const std::string& frame) mutable {
            if (!fair) checker_.controller_disturbed();
            ++outcome_.registers_sent;
            checker_.time(world().now_ms, wall());
            if (!by_hand_) checker_.sent_to_controller(frame);
            return how(frame);
        };
    };
    switch (what.kind) {
    case controller_answers:
        answer_by([](const std::string& f) { return simulation::answered(f); });
        break;
    case controller_slow:
        answer_by([own = dice](const std::string& f) mutable {
            return simulation::answered(f, own.between(50, 2500));
        });
        break;
    case controller_silent:
        answer_by([](const std::string&) { return simulation::reply{}; });
        break;
    case controller_lies:
        answer_by([own = dice](const std::string& f) mutable { return lie(f, own); });
        break;
    case controller_refuses:
        peer.connects = simulation::connecting::refused;
        break;
    case controller_unreachable:
        peer.connects = simulation::connecting::unanswered;
        break;
    case controller_closes:
        simulation::controller_closes();
        break;
    case controller_floods:
        simulation::controller_sends(std::string(1 + dice.below(5000), '\x10'));
        break;
    case controller_breaks:
        simulation::connection_breaks();
        break;
    default:
        break;
    }
}

} // namespace months
