#include "commands.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace tyxo::controller_sim {

namespace {

using evaluator_sim::printable;
using evaluator_sim::split_words;
using evaluator_sim::trim;

constexpr double longest_scenario = 1e7; // seconds

/// A way to answer, as its command names it; `high` is 0 for one without a number.
struct MannerRow {
    std::string_view name;
    std::string_view number;
    Manner manner;
    int low;
    int high;
    std::string_view help;
};

constexpr std::array<MannerRow, 9> manners = {{
    {"normal", "", Manner::normal, 0, 0, "answer as a controller should; listen again after refuse"},
    {"silent", "", Manner::silent, 0, 0, "take everything in and answer nothing"},
    {"late", "MS", Manner::late, 0, longest_lateness, "answer after so many milliseconds"},
    {"exception", "CODE", Manner::exception, 1, 255, "answer with this exception and write nothing"},
    {"split", "N", Manner::split, 1, 259,
     "answer in two pieces, the first of N bytes, the other 20 ms later"},
    {"bytewise", "", Manner::bytewise, 0, 0, "answer in single bytes, 2 ms apart"},
    {"too-much", "", Manner::too_much, 0, 0, "send 300 bytes in one piece, the answer first"},
    {"wrong-function", "", Manner::wrong_function, 0, 0, "answer a write as a read and a read as a write"},
    {"garbage", "", Manner::garbage, 0, 0, "answer with random bytes"},
}};

struct DeedRow {
    std::string_view name;
    void (*action)(Session&);
    std::string_view help;
};

constexpr std::array<DeedRow, 4> deeds = {{
    {"close", [](Session& session) { session.server().close_connections(); }, "close all connections, once"},
    {"refuse", [](Session& session) { session.server().stop_listening(); },
     "stop listening; open connections stay"},
    {"report", [](Session& session) { session.report(); }, "tell what was received"},
    {"quit", [](Session& session) { session.quit(); }, "report and end"},
}};

std::function<void(Session&)> behave(Behaviour behaviour) {
    return [behaviour](Session& session) {
        session.server().behave(behaviour);
        if (behaviour.manner == Manner::normal) session.server().listen();
    };
}

std::function<void(Session&)> parse_action(const std::vector<std::string>& words) {
    const std::string& name = words.front();
    const auto at_most = [&](std::size_t count) {
        if (words.size() > count) throw InputError("'" + printable(words[count]) + "' is one word too many");
    };
    for (const MannerRow& row : manners) {
        if (row.name != name) continue;
        at_most(row.high > 0 ? 2 : 1);
        if (row.high == 0) return behave({row.manner, 0});
        if (words.size() < 2) throw InputError(name + ": a number is missing");
        return behave({row.manner, evaluator_sim::read_integer(words[1], name, row.low, row.high)});
    }
    for (const DeedRow& row : deeds) {
        if (row.name != name) continue;
        at_most(1);
        return row.action;
    }
    throw InputError("unknown command '" + printable(name) + "'");
}

} // namespace

std::optional<Command> parse_command(std::string_view line) {
    line = trim(line);
    if (line.empty() || line.front() == '#') return std::nullopt;
    std::vector<std::string> words = split_words(line);
    Command command;
    if (words.front() == "at") {
        if (words.size() < 3) throw InputError("a time and a command belong behind 'at'");
        command.at = evaluator_sim::read_number(words[1], "time", 0, longest_scenario);
        words.erase(words.begin(), words.begin() + 2);
    }
    command.action = parse_action(words);
    for (const std::string& word : words)
        command.text += (command.text.empty() ? "" : " ") + word;
    return command;
}

std::vector<Command> read_scenario(std::istream& input) {
    std::vector<Command> commands;
    std::string line;
    for (int number = 1; std::getline(input, line); ++number) {
        try {
            if (auto command = parse_command(line)) commands.push_back(std::move(*command));
        } catch (const InputError& error) {
            throw InputError("line " + std::to_string(number) + ": " + error.what());
        }
    }
    std::stable_sort(commands.begin(), commands.end(), [](const Command& one, const Command& other) {
        return one.at.value_or(0) < other.at.value_or(0);
    });
    return commands;
}

void carry_out(const Command& command, Session& session) {
    try {
        command.action(session);
        char when[40];
        std::snprintf(when, sizeof when, "at %g ", command.at.value_or(0));
        session.say((command.at ? when : "ok ") + command.text);
    } catch (const std::runtime_error& error) {
        session.say("error: " + command.text + ": " + error.what());
    }
}

std::string command_help() {
    std::string text =
        "Commands, one per line; 'at SECONDS' before a command sets its time, '#' begins a comment.\n\n";
    const auto row = [&text](std::string usage, std::string_view help) {
        usage.resize(std::max<std::size_t>(usage.size() + 1, 18), ' ');
        text += "  " + usage + std::string(help) + "\n";
    };
    for (const MannerRow& manner : manners)
        row(std::string(manner.name) + (manner.number.empty() ? "" : " ") + std::string(manner.number),
            manner.help);
    for (const DeedRow& deed : deeds)
        row(std::string(deed.name), deed.help);
    return text;
}

} // namespace tyxo::controller_sim
