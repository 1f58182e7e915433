// The painted polar scope: what it paints, and what counts as its click.

#include "desktop/control_pictures.h"
#include "desktop/desktop_test.h"
#include "widgets/plots/xy_plot_view.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <limits>

using namespace tyxo;

namespace {

const QColor blue(0, 0, 255);
const QColor red(255, 0, 0);
const QColor ground(192, 192, 192);

/// A plot with one measured curve.
iXYPlotX plot_of(const std::vector<plot_point>& points, colour color = rgb(0, 0, 255)) {
    iXYPlotX plot;
    plot.XAxis = plot.YAxis = {-65, 130};
    plot.curves = {{"zero", rgb(255, 255, 255), true, {}}, {"", color, true, points}};
    return plot;
}

/// The pixel at a point of a plot in its usual picture: the frame takes 2 pixels, a unit 2.
QColor pixel_of(const QImage& image, double x, double y) {
    return pixel_at(image, 2 + 2 * (x + 65), 2 + 2 * (65 - y));
}

QImage picture_of_plot(const iXYPlotX& plot, QSize size = {264, 264}) {
    QWidget page;
    auto* const view = new xy_plot_view(&page);
    view->resize(size);
    view->show_control(plot);
    return picture_of(*view);
}

} // namespace

class xy_plot_view_test : public QObject {
    Q_OBJECT

  private slots:
    void one_left_click_is_one_click() {
        xy_plot_view scope;
        scope.resize(110, 110);
        scope.show();
        QVERIFY(QTest::qWaitForWindowExposed(&scope));
        QSignalSpy clicks(&scope, &xy_plot_view::clicked);
        QTest::mouseClick(&scope, Qt::LeftButton);
        QCOMPARE(clicks.count(), 1);
        QTest::mouseClick(&scope, Qt::RightButton);
        QTest::mouseClick(&scope, Qt::MiddleButton);
        QCOMPARE(clicks.count(), 1);
        QTest::mousePress(&scope, Qt::LeftButton);
        QTest::mouseRelease(&scope, Qt::LeftButton, {}, QPoint(300, 300));
        QCOMPARE(clicks.count(), 1);
        QTest::mouseClick(&scope, Qt::LeftButton); // a double click, as a mouse sends it
        QTest::mouseDClick(&scope, Qt::LeftButton);
        QTest::mouseRelease(&scope, Qt::LeftButton);
        QCOMPARE(clicks.count(), 2);
        QTest::keyClick(&scope, Qt::Key_Space);
        QTest::keyClick(&scope, Qt::Key_Return);
        QTest::keyClick(&scope, Qt::Key_A);
        QCOMPARE(clicks.count(), 4);
    }

    void curves_lie_where_their_points_are_with_y_upwards() {
        const QImage level = picture_of_plot(plot_of({{-20, 30}, {20, 30}}));
        QCOMPARE(pixel_of(level, 0, 30), blue);
        QCOMPARE(pixel_of(level, -17, 30), blue);
        QCOMPARE(pixel_of(level, -37, 30), ground);
        QCOMPARE(pixel_of(level, 8, -30), ground);
        const QImage upright = picture_of_plot(plot_of({{40, -50}, {40, 0}}, rgb(255, 0, 0)));
        QCOMPARE(pixel_of(upright, 40, -33), red);
        QCOMPARE(pixel_of(upright, 40, 37), ground);
    }

    void a_hidden_curve_is_not_painted() {
        iXYPlotX plot = plot_of({{-20, 30}, {20, 30}});
        plot.curves[1].Visible = false;
        QVERIFY(!has(picture_of_plot(plot), blue));
        plot = plot_of({});
        plot.curves[0].points = {{-20, 30}, {20, 30}};
        QVERIFY(has(picture_of_plot(plot), white));
        plot.curves[0].Visible = false;
        QVERIFY(!has(picture_of_plot(plot), white));
    }

    void the_first_curve_is_painted_anew_when_it_changes() {
        QWidget page;
        auto* const view = new xy_plot_view(&page);
        view->resize(264, 264);
        iXYPlotX plot = plot_of({});
        view->show_control(plot);
        QVERIFY(!has(picture_of(*view), white));
        plot.curves[0].points = {{-20, 30}, {20, 30}};
        view->show_control(plot);
        QVERIFY(has(picture_of(*view), white));
        plot.YAxis.Min = -20; // moves it out
        plot.YAxis.Span = 40;
        view->show_control(plot);
        QVERIFY(!has(picture_of(*view), white));
    }

    void curves_are_cut_at_the_frame() {
        const QImage image = picture_of_plot(plot_of({{-500, 30}, {500, 30}}));
        QCOMPARE(pixel_at(image, 2, 72), blue);
        QCOMPARE(pixel_at(image, 261, 72), blue);
        QVERIFY(pixel_at(image, 1, 72) != blue);
        QVERIFY(pixel_at(image, 262, 72) != blue);
        QVERIFY(!has(picture_of_plot(plot_of({{-500, 70}, {500, 70}})), blue));
    }

    void far_points_and_points_that_are_no_numbers_do_no_harm() {
        QCOMPARE(pixel_of(picture_of_plot(plot_of({{0, 30}, {1e300, 30}})), 33, 30), blue);
        for (const double bad : {infinite, -infinite, not_a_number}) {
            const QImage image =
                picture_of_plot(plot_of({{-40, 30}, {-20, 30}, {bad, bad}, {20, 30}, {40, 30}}));
            QCOMPARE(pixel_of(image, -30, 30), blue);
            QCOMPARE(pixel_of(image, 30, 30), blue);
            QCOMPARE(pixel_of(image, -7, 30), ground); // the gap
            iXYPlotX plot = plot_of({{0, 0}, {1, 1}});
            plot.XAxis.Min = bad;
            plot.YAxis.Span = bad;
            QVERIFY(!has(picture_of_plot(plot), blue));
        }
        for (const double span : {0.0, -1.0, 1e-320, 1e308}) {
            iXYPlotX plot = plot_of({{0, 0}, {1e308, -1e308}, {-1e308, 5}});
            plot.XAxis = plot.YAxis = {0, span};
            picture_of_plot(plot);
        }
    }

    void every_size_has_a_picture() {
        const iXYPlotX plot = plot_of({{-30, 30}, {30, -30}});
        for (const QSize size : {QSize(1, 1), QSize(4, 4), QSize(5, 200), QSize(1500, 1500)}) {
            const QImage image = picture_of_plot(plot, size);
            if (size.height() > 1000) QVERIFY(has(image, blue));
        }
        const QImage wide = picture_of_plot(plot, {464, 264});
        QCOMPARE(pixel_at(wide, 50, 132), page_color); // square, in the middle
        QCOMPARE(pixel_at(wide, 110, 30), ground);
    }

    void painting_is_fast() {
        iXYPlotX plot = plot_of({});
        plot.curves.resize(3);
        for (plot_curve& curve : plot.curves) {
            curve.points.clear();
            for (int index = 0; index < 256; ++index)
                curve.points.push_back({30 * std::cos(index * 0.0246), 30 * std::sin(index * 0.0246)});
        }
        xy_plot_view view;
        view.resize(110, 110);
        view.show_control(plot);
        QImage image(view.size(), QImage::Format_RGB32);
        view.render(&image);
        qint64 best = std::numeric_limits<qint64>::max(); // of several, for a busy machine
        for (int round = 0; round < 50; ++round) {
            QElapsedTimer watch;
            watch.start();
            view.render(&image);
            best = std::min(best, watch.nsecsElapsed());
        }
        QVERIFY2(best < 2'000'000, qPrintable(QString::number(best)));
    }
};

static const desktop_test<xy_plot_view_test> known;
#include "xy_plot_view_test.moc"
