// The strip charts in the main window: buttons, clicks and time resolutions, as an operator uses them.

#include "desktop/desktop_test.h"
#include "desktop/started_window.h"
#include "displays/chart.h"
#include "displays/panel.h"
#include "link/channel_rec.h"
#include "link/main_timers.h"

#include <QPushButton>
#include <QRadioButton>
#include <QTest>

using namespace tyxo;

namespace {

constexpr const char* settings_text = "[tyxo]\r\nupd_periode=100\r\nmax_sensors=3\r\nadc_offset=479\r\n"
                                      "zyl_speed_range=1\r\nxy_tha=1\r\nxy_tmv=0\r\nxy_theff=1\r\n"
                                      "xy_theff_AC=1\r\nlocation 1=Engine 1\r\nlocation 2=Engine 2\r\n"
                                      "location 3=Engine 3\r\n";

} // namespace

class main_charts_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { window_.start(settings_text); }

    void cleanupTestCase() { window_.end(); }

    void charts_stand_above_their_instruments() {
        for (int channel = 0; channel < 4; ++channel) {
            const QRect chart = widget("chart", channel)->geometry();
            const QRect frame = widget("Frame_sensor", channel)->geometry();
            QCOMPARE(chart.size(), QSize(635, 278));
            QVERIFY(chart.bottom() < frame.top());
        }
    }

    void an_enlarged_chart_takes_its_row_and_gives_it_back() {
        const int whole = window_.view().centralWidget()->width();
        for (const int channel : {0, 1, 2}) {
            press(channel);
            QTRY_COMPARE(button(channel)->text(), QString("Reduce XY graph"));
            QCOMPARE(widget("chart", channel)->width(), whole - 25);
            QVERIFY(widget("chart", channel)->isVisible());
            QVERIFY(!widget("chart", (channel + 2) % 4)->isVisible());
            QVERIFY(widget("chart", (channel + 1) % 4)->isVisible());
            press(channel);
            QTRY_COMPARE(button(channel)->text(), QString("Enlarge XY graph"));
            QCOMPARE(widget("chart", channel)->width(), whole / 2 - 4);
            QVERIFY(widget("chart", (channel + 2) % 4)->isVisible());
        }
    }

    void the_buttons_of_a_row_stay_within_reach_over_an_enlarged_chart() {
        press(0);
        QTRY_VERIFY(!widget("chart", 2)->isVisible());
        press(2); // `press` clicks what lies on top at the button's place
        QTRY_VERIFY(!widget("chart", 0)->isVisible());
        QVERIFY(widget("chart", 2)->isVisible());
        press(2);
        QTRY_VERIFY(widget("chart", 0)->isVisible());
        press(0);
        QTRY_VERIFY(widget("chart", 2)->isVisible());
        QVERIFY(!sensor::state.channels[0].xy_zoom_state);
        QVERIFY(!sensor::state.channels[2].xy_zoom_state);
    }

    void a_click_freezes_a_chart_and_a_second_one_lets_it_go_on() {
        QTest::mouseClick(widget("chart", 1), Qt::LeftButton);
        QTRY_VERIFY(widget("chart", 1)->property("Frozen").toBool());
        QVERIFY(charts.chart[1].Frozen);
        QVERIFY(mainfrm::timers.Timer_chartres[1].Enabled());
        QVERIFY(!widget("chart", 0)->property("Frozen").toBool());
        QTest::mouseClick(widget("chart", 1), Qt::RightButton);
        QTest::keyClick(widget("chart", 1), Qt::Key_X);
        QTest::qWait(50);
        QVERIFY(charts.chart[1].Frozen);
        QTest::mouseClick(widget("chart", 1), Qt::LeftButton);
        QTRY_VERIFY(!widget("chart", 1)->property("Frozen").toBool());
        QVERIFY(!mainfrm::timers.Timer_chartres[1].Enabled());
    }

    void a_chart_tells_its_state() {
        const QWidget* const chart = widget("chart", 0);
        QCOMPARE(chart->property("Title").toString(), QString("1: Engine 1"));
        QCOMPARE(chart->property("XAxisMin").toDouble(), 0.0);
        QCOMPARE(chart->property("YAxisMin").toDouble(), 0.0);
        QCOMPARE(chart->property("YAxisMax").toDouble(), 150.0);
        QCOMPARE(chart->property("CurveTitle(0)").toString(), QString("Tsig %DCA"));
        QCOMPARE(chart->property("CurveColor(2)").toInt(), rgb(255, 128, 0));
        QCOMPARE(chart->property("CurveVisible(3)").toBool(), false);
        QCOMPARE(chart->property("CurveVisible(4)").toBool(), true);
        QCOMPARE(widget("chart", 3)->property("Title").toString(), QString("not installed"));
    }

    void a_tick_brings_the_speeds_title_into_the_chart() {
        sensor::state.channel_running[0] = true;
        sensor::state.channels[0].param_valid = true;
        sensor::state.channels[0].overspeed = 300;
        mainfrm::Timer_chart_upd_tick();
        window_.show_state();
        QCOMPARE(widget("chart", 0)->property("CurveTitle(1)").toString(), QString("RPM /5"));
        sensor::state.channel_running[0] = false;
    }

    void a_time_resolution_applies_to_all_four_charts() {
        for (const auto& [index, span] : {std::pair{1, 1.0 / 96}, {2, 1.0 / 24}, {3, 1.0}, {0, 1.0 / 720}}) {
            QTest::mouseClick(window_.view().findChild<QRadioButton*>(QString("opt_res(%1)").arg(index)),
                              Qt::LeftButton);
            for (int channel = 0; channel < 4; ++channel)
                QTRY_COMPARE(widget("chart", channel)->property("XAxisSpan").toDouble(), span);
        }
    }

  private:
    QWidget* widget(const char* array, int channel) const {
        QWidget* const found = window_.widget(array, channel);
        if (found == nullptr) qFatal("no %s(%d)", array, channel);
        return found;
    }

    QPushButton* button(int channel) const {
        return qobject_cast<QPushButton*>(widget("cmd_zoom_xy", channel));
    }

    /// Clicks at the button's middle, on whatever lies on top there.
    void press(int channel) const {
        const QPoint middle = button(channel)->geometry().center();
        QWidget* const client = window_.view().centralWidget();
        QWidget* const top = client->childAt(middle);
        QTest::mouseClick(top, Qt::LeftButton, {}, top->mapFrom(client, middle));
    }

    started_window window_;
};

static const desktop_test<main_charts_test> known;
#include "main_charts_test.moc"
