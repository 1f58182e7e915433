// Commands that say what goes over an Evaluator's line: schedule, single frames, faults, the device itself.

#include "command.h"

namespace tyxo::evaluator_sim {

namespace {

constexpr std::string_view on_off[] = {"off", "on"};

int read_code(const Arguments& a, size_t i) {
    constexpr std::string_view codes[] = {"00", "01", "03", "04", "06", "08"};
    constexpr int numbers[] = {0, 1, 3, 4, 6, 8};
    return numbers[choose(a.word(i), "code", codes)];
}

ChannelAction schedule(const Arguments& a) {
    constexpr std::string_view words[] = {"off", "on", "full"};
    const auto pace = static_cast<Pace>(choose(a.word(0), "schedule", words));
    a.at_most(1);
    return [pace](Plant& plant, int number, double time) {
        plant.channel(number).schedule.set_pace(pace, time);
    };
}

ChannelAction period(const Arguments& a) {
    const int code = read_code(a, 0);
    const double seconds = read_number(a.word(1), "period", 0, 86400);
    a.at_most(2);
    return [code, seconds](Plant& plant, int number, double time) {
        plant.channel(number).schedule.set_period(code, seconds, time);
    };
}

ChannelAction pause(const Arguments& a) {
    a.at_most(0);
    return [](Plant& plant, int number, double) { plant.channel(number).schedule.pause(); };
}

ChannelAction resume(const Arguments& a) {
    a.at_most(0);
    return [](Plant& plant, int number, double time) { plant.channel(number).schedule.resume(time); };
}

ChannelAction baud(const Arguments& a) {
    const double baud = read_number(a.word(0), "baud", 50, 4000000);
    a.at_most(1);
    return [baud](Plant& plant, int number, double) { plant.channel(number).set_baud(baud); };
}

ChannelAction answer(const Arguments& a) {
    const bool on = choose(a.word(0), "answer", on_off) == 1;
    a.at_most(1);
    return [on](Plant& plant, int number, double) { plant.channel(number).answers = on; };
}

ChannelAction send(const Arguments& a) {
    const int code = read_code(a, 0);
    const int count = a.count() > 1 ? read_integer(a.word(1), "count", 1, 10000) : 1;
    a.at_most(2);
    return [code, count](Plant& plant, int number, double time) {
        for (int i = 0; i < count; ++i)
            plant.channel(number).send(code, time);
    };
}

ChannelAction frame(const Arguments& a) {
    const std::string body = unescape(a.text());
    return [body](Plant& plant, int number, double) { plant.channel(number).send_body(body); };
}

ChannelAction raw(const Arguments& a) {
    const std::string bytes = unescape(a.text());
    return [bytes](Plant& plant, int number, double) { plant.channel(number).send_raw(bytes); };
}

ChannelAction noise(const Arguments& a) {
    const int count = read_integer(a.word(0), "count", 1, 100000);
    a.at_most(1);
    return [count](Plant& plant, int number, double) {
        plant.channel(number).send_noise(static_cast<size_t>(count));
    };
}

ChannelAction once(const Arguments& a) {
    const auto fault = static_cast<Fault>(choose(a.word(0), "fault", fault_names));
    const int count = a.count() > 1 ? read_integer(a.word(1), "count", 1, 10000) : 1;
    a.at_most(2);
    return [fault, count](Plant& plant, int number, double) {
        plant.channel(number).faults.add_pending(fault, count);
    };
}

ChannelAction fault(const Arguments& a) {
    if (a.word(0) == "none") {
        a.at_most(1);
        return [](Plant& plant, int number, double) { plant.channel(number).faults.clear(); };
    }
    const auto fault = static_cast<Fault>(choose(a.word(0), "fault", fault_names));
    const double probability = read_number(a.word(1), "probability", 0, 1);
    a.at_most(2);
    return [fault, probability](Plant& plant, int number, double) {
        plant.channel(number).faults.set_probability(fault, probability);
    };
}

ChannelAction silence(const Arguments& a) {
    const double seconds = read_number(a.word(0), "seconds", 0, 86400);
    a.at_most(1);
    return [seconds](Plant& plant, int number, double time) { plant.channel(number).silence(time, seconds); };
}

ChannelAction vanish(const Arguments& a) {
    a.at_most(0);
    return [](Plant& plant, int number, double) { plant.vanish(number); };
}

ChannelAction bring_back(const Arguments& a) {
    a.at_most(0);
    return [](Plant& plant, int number, double) { plant.bring_back(number); };
}

ChannelAction record(const Arguments& a) {
    const std::string file = a.text() == "off" ? std::string() : std::string(a.text());
    return [file](Plant& plant, int number, double) { plant.record(number, file); };
}

ChannelAction replay(const Arguments& a) {
    std::string_view file = a.text();
    double speed = 1;
    if (a.count() > 1 && a.word(0).starts_with('x')) {
        speed = read_number(std::string_view(a.word(0)).substr(1), "speed", 0.01, Replay::most_speed);
        file = trim(file.substr(a.word(0).size()));
    }
    return [name = file == "off" ? std::string() : std::string(file),
            speed](Plant& plant, int number, double time) { plant.replay(number, name, speed, time); };
}

ChannelAction drain(const Arguments& a) {
    a.at_most(0);
    return [](Plant& plant, int number, double) { plant.tell_when_drained(number); };
}

constexpr Verb line_rows[] = {
    {"schedule", "off|on|full", "send nothing by itself, at the periods, or without a gap", schedule},
    {"period", "CODE S", "seconds from frame to frame of a code; 0 for never", period},
    {"pause", "", "hold the schedule", pause},
    {"resume", "", "go on with the schedule", resume},
    {"baud", "RATE", "pace of the line; 38400 unless set", baud},
    {"answer", "on|off", "whether received frames are answered", answer},
    {"send", "CODE [COUNT]", "a frame of the present state; a curve as four blocks", send},
    {"frame", "BODY", "body with check digits and CR LF added", frame},
    {"raw", "TEXT", "bytes as they are, with \\r \\n \\t \\\\ \\xHH", raw},
    {"noise", "COUNT", "random bytes", noise},
    {"once", "FAULT [COUNT]", "badcheck, uppercheck, cut, noise, order: strikes the next frames", once},
    {"fault", "FAULT PROBABILITY | none", "the same by chance", fault},
    {"silence", "S", "a dead line for some seconds", silence},
    {"vanish", "", "take the device away", vanish},
    {"return", "", "bring the device back", bring_back},
    {"record", "FILE | off", "write every byte that reached the device into a file", record},
    {"replay", "[xSPEED] FILE | off", "play a log back as frames while somebody listens", replay},
    {"drain", "", "say 'drained' when all that waits has left", drain},
};

} // namespace

std::span<const Verb> line_verbs() {
    return line_rows;
}

} // namespace tyxo::evaluator_sim
