// Reading commands and keeping them until their time.

#include "runner.h"

#include <algorithm>
#include <cstdio>

namespace tyxo::evaluator_sim {

void Timeline::add(Command command, double now) {
    const double time = command.at.value_or(now);
    command.at = time;
    const auto behind = std::upper_bound(commands_.begin(), commands_.end(), time,
                                         [](double t, const Command& other) { return t < *other.at; });
    commands_.insert(behind, std::move(command));
}

std::vector<Command> Timeline::due(double time) {
    const auto end = std::find_if(commands_.begin(), commands_.end(),
                                  [time](const Command& command) { return *command.at > time; });
    std::vector<Command> ready(std::make_move_iterator(commands_.begin()), std::make_move_iterator(end));
    commands_.erase(commands_.begin(), end);
    return ready;
}

Timeline read_scenario(std::istream& input) {
    Timeline timeline;
    std::string line;
    for (int number = 1; std::getline(input, line); ++number) {
        try {
            if (auto command = parse_command(line)) timeline.add(std::move(*command), 0);
        } catch (const InputError& error) {
            throw InputError("line " + std::to_string(number) + ": " + error.what());
        }
    }
    return timeline;
}

std::vector<std::string> LineBuffer::take(std::string_view text) {
    rest_ += text;
    std::vector<std::string> lines;
    for (;;) {
        const size_t end = rest_.find('\n');
        if (end == std::string::npos) return lines;
        lines.push_back(rest_.substr(0, end));
        rest_.erase(0, end + 1);
    }
}

bool carry_out(const Command& command, Plant& plant, double time) {
    try {
        command.action(plant, time);
        char when[40];
        std::snprintf(when, sizeof when, "at %g ", command.at.value_or(0));
        plant.say((command.at ? when : "ok ") + command.text);
        return true;
    } catch (const std::runtime_error& error) {
        plant.say("error: " + command.text + ": " + error.what());
        return false;
    }
}

} // namespace tyxo::evaluator_sim
