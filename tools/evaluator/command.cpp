#include "command.h"

#include <algorithm>

namespace tyxo::evaluator_sim {

namespace {

constexpr double longest_scenario = 1e7; // seconds

/// Cuts the first word off the line.
std::string_view take_word(std::string_view& line) {
    const size_t end = std::min(line.find_first_of(" \t"), line.size());
    const std::string_view word = line.substr(0, end);
    line = trim(line.substr(end));
    return word;
}

const Verb& find_verb(std::string_view name) {
    for (const auto verbs : {unit_verbs(), signal_verbs(), line_verbs()})
        for (const Verb& verb : verbs)
            if (verb.name == name) return verb;
    throw InputError("unknown command '" + printable(name) + "'");
}

Action parse_plant_command(std::string_view verb, std::string_view rest) {
    Action action;
    if (verb == "report")
        action = [](Plant& plant, double) { plant.report(); };
    else if (verb == "quit")
        action = [](Plant& plant, double) { plant.quit(); };
    else
        throw InputError("'" + printable(verb) + "' is neither a channel number nor report or quit");
    if (!rest.empty()) throw InputError(std::string(verb) + ": nothing may follow");
    return action;
}

Action parse_channel_command(int number, std::string_view rest) {
    const std::string_view name = take_word(rest);
    if (name.empty()) throw InputError("no command behind the channel number");
    const Verb& verb = find_verb(name);
    try {
        const ChannelAction action = verb.parse({split_words(rest), rest});
        return [action, number](Plant& plant, double time) { action(plant, number, time); };
    } catch (const InputError& error) {
        throw InputError(std::string(error.what()) + " (usage: N " + std::string(verb.name) +
                         (verb.usage.empty() ? "" : " ") + std::string(verb.usage) + ")");
    }
}

} // namespace

std::optional<Command> parse_command(std::string_view line) {
    line = trim(line);
    if (line.empty() || line.front() == '#') return std::nullopt;
    Command command;
    if (line == "at" || line.starts_with("at ") || line.starts_with("at\t")) {
        take_word(line);
        command.at = read_number(take_word(line), "time", 0, longest_scenario);
    }
    command.text = line;
    const std::string_view first = take_word(line);
    if (first.empty()) throw InputError("no command behind the time");
    if (first.find_first_not_of("0123456789") == std::string_view::npos)
        command.action = parse_channel_command(read_integer(first, "channel", 1, max_channels), line);
    else
        command.action = parse_plant_command(first, line);
    return command;
}

const std::string& Arguments::word(size_t i) const {
    if (i >= words.size()) throw InputError("a word is missing");
    return words[i];
}

void Arguments::at_most(size_t most) const {
    if (words.size() > most) throw InputError("'" + printable(words[most]) + "' is one word too many");
}

std::string_view Arguments::text() const {
    if (rest.empty()) throw InputError("a text is missing");
    return rest;
}

size_t choose(const std::string& word, std::string_view what, std::span<const std::string_view> words) {
    const auto found = std::find(words.begin(), words.end(), word);
    if (found != words.end()) return static_cast<size_t>(found - words.begin());
    std::string list;
    for (const std::string_view possible : words)
        list += (list.empty() ? "" : ", ") + std::string(possible);
    throw InputError(std::string(what) + ": '" + printable(word) + "' is none of " + list);
}

std::string command_help() {
    std::string text =
        "Commands, one per line; 'at SECONDS' before a command sets its time, '#' begins a comment.\n"
        "N is the channel, 1 to 4.\n\n";
    const auto row = [&text](std::string usage, std::string_view help) {
        usage.resize(std::max<size_t>(usage.size() + 1, 54), ' ');
        text += "  " + usage + std::string(help) + "\n";
    };
    row("report", "tell what went over each line");
    row("quit", "report, remove the devices and end");
    for (const auto verbs : {unit_verbs(), signal_verbs(), line_verbs()}) {
        text += "\n";
        for (const Verb& verb : verbs)
            row("N " + std::string(verb.name) + " " + std::string(verb.usage), verb.help);
    }
    return text + "\nEngines: " + engine_preset_names() + "\n";
}

} // namespace tyxo::evaluator_sim
