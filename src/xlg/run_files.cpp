#include "xlg/run_files.h"

#include "basics/failure.h"
#include "xlg/check.h"
#include "xlg/csv.h"
#include "xlg/events.h"
#include "xlg/files.h"
#include "xlg/mend.h"
#include "xlg/ordered_output.h"
#include "xlg/summary.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace tyxo::xlg {

namespace {

constexpr int usual_gap = 10; // minutes

/// Files that threads take one behind the other.
class file_runner {
  public:
    file_runner(const arguments& wanted, const text_sink& out, const text_sink& errors, progress& shown)
        : wanted_(wanted), errors_(errors), shown_(shown), output_(wanted.files.size(), out) {}

    int run() {
        std::size_t jobs = wanted_.jobs != 0 ? wanted_.jobs : std::thread::hardware_concurrency();
        jobs = std::clamp<std::size_t>(jobs, 1, wanted_.files.size());
        if (const auto failed = attempt([this] { output_.say(0, head()); })) {
            fail(*failed);
            return worst_;
        }
        {
            std::vector<std::jthread> others;
            for (std::size_t job = 1; job < jobs; ++job)
                others.emplace_back([this] { work(); });
            work();
        }
        return worst_;
    }

  private:
    void work() {
        for (std::size_t file = next_++; file < wanted_.files.size(); file = next_++) {
            const auto failed =
                attempt([&] { worsen(run_one(file) ? exit_codes::fine : exit_codes::wrong); });
            if (failed) fail(*failed);
            if (const auto late = attempt([&] { output_.finish(file); })) fail(*late);
        }
    }

    /// True if nothing is wrong.
    bool run_one(std::size_t file) {
        const std::string& name = wanted_.files[file];
        byte_source source = source_of_file(name, [this](std::size_t bytes) { shown_.add(bytes); });
        const text_sink out = [this, file](std::string_view text) { output_.say(file, text); };
        switch (wanted_.what) {
        case command::check:
            return check_log(name, std::move(source), wanted_.gap_minutes, out);
        case command::summary:
            return summarise_log(name, std::move(source), wanted_.gap_minutes.value_or(usual_gap), out);
        case command::csv:
            return all_rows(name, csv_of_log(name, std::move(source), wanted_.lines, out));
        case command::mend:
            return mend_file(name, std::move(source), wanted_.output, wanted_.force, out);
        case command::events:
            if (!wanted_.csv) return check_events(name, std::move(source), out);
            return all_rows(name, csv_of_events(name, std::move(source), out));
        default:
            throw failure("a command is missing");
        }
    }

    /// One table of all files has one head.
    [[nodiscard]] std::string head() const {
        if (wanted_.what == command::csv) return csv_head(wanted_.lines);
        return wanted_.what == command::events && wanted_.csv ? events_csv_head() : "";
    }

    bool all_rows(const std::string& name, std::int64_t left_out) {
        if (left_out == 0) return true;
        const std::lock_guard lock(telling_);
        errors_(name + ": " + counted(left_out, "damaged line", "damaged lines") + " left out\n");
        return false;
    }

    void fail(const std::string& why) {
        worsen(exit_codes::failed);
        const std::lock_guard lock(telling_);
        if (why == last_told_) return; // each thread meets the same end of the output
        last_told_ = why;
        errors_("xlg: " + why + "\n");
    }

    void worsen(int code) {
        int before = worst_;
        while (before < code && !worst_.compare_exchange_weak(before, code)) {
        }
    }

    const arguments& wanted_;
    const text_sink& errors_;
    progress& shown_;
    ordered_output output_;
    std::atomic<std::size_t> next_ = 0;
    std::atomic<int> worst_ = exit_codes::fine;
    std::mutex telling_;
    std::string last_told_;
};

} // namespace

int run_files(const arguments& wanted, const text_sink& out, const text_sink& errors, progress& shown) {
    return file_runner(wanted, out, errors, shown).run();
}

} // namespace tyxo::xlg
