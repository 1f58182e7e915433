// The parts of a strip chart at any size: legend, title, the labels of both axes.

#include "controls/time_axis.h"
#include "desktop/control_pictures.h"
#include "desktop/desktop_test.h"
#include "desktop/shown_chart.h"

#include <QTest>

using namespace tyxo;

namespace {

constexpr int free_end = 125;

} // namespace

class chart_layout_test : public shown_chart {
    Q_OBJECT

  private slots:
    void init() { make_chart(); }
    void cleanup() { view_.reset(); }

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
                    // The picture stands on whole columns of time, the library's axis does not.
                    constexpr double column = 1;
                    QVERIFY(x - half >= last - column);
                    QVERIFY(x + half <= size.width() + column);
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

  private:
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
};

static const desktop_test<chart_layout_test> known;
#include "chart_layout_test.moc"
