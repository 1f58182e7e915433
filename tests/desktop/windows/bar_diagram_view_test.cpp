// The windows of the bar diagrams with their real widgets, opened by the buttons of the main window.

#include "desktop/bar_windows.h"
#include "desktop/desktop_test.h"
#include "platform/desktop/handlers.h"

#include <QMessageBox>
#include <QTimer>

using namespace tyxo;
using namespace tyxo::cylinder_testing;

class bar_diagram_view_test : public bar_windows {
    Q_OBJECT

  private slots:
    void initTestCase() { start(); }
    void init() { set_engines(); }
    void cleanup() { close(); }
    void cleanupTestCase() { delete main_; }

    void the_button_opens_its_window() {
        for (const bar_window_row& row : both) {
            QVERIFY(!is_open(row));
            press(row, 0);
            QVERIFY(is_open(row));
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
        for (const bar_window_row& row : both) {
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
        for (const bar_window_row& row : both) {
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
        for (const bar_window_row& row : both) {
            press(row, 1);
            by_key ? QTest::keyClick(&window(row), Qt::Key_Escape) : static_cast<void>(window(row).close());
            QVERIFY(!is_open(row));
            QCOMPARE(row.selected, i16{0});
            QVERIFY(!row.bars.open);
            press(row, 0);
            QVERIFY(is_open(row));
            QCOMPARE(shown_labels(row), QString("1 2 3 4 5 6"));
        }
    }

    void unknown_parameters_are_told_in_a_box() {
        for (const bar_window_row& row : both) {
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
            QVERIFY(!is_open(row));
            QCOMPARE(row.selected, i16{3});
        }
    }

    void activating_the_window_fills_the_labels() {
        for (const bar_window_row& row : both) {
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
        for (const bar_window_row& row : both) {
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
};

static const desktop_test<bar_diagram_view_test> known;
#include "bar_diagram_view_test.moc"
