// month_of_logs: a month of logs of engines at full pace, in minutes. `month_of_logs --help` tells the
// arguments.
//
// Evaluators put their frames on the lines of the simulated machine; the program's own code takes them and
// writes the logs, as fast as it can. The files of each day move to the disk when the day is over.

#include "chance.h"
#include "runner.h"

#include "app/mainfrm.h"
#include "app/wiring.h"
#include "dialogs/frmalert.h"
#include "link/calls.h"
#include "link/channel_rec.h"
#include "link/start_stop.h"
#include "platform/clock.h"
#include "platform/simulation.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace tyxo;
using simulation::world;
namespace sim = tyxo::evaluator_sim;

constexpr const char* help =
    "month_of_logs [OPTION]... FOLDER LOG...   plays logs, one for each engine, again and again\n"
    "month_of_logs [OPTION]... FOLDER          the Evaluators measure by themselves\n"
    "  --from YYYYMMDD   the first day; 20260801 unless set\n"
    "  --days N          so long; 1 unless set\n"
    "  --minutes N       or so long\n"
    "  --engines N       1 to 4; 4 unless set\n"
    "  --scenario FILE   what happens to Evaluators that measure by themselves\n"
    "  --quiet           links are not lost, and nobody stops the measurement\n";

constexpr std::int64_t second = 1000;
constexpr std::int64_t minute = 60 * second;
constexpr std::int64_t hour = 60 * minute;
constexpr std::int64_t day = 24 * hour;
constexpr std::int64_t step = 100; ///< ms between two looks at a line, the longest that it makes up for

struct options {
    local_time from{2026, 8, 1, 0, 0, 0};
    std::int64_t length = day;
    int engines = 4;
    bool quiet = false;
    std::string scenario;
    std::string folder;
    std::vector<std::string> logs;
};

/// Times of a day in which something is away.
struct pause {
    std::int64_t begin = 0;
    std::int64_t end = 0;
    [[nodiscard]] bool holds(std::int64_t ms) const { return ms >= begin && ms < end; }
};

/// By the date, so that a day is the same whichever day is the first.
struct troubles {
    std::array<pause, 4> link; ///< to the Evaluator
    pause measuring;           ///< the operator stops all channels and starts them again

    explicit troubles(const local_time& date) {
        months::chance dice(static_cast<std::uint64_t>((date.year * 12 + date.month) * 31 + date.day));
        const auto some = [&dice](std::size_t times, std::int64_t least, std::int64_t most) {
            const std::int64_t begin = dice.between(hour / second, 20 * hour / second) * second;
            const std::int64_t length = dice.between(least / second, most / second) * second;
            return dice.once_in(times) ? pause{begin, begin + length} : pause{};
        };
        for (pause& each : link)
            each = some(4, 40 * second, 20 * minute);
        measuring = some(5, 10 * minute, 2 * hour);
    }
};

class plant {
  public:
    explicit plant(const options& wanted)
        : wanted_(wanted), evaluators_("", 1, sim::Pace::normal, tell_errors), troubles_(wanted.from) {
        if (!wanted.scenario.empty()) {
            std::ifstream input(wanted.scenario);
            if (!input) throw sim::InputError("cannot read " + wanted.scenario);
            scenario_ = sim::read_scenario(input);
        }
        if (!wanted.logs.empty()) {
            for (int engine = 0; engine < wanted.engines; ++engine)
                begin_log(engine);
        }
    }

    void run() {
        start_program();
        // The last second is left out, so that no log of the next day begins.
        const std::int64_t end = wanted_.length - second;
        while (world().now_ms < end) {
            const int minute_before = local_now().minute;
            for (const sim::Command& command : scenario_.due(seconds()))
                sim::carry_out(command, evaluators_, seconds());
            stop_or_start();
            for (int engine = 0; engine < wanted_.engines; ++engine)
                speak(engine);
            simulation::advance(step);
            if (local_now().minute != minute_before) minute_is_over(local_now());
        }
        if (sensor::state.measure_running) mainfrm::startstop_click();
        keep_files({});
    }

    std::int64_t bytes = 0; ///< that were kept

  private:
    static void tell_errors(const std::string& line) {
        if (line.starts_with("error: ")) std::cerr << line << '\n';
    }
    [[nodiscard]] static double seconds() { return static_cast<double>(world().now_ms) / second; }
    [[nodiscard]] static std::int64_t ms_of_day() { return world().now_ms % day; }
    sim::Channel& evaluator(int engine) { return evaluators_.channel(engine + 1); }

    void start_program() {
        simulation::fresh_world();
        world().local = wanted_.from;
        world().folders.insert("logs");
        world().on_output = [this](i16 channel, std::string_view sent) {
            evaluator(channel).receive(sent, seconds());
        };
        std::string settings = "[tyxo]\r\n";
        const auto set = [&settings](const std::string& key, const std::string& value) {
            settings.append(key).append("=").append(value).append("\r\n");
        };
        for (const char* one : {"autostart", "eventfile_ena"})
            set(one, "1");
        set("upd_periode", "1000");
        set("evtpath", "logs\\");
        set("max_sensors", std::to_string(wanted_.engines));
        for (int engine = 1; engine <= wanted_.engines; ++engine) {
            const std::string number = std::to_string(engine);
            set("comport " + number, number);
            set("location " + number, "Engine " + number);
            set("logpath " + number, "logs\\");
            set("tstsig_visible " + number, "1");
        }
        simulation::put_file("tyxo.ini", settings);
        wire();
        calls.stop_lock = [](std::string_view) { return true; }; // the operator who stops knows the password
        mainfrm::start_program(1280, 960);
    }

    void begin_log(int engine) {
        const std::string& log = wanted_.logs.at(static_cast<std::size_t>(engine) % wanted_.logs.size());
        replays_.at(static_cast<std::size_t>(engine)).emplace(log, 1).take_over(evaluator(engine), seconds());
    }

    /// Nothing is on the line that would be lost.
    bool between_frames(int engine) { return evaluator(engine).transmitter().empty(); }

    void stop_or_start() {
        const bool stopped = !wanted_.quiet && troubles_.measuring.holds(ms_of_day());
        if (stopped != sensor::state.measure_running) return;
        for (int engine = 0; engine < wanted_.engines; ++engine)
            if (stopped && !between_frames(engine)) return;
        mainfrm::startstop_click();
    }

    void speak(int engine) {
        const auto place = static_cast<std::size_t>(engine);
        auto& replay = replays_.at(place);
        const bool away = !wanted_.quiet && troubles_.link.at(place).holds(ms_of_day());
        if (!simulation::port(static_cast<i16>(engine)).open || (away && between_frames(engine))) {
            if (replay) replay->hold();
            return;
        }
        if (replay && replay->ended() && between_frames(engine)) begin_log(engine);
        if (replay) replay->step(evaluator(engine), seconds());
        const std::string sent = evaluator(engine).step(seconds());
        evaluator(engine).settle(sent.size());
        if (!sent.empty()) simulation::receive(static_cast<i16>(engine), sent);
    }

    void minute_is_over(const local_time& now) {
        if (sensor::state.alert_open) FrmAlert::CmdAck_click();
        if (now.hour != 0) return;
        if (now.minute == 0) troubles_ = troubles(now);
        if (now.minute == 1) keep_day(date_digits(now)); // all logs of the new day have begun
    }

    void keep_day(const std::string& today) {
        keep_files(today);
        // What the machine remembers for tests.
        simulation::machine& machine = world();
        machine.debug.clear();
        machine.boxes.clear();
        machine.sounds.clear();
        machine.opened.clear();
        machine.synced.clear();
        for (int engine = 0; engine < wanted_.engines; ++engine)
            simulation::sent(static_cast<i16>(engine)).clear();
    }

    /// Moves the logs that are over to the disk, all but those of `today`; the event file stays too.
    void keep_files(const std::string& today) {
        for (auto file = world().files.begin(); file != world().files.end();) {
            const auto& [path, content] = *file;
            const bool log = path.ends_with(".xlg");
            const bool over = log && (today.empty() || path.find("/" + today) == path.npos);
            if (over || path.ends_with("TY_all_events.txt")) {
                const std::filesystem::path to = std::filesystem::path(wanted_.folder) / path;
                create_directories(to.parent_path());
                if (over && exists(to)) throw sim::InputError("there is already a " + to.string());
                std::ofstream out(to, std::ios::binary);
                out << content << std::flush;
                if (!out) throw sim::InputError("cannot write " + to.string());
                if (over) bytes += static_cast<std::int64_t>(content.size());
            }
            if (over) world().risks.erase(path);
            file = over ? world().files.erase(file) : std::next(file);
        }
    }

    const options& wanted_;
    sim::Plant evaluators_; ///< without devices
    sim::Timeline scenario_;
    std::array<std::optional<sim::Replay>, 4> replays_;
    troubles troubles_;
};

template <class Number> bool number(std::string_view text, Number least, Number most, Number& to) {
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), to);
    return error == std::errc{} && stop == text.data() + text.size() && to >= least && to <= most;
}

bool read_option(std::string_view name, std::string_view value, options& wanted) {
    std::int64_t count = 0;
    const bool good = number<std::int64_t>(value, 1, 99'991'231, count);
    if (name == "--scenario") wanted.scenario = value;
    if (name == "--from")
        wanted.from = {static_cast<int>(count / 10'000),
                       static_cast<int>(count / 100 % 100),
                       static_cast<int>(count % 100),
                       0,
                       0,
                       0};
    if (name == "--days") wanted.length = count * day;
    if (name == "--minutes") wanted.length = count * minute;
    if (name == "--engines") return number(value, 1, 4, wanted.engines);
    return name == "--scenario" || (good && (name == "--from" || name == "--days" || name == "--minutes"));
}

std::optional<options> read_options(const std::vector<std::string_view>& words) {
    options wanted;
    for (std::size_t index = 0; index < words.size(); ++index) {
        const std::string_view word = words[index];
        if (word == "--quiet")
            wanted.quiet = true;
        else if (!word.starts_with("--"))
            (wanted.folder.empty() ? wanted.folder : wanted.logs.emplace_back()) = word;
        else if (++index == words.size() || !read_option(word, words[index], wanted))
            return std::nullopt;
    }
    return wanted.folder.empty() ? std::nullopt : std::optional(wanted);
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string_view> words(argv + 1, argv + argc);
    if (std::ranges::find(words, "--help") != words.end()) {
        std::cout << help;
        return 0;
    }
    const auto wanted = read_options(words);
    if (!wanted) {
        std::cerr << help;
        return 2;
    }
    try {
        const auto begin = std::chrono::steady_clock::now();
        plant played(*wanted);
        played.run();
        const double took = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        const double passed = static_cast<double>(wanted->length) / second;
        std::printf("%.2f days of %d engines in %.1f s, %.0f times as fast as time; %.1f MB of logs\n",
                    passed / 86'400, wanted->engines, took, passed / took,
                    static_cast<double>(played.bytes) / 1e6);
    } catch (const sim::InputError& error) {
        std::cerr << "month_of_logs: " << error.what() << '\n';
        return 2;
    }
    return 0;
}
