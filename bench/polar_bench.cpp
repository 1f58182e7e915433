// One whole pass of the Detailed Display, as each new curve makes it: the picture in the core, and the window
// of 1280 x 1024 painted. The floor fills as many pixels with one colour. Below it the scope
// of one channel and a bar diagram.

#include "displays/bar_diagram_view.h"
#include "displays/engines.h"
#include "displays/frmdetailedpic_view.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "widgets/plots/xy_plot_view.h"

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
    std::rotate(samples.begin(), samples.begin() + 3, samples.end());
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

/// As after any other handler, up to 50 times a second.
void window_without_a_change(benchmark::State& state) {
    frmdetailedpic_view window(nullptr);
    open_window(window);
    take_new_curve(0);
    for (auto _ : state)
        window.show_state();
}
BENCHMARK(window_without_a_change)->Unit(benchmark::kMicrosecond);

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

/// A scope as the main window has four of them, with both curves of a running engine.
iXYPlotX scope_of_an_engine() {
    open_with_curves();
    sensor::state.scale_polar_t = 3;
    setup_plot(0);
    channel_rec& rec = sensor::state.channels[0];
    std::ranges::copy(sensor::state.detail_thermo, rec.thermo_data.begin());
    std::ranges::copy(sensor::state.detail_angacc, rec.angacc_data.begin());
    process_thermo(0);
    process_angacc(0);
    return panels.XYplot[0];
}

void show_scope(xy_plot_view& scope, const iXYPlotX& plot) {
    scope.resize(110, 110);
    scope.show_control(plot);
    scope.show();
    QApplication::processEvents();
}

void scope_without_a_change(benchmark::State& state) {
    const iXYPlotX plot = scope_of_an_engine();
    xy_plot_view scope;
    show_scope(scope, plot);
    for (auto _ : state)
        scope.show_control(plot);
}
BENCHMARK(scope_without_a_change)->Unit(benchmark::kMicrosecond);

void scope_with_a_new_curve(benchmark::State& state) {
    iXYPlotX plot = scope_of_an_engine();
    xy_plot_view scope;
    show_scope(scope, plot);
    std::size_t kind = 1;
    for (auto _ : state) {
        kind = 3 - kind;
        auto& points = plot.curves[kind].points;
        std::rotate(points.begin(), points.begin() + 3, points.end());
        scope.show_control(plot);
        QApplication::processEvents();
    }
}
BENCHMARK(scope_with_a_new_curve)->Unit(benchmark::kMicrosecond);

void the_same_scope_again(benchmark::State& state) {
    xy_plot_view scope;
    show_scope(scope, scope_of_an_engine());
    QImage image(scope.size(), QImage::Format_RGB32);
    for (auto _ : state)
        scope.render(&image);
}
BENCHMARK(the_same_scope_again)->Unit(benchmark::kMicrosecond);

/// Bars of 16 cylinders in a window of 1280 x 1024.
void take_new_bars(bar_form& bars, int pass) {
    bars.plot.XAxis = {.Span = 17, .Increment = 1};
    bars.plot.YAxes = {{.Name = "left", .Title = "Speed in RPM", .Span = 1200},
                       {.Name = "right", .Title = "Difference", .Min = -60, .Span = 80}};
    bars.plot.series = {{.Title = "Speed", .Color = rgb(0, 0, 255)},
                        {.Title = "Difference", .Color = rgb(192, 0, 192), .YAxisName = "right"}};
    for (int cylinder = 1; cylinder <= 16; ++cylinder) {
        const double swing = (cylinder * 7 + pass) % 11;
        bars.plot.series[0].points.push_back({1.0 * cylinder, 700 + 9 * swing, 0.4});
        bars.plot.series[1].points.push_back({1.0 * cylinder, swing - 5, 0.4});
    }
}

void bars_of_a_new_curve(benchmark::State& state) {
    frmbarpic::unload();
    bar_form& bars = frmbarpic::state;
    bars.channel = 1; // none is selected: nobody else fills the form
    bars.form.Visible = state.range(0) != 0;
    bar_diagram_view window(bars, "frmbarpic", nullptr);
    window.resize(size);
    int pass = 0;
    for (auto _ : state) {
        take_new_bars(bars, ++pass);
        window.show_state();
        QApplication::processEvents();
    }
}
BENCHMARK(bars_of_a_new_curve)->ArgName("shown")->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
