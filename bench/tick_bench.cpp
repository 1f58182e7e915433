// A whole display tick of the running main window: four channels, their gauges, charts and scopes, painted.

#include "main_window.h"

#include "displays/chart.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "link/channel_rec.h"
#include "platform/clock.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <fstream>
#include <string>

namespace {

using namespace tyxo;

/// Values that move, so that every needle, digit and line is painted anew.
void measure(i16 channel, int step) {
    channel_rec& rec = sensor::state.channels[channel];
    rec.tsignal = 40 + step % 50;
    rec.teff_dc = 30 + step % 40;
    rec.teff_ac = 20 + step % 30;
    rec.tvoltage = 100 + step % 90;
    rec.speed = 700 + step % 100;
    rec.overspeed = 900;
    rec.param_valid = true;
    rec.eva_mode = evaluator_mode::standard;
}

/// How the curves of the charts run.
enum class weather {
    calm, ///< as an engine does: slow waves, a little noise
    wild  ///< every row somewhere else on the whole scale
};

float value_at(weather kind, std::size_t curve, std::int64_t step) {
    const auto time = static_cast<double>(step);
    const auto number = static_cast<double>(curve);
    if (kind == weather::wild)
        return static_cast<float>((step * (7 + static_cast<std::int64_t>(curve))) % 140);
    const double noise = static_cast<double>((step * 7919 + static_cast<std::int64_t>(curve) * 31) % 5) - 2;
    return static_cast<float>(30 + 15 * number + 8 * std::sin(time / (200 + 50 * number)) + noise);
}

/// The rows of two full hours, so that every time window but the longest is full.
void fill_charts(weather kind) {
    const std::int64_t now = running_ms();
    for (strip_history& rows : charts.rows) {
        rows.clear();
        strip_row row;
        for (std::int64_t before = 7'200'000; before > 0; before -= 100) {
            row.time = now - before;
            for (std::size_t curve = 0; curve < strip_curves; ++curve)
                row.values[curve] = curve == 2 ? 100 : value_at(kind, curve, before / 100);
            rows.append(row);
        }
    }
}

void start(weather kind) {
    for (i16 channel = 0; channel < channel_count; ++channel) {
        sensor::state.channel_running[channel] = true;
        for (std::size_t sample = 0; sample < curve_samples; ++sample) {
            sensor::state.channels[channel].thermo_data[sample] = static_cast<i32>(480 + sample % 17);
            sensor::state.channels[channel].angacc_data[sample] = static_cast<i32>(700 + sample % 31);
        }
        measure(channel, 0);
        process_thermo(channel);
        process_angacc(channel);
    }
    fill_charts(kind);
}

/// What `Timer_chart_upd` does, with rows that come every 100 ms however fast the benchmark runs.
void tick(weather kind, int step) {
    for (i16 channel = 0; channel < channel_count; ++channel) {
        measure(channel, step);
        strip_row row;
        row.time = charts.rows[channel].window(0).newest() + 100;
        for (std::size_t curve = 0; curve < strip_curves; ++curve)
            row.values[curve] = curve == 2 ? 100 : value_at(kind, curve, step);
        charts.rows[channel].append(row);
        update_panel(channel);
    }
}

void show_now() {
    window->show_state();
    QCoreApplication::processEvents();
}

/// By the index of the time resolution: 2 min, 15 min, 1 h, 24 h.
template <weather kind> void tick_with_painting(benchmark::State& state) {
    start(kind);
    mainfrm::opt_res_click(static_cast<std::size_t>(state.range(0)));
    show_now();
    int step = 0;
    for (auto _ : state) {
        tick(kind, ++step);
        show_now();
    }
}
BENCHMARK(tick_with_painting<weather::calm>)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);
BENCHMARK(tick_with_painting<weather::wild>)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

/// After a handler that changed nothing that is seen.
void showing_without_a_change(benchmark::State& state) {
    start(weather::calm);
    show_now();
    for (auto _ : state)
        window->show_state();
}
BENCHMARK(showing_without_a_change)->Unit(benchmark::kMicrosecond);

/// The tick alone, nothing painted.
void tick_of_the_core(benchmark::State& state) {
    start(weather::calm);
    int step = 0;
    for (auto _ : state) {
        ++step;
        for (i16 channel = 0; channel < channel_count; ++channel) {
            measure(channel, step);
            add_chart_row(channel);
            update_panel(channel);
        }
    }
}
BENCHMARK(tick_of_the_core)->Unit(benchmark::kMicrosecond);

double resident_mb() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:")) return std::stod(line.substr(6)) / 1024;
    return 0;
}

/// The memory of this process with its main window, after a day of rows and after a month of them.
void month_of_rows(benchmark::State& state) {
    constexpr std::int64_t day = 86'400'000;
    start(weather::calm);
    std::int64_t time = running_ms();
    const auto measure_days = [&time](std::int64_t days) {
        strip_row row;
        for (const std::int64_t end = time + days * day; time < end; time += 100) {
            row.time = time;
            for (std::size_t curve = 0; curve < strip_curves; ++curve)
                row.values[curve] = static_cast<float>((time / 100 + static_cast<std::int64_t>(curve)) % 90);
            for (strip_history& rows : charts.rows)
                rows.append(row);
        }
        show_now();
    };
    for (auto _ : state) {
        measure_days(1);
        state.counters["MB_after_a_day"] = resident_mb();
        measure_days(29);
        state.counters["MB_after_a_month"] = resident_mb();
    }
}
BENCHMARK(month_of_rows)->Iterations(1)->Unit(benchmark::kSecond);

} // namespace

int main(int argc, char** argv) {
    return run_with_main_window(argc, argv);
}
