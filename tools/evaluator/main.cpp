// The simulated Evaluator: options, and the run.

#include "runner.h"

#include <charconv>
#include <fstream>
#include <iostream>

namespace sim = tyxo::evaluator_sim;

namespace {

constexpr char usage[] =
    "Usage: evaluator [OPTION]... [SCENARIO-FILE]\n"
    "\n"
    "Plays one to four Evaluators on pseudo-terminals. Without a scenario all commands "
    "come from standard input.\n"
    "\n"
    "  --ports DIR     folder of the links COM<n>; 'ports' unless set\n"
    "  --seed N        seed of all chance; 1 unless set\n"
    "  --full-pace     keep every line saturated\n"
    "  --replay FILE   play a log: the first on channel and port 1, the next on 2, and so on\n"
    "  --speed X       so many times as fast as it was; 1 unless set\n"
    "  --no-input      leave standard input alone\n"
    "  --exit-on-eof   end when standard input ends\n"
    "  --help          this text\n"
    "\n";

struct Options {
    std::string ports = "ports";
    std::string scenario;
    std::vector<std::string> replays;
    std::string speed = "1";
    std::uint64_t seed = 1;
    sim::Pace pace = sim::Pace::normal;
    sim::RunOptions run;
    bool help = false;
};

std::uint64_t read_seed(const std::string& word) {
    std::uint64_t seed = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), seed);
    if (error != std::errc() || end != word.data() + word.size())
        throw sim::InputError("--seed: '" + word + "' is not a whole number");
    return seed;
}

Options read_options(const std::vector<std::string>& words) {
    Options options;
    for (size_t i = 0; i < words.size(); ++i) {
        const auto value = [&]() -> const std::string& {
            if (i + 1 >= words.size()) throw sim::InputError(words[i] + ": a value is missing");
            return words[++i];
        };
        if (words[i] == "--help")
            options.help = true;
        else if (words[i] == "--ports")
            options.ports = value();
        else if (words[i] == "--seed")
            options.seed = read_seed(value());
        else if (words[i] == "--full-pace")
            options.pace = sim::Pace::full;
        else if (words[i] == "--replay")
            options.replays.push_back(value());
        else if (words[i] == "--speed")
            options.speed = value();
        else if (words[i] == "--no-input")
            options.run.read_input = false;
        else if (words[i] == "--exit-on-eof")
            options.run.exit_on_eof = true;
        else if (words[i].starts_with("-"))
            throw sim::InputError("unknown option '" + words[i] + "'; --help tells the options");
        else if (!options.scenario.empty())
            throw sim::InputError("more than one scenario file");
        else
            options.scenario = words[i];
    }
    if (options.replays.size() > sim::max_channels) throw sim::InputError("more logs than channels");
    return options;
}

void add_replays(sim::Timeline& timeline, const Options& options) {
    for (size_t i = 0; i < options.replays.size(); ++i) {
        const std::string number = std::to_string(i + 1);
        std::string port = number;
        std::string replay = number;
        port.append(" port ").append(number);
        replay.append(" replay x").append(options.speed).append(" ").append(options.replays[i]);
        for (const std::string& line : {port, replay})
            timeline.add(*sim::parse_command(line), 0);
    }
}

sim::Timeline load_scenario(const std::string& file) {
    if (file.empty()) return {};
    std::ifstream input(file);
    if (!input) throw sim::InputError("cannot read " + file);
    try {
        return sim::read_scenario(input);
    } catch (const sim::InputError& error) {
        throw sim::InputError(file + ": " + error.what());
    }
}

} // namespace

int main(int argc, char* argv[]) {
    try {
        const Options options = read_options({argv + 1, argv + argc});
        if (options.help) {
            std::cout << usage << sim::command_help();
            return 0;
        }
        sim::Timeline timeline = load_scenario(options.scenario);
        add_replays(timeline, options);
        sim::Plant plant(options.ports, options.seed, options.pace,
                         [](const std::string& line) { std::cout << line << std::endl; });
        return sim::run(plant, std::move(timeline), options.run) ? 0 : 1;
    } catch (const sim::InputError& error) {
        std::cerr << "evaluator: " << error.what() << "\n";
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "evaluator: " << error.what() << "\n";
        return 1;
    }
}
