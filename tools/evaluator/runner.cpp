#include "runner.h"

#include "process.h"

#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace tyxo::evaluator_sim {

namespace {

// Short enough to split frames over several receive events, long enough to cost next to nothing.
constexpr double tick = 0.008;
// After a longer pause of the process the ticks begin anew instead of catching up.
constexpr double longest_delay = 0.1;

/// Standard input, read without ever waiting longer than asked.
class Input {
  public:
    explicit Input(bool open) : open_(open) {}
    bool open() const { return open_; }

    /// Waits up to `seconds` and returns the lines that came.
    std::vector<std::string> wait(double seconds) {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        const auto whole = static_cast<time_t>(seconds);
        const timespec limit{whole, static_cast<long>((seconds - static_cast<double>(whole)) * 1e9)};
        const int ready = ::ppoll(&input, open_ ? 1 : 0, &limit, nullptr);
        if (ready <= 0 || input.revents == 0) return {};
        char text[4096];
        const ssize_t count = ::read(STDIN_FILENO, text, sizeof text);
        if (count > 0) return lines_.take({text, static_cast<size_t>(count)});
        if (count < 0 && (errno == EINTR || errno == EAGAIN)) return {};
        open_ = false;
        return lines_.rest().empty() ? std::vector<std::string>{} : lines_.take("\n");
    }

  private:
    bool open_;
    LineBuffer lines_;
};

void obey(const std::string& line, Plant& plant, Timeline& timeline, double time) {
    try {
        auto command = parse_command(line);
        if (command && command->at)
            timeline.add(std::move(*command), time);
        else if (command)
            carry_out(*command, plant, time);
    } catch (const InputError& error) {
        plant.say("error: " + std::string(error.what()));
    }
}

} // namespace

bool run(Plant& plant, Timeline timeline, const RunOptions& options) {
    watch_signals();
    for (const Command& command : timeline.due(0))
        if (!carry_out(command, plant, 0)) return false;
    Input input(options.read_input);
    double next = now();
    const double start = next;
    while (!plant.ended() && !stop_requested()) {
        const double time = now() - start;
        for (const Command& command : timeline.due(time))
            carry_out(command, plant, time);
        plant.step(time);
        next += tick;
        if (next + longest_delay < now()) next = now();
        for (double left = next - now(); left > 0 && !stop_requested() && !plant.ended(); left = next - now())
            for (const std::string& line : input.wait(left))
                obey(line, plant, timeline, now() - start);
        if (options.read_input && options.exit_on_eof && !input.open()) plant.quit();
    }
    plant.report();
    return true;
}

} // namespace tyxo::evaluator_sim
