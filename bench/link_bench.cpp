// The road of a long ":01" frame beside the least work that its bytes ask for, and a status run without a
// change.

#include "app/mainfrm.h"
#include "app/wiring.h"
#include "link/calls.h"
#include "link/channel_rec.h"
#include "link/frames.h"
#include "link/hex.h"
#include "link/indicators.h"
#include "link/serial.h"
#include "link/status_update.h"
#include "logging/log.h"
#include "platform/files.h"
#include "platform/simulation.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace tyxo;

const std::string frame = link_testing::closed(":0185DC1388000088020320012C");

/// One channel that measures; nothing reacts to it unless `wire()` is called.
void start_measuring() {
    simulation::fresh_world();
    sensor::state.max_sensors = 1;
    sensor::state.channels[0].connected = true;
    sensor::state.comport[0] = 1;
    if (serial::port_open(0, 1)) std::abort();
    serial::state.comm[0].on_comm([] { serial::on_comm(0); });
}

/// The floor: find the frame's ends, check its sum, read its five fields; nothing is kept.
void floor_of_a_frame(benchmark::State& state) {
    const std::string bytes = frame;
    for (auto _ : state) {
        const std::string_view text(bytes);
        const auto begin = text.find(':');
        const auto end = text.find("\r\n", begin);
        unsigned sum = 0;
        for (auto at = begin + 1; at < end - 2; ++at)
            sum += static_cast<unsigned char>(text[at]);
        benchmark::DoNotOptimize(sum);
        for (const std::size_t at : {3U, 7U, 11U, 15U, 19U, 23U}) {
            benchmark::DoNotOptimize(funct::hex_to_long(text.substr(at, 4)));
        }
    }
}
BENCHMARK(floor_of_a_frame);

void frame_into_record(benchmark::State& state) {
    start_measuring();
    for (auto _ : state)
        simulation::receive(0, frame);
    if (sensor::state.channels[0].speed != 500) state.SkipWithError("the frame was not decoded");
}
BENCHMARK(frame_into_record);

void frame_into_record_and_log(benchmark::State& state) {
    start_measuring();
    wire();
    sensor::state.channels[0].log_state = log_states::open;
    const std::string path = "link_bench.xlg";
    log::state.log_files[0].open({.path = path});
    log::createlog(0); // sets the period of today
    log::state.log_files[0].open({.path = path});
    for (auto _ : state)
        simulation::receive(0, frame);
    log::state.log_files[0].close();
    if (std::remove(path.c_str()) != 0) state.SkipWithError("no log was written");
}
BENCHMARK(frame_into_record_and_log);

/// The floor of a line in a file: its bytes handed to the system, and nothing else.
void bare_write_of_the_line(benchmark::State& state) {
    const std::string_view line = "<REC1> 13:05:09 150 500 2050 80 30 </REC1>\r\n"; // what the frame leaves
    const char* const path = "link_bench.bare";
    const int file = ::open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    for (auto _ : state) {
        if (::write(file, line.data(), line.size()) < 0) state.SkipWithError("the line was not taken");
    }
    ::close(file);
    std::remove(path);
}
BENCHMARK(bare_write_of_the_line);

void status_update_without_a_change(benchmark::State& state) {
    start_measuring();
    sensor::state.channels[0].status_alarm = 0x0020;
    sensor::status_update(0);
    for (auto _ : state)
        sensor::status_update(0);
}
BENCHMARK(status_update_without_a_change);

/// One more line into a status text of the given length, which is cut as in a status run.
void status_text_line(benchmark::State& state) {
    text_box box;
    const std::string line = "07-02-2026 13:05:09 KVD Engine 1 ## Prealarm ON\r\n";
    const auto limit = static_cast<std::size_t>(state.range(0));
    while (box.size() + line.size() < limit)
        box.append(line);
    for (auto _ : state) {
        box.keep_last(limit);
        box.append(line);
        box.caret_to_end();
    }
}
BENCHMARK(status_text_line)->Arg(50)->Arg(sensor::status_text_limit);

} // namespace
