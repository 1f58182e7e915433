// One whole pass of the Detailed Display, as each new curve makes it: the picture in the core, and the window
// of 1280 x 1024 painted. The floor fills as many pixels with one colour.

#include "displays/engines.h"
#include "displays/frmdetailedpic_view.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

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

void whole_pass(benchmark::State& state) {
    open_with_curves();
    frmdetailedpic_view window(nullptr);
    window.resize(size);
    window.show_state();
    QApplication::processEvents();
    QImage image(size, QImage::Format_RGB32);
    for (auto _ : state) {
        draw_pass();
        window.show_state();
        window.render(&image);
    }
    if (image.pixelColor(5, 5) != QColor(192, 192, 192)) state.SkipWithError("nothing was painted");
}
BENCHMARK(whole_pass)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
