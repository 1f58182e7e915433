// One whole pass of the Detailed Display, as each new curve makes it: the picture in the core, and the window
// of 1280 x 1024 painted. The floor fills as many pixels with one colour.

#include "displays/engines.h"
#include "displays/frmdetailedpic_view.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

using namespace tyxo;

constexpr QSize size(1280, 1024);

const channel_rec& v16() {
    static const channel_rec rec = engine(4, 16, v_type);
    return rec;
}

void open_with_curves() {
    frmdetailedpic::unload();
    open_detailed_display(v16());
    take_curves(v16());
}

void fill_1280_x_1024(benchmark::State& state) {
    QImage image(size, QImage::Format_RGB32);
    for (auto _ : state) {
        QPainter painter(&image);
        painter.fillRect(image.rect(), QColor(192, 192, 192));
    }
}
BENCHMARK(fill_1280_x_1024)->Unit(benchmark::kMicrosecond);

void picture_in_the_core(benchmark::State& state) {
    open_with_curves();
    frmdetailedpic::resize(316, 185);
    for (auto _ : state)
        draw_pass();
    state.counters["strokes"] = static_cast<double>(frmdetailedpic::state.surface.strokes.size());
}
BENCHMARK(picture_in_the_core)->Unit(benchmark::kMicrosecond);

/// The two kinds of curve come by turns, each another one than the last of its kind.
void take_new_curve(int pass) {
    auto& samples = pass % 2 == 0 ? sensor::state.detail_thermo : sensor::state.detail_angacc;
    std::ranges::rotate(samples, samples.begin() + 3);
    draw_pass();
}

void open_window(frmdetailedpic_view& window) {
    open_with_curves();
    window.resize(size);
    window.show_state();
    QApplication::processEvents();
}

/// Painted from scratch.
void whole_pass(benchmark::State& state) {
    frmdetailedpic_view window(nullptr);
    open_window(window);
    QImage image(size, QImage::Format_RGB32);
    int pass = 0;
    for (auto _ : state) {
        take_new_curve(++pass);
        window.show_state();
        window.render(&image);
    }
    if (image.pixelColor(5, 5) != QColor(192, 192, 192)) state.SkipWithError("nothing was painted");
}
BENCHMARK(whole_pass)->Unit(benchmark::kMicrosecond);

/// What the program does: the window on the screen takes up what differs.
void whole_pass_on_the_screen(benchmark::State& state) {
    frmdetailedpic_view window(nullptr);
    open_window(window);
    int pass = 0;
    for (auto _ : state) {
        take_new_curve(++pass);
        window.show_state();
        QApplication::processEvents();
    }
}
BENCHMARK(whole_pass_on_the_screen)->Unit(benchmark::kMicrosecond);

/// Something else wants the window painted again.
void the_same_picture_again(benchmark::State& state) {
    frmdetailedpic_view window(nullptr);
    open_window(window);
    take_new_curve(0);
    window.show_state();
    QImage image(size, QImage::Format_RGB32);
    for (auto _ : state)
        window.render(&image);
}
BENCHMARK(the_same_picture_again)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
