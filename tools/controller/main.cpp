// The simulated plant controller: options, and the run.

#include "commands.h"

#include "evaluator/process.h"
#include "evaluator/runner.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iostream>
#include <unistd.h>

namespace sim = tyxo::controller_sim;

namespace {

using tyxo::evaluator_sim::now;
using tyxo::evaluator_sim::stop_requested;
using tyxo::evaluator_sim::watch_signals;

constexpr char usage[] = "Usage: controller [OPTION]... [SCENARIO-FILE]\n"
                         "\n"
                         "Plays a plant controller: a Modbus TCP server on 127.0.0.1 with 65536 holding "
                         "registers.\n"
                         "Without a scenario all commands come from standard input.\n"
                         "\n"
                         "  --port N        port to listen on; unless set any free one up to 32767\n"
                         "  --base N        first register of the data logger; 0 unless set\n"
                         "  --no-input      leave standard input alone\n"
                         "  --exit-on-eof   end when standard input ends\n"
                         "  --help          this text\n"
                         "\n";

// Short enough for the times of a scenario.
constexpr double round_length = 0.01;
constexpr double idle_round_length = 0.2;

struct Options {
    int port = 0;
    int base = 0;
    std::string scenario;
    bool read_input = true;
    bool exit_on_eof = false;
    bool help = false;
};

Options read_options(const std::vector<std::string>& words) {
    Options options;
    for (size_t i = 0; i < words.size(); ++i) {
        const auto number = [&](int high) {
            if (i + 1 >= words.size()) throw sim::InputError(words[i] + ": a value is missing");
            const std::string& name = words[i];
            return tyxo::evaluator_sim::read_integer(words[++i], name, 0, high);
        };
        if (words[i] == "--help")
            options.help = true;
        else if (words[i] == "--port")
            options.port = number(65535);
        else if (words[i] == "--base")
            options.base = number(65535);
        else if (words[i] == "--no-input")
            options.read_input = false;
        else if (words[i] == "--exit-on-eof")
            options.exit_on_eof = true;
        else if (words[i].starts_with("-"))
            throw sim::InputError("unknown option '" + words[i] + "'; --help tells the options");
        else if (!options.scenario.empty())
            throw sim::InputError("more than one scenario file");
        else
            options.scenario = words[i];
    }
    return options;
}

std::vector<sim::Command> load_scenario(const std::string& file) {
    if (file.empty()) return {};
    std::ifstream input(file);
    if (!input) throw sim::InputError("cannot read " + file);
    try {
        return sim::read_scenario(input);
    } catch (const sim::InputError& error) {
        throw sim::InputError(file + ": " + error.what());
    }
}

void obey(const std::string& line, sim::Session& session, std::vector<sim::Command>& timeline) {
    try {
        auto command = sim::parse_command(line);
        if (command && command->at) {
            const auto behind =
                std::find_if(timeline.begin(), timeline.end(),
                             [&](const sim::Command& other) { return other.at.value_or(0) > *command->at; });
            timeline.insert(behind, std::move(*command));
        } else if (command) {
            sim::carry_out(*command, session);
        }
    } catch (const sim::InputError& error) {
        session.say("error: " + std::string(error.what()));
    }
}

void run(sim::Session& session, std::vector<sim::Command> timeline, const Options& options) {
    tyxo::evaluator_sim::LineBuffer lines;
    bool input = options.read_input;
    while (!session.ended() && !stop_requested()) {
        while (!timeline.empty() && timeline.front().at.value_or(0) <= now()) {
            const sim::Command command = std::move(timeline.front());
            timeline.erase(timeline.begin());
            sim::carry_out(command, session);
        }
        const double patience = timeline.empty() ? idle_round_length : round_length;
        if (session.ended() || !session.server().serve(patience, input ? STDIN_FILENO : -1)) continue;
        char text[4096];
        const ssize_t count = ::read(STDIN_FILENO, text, sizeof text);
        if (count < 0 && (errno == EINTR || errno == EAGAIN)) continue;
        if (count <= 0) {
            input = false;
            if (options.exit_on_eof) session.quit();
            if (!lines.rest().empty()) obey(lines.rest(), session, timeline);
            continue;
        }
        for (const std::string& line : lines.take({text, static_cast<size_t>(count)}))
            obey(line, session, timeline);
    }
    session.report();
}

} // namespace

int main(int argc, char* argv[]) {
    try {
        const Options options = read_options({argv + 1, argv + argc});
        if (options.help) {
            std::cout << usage << sim::command_help();
            return 0;
        }
        watch_signals();
        now();
        std::vector<sim::Command> timeline = load_scenario(options.scenario);
        sim::Session session(options.port, static_cast<std::size_t>(options.base),
                             [](const std::string& line) { std::cout << line << std::endl; });
        run(session, std::move(timeline), options);
        return 0;
    } catch (const sim::InputError& error) {
        std::cerr << "controller: " << error.what() << "\n";
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "controller: " << error.what() << "\n";
        return 1;
    }
}
