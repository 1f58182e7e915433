// The strip chart with its real widget: what it tells through its properties, and what it paints.

#include "desktop/control_pictures.h"
#include "desktop/desktop_test.h"
#include "desktop/shown_chart.h"
#include "widgets/colour.h"

#include <QTest>

using namespace tyxo;

namespace {

QColor color_of(std::size_t curve) {
    return qt_colour(curve_colours[curve]);
}

/// Whether a colour is painted anywhere inside the axes.
bool in_axes(const chart_view& view, const QImage& image, const QColor& color) {
    return has(image.copy(view.axisRect()->rect().adjusted(1, 1, 0, 0)), color);
}

} // namespace

class chart_view_test : public shown_chart {
    Q_OBJECT

  private slots:
    void init() { make_chart(); }
    void cleanup() { view_.reset(); }

    void tells_what_it_shows() {
        iStripChartX chart = engine_chart(1.0 / 96);
        chart.curves[3].Visible = false;
        chart.Frozen = true;
        show(chart, level_rows());
        QCOMPARE(view_->property("Title").toString(), QString("1: Engine 1"));
        QCOMPARE(view_->accessibleName(), QString("Chart 1: Engine 1"));
        QCOMPARE(view_->property("XAxisMin").toDouble(), 0.0);
        QCOMPARE(view_->property("XAxisSpan").toDouble(), 1.0 / 96);
        QCOMPARE(view_->property("YAxisMin").toDouble(), 0.0);
        QCOMPARE(view_->property("YAxisMax").toDouble(), 150.0);
        QCOMPARE(view_->property("Frozen").toBool(), true);
        QCOMPARE(view_->property("CurveTitle(0)").toString(), QString("Tsig %DCA"));
        QCOMPARE(view_->property("CurveTitle(5)").toString(), QString("Teff %ACA"));
        QCOMPARE(view_->property("CurveVisible(2)").toBool(), true);
        QCOMPARE(view_->property("CurveVisible(3)").toBool(), false);
        QCOMPARE(view_->property("CurveColor(4)").toInt(), rgb(192, 0, 192));
    }

    void paints_each_curve_at_its_height_over_the_whole_width() {
        show(engine_chart(), level_rows());
        const QImage image = picture();
        const QRect axes = view_->axisRect()->rect();
        for (std::size_t curve = 0; curve < strip_curves; ++curve) {
            const double y = view_->yAxis->coordToPixel(static_cast<double>(level(curve)));
            for (const int x : {axes.left() + 2, axes.center().x(), axes.right() - 1})
                QCOMPARE(pixel_at(image, x, y), color_of(curve));
        }
    }

    void the_ground_is_grey_and_the_title_red() {
        show(engine_chart(), strip_window());
        const QImage image = picture();
        QCOMPARE(pixel_at(image, 5, 5), QColor(192, 192, 192));
        QCOMPARE(pixel_at(image, 60, 60), QColor(192, 192, 192));
        QVERIFY(has(image.copy(0, 0, 635, title_line), QColor(255, 0, 0)));
    }

    void the_newest_row_stands_at_the_right_edge() {
        strip_window rows;
        const std::int64_t now = running_ms();
        for (int row = 0; row <= 100; ++row)
            rows.append(level_row(now + 100 * row));
        show(engine_chart(), rows);
        const QRect axes = view_->axisRect()->rect();
        const QRectF painted = area_of(picture().copy(axes), color_of(0));
        QVERIFY(painted.right() >= axes.width() - 1);
        const double tenth = axes.width() / 12.0; // 10 of 120 seconds
        QVERIFY(std::abs(painted.width() - tenth) <= 3);
    }

    void a_single_row_is_a_dot() {
        strip_window rows;
        rows.append(level_row(running_ms()));
        show(engine_chart(), rows);
        for (std::size_t curve = 0; curve < strip_curves; ++curve)
            QVERIFY(in_axes(*view_, picture(), color_of(curve)));
    }

    void a_curve_without_values_leaves_a_gap() {
        strip_window rows;
        const std::int64_t now = running_ms();
        for (int time = -120'000; time <= 0; time += 100) {
            strip_row row = level_row(now + time);
            if (time > -80'000 && time < -40'000) row.values[1] = no_value;
            rows.append(row);
        }
        show(engine_chart(), rows);
        const QRect axes = view_->axisRect()->rect();
        const QImage image = picture();
        const double y = view_->yAxis->coordToPixel(static_cast<double>(level(1)));
        QVERIFY(pixel_at(image, axes.center().x(), y) != color_of(1));
        QCOMPARE(pixel_at(image, axes.left() + 10, y), color_of(1));
        QCOMPARE(pixel_at(image, axes.right() - 10, y), color_of(1));
    }

    void values_off_the_scale_stay_inside_the_axes() {
        strip_window rows;
        const std::int64_t now = running_ms();
        constexpr float infinity = std::numeric_limits<float>::infinity();
        const std::array<float, 6> odd{0, 65535, -1e30F, 3e38F, infinity, -infinity};
        for (int row = 0; row < 1200; ++row) {
            strip_row values;
            values.time = now + 100 * row;
            for (std::size_t curve = 0; curve < strip_curves; ++curve)
                values.values[curve] = odd[(curve + static_cast<std::size_t>(row)) % odd.size()];
            rows.append(values);
        }
        show(engine_chart(), rows);
        const QImage image = picture();
        const int below = view_->axisRect()->bottom() + 1;
        const QImage under = image.copy(0, below, image.width(), image.height() - below);
        for (std::size_t curve = 0; curve < strip_curves; ++curve)
            QVERIFY(!has(under, color_of(curve)));
        QVERIFY(in_axes(*view_, image, color_of(0)));
    }

    void the_quick_way_of_painting_paints_what_a_painter_would() {
        strip_window rows;
        const std::int64_t now = running_ms();
        for (int row = 0; row <= 1200; ++row) {
            strip_row values = level_row(now + 100 * row);
            for (std::size_t curve = 0; curve < strip_curves; ++curve)
                values.values[curve] += static_cast<float>((row * (7 + static_cast<int>(curve))) % 90) - 30;
            rows.append(values);
        }
        show(engine_chart(), rows);
        const QRect axes = view_->axisRect()->rect();
        const QImage quick = picture().copy(axes).convertToFormat(QImage::Format_RGB32);
        const QImage thorough = view_->toPixmap(635, 278).toImage().copy(axes);
        QCOMPARE(quick, thorough.convertToFormat(QImage::Format_RGB32));
        QCOMPARE(view_->axisRect()->rect(), axes);
    }

    void a_hidden_curve_has_neither_line_nor_legend() {
        for (std::size_t hidden = 0; hidden < strip_curves; ++hidden) {
            iStripChartX chart = engine_chart();
            chart.curves[hidden].Visible = false;
            show(chart, level_rows());
            const QImage below = picture().copy(0, title_line, 635, 278 - title_line);
            QCOMPARE(view_->legend->itemCount(), 5);
            for (std::size_t curve = 0; curve < strip_curves; ++curve)
                QCOMPARE(has(below, color_of(curve)), curve != hidden);
        }
        show(engine_chart(), level_rows());
        QCOMPARE(view_->legend->itemCount(), 6);
        QCOMPARE(qobject_cast<QCPPlottableLegendItem*>(view_->legend->item(0))->plottable()->name(),
                 QString("Tsig %DCA"));
    }

    void the_first_curve_lies_over_the_others() {
        strip_window rows;
        for (int row = 0; row < 50; ++row) {
            strip_row values;
            values.time = running_ms() + row * 100;
            values.values.fill(70);
            rows.append(values);
        }
        show(engine_chart(), rows);
        QVERIFY(in_axes(*view_, picture(), color_of(0)));
        QVERIFY(!in_axes(*view_, picture(), color_of(5)));
    }

    void a_chart_without_rows_has_a_grid_and_no_times() {
        show(engine_chart(), strip_window());
        for (const QString& label : ticks(*view_->xAxis))
            QCOMPARE(label, QString());
        QVERIFY(ticks(*view_->xAxis).size() >= 6);
    }

    void a_chart_that_is_not_installed_looks_quiet() {
        iStripChartX chart;
        chart.Title = "not installed";
        show(chart, strip_window());
        const QImage image = picture();
        QVERIFY(!has(image, QColor(255, 0, 0)));
        QVERIFY(!has(image, black));
        QVERIFY(view_->axisRect()->width() > 500);
        for (const QString& label : ticks(*view_->yAxis))
            QCOMPARE(label, QString());
    }

    void odd_controls_are_painted() {
        for (const double odd : {not_a_number, infinite, -infinite, -1e308, 1e308, 0.0}) {
            for (const QSize size : {QSize(1, 1), QSize(30, 10), design_size, QSize(3840, 2160)}) {
                iStripChartX chart = engine_chart(odd);
                chart.YAxisMin = odd;
                chart.YAxisMax = -odd;
                chart.XAxisTickMajorCount = chart.YAxisTickMajorCount = chart.XAxisTickMinorCount = most;
                chart.GridLineStyle = -most;
                chart.curves.push_back({"seventh", 0});
                view_->resize(size);
                show(chart, level_rows());
                QCOMPARE(picture().size(), size);
            }
        }
    }
};

static const desktop_test<chart_view_test> known;
#include "chart_view_test.moc"
