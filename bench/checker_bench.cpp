// What the checker of the months costs a frame: with the line that the frame leaves in its log, and a look at
// the screen behind each.

#include "told_plant.h"

#include <benchmark/benchmark.h>

namespace {

using months::check::told_history;

void a_frame_of_measured_values(benchmark::State& state) {
    told_history plant;
    plant.logging();
    const std::string frame = told_history::framed(told_history::measured_body);
    const std::string line = std::string(told_history::measured_line) + "\r\n";
    plant.shows_measured();
    std::int64_t ms = 0;
    for (auto _ : state) {
        plant.check.time(++ms, {2026, 7, 2, 13, 5, 9});
        if (ms % 500 == 0) {
            plant.check.chart_tick();
            plant.shows_tick();
        }
        plant.check.arrives(0, frame);
        plant.check.file_appended(told_history::log, line);
        plant.done();
    }
    if (!plant.check.complaints().empty()) state.SkipWithError("there is something to complain of");
    state.SetItemsProcessed(state.iterations());
}

/// Four frames and 256 values in the log.
void a_curve(benchmark::State& state) {
    told_history plant;
    plant.logging();
    const std::string frames = told_history::curve("04", 1000);
    const std::string line = told_history::curve_line("REC3", 1000) + "\r\n";
    for (auto _ : state) {
        plant.check.arrives(0, frames);
        plant.check.file_appended(told_history::log, line);
        plant.done();
    }
    if (!plant.check.complaints().empty()) state.SkipWithError("there is something to complain of");
    state.SetItemsProcessed(4 * state.iterations());
}

void a_status(benchmark::State& state) {
    told_history plant;
    plant.logging();
    const std::string frame = told_history::status(0, 0);
    for (auto _ : state) {
        plant.check.arrives(0, frame);
        plant.done();
    }
    if (!plant.check.complaints().empty()) state.SkipWithError("there is something to complain of");
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(a_frame_of_measured_values);
BENCHMARK(a_curve);
BENCHMARK(a_status);

} // namespace
