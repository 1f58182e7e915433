// A strip chart takes a row and is drawn, after a minute and after a month, beside the plot library that
// keeps every row.

#include "platform/clock.h"
#include "widgets/colour.h"
#include "widgets/plots/chart_view.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <malloc.h>

#include <cmath>
#include <random>

namespace {

using namespace tyxo;

constexpr std::int64_t row_ms = 100;
constexpr std::int64_t minute = 60'000;
constexpr std::int64_t hour = 60 * minute;
constexpr std::int64_t day = 24 * hour;
const QSize chart_size(635, 278);

/// A plant that runs: whole per cents with some noise.
class plant {
  public:
    strip_row next() {
        strip_row row;
        row.time = time_ += row_ms;
        const double seconds = static_cast<double>(time_ % day) / 1000;
        const auto wave = [&](double middle, double height, double length, double noise) {
            const double random = static_cast<double>(chance_() % 2001) / 1000 - 1;
            return static_cast<float>(
                std::round(middle + height * std::sin(seconds / length) + noise * random));
        };
        row.values = {wave(42, 10, 40, 1), wave(75, 3, 15, 0), 100,
                      wave(30, 8, 500, 2), wave(60, 5, 77, 1), wave(20, 9, 23, 4)};
        return row;
    }

  private:
    std::minstd_rand chance_{1};
    std::int64_t time_ = running_ms() - 31 * day;
};

iStripChartX control(double span) {
    iStripChartX chart;
    chart.Title = "1: Engine 1";
    chart.YAxisMax = 150;
    chart.XAxisSpan = span;
    chart.XAxisDateTimeFormatString = "d/m hh:nn:ss";
    chart.curves = {{"Tsig %DCA", rgb(255, 0, 0)},   {"RPM /10", rgb(0, 0, 255)},
                    {"TAlm 100%", rgb(255, 128, 0)}, {"TmV x50", rgb(0, 192, 0)},
                    {"Teff %DCA", rgb(192, 0, 192)}, {"Teff %ACA", rgb(255, 255, 255)}};
    return chart;
}

double heap_kilobytes() {
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd) / 1024;
}

/// Appends a row and draws the chart; before that it took rows for `state.range(0)` ms. It shows the last
/// `state.range(1)` ms.
void row_and_redraw(benchmark::State& state) {
    const double before = heap_kilobytes();
    strip_history history;
    plant engine;
    for (std::int64_t time = 0; time < state.range(0); time += row_ms)
        history.append(engine.next());
    state.counters["history_kB"] = heap_kilobytes() - before;

    const iStripChartX chart = control(static_cast<double>(state.range(1)) / static_cast<double>(day));
    const strip_window& rows = history.window(state.range(1));
    chart_view view([&rows]() -> const strip_window& { return rows; });
    view.resize(chart_size);
    QPixmap screen(chart_size);
    view.render(&screen);
    for (auto _ : state) {
        history.append(engine.next());
        view.show_control(chart);
        view.render(&screen);
    }
}
BENCHMARK(row_and_redraw)
    ->ArgNames({"after_ms", "span_ms"})
    ->Args({minute, 2 * minute})
    ->Args({hour, 2 * minute})
    ->Args({day, 2 * minute})
    ->Args({30 * day, 2 * minute})
    ->Args({day, hour})
    ->Args({day, day})
    ->Unit(benchmark::kMicrosecond);

/// The floor: the picture is copied, nothing has come.
void copy_of_the_picture(benchmark::State& state) {
    strip_history history;
    plant engine;
    for (std::int64_t time = 0; time < 2 * minute; time += row_ms)
        history.append(engine.next());
    const strip_window& rows = history.window(2 * minute);
    chart_view view([&rows]() -> const strip_window& { return rows; });
    view.resize(chart_size);
    view.show_control(control(1.0 / 720));
    QPixmap screen(chart_size);
    for (auto _ : state)
        view.render(&screen);
}
BENCHMARK(copy_of_the_picture)->Unit(benchmark::kMicrosecond);

/// A row is appended and shown where `state.range(0)` ms are seen; painted is what has changed.
void row_alone(benchmark::State& state) {
    strip_history history;
    plant engine;
    for (std::int64_t time = 0; time < day; time += row_ms)
        history.append(engine.next());
    const iStripChartX chart = control(static_cast<double>(state.range(0)) / static_cast<double>(day));
    const strip_window& rows = history.window(state.range(0));
    chart_view view([&rows]() -> const strip_window& { return rows; });
    view.resize(chart_size);
    view.show_control(chart);
    view.grab();
    for (auto _ : state) {
        history.append(engine.next());
        view.show_control(chart);
    }
}
BENCHMARK(row_alone)->ArgName("span_ms")->Arg(2 * minute)->Arg(day)->Unit(benchmark::kMicrosecond);

/// The same picture by the plot library alone, which holds the rows of the last `state.range(0)` ms.
void row_and_redraw_with_all_rows(benchmark::State& state) {
    const double before = heap_kilobytes();
    QCustomPlot plot;
    plot.resize(chart_size);
    plot.yAxis->setRange(0, 150);
    plot.legend->setVisible(true);
    const iStripChartX chart = control(1);
    for (const chart_curve& curve : chart.curves) {
        QCPGraph* const graph = plot.addGraph();
        graph->setPen(QPen(qt_colour(curve.Color)));
        graph->setName(QString::fromStdString(curve.Title));
    }
    const QSharedPointer<QCPAxisTickerDateTime> ticker(new QCPAxisTickerDateTime);
    ticker->setDateTimeFormat("d/M hh:mm:ss");
    plot.xAxis->setTicker(ticker);

    plant engine;
    const auto append = [&] {
        const strip_row row = engine.next();
        const double seconds = static_cast<double>(row.time) / 1000;
        for (std::size_t curve = 0; curve < strip_curves; ++curve)
            plot.graph(static_cast<int>(curve))->addData(seconds, static_cast<double>(row.values[curve]));
        return seconds;
    };
    for (std::int64_t time = 0; time < state.range(0); time += row_ms)
        append();
    state.counters["history_kB"] = heap_kilobytes() - before;

    const double span = static_cast<double>(state.range(0)) / 1000;
    QPixmap screen(chart_size);
    plot.render(&screen);
    for (auto _ : state) {
        const double newest = append();
        plot.xAxis->setRange(newest - span, newest);
        for (int curve = 0; curve < plot.graphCount(); ++curve)
            plot.graph(curve)->data()->removeBefore(newest - span);
        plot.replot(QCustomPlot::rpQueuedRefresh);
        plot.render(&screen);
    }
}
BENCHMARK(row_and_redraw_with_all_rows)
    ->ArgName("span_ms")
    ->Arg(2 * minute)
    ->Arg(day)
    ->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
