// Commands that say what an Evaluator measures and decides: signals, alarms, errors, inhibit time.

#include "command.h"

namespace tyxo::evaluator_sim {

namespace {

constexpr double longest_ramp = 86400; // seconds
constexpr std::string_view switches[] = {"auto", "off", "on"};

/// The named numbers behind the i-th word, each once: "over 20 cylinder 3".
struct Options {
    double over = 0;
    int cylinder = 0; ///< 0 for none
};

Options read_options(const Arguments& a, size_t i, bool with_cylinder) {
    Options options;
    for (; i < a.count(); i += 2) {
        if (a.word(i) == "over")
            options.over = read_number(a.word(i + 1), "over", 0, longest_ramp);
        else if (with_cylinder && a.word(i) == "cylinder")
            options.cylinder = read_integer(a.word(i + 1), "cylinder", 1, max_cylinders);
        else
            throw InputError("'" + printable(a.word(i)) + "' has no meaning here");
    }
    return options;
}

ChannelAction speed(const Arguments& a) {
    const double rpm = read_number(a.word(0), "speed", 0, 6500);
    const Options options = read_options(a, 1, false);
    return [rpm, options](Plant& plant, int number, double time) {
        Ramp& ramp = unit_of(plant, number).engine.speed;
        ramp = ramp.toward(rpm, time, options.over);
    };
}

ChannelAction warm(const Arguments& a) {
    const double percent = read_number(a.word(0), "percent", -1000, 3000);
    const Options options = read_options(a, 1, true);
    return [percent, options](Plant& plant, int number, double time) {
        EngineState& engine = unit_of(plant, number).engine;
        if (options.cylinder == 0)
            warm_all(engine, percent, time, options.over);
        else
            warm_cylinder(engine, options.cylinder, percent, time, options.over);
    };
}

ChannelAction power(const Arguments& a) {
    const int cylinder = read_integer(a.word(0), "cylinder", 1, max_cylinders);
    const double share = read_number(a.word(1), "percent", 0, 1000) / 100;
    a.at_most(2);
    return [cylinder, share](Plant& plant, int number, double) {
        unit_of(plant, number).engine.power.at(static_cast<size_t>(cylinder - 1)) = share;
    };
}

ChannelAction steady(const Arguments& a) {
    constexpr std::string_view words[] = {"off", "on"};
    const bool on = choose(a.word(0), "steady", words) == 1;
    a.at_most(1);
    return [on](Plant& plant, int number, double) { unit_of(plant, number).engine.steady = on; };
}

Force read_force(const Arguments& a) {
    constexpr std::string_view words[] = {"auto", "off", "dc", "ac", "both"};
    const auto force = static_cast<Force>(choose(a.word(0), "alarm", words));
    a.at_most(1);
    return force;
}

ChannelAction alarm(const Arguments& a) {
    const Force force = read_force(a);
    return [force](Plant& plant, int number, double) { unit_of(plant, number).alarms.main = force; };
}

ChannelAction prealarm(const Arguments& a) {
    const Force force = read_force(a);
    return [force](Plant& plant, int number, double) { unit_of(plant, number).alarms.pre = force; };
}

ChannelAction overspeed(const Arguments& a) {
    const auto state = static_cast<Switch>(choose(a.word(0), "overspeed", switches));
    a.at_most(1);
    return [state](Plant& plant, int number, double) { unit_of(plant, number).alarms.overspeed = state; };
}

ChannelAction ready(const Arguments& a) {
    const auto state = static_cast<Switch>(choose(a.word(0), "ready", switches));
    a.at_most(1);
    return [state](Plant& plant, int number, double) { unit_of(plant, number).alarms.ready = state; };
}

unsigned read_error_bits(const Arguments& a) {
    unsigned bits = 0;
    a.word(1);
    for (size_t i = 1; i < a.count(); ++i) {
        bool named = false;
        for (const ErrorName& error : error_names())
            if (error.name == a.word(i)) {
                bits |= error.bits;
                named = true;
            }
        if (!named) bits |= read_hex(a.word(i), "error");
    }
    return bits;
}

ChannelAction error(const Arguments& a) {
    constexpr std::string_view words[] = {"set", "clear"};
    const bool set = choose(a.word(0), "error", words) == 0;
    const unsigned bits = read_error_bits(a);
    return [set, bits](Plant& plant, int number, double) {
        unsigned& errors = unit_of(plant, number).alarms.errors;
        errors = set ? errors | bits : errors & ~bits;
    };
}

ChannelAction status(const Arguments& a) {
    std::optional<unsigned> word;
    if (a.word(0) != "auto") word = read_hex(a.word(0), "status");
    a.at_most(1);
    return [word](Plant& plant, int number, double) { unit_of(plant, number).alarms.word = word; };
}

ChannelAction test_signal(const Arguments& a) {
    const int signal = read_integer(a.word(0), "test signal", 0, 65535);
    a.at_most(1);
    return [signal](Plant& plant, int number, double) { unit_of(plant, number).test_signal = signal; };
}

ChannelAction inhibit(const Arguments& a) {
    constexpr std::string_view words[] = {"off", "on"};
    const bool on = choose(a.word(0), "inhibit", words) == 1;
    std::optional<double> seconds;
    if (a.count() > 1) seconds = read_number(a.word(1), "seconds", 0, 65535);
    a.at_most(on ? 2 : 1);
    return [on, seconds](Plant& plant, int number, double time) {
        Unit& unit = unit_of(plant, number);
        if (!on)
            unit.inhibit.stop();
        else if (seconds)
            unit.inhibit.start(time, *seconds);
        else
            unit.restart_inhibit(time);
    };
}

constexpr Verb signal_rows[] = {
    {"speed", "RPM [over S]", "bring the engine to a speed", speed},
    {"warm", "PERCENT [over S] [cylinder C]", "bring the thermosignal, or that of one cylinder, to PERCENT",
     warm},
    {"power", "C PERCENT", "share of a cylinder in the drive; 100 is normal, 0 a misfire", power},
    {"steady", "on|off", "without or with drift and noise", steady},
    {"alarm", "auto|off|dc|ac|both", "main alarm", alarm},
    {"prealarm", "auto|off|dc|ac|both", "prealarm", prealarm},
    {"overspeed", "auto|off|on", "overspeed alarm", overspeed},
    {"ready", "auto|off|on", "system ready", ready},
    {"error", "set|clear BITS|NAME...", "bits of the error status word", error},
    {"status", "HEX|auto", "the whole alarm status word", status},
    {"testsignal", "0|1|2", "test signal", test_signal},
    {"inhibit", "on [S] | off", "alarm inhibit time", inhibit},
};

} // namespace

std::span<const Verb> signal_verbs() {
    return signal_rows;
}

} // namespace tyxo::evaluator_sim
