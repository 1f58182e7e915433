// simulate: months of a plant in minutes. `simulate --help` tells the arguments.

#include "history.h"
#include "plant.h"
#include "shrink.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using namespace months;

constexpr const char* help =
    "simulate [--seeds N] [--from SEED] [--days D] [--jobs J]   N seeds, each a plant of D days\n"
    "simulate --all N [--from SEED] [--days D] [--jobs J]       N seeds, also behind one that fails\n"
    "simulate --replay SEED [--days D]                          tells what happens in one\n"
    "         [--keep FOLDER]                                   and keeps its logs and event file there\n"
    "simulate --shrink SEED [--days D]                          and the shortest history that fails\n"
    "Without numbers: 100 seeds of 7 days from a seed by the clock, on all processors.\n";

struct options {
    std::uint64_t seeds = 100;
    std::uint64_t from = 0;
    int days = 7;
    unsigned jobs = std::max(1U, std::thread::hardware_concurrency());
    bool replay = false;
    bool shrink = false;
    bool all = false;
    std::filesystem::path keep;
};

/// What a worker tells of a seed.
struct verdict {
    std::uint64_t seed = 0;
    std::int64_t events = 0;
    std::int64_t bytes = 0;
    std::int64_t lines = 0;
    std::int64_t starts = 0;
    std::int64_t cuts = 0;
    std::int64_t registers_sent = 0;
    std::int64_t grown = 0; ///< bytes of memory from the first day to the last
    bool failed = false;
};

void print_complaints(const outcome& result) {
    for (const std::string& complaint : result.complaints)
        std::cout << "! " << complaint << '\n';
}

int replay(const options& wanted) {
    const outcome result = run(history_of(wanted.from, wanted.days), &std::cout, wanted.keep);
    print_complaints(result);
    std::cout << result.events << " events, " << result.bytes << " bytes, " << result.lines << " lines, "
              << result.starts << " starts, " << result.cuts << " power cuts, " << result.registers_sent
              << " frames to the controller; memory " << result.memory_early / 1024 << " kB after a day, "
              << result.memory_late / 1024 << " kB at the end\n";
    return result.complaints.empty() ? 0 : 1;
}

int shrink(const options& wanted) {
    const auto fails = [](const history& tried) { return !run(tried).complaints.empty(); };
    history whole = history_of(wanted.from, wanted.days);
    if (!fails(whole)) {
        std::cout << "seed " << wanted.from << " does not fail\n";
        return 0;
    }
    const std::size_t before = whole.acts.size();
    const history least = shrunk(std::move(whole), fails);
    std::cout << least.acts.size() << " of " << before << " acts are enough:\n";
    print_complaints(run(least, &std::cout));
    return 1;
}

/// Every `step`-th seed in this process, told to the pipe.
[[noreturn]] void work(const options& wanted, unsigned first, int pipe) {
    for (std::uint64_t index = first; index < wanted.seeds; index += wanted.jobs) {
        const outcome result = run(history_of(wanted.from + index, wanted.days));
        const verdict told{wanted.from + index,
                           result.events,
                           result.bytes,
                           result.lines,
                           result.starts,
                           result.cuts,
                           result.registers_sent,
                           static_cast<std::int64_t>(result.memory_late) -
                               static_cast<std::int64_t>(result.memory_early),
                           !result.complaints.empty()};
        if (write(pipe, &told, sizeof told) != sizeof told) break;
        if (told.failed && !wanted.all) break;
    }
    _exit(0);
}

int many(const options& wanted) {
    std::cout << "seeds " << wanted.from << " to " << wanted.from + wanted.seeds - 1 << ", " << wanted.days
              << " days each, " << wanted.jobs << " at a time\n"
              << std::flush;
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) return 2;
    std::map<pid_t, bool> workers;
    for (unsigned job = 0; job < wanted.jobs; ++job) {
        const pid_t child = fork();
        if (child == 0) work(wanted, job, ends[1]);
        workers[child] = true;
    }
    close(ends[1]);
    const auto begin = std::chrono::steady_clock::now();
    verdict sum;
    std::uint64_t done = 0;
    std::vector<std::uint64_t> failed;
    verdict one;
    while (read(ends[0], &one, sizeof one) == sizeof one) {
        ++done;
        sum.events += one.events;
        sum.bytes += one.bytes;
        sum.lines += one.lines;
        sum.starts += one.starts;
        sum.cuts += one.cuts;
        sum.registers_sent += one.registers_sent;
        sum.grown = std::max(sum.grown, one.grown);
        const double seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        if (isatty(1) != 0) {
            std::printf("\r%llu of %llu seeds, %.0f s ", static_cast<unsigned long long>(done),
                        static_cast<unsigned long long>(wanted.seeds), seconds);
            std::fflush(stdout);
        }
        if (one.failed) failed.push_back(one.seed);
        if (one.failed && wanted.all) std::cout << "seed " << one.seed << " fails" << std::endl;
        if (one.failed && !wanted.all) {
            for (const auto& [worker, runs] : workers)
                kill(worker, SIGTERM);
            break;
        }
    }
    bool died = false;
    for (const auto& [worker, runs] : workers) {
        int status = 0;
        waitpid(worker, &status, 0);
        died = died || (WIFSIGNALED(status) && WTERMSIG(status) != SIGTERM);
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    std::printf(
        "\n%llu seeds passed in %.0f s: %.1f years of plant time, %lld events, %lld MB from the lines, %lld "
        "log and event lines, %lld starts, %lld power cuts, %lld frames to the controller; memory grew by "
        "%lld kB at most\n",
        static_cast<unsigned long long>(done - failed.size()), seconds,
        static_cast<double>(done) * wanted.days / 365, static_cast<long long>(sum.events),
        static_cast<long long>(sum.bytes / 1'000'000), static_cast<long long>(sum.lines),
        static_cast<long long>(sum.starts), static_cast<long long>(sum.cuts),
        static_cast<long long>(sum.registers_sent), static_cast<long long>(sum.grown / 1024));
    if (failed.empty()) return died || done < wanted.seeds ? 1 : 0;
    for (const std::uint64_t seed : failed)
        std::cout << "again: ./simulate --replay " << seed << " --days " << wanted.days << '\n';
    if (wanted.all) return 1;
    options failing = wanted;
    failing.from = failed.front();
    std::cout << "seed " << failing.from << " fails:" << std::endl;
    return shrink(failing);
}

template <class Number> bool number(const char* text, Number& to) {
    const char* const end = text + std::strlen(text);
    const auto [stop, error] = std::from_chars(text, end, to);
    return error == std::errc{} && stop == end;
}

} // namespace

int main(int argc, char** argv) {
    options wanted;
    wanted.from = static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count()) %
                  1'000'000'000;
    for (int index = 1; index < argc; index += 2) {
        const std::string_view word = argv[index];
        const char* const value = index + 1 < argc ? argv[index + 1] : "";
        wanted.replay = wanted.replay || word == "--replay";
        wanted.shrink = wanted.shrink || word == "--shrink";
        wanted.all = wanted.all || word == "--all";
        if (word == "--keep") wanted.keep = value;
        const bool good = word == "--seeds" || word == "--all" ? number(value, wanted.seeds)
                          : word == "--days"                   ? number(value, wanted.days) && wanted.days > 0
                          : word == "--jobs"                   ? number(value, wanted.jobs) && wanted.jobs > 0
                          : word == "--from" || word == "--replay" || word == "--shrink"
                              ? number(value, wanted.from)
                              : !wanted.keep.empty() && word == "--keep";
        if (good) continue;
        std::cout << help;
        return word == "--help" ? 0 : 2;
    }
    if (wanted.replay) return replay(wanted);
    if (wanted.shrink) return shrink(wanted);
    return many(wanted);
}
