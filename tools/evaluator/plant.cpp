#include "plant.h"

#include <stdexcept>
#include <utility>

namespace tyxo::evaluator_sim {

namespace {

std::string name_of(int number) {
    return "channel " + std::to_string(number);
}

} // namespace

Plant::Plant(std::string ports, std::uint64_t seed, Pace pace, Say say)
    : ports_(std::move(ports)), say_(std::move(say)) {
    for (int number = 1; number <= max_channels; ++number) {
        stations_.at(static_cast<size_t>(number - 1)) = std::make_unique<Station>(number, seed);
        Station& made = station(number);
        made.channel.schedule.set_pace(pace, 0);
        made.shown_alarm = made.channel.unit.alarm_word(0);
    }
}

void Plant::attach(int number, int port) {
    for (int other = 1; other <= max_channels; ++other)
        if (other != number && station(other).port == port)
            throw std::runtime_error("port " + std::to_string(port) + " belongs to " + name_of(other));
    station(number).port = port;
    open_device(number);
}

void Plant::open_device(int number) {
    Station& s = station(number);
    const std::string link = ports_ + "/COM" + std::to_string(s.port);
    s.device.open(link);
    say(name_of(number) + " on " + link + " -> " + s.device.device());
}

void Plant::vanish(int number) {
    Station& s = station(number);
    if (!s.device.is_open()) throw std::runtime_error(name_of(number) + " has no device that could vanish");
    s.device.close();
    say(name_of(number) + " vanished");
}

void Plant::bring_back(int number) {
    Station& s = station(number);
    if (s.port == 0) throw std::runtime_error(name_of(number) + " has no port");
    if (!s.device.is_open()) open_device(number);
}

void Plant::record(int number, const std::string& file) {
    Station& s = station(number);
    s.record.close();
    s.record.clear();
    if (file.empty()) return;
    s.record.open(file, std::ios::binary | std::ios::trunc);
    if (!s.record) throw std::runtime_error("cannot write " + file);
}

void Plant::replay(int number, const std::string& file, double speed, double time) {
    Station& s = station(number);
    s.replay = file.empty() ? nullptr : std::make_unique<Replay>(file, speed);
    if (s.replay) s.replay->take_over(s.channel, time);
}

void Plant::play(int number, double time) {
    Station& s = station(number);
    if (!s.replay) return;
    if (!s.device.listened()) return s.replay->hold();
    s.replay->step(s.channel, time);
    if (!s.replay->ended() || !s.channel.transmitter().empty()) return;
    s.replay.reset();
    say(name_of(number) + " replayed");
}

void Plant::step(double time) {
    for (int number = 1; number <= max_channels; ++number)
        if (station(number).port != 0) step(number, time);
}

void Plant::step(int number, double time) {
    Station& s = station(number);
    const bool before = s.device.listened();
    const std::string received = s.device.read();
    for (const std::string& line : s.channel.receive(received, time))
        say(line);
    if (s.device.listened() != before) say(name_of(number) + (before ? " closed" : " opened"));
    play(number, time);
    const std::string bytes = s.channel.step(time);
    const size_t sent = s.device.write(bytes);
    s.channel.settle(sent);
    if (s.record.is_open() && sent > 0) {
        s.record.write(bytes.data(), static_cast<std::streamsize>(sent));
        s.record.flush(); // whoever compares reads along
    }
    if (s.tell_drained && s.channel.transmitter().empty()) {
        s.tell_drained = false;
        say(name_of(number) + " drained");
    }
    tell_status(number, time);
}

void Plant::tell_status(int number, double time) {
    Station& s = station(number);
    const unsigned alarm = s.channel.unit.alarm_word(time);
    const unsigned error = s.channel.unit.alarms.errors;
    if (alarm == s.shown_alarm && error == s.shown_error) return;
    s.shown_alarm = alarm;
    s.shown_error = error;
    say(name_of(number) + " status alarm=" + hex_field(static_cast<long>(alarm), 4) +
        " error=" + hex_field(static_cast<long>(error), 4));
}

void Plant::report() {
    for (int number = 1; number <= max_channels; ++number) {
        Station& s = station(number);
        if (s.port == 0) continue;
        const Counters& counters = s.channel.counters();
        std::string frames = name_of(number) + " frames";
        for (const auto& [code, count] : counters.frames)
            frames.append(" ").append(code).append("=").append(std::to_string(count));
        say(frames);
        say(name_of(number) + " curves 03=" + std::to_string(counters.curves[0]) +
            " 04=" + std::to_string(counters.curves[1]));
        std::string faults = name_of(number) + " faults";
        for (size_t i = 0; i < fault_names.size(); ++i)
            faults.append(" ").append(fault_names[i]).append("=").append(std::to_string(counters.faults[i]));
        say(faults);
        say(name_of(number) + " bytes sent=" + std::to_string(counters.sent_bytes) +
            " lost=" + std::to_string(counters.lost_bytes) +
            " lost_frames=" + std::to_string(s.channel.transmitter().lost_items()) +
            " received_frames=" + std::to_string(counters.received_frames));
    }
}

} // namespace tyxo::evaluator_sim
