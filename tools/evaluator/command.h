// The command language: one command per line, in a scenario file or on standard input.
//
// A line is understood completely before anything is done, so that a scenario with a mistake does not even
// start.
#pragma once

#include "plant.h"
#include "text.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo::evaluator_sim {

/// Carries a command out. Throws std::runtime_error if the plant does not allow it.
using Action = std::function<void(Plant&, double time)>;

struct Command {
    std::optional<double> at; ///< seconds since the start; nothing: at once
    std::string text;         ///< the command without its time
    Action action;
};

/// Reads a line. Nothing for a line that is empty or a comment; throws InputError with a reason.
std::optional<Command> parse_command(std::string_view line);

/// The words behind a channel command's verb.
struct Arguments {
    std::vector<std::string> words;
    std::string_view rest; ///< the same as one text, for commands that take a text as it is

    size_t count() const { return words.size(); }
    /// The i-th word; throws InputError if there are not so many.
    const std::string& word(size_t i) const;
    /// Throws InputError if there are more words than `most`.
    void at_most(size_t most) const;
    /// The whole rest; throws InputError if it is empty.
    std::string_view text() const;
};

/// A channel command carried out.
using ChannelAction = std::function<void(Plant&, int number, double time)>;

[[nodiscard]] inline Unit& unit_of(Plant& plant, int number) {
    return plant.channel(number).unit;
}

/// One row of the command table.
struct Verb {
    std::string_view name;
    std::string_view usage; ///< the words behind the name
    std::string_view help;
    ChannelAction (*parse)(const Arguments&);
};

/// The command tables: what an Evaluator is, what it measures, what goes over its line.
std::span<const Verb> unit_verbs();
std::span<const Verb> signal_verbs();
std::span<const Verb> line_verbs();

/// The command tables as text for the user.
std::string command_help();

/// One of the listed words by its place in the list; throws InputError that names them all.
size_t choose(const std::string& word, std::string_view what, std::span<const std::string_view> words);

} // namespace tyxo::evaluator_sim
