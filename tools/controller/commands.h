// The command language: one command per line, in a scenario file or on standard input.
#pragma once

#include "controller/session.h"
#include "evaluator/text.h"

#include <functional>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo::controller_sim {

using evaluator_sim::InputError;

struct Command {
    std::optional<double> at; ///< seconds since the start; nothing: at once
    std::string text;         ///< the command without its time
    std::function<void(Session&)> action;
};

/// Reads a line. Nothing for a line that is empty or a comment; throws InputError with a reason.
std::optional<Command> parse_command(std::string_view line);

/// Reads a whole scenario, in the order of its times. Throws InputError with the number of the first line
/// that cannot be understood.
std::vector<Command> read_scenario(std::istream& input);

/// Carries a command out and says so: "ok ..." for one without a time, "at T ..." for one with, "error: ..."
/// if it failed.
void carry_out(const Command& command, Session& session);

/// The commands as text for the user.
std::string command_help();

} // namespace tyxo::controller_sim
