// What the windows of the bar diagrams paint: bars on two axes, and plots with strange numbers.

#include "desktop/bar_windows.h"
#include "desktop/desktop_test.h"

using namespace tyxo;

class bar_diagram_plot_test : public bar_windows {
    Q_OBJECT

  private slots:
    void initTestCase() { start(); }
    void init() { set_engines(); }
    void cleanup() { close(); }
    void cleanupTestCase() { delete main_; }

    void two_bars_stand_side_by_side_on_their_own_axes() {
        const bar_window_row& row = both[1];
        press(row, 0);
        window(row).resize(800, 500);
        for (const std::size_t sample : {41U, 42U, 43U})
            sensor::state.detail_thermo[sample] = 479 + 30; // cylinder 1: 20 below all others
        new_curve(row);
        const QImage image = drawn(row);
        const double middle = plot(row).xAxis->coordToPixel(1);
        const double lower = plot(row).yAxis->coordToPixel(15);
        const double upper = plot(row).yAxis2->coordToPixel(-10);
        QCOMPARE(pixel_at(image, middle - 8, lower), QColor(255, 0, 0));
        QCOMPARE(pixel_at(image, middle + 8, upper), difference_color);
        QVERIFY(pixel_at(image, middle + 8, lower) != QColor(255, 0, 0));
        QVERIFY(pixel_at(image, middle - 8, plot(row).yAxis->coordToPixel(35)) != QColor(255, 0, 0));
        QVERIFY(pixel_at(image, middle + 8, plot(row).yAxis2->coordToPixel(-25)) != difference_color);
        QVERIFY(pixel_at(image, middle - 8, upper) != difference_color);
    }

    void the_second_axis_has_a_zero_line() {
        const bar_window_row& row = both[0];
        press(row, 0);
        const QImage image = drawn(row);
        const QRect axes = plot(row).axisRect()->rect();
        const int y = static_cast<int>(plot(row).yAxis2->coordToPixel(0));
        const QRect strip(axes.left() + 10, y - 1, axes.width() - 20, 3);
        QVERIFY(area_of(image.copy(strip), difference_color).width() > 0.9 * strip.width());
    }

    void bars_outside_the_axis_are_cut_at_it() {
        const bar_window_row& row = both[1];
        press(row, 0);
        for (const std::size_t sample : {41U, 42U, 43U})
            sensor::state.detail_thermo[sample] = 60000;
        new_curve(row);
        const QImage image = drawn(row);
        const QRect axes = plot(row).axisRect()->rect();
        const double x = plot(row).xAxis->coordToPixel(1) + 8;
        QCOMPARE(pixel_at(image, x, axes.top() + 3), difference_color);
        QVERIFY(pixel_at(image, x, axes.top() - 3) != difference_color);
    }

    void hostile_plots_are_painted_data() {
        QTest::addColumn<double>("value");
        QTest::addRow("infinite") << infinite;
        QTest::addRow("minus infinite") << -infinite;
        QTest::addRow("no number") << not_a_number;
        QTest::addRow("huge") << 1e308;
        QTest::addRow("minus huge") << -1e308;
        QTest::addRow("nothing") << 0.0;
        QTest::addRow("tiny") << 1e-308;
    }

    void hostile_plots_are_painted() {
        QFETCH(const double, value);
        bar_form bars;
        bars.form.Visible = true;
        bar_diagram_view view(bars, "frmbarpic", nullptr);
        for (const int count : {0, 1, 25, 300}) {
            for (const bool axes_too : {false, true}) {
                iPlotX& control = bars.plot;
                control = {};
                control.YAxes.resize(static_cast<std::size_t>(count % 3));
                control.series.resize(static_cast<std::size_t>(count % 4));
                for (bar_series& series : control.series)
                    for (int bar = 0; bar < count; ++bar)
                        series.points.push_back(
                            {axes_too ? value : bar + 1.0, value, axes_too ? value : 0.5});
                control.XAxis.Span = axes_too ? value : count;
                for (bar_axis& axis : control.YAxes)
                    if (axes_too) axis.Min = axis.Span = axis.Increment = value;
                bars.Lbl_bar_middle.fill(value);
                for (const QSize& size : {QSize(640, 400), QSize(3840, 2160)}) {
                    view.resize(size);
                    view.show_state();
                    QVERIFY(!view.grab().isNull());
                    if (axes_too) QCOMPARE(view.findChild<bar_plot_view*>()->xAxis->range().upper, 1.0);
                }
            }
        }
    }

    void only_a_difference_repaints() {
        const bar_window_row& row = both[0];
        press(row, 0);
        new_curve(row);
        drawn(row);
        int replots = 0;
        connect(&plot(row), &QCustomPlot::afterReplot, this, [&replots] { ++replots; });
        main_->show_state();
        QCoreApplication::processEvents();
        QCOMPARE(replots, 0);
        sensor::state.detail_angacc = flat_curve(800);
        new_curve(row);
        QCoreApplication::processEvents();
        QVERIFY(replots > 0);
        disconnect(&plot(row), &QCustomPlot::afterReplot, this, nullptr);
    }
};

static const desktop_test<bar_diagram_plot_test> known;
#include "bar_diagram_plot_test.moc"
