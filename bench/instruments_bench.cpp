// The instruments of the main window, four channels of them, shown with new values and painted as in the
// program: all else stands still.

#include "main_window.h"

#include "displays/panel.h"
#include "link/indicators.h"
#include "widgets/analog_display_view.h"
#include "widgets/angular_gauge_view.h"
#include "widgets/led_view.h"
#include "widgets/linear_gauge_view.h"
#include "widgets/seven_segment_view.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <functional>
#include <vector>

namespace {

using namespace tyxo;

/// A control of a channel, and how it shows the values of a step.
struct instrument {
    QWidget* view;
    std::function<void(int step)> show;
};
using instruments = std::vector<instrument>;

template <class View, class Controls, class Move>
void add(instruments& to, const char* array, const Controls& controls, Move move) {
    for (i16 channel = 0; channel < channel_count; ++channel) {
        auto* const view = window->findChild<View*>(element(array, channel));
        to.push_back({view, [view, control = controls[channel], move](int step) mutable {
                          move(control, step);
                          view->show_control(control);
                      }});
    }
}

void add_dials(instruments& to) {
    add<angular_gauge_view>(to, "drehzahl", indicators.drehzahl,
                            [](iAngularGaugeX& dial, int step) { dial.Position = 700 + step % 100; });
}
void add_speeds(instruments& to) {
    add<seven_segment_view>(to, "dig_drehzahl", indicators.dig_drehzahl,
                            [](iSevenSegmentAnalogX& digits, int step) { digits.Value = 700 + step % 100; });
}
void add_bars(instruments& to) {
    add<linear_gauge_view>(to, "Gauge_thermo", panels.Gauge_thermo,
                           [](iLinearGaugeX& bar, int step) { bar.set_position(40 + step % 50); });
}
void add_numbers(instruments& to) {
    add<analog_display_view>(to, "digi_Thermo", indicators.digi_Thermo,
                             [](iAnalogDisplayX& number, int step) { number.Value = 40 + step % 50; });
    add<analog_display_view>(to, "t_mv", indicators.t_mv, [](iAnalogDisplayX& number, int step) {
        number.Value = (100 + step % 90) / 100.0;
    });
}
void add_levels(instruments& to) {
    for (const char* array : {"dig_sens", "dig_sens2"})
        add<seven_segment_view>(to, array, panels.dig_sens,
                                [](iSevenSegmentAnalogX& digits, int step) { digits.Value = step % 100; });
}
void add_lamps(instruments& to) {
    for (const char* array : {"LED_Rdy", "LED_prealarm", "LED_Alarm"})
        add<led_view>(to, array, indicators.LED_Alarm,
                      [](iLedRoundX& lamp, int step) { lamp.Active = step % 2 != 0; });
}
void add_moving(instruments& to) {
    for (const auto add_some : {add_dials, add_speeds, add_bars, add_numbers})
        add_some(to);
}
void add_all(instruments& to) {
    for (const auto add_some : {add_moving, add_levels, add_lamps})
        add_some(to);
}

void paint_now() {
    QCoreApplication::processEvents();
}

/// All of a kind show other values, `same` the same ones.
enum class values { other, same };

template <void (*add_some)(instruments&), values which> void show(benchmark::State& state) {
    instruments shown;
    add_some(shown);
    paint_now();
    int step = 0;
    for (auto _ : state) {
        if (which == values::other) ++step;
        for (const instrument& one : shown)
            one.show(step);
        paint_now();
    }
}
BENCHMARK(show<add_dials, values::other>)->Unit(benchmark::kMicrosecond)->Name("dials");
BENCHMARK(show<add_speeds, values::other>)->Unit(benchmark::kMicrosecond)->Name("speed_digits");
BENCHMARK(show<add_bars, values::other>)->Unit(benchmark::kMicrosecond)->Name("bars");
BENCHMARK(show<add_numbers, values::other>)->Unit(benchmark::kMicrosecond)->Name("numbers");
BENCHMARK(show<add_levels, values::other>)->Unit(benchmark::kMicrosecond)->Name("level_digits");
BENCHMARK(show<add_lamps, values::other>)->Unit(benchmark::kMicrosecond)->Name("lamps");
BENCHMARK(show<add_moving, values::other>)->Unit(benchmark::kMicrosecond)->Name("all_that_move_in_a_tick");
BENCHMARK(show<add_all, values::other>)->Unit(benchmark::kMicrosecond)->Name("all");
BENCHMARK(show<add_all, values::same>)->Unit(benchmark::kMicrosecond)->Name("all_unchanged");

/// The floor: all their pixels copied once.
void copy_of_the_pixels(benchmark::State& state) {
    instruments shown;
    add_moving(shown);
    std::size_t pixels = 0;
    for (const instrument& one : shown)
        pixels += static_cast<std::size_t>(one.view->width()) * static_cast<std::size_t>(one.view->height());
    std::vector<QRgb> from(pixels, 1);
    std::vector<QRgb> to(pixels, 2);
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), pixels * sizeof(QRgb));
        benchmark::ClobberMemory();
    }
    state.counters["pixels"] = static_cast<double>(pixels);
}
BENCHMARK(copy_of_the_pixels)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    return run_with_main_window(argc, argv);
}
