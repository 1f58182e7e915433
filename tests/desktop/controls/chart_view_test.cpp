// The strip chart with its real widget: what it tells through its properties, what it paints, how it is
// clicked.

#include "controls/time_axis.h"
#include "desktop/chart_pictures.h"
#include "desktop/control_pictures.h"
#include "displays/chart_view.h"
#include "widgets/colour.h"

#include <QTest>

using namespace tyxo;

namespace {

constexpr int title_line = 24;
constexpr int free_end = 125;
const QSize design_size(635, 278);

QColor color_of(std::size_t curve) {
    return qt_colour(curve_colours[curve]);
}

/// Whether a colour is painted anywhere inside the axes.
bool in_axes(const chart_view& view, const QImage& image, const QColor& color) {
    return has(image.copy(view.axisRect()->rect().adjusted(1, 1, 0, 0)), color);
}

} // namespace

class chart_view_test : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        view_ = std::make_unique<chart_view>();
        view_->resize(design_size);
    }
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

    void the_legend_covers_no_curve_at_any_size() {
        for (const QSize size : {design_size, QSize(300, 200), QSize(1912, 900)}) {
            view_->resize(size);
            show(engine_chart(), level_rows());
            check_legend();
        }
    }

    void a_chart_that_is_resized_is_arranged_anew_without_a_new_row() {
        view_->show();
        show(engine_chart(), level_rows());
        for (const QSize size : {QSize(300, 200), QSize(1912, 900), design_size}) {
            view_->resize(size);
            picture();
            check_legend();
            QCOMPARE(view_->axisRect()->right(), size.width() - 17);
            int labels = 0;
            for (const QString& label : ticks(*view_->xAxis))
                labels += label.isEmpty() ? 0 : 1;
            QVERIFY(labels >= 1 && labels <= size.width() / 90);
        }
    }

    void a_picture_of_another_size_leaves_the_widgets_own_as_it_is() {
        show(engine_chart(), level_rows());
        const QImage before = picture();
        const QImage other = view_->toPixmap(900, 400).toImage();
        QCOMPARE(other.size(), QSize(900, 400));
        QVERIFY(view_->axisRect()->right() > 800);
        show(engine_chart(), level_rows());
        QCOMPARE(view_->axisRect()->right(), design_size.width() - 17);
        QCOMPARE(picture().size(), before.size());
    }

    void the_ends_of_the_title_line_stay_free() {
        iStripChartX chart = engine_chart();
        chart.Title = "1: " + std::string(200, 'W');
        for (const bool frozen : {false, true}) {
            chart.Frozen = frozen;
            show(chart, level_rows());
            const QImage image = picture();
            for (int x = 1; x < 634; ++x) {
                if (x >= free_end && x < 635 - free_end) continue;
                for (int y = 1; y < title_line; ++y)
                    QCOMPARE(pixel_at(image, x, y), QColor(192, 192, 192));
            }
        }
    }

    void the_y_scale_has_seven_labels() {
        show(engine_chart(), level_rows());
        QCOMPARE(view_->yAxis->ticker().isNull(), false);
        QCOMPARE(ticks(*view_->yAxis), (QStringList{"0", "25", "50", "75", "100", "125", "150"}));
    }

    void the_time_labels_are_clock_times_that_fit() {
        for (const QSize size : {design_size, QSize(300, 200), QSize(1912, 900)}) {
            for (const double span : {two_minutes, 1.0 / 96, 1.0 / 24, 1.0}) {
                view_->resize(size);
                const strip_window rows = level_rows(strip_spans[0], std::llround(span * 86'400'000));
                show(engine_chart(span), rows);
                const QFontMetricsF metrics(view_->xAxis->tickLabelFont());
                QVector<double> places;
                QVector<QString> labels;
                view_->xAxis->ticker()->generate(view_->xAxis->range(), {}, 'g', 6, places, nullptr, &labels);
                QCOMPARE(places.size(), labels.size());
                double last = 0;
                int shown = 0;
                for (qsizetype label = 0; label < places.size(); ++label) {
                    if (labels[label].isEmpty()) continue;
                    const auto moment = rows.newest() + std::llround(places[label]);
                    QCOMPARE(labels[label].toStdString(), formatted("d/m hh:nn:ss", local_at(moment + 1)));
                    const double half = metrics.horizontalAdvance(labels[label]) / 2;
                    const double x = view_->xAxis->coordToPixel(places[label]);
                    QVERIFY(x - half >= last);
                    QVERIFY(x + half <= size.width());
                    last = x + half;
                    ++shown;
                }
                QVERIFY(shown >= (size.width() < 400 ? 1 : 3));
            }
        }
    }

    void two_minutes_in_the_design_size_have_six_clock_times_or_five_while_the_newest_has_no_room() {
        const std::int64_t now = running_ms();
        int with_six = 0;
        for (std::int64_t newest = now - 20'000; newest < now; newest += 500) {
            strip_window rows(120'000);
            rows.append(level_row(newest - 100));
            rows.append(level_row(newest));
            show(engine_chart(two_minutes), rows);
            QStringList labels = ticks(*view_->xAxis);
            labels.removeAll(QString());
            QVERIFY2(labels.size() >= 5 && labels.size() <= 6, qPrintable(labels.join(", ")));
            with_six += labels.size() == 6 ? 1 : 0;
        }
        QVERIFY2(with_six >= 28, qPrintable(QString::number(with_six))); // of 40
    }

    void letters_grow_with_the_chart() {
        int last = 0;
        for (const auto& [height, pixels] :
             {std::pair{90, 11}, {278, 11}, {420, 13}, {600, 15}, {1600, 15}}) {
            view_->resize(1900, height);
            show(engine_chart(), level_rows());
            QCOMPARE(view_->yAxis->tickLabelFont().pixelSize(), pixels);
            QCOMPARE(view_->xAxis->tickLabelFont().pixelSize(), pixels);
            QCOMPARE(view_->legend->font().pixelSize(), pixels);
            check_legend();
            QVERIFY(pixels >= last);
            last = pixels;
        }
    }

    void a_title_that_has_no_room_in_the_middle_takes_the_side_without_a_button() {
        iStripChartX chart = engine_chart();
        chart.Title = "1: Port main engine, forward engine room";
        const auto title = [&](int left, int right) {
            view_->set_title_room(30, left, right);
            show(chart, level_rows());
            return area_of(picture().copy(left, 1, 634 - left - right, 28), QColor(255, 0, 0)).toRect();
        };
        const QRect whole = title(7, 7);
        const QRect beside = title(240, 7);
        QVERIFY(beside.width() >= whole.width() - 1);
        QVERIFY(title(240, 240).width() < whole.width());
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

  private:
    /// Shown as the panel does it: again after the widget has its size.
    void show(const iStripChartX& chart, const strip_window& rows) {
        view_->show_control(chart, rows);
        view_->grab();
        view_->show_control(chart, rows);
        view_->grab();
    }
    void check_legend() {
        const QRect legend = view_->legend->outerRect();
        QVERIFY(!legend.intersects(view_->axisRect()->rect()));
        QVERIFY(legend.top() >= title_line);
        for (int item = 0; item < 6; ++item) {
            const auto* entry = view_->legend->item(item);
            QVERIFY(entry->outerRect().width() >= entry->minimumOuterSizeHint().width());
            QVERIFY(view_->rect().contains(entry->outerRect()));
            for (int other = 0; other < item; ++other)
                QVERIFY(!entry->outerRect().intersects(view_->legend->item(other)->outerRect()));
        }
    }
    QImage picture() { return view_->grab().toImage(); }

    static QStringList ticks(const QCPAxis& axis) {
        QVector<double> places;
        QVector<QString> labels;
        axis.ticker()->generate(axis.range(), {}, 'g', 6, places, nullptr, &labels);
        return labels;
    }

    std::unique_ptr<chart_view> view_;
};

QTEST_MAIN(chart_view_test)
#include "chart_view_test.moc"
