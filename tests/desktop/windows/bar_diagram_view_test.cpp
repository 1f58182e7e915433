// The windows of the bar diagrams with their real widgets, opened by the buttons of the main window.

#include "app/mainfrm.h"
#include "app/mainfrm_view.h"
#include "app/wiring.h"
#include "desktop/control_pictures.h"
#include "desktop/settings_file.h"
#include "displays/bar_diagram.h"
#include "displays/bar_diagram_view.h"
#include "displays/panel.h"
#include "link/cylinder_model.h"
#include "platform/desktop/handlers.h"
#include "settings/settings.h"
#include "widgets/plots/bar_plot_view.h"
#include "widgets/show.h"

#include <QDir>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>

using namespace tyxo;
using namespace tyxo::cylinder_testing;

namespace {

/// One of the two windows, with the names of what belongs to it.
struct window_row {
    const char* window;
    const char* plot;
    const char* button;
    bar_form& bars;
    i16& selected;
    void (*refresh)();
    colour value_color;
    const char* title;
    const char* caption;
};

const window_row both[] = {
    {"frmbarpic", "iPlotX_angle", "Cmd_diagramm", frmbarpic, sensor::bar_channel_angacc, refresh_speed_bars,
     rgb(0, 0, 255), "Cylinder speed difference diagram", "Speed difference diagram "},
    {"Frmbarpic2", "iPlotX_thermo", "Cmd_diagramm2", Frmbarpic2, sensor::bar_channel_thermo,
     refresh_thermo_bars, rgb(255, 0, 0), "Cylinder thermosignal difference diagram",
     "Thermosignal difference diagram "},
};

const QColor difference_color(192, 0, 192);

} // namespace

class bar_diagram_view_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        QVERIFY(QDir::setCurrent(folder_.path()));
        QVERIFY(write_settings_file("[tyxo]\r\nupd_periode= 100\r\nmax_sensors= 3\r\n"
                                    "location 1=K\xFChlung\r\nlocation 2=Engine 2\r\n"
                                    "location 3=Engine 3\r\n"));
        wire();
        main_ = new mainfrm_view;
        start_program(main_->width(), main_->height());
        for (std::size_t channel = 0; channel < 3; ++channel)
            panels.Cmd_diagramm[channel].Visible = panels.Cmd_diagramm2[channel].Visible = true;
        main_->show_state();
        main_->show();
        QVERIFY(QTest::qWaitForWindowExposed(main_));
    }

    void cleanupTestCase() { delete main_; }

    void init() {
        settings.speedbar_mode = 0;
        set_engine(0, in_line_engine());
        set_engine(1, banked_engine(24));
        sensor::channels[1].overspeed = 100;
        set_engine(2, {});
        sensor::detail_angacc = flat_curve(704);
        sensor::detail_thermo = flat_curve(529);
    }

    void cleanup() {
        for (const window_row& row : both)
            window(row).close();
    }

    void the_button_opens_its_window() {
        for (const window_row& row : both) {
            QVERIFY(!window(row).isVisible());
            press(row, 0);
            QVERIFY(window(row).isVisible());
            QVERIFY(!window(row).isModal());
            QCOMPARE(window(row).windowTitle(), row.caption + QString::fromUtf8("K\xC3\xBChlung"));
            QCOMPARE(plot(row).property("PlotTitle").toString(), QString(row.title));
            QCOMPARE(row.selected, i16{1});
            QCOMPARE(shown_labels(row), QString("1 2 3 4 5 6"));
            QCOMPARE(label(row, "Lbl_zyl").text(), QString("Cylinder"));
            QCOMPARE(label(row, "Lbl_mtyp1").text(), QString("4 stroke engine"));
            QCOMPARE(label(row, "Lbl_mtyp2").text(), QString("6 cylinder in line"));
        }
        QCOMPARE(plot(both[0]).property("YAxisSpan(0)").toDouble(), 6650.0);
        QCOMPARE(plot(both[1]).property("YAxisSpan(0)").toDouble(), 400.0);
    }

    void the_plot_tells_what_it_shows() {
        for (const window_row& row : both) {
            press(row, 0);
            new_curve(row);
            QCOMPARE(plot(row).property("XAxisSpan").toDouble(), 7.0);
            QCOMPARE(plot(row).property("YAxisMin(0)").toDouble(), 0.0);
            QCOMPARE(plot(row).property("YAxisMin(1)").toDouble(), -60.0);
            QCOMPARE(plot(row).property("YAxisSpan(1)").toDouble(), 80.0);
            QCOMPARE(plot(row).property("SeriesColor(0)").toInt(), row.value_color);
            QCOMPARE(plot(row).property("SeriesColor(1)").toInt(), rgb(192, 0, 192));
            const QVariantList points = plot(row).property("SeriesPoints(0)").toList();
            QCOMPARE(points.size(), 6);
            QCOMPARE(points[5].toPointF(), QPointF(6, &row == &both[0] ? 1000 : 50));
            QVERIFY(plot(row).spoken_text().contains(&row == &both[0] ? "1000, 1000" : "50, 50"));
        }
        QCOMPARE(plot(both[0]).property("SeriesTitle(0)").toString(), QString("Speed absolut"));
        QCOMPARE(plot(both[1]).property("SeriesTitle(1)").toString(), QString("Signal difference"));
        QCOMPARE(plot(both[1]).property("YAxisTitle(0)").toString(), QString("Thermosignal in % Alarmlevel"));
        QCOMPARE(plot(both[0]).legend->itemCount(), 2);
    }

    void another_button_switches_an_open_window() {
        for (const window_row& row : both) {
            press(row, 1);
            QCOMPARE(shown_labels(row).left(11), QString("1A 1B 2A 2B"));
            QCOMPARE(shown_labels(row).split(' ').size(), 24);
            press(row, 0);
            QCOMPARE(window(row).windowTitle(), row.caption + QString::fromUtf8("K\xC3\xBChlung"));
            QCOMPARE(shown_labels(row), QString("1 2 3 4 5 6"));
            QCOMPARE(plot(row).xAxis->range().upper, 7.0);
        }
        QCOMPARE(plot(both[0]).yAxis->range().upper, 6650.0);
    }

    void closing_selects_no_channel_data() {
        QTest::addColumn<bool>("by_key");
        QTest::addRow("frame") << false;
        QTest::addRow("Escape") << true;
    }

    void closing_selects_no_channel() {
        QFETCH(const bool, by_key);
        for (const window_row& row : both) {
            press(row, 1);
            by_key ? QTest::keyClick(&window(row), Qt::Key_Escape) : static_cast<void>(window(row).close());
            QVERIFY(!window(row).isVisible());
            QCOMPARE(row.selected, i16{0});
            QVERIFY(!row.bars.open);
            press(row, 0);
            QVERIFY(window(row).isVisible());
            QCOMPARE(shown_labels(row), QString("1 2 3 4 5 6"));
        }
    }

    void unknown_parameters_are_told_in_a_box() {
        for (const window_row& row : both) {
            QString text;
            QString title;
            QMessageBox::Icon icon{};
            QTimer::singleShot(0, this, [&] {
                auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                if (box == nullptr) return;
                text = box->text();
                title = box->windowTitle();
                icon = box->icon();
                box->accept();
            });
            press(row, 2);
            QVERIFY(text.startsWith("       Parameters not loaded from Evaluator !!"));
            QVERIFY(text.endsWith("Please wait until loading is ready, and try it again !!"));
            QCOMPARE(title, QString("Message"));
            QCOMPARE(icon, QMessageBox::Critical);
            QVERIFY(!window(row).isVisible());
            QCOMPARE(row.selected, i16{3});
        }
    }

    void activating_the_window_fills_the_labels() {
        for (const window_row& row : both) {
            press(row, 0);
            main_->activateWindow();
            QTRY_COMPARE(QApplication::activeWindow(), main_);
            settings.speedbar_mode = 1;
            window(row).activateWindow();
            QTRY_COMPARE(QApplication::activeWindow(), &window(row));
            main_->show_state();
            QCOMPARE(shown_labels(row), QString("1 5 3 6 2 4"));
            settings.speedbar_mode = 0;
        }
    }

    void labels_stand_under_their_bars_data() {
        QTest::addColumn<QSize>("size");
        QTest::addRow("smallest") << QSize(1, 1);
        QTest::addRow("design") << QSize(800, 500);
        QTest::addRow("screen") << QSize(1280, 1024);
        QTest::addRow("flat") << QSize(1919, 401);
        QTest::addRow("upright") << QSize(641, 1999);
        QTest::addRow("wall") << QSize(3840, 2160);
    }

    void labels_stand_under_their_bars() {
        QFETCH(const QSize, size);
        for (const window_row& row : both) {
            for (const int cylinders : {24, 5, 1}) {
                set_engine(1, banked_engine(cylinders));
                press(row, 1);
                window(row).resize(size);
                new_curve(row);
                const double across = window(row).width() / 800.0;
                const QRect axes = plot(row).axisRect()->rect();
                QVERIFY(std::abs(axes.left() - 142 * across) <= 0.5);
                QVERIFY(std::abs(axes.left() + axes.width() - 744 * across) <= 0.5);
                QRect before = label(row, "Lbl_zyl").geometry();
                for (int bar = 0; bar < cylinders; ++bar) {
                    const QLabel& under = label(row, element("Lbl_bar", bar));
                    const double middle = under.x() + under.width() / 2.0;
                    QVERIFY(std::abs(middle - plot(row).xAxis->coordToPixel(bar + 1)) <= 1);
                    QVERIFY(under.geometry().top() > axes.bottom());
                    QVERIFY(under.fontMetrics().horizontalAdvance(under.text()) + 2 <= under.width());
                    QVERIFY(under.fontMetrics().height() <= under.height());
                    QVERIFY(under.geometry().left() >= before.right());
                    before = under.geometry();
                }
                const QLabel& first = label(row, "Lbl_mtyp1");
                const QLabel& second = label(row, "Lbl_mtyp2");
                QVERIFY(first.x() + first.fontMetrics().horizontalAdvance(first.text()) < second.x());
                QVERIFY(first.y() > before.bottom());
                QVERIFY(second.geometry().bottom() <= window(row).height());
                QCOMPARE(first.x(), qRound(8 * across));
                QCOMPARE(second.x(), qRound(100 * across));
                window(row).close();
            }
        }
    }

    void two_bars_stand_side_by_side_on_their_own_axes() {
        const window_row& row = both[1];
        press(row, 0);
        window(row).resize(800, 500);
        for (const std::size_t sample : {41U, 42U, 43U})
            sensor::detail_thermo[sample] = 479 + 30; // cylinder 1: 20 below all others
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
        const window_row& row = both[0];
        press(row, 0);
        const QImage image = drawn(row);
        const QRect axes = plot(row).axisRect()->rect();
        const int y = static_cast<int>(plot(row).yAxis2->coordToPixel(0));
        const QRect strip(axes.left() + 10, y - 1, axes.width() - 20, 3);
        QVERIFY(area_of(image.copy(strip), difference_color).width() > 0.9 * strip.width());
    }

    void bars_outside_the_axis_are_cut_at_it() {
        const window_row& row = both[1];
        press(row, 0);
        for (const std::size_t sample : {41U, 42U, 43U})
            sensor::detail_thermo[sample] = 60000;
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
        const window_row& row = both[0];
        press(row, 0);
        new_curve(row);
        drawn(row);
        int replots = 0;
        connect(&plot(row), &QCustomPlot::afterReplot, this, [&replots] { ++replots; });
        main_->show_state();
        QCoreApplication::processEvents();
        QCOMPARE(replots, 0);
        sensor::detail_angacc = flat_curve(800);
        new_curve(row);
        QCoreApplication::processEvents();
        QVERIFY(replots > 0);
        disconnect(&plot(row), &QCustomPlot::afterReplot, this, nullptr);
    }

  private:
    static void set_engine(std::size_t channel, channel_rec engine) {
        engine.location = sensor::channels[channel].location;
        sensor::channels[channel] = engine;
    }

    bar_diagram_view& window(const window_row& row) const {
        return *main_->findChild<bar_diagram_view*>(row.window);
    }
    bar_plot_view& plot(const window_row& row) const {
        return *window(row).findChild<bar_plot_view*>(row.plot);
    }
    QLabel& label(const window_row& row, const QString& name) const {
        return *window(row).findChild<QLabel*>(name);
    }

    void press(const window_row& row, int channel) const {
        auto* const button = main_->findChild<QPushButton*>(element(row.button, channel));
        QTest::mouseClick(button, Qt::LeftButton);
        main_->show_state();
    }

    void new_curve(const window_row& row) const {
        desktop::run_handler(desktop::source::device, row.refresh);
        main_->show_state();
    }

    QString shown_labels(const window_row& row) const {
        QStringList texts;
        for (int bar = 0; bar < cylinder_max; ++bar) {
            const QLabel& one = label(row, element("Lbl_bar", bar));
            if (one.isVisible()) texts.push_back(one.text());
        }
        return texts.join(' ');
    }

    QImage drawn(const window_row& row) const {
        QCoreApplication::processEvents();
        plot(row).replot();
        return picture_of(window(row));
    }

    QTemporaryDir folder_;
    mainfrm_view* main_ = nullptr;
};

QTEST_MAIN(bar_diagram_view_test)
#include "bar_diagram_view_test.moc"
