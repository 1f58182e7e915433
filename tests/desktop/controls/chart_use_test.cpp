// The strip chart as it is used: shown, frozen, clicked.

#include "desktop/desktop_test.h"
#include "desktop/paint_counter.h"
#include "desktop/shown_chart.h"

#include <QLabel>
#include <QSignalSpy>
#include <QTest>

using namespace tyxo;

namespace {

constexpr int free_end = 125;

/// Paintings since the last call, those that wait included.
int taken(paint_counter& paints) {
    QTest::qWait(0);
    return paints.taken();
}

QPoint inside_of_axes(const chart_view& view) {
    return view.axisRect()->center();
}

} // namespace

class chart_use_test : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        view_ = std::make_unique<chart_of_rows>();
        view_->resize(635, 278);
    }
    void cleanup() { view_.reset(); }

    void is_painted_only_when_something_differs() {
        view_->show();
        QVERIFY(QTest::qWaitForWindowExposed(view_.get()));
        iStripChartX chart = engine_chart();
        strip_window rows = level_rows();
        view_->show_control(chart, rows);
        QTest::qWait(50);
        paint_counter paints(*view_);
        view_->show_control(chart, rows);
        QCOMPARE(taken(paints), 0);
        rows.append(level_row(rows.newest() + 300));
        view_->show_control(chart, rows);
        QCOMPARE(taken(paints), 1);
        rows.append(level_row(rows.newest())); // the same pixels
        view_->show_control(chart, rows);
        QCOMPARE(taken(paints), 0);
        chart.curves[1].Title = "RPM /5";
        view_->show_control(chart, rows);
        QCOMPARE(taken(paints), 1);
        view_->show_control(chart, rows);
        QCOMPARE(taken(paints), 0);
    }

    void visible_decides_whether_it_is_seen() {
        QWidget page;
        auto* const chart = new chart_of_rows(&page);
        iStripChartX control = engine_chart();
        control.Visible = false;
        chart->show_control(control, strip_window());
        QVERIFY(!chart->isVisibleTo(&page));
        control.Visible = true;
        chart->show_control(control, strip_window());
        QVERIFY(chart->isVisibleTo(&page));
    }

    void a_frozen_chart_keeps_its_picture_whatever_span_is_chosen() {
        iStripChartX chart = engine_chart();
        const strip_window frozen = level_rows();
        chart.Frozen = true;
        show(chart, frozen);
        const QImage before = picture();
        chart.XAxisSpan = 1;
        chart.curves[1].Title = "RPM /25";
        show(chart, frozen);
        QCOMPARE(picture(), before);
        QCOMPARE(view_->xAxis->range().size(), 120'000.0);
        QCOMPARE(view_->property("CurveTitle(1)").toString(), QString("RPM /10"));

        chart.Frozen = false;
        show(chart, level_rows(strip_spans[0], strip_spans[3]));
        QCOMPARE(view_->xAxis->range().size(), 86'400'000.0);
        QCOMPARE(view_->property("CurveTitle(1)").toString(), QString("RPM /25"));
        QVERIFY(picture() != before);
    }

    void a_frozen_chart_says_so_and_how_it_goes_on() {
        iStripChartX chart = engine_chart();
        show(chart, level_rows());
        const auto* const badge = view_->findChild<QLabel*>("frozen_badge");
        QVERIFY(badge != nullptr && !badge->isVisibleTo(view_.get()));
        QCOMPARE(view_->toolTip(), QString());
        for (const char* title :
             {"1: E", "1: Engine 1 with a location that is far too long for its title line"}) {
            chart.Title = title;
            chart.Frozen = true;
            show(chart, level_rows());
            QVERIFY(badge->isVisibleTo(view_.get()));
            QCOMPARE(badge->text(), QString("FROZEN"));
            QVERIFY(view_->toolTip().contains("Click"));
            QVERIFY(QRect(free_end, 0, 635 - 2 * free_end, title_line).contains(badge->geometry()));
        }
        chart.Frozen = false;
        show(chart, level_rows());
        QVERIFY(!badge->isVisibleTo(view_.get()));
        QCOMPARE(view_->toolTip(), QString());
    }

    void a_left_click_anywhere_is_a_click() {
        show(engine_chart(), level_rows());
        QSignalSpy clicks(view_.get(), &chart_view::clicked);
        for (const QPoint place : {QPoint(1, 1), inside_of_axes(*view_), QPoint(300, 35), QPoint(633, 276)})
            QTest::mouseClick(view_.get(), Qt::LeftButton, {}, place);
        QCOMPARE(clicks.count(), 4);
    }

    void other_gestures_are_no_click() {
        show(engine_chart(), level_rows());
        QSignalSpy clicks(view_.get(), &chart_view::clicked);
        const QPoint inside = inside_of_axes(*view_);
        QTest::mouseClick(view_.get(), Qt::RightButton, {}, inside);
        QTest::mouseClick(view_.get(), Qt::MiddleButton, {}, inside);
        QTest::mousePress(view_.get(), Qt::LeftButton, {}, inside);
        QTest::mouseRelease(view_.get(), Qt::LeftButton, {}, QPoint(-5, 10));
        QTest::mouseRelease(view_.get(), Qt::LeftButton, {}, inside);
        QTest::mousePress(view_.get(), Qt::RightButton, {}, inside);
        QTest::mouseRelease(view_.get(), Qt::LeftButton, {}, inside);
        QCOMPARE(clicks.count(), 0);
    }

    void a_double_click_is_two_clicks() {
        show(engine_chart(), level_rows());
        QSignalSpy clicks(view_.get(), &chart_view::clicked);
        const QPoint inside = inside_of_axes(*view_);
        QTest::mouseClick(view_.get(), Qt::LeftButton, {}, inside);
        QTest::mouseDClick(view_.get(), Qt::LeftButton, {}, inside); // takes the place of the second press
        QTest::mouseRelease(view_.get(), Qt::LeftButton, {}, inside);
        QCOMPARE(clicks.count(), 2);
    }

  private:
    /// Shown as the panel does it: again after the widget has its size.
    void show(const iStripChartX& chart, const strip_window& rows) {
        view_->show_control(chart, rows);
        view_->grab();
        view_->show_control(chart, rows);
        view_->grab();
    }
    QImage picture() { return view_->grab().toImage(); }

    std::unique_ptr<chart_of_rows> view_;
};

static const desktop_test<chart_use_test> known;
#include "chart_use_test.moc"
