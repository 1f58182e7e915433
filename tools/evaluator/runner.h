// Runs a plant: commands at their times, lines at their pace.
#pragma once

#include "command.h"

#include <istream>
#include <string>
#include <vector>

namespace tyxo::evaluator_sim {

/// Commands in the order of their times; those of one time in the order of their lines.
class Timeline {
  public:
    /// Adds a command; one without a time belongs to `now`.
    void add(Command command, double now);
    /// Takes out the commands whose time has come.
    std::vector<Command> due(double time);
    bool empty() const { return commands_.empty(); }

  private:
    std::vector<Command> commands_;
};

/// Reads a whole scenario. Throws InputError with the number of the first line that cannot be understood.
Timeline read_scenario(std::istream& input);

/// Puts lines together from portions of text, so that a command is read when its line is complete.
class LineBuffer {
  public:
    /// The lines that became complete, without their ends.
    std::vector<std::string> take(std::string_view text);
    /// What is left behind the last line end.
    const std::string& rest() const { return rest_; }

  private:
    std::string rest_;
};

/// Carries a command out and says so: "ok ..." for one without a time, "at T ..." for one with, "error: ..."
/// if the plant did not allow it. Returns whether it did.
bool carry_out(const Command& command, Plant& plant, double time);

struct RunOptions {
    bool read_input = true;   ///< commands from standard input
    bool exit_on_eof = false; ///< end when standard input ends
};

/// Runs until a quit command, a termination signal, or the end of standard input if the options say so. The
/// commands of the timeline that have no time, or the time 0, are carried out before the lines begin; if one
/// of them fails, nothing begins. Returns whether the run began.
bool run(Plant& plant, Timeline timeline, const RunOptions& options);

} // namespace tyxo::evaluator_sim
