// The tabs of the setup dialog: their captions, and which can be chosen when.

#include "desktop/accessibility.h"
#include "desktop/desktop_test.h"
#include "desktop/setup_window.h"

using namespace tyxo;

class frmsetup_captions_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { setup_.start(); }
    void init() {
        sensor::state.max_sensors = 3;
        sensor::state.measure_running = false;
        sensor::state.channels[0].location = "Engine & pump";
        sensor::state.channels[1].location = "K\xFChlung";
        for (i16 channel = 0; channel < channel_count; ++channel)
            sensor::state.channels[channel].status_valid = channel < 2;
        setup_.open();
    }
    void cleanup() { setup_.close(); }
    void cleanupTestCase() { setup_.end(); }

    void captions_tell_number_and_location_and_which_have_no_sensor() {
        const QTabWidget* const tabs = setup_.tabs();
        QCOMPARE(tabs->count(), 5);
        QCOMPARE(tabs->tabText(0), QString("TY Settings"));
        QCOMPARE(tabs->tabText(1), QString("1 : Engine && pump")); // shown with one, as a letter
        QCOMPARE(tabs->tabText(2), QString::fromUtf8("2 : K\xC3\xBChlung"));
        QCOMPARE(tabs->tabText(4), QString("No sensor"));
        QCOMPARE(setup_.find<QGroupBox>("Frame_sensor(0)")->title(), QString("Engine && pump"));
        QCOMPARE(setup_.find<QGroupBox>("Frame_sensor(2)")->title(), QString("<b>Bold</b>"));
    }

    void only_tabs_of_heard_evaluators_can_be_chosen() {
        QTabWidget* const tabs = setup_.tabs();
        for (int tab = 0; tab < 5; ++tab)
            QCOMPARE(tabs->isTabEnabled(tab), tab < 3);
        click_tab(3);
        click_tab(4);
        QTest::qWait(50);
        QCOMPARE(tabs->currentIndex(), 0);
        sensor::state.channels[2].status_valid = true;
        QTest::mouseClick(setup_.find("cmd_Refresh"), Qt::LeftButton);
        QTRY_VERIFY(tabs->isTabEnabled(3));
        click_tab(3);
        QTRY_COMPARE(frmSetup::state.SSTab.Tab, i16{3});
        QTest::qWait(50);
        QCOMPARE(tabs->currentIndex(), 3);
    }

    void two_sensors_lock_two_rows_and_two_tabs() {
        setup_.close();
        sensor::state.max_sensors = 2;
        setup_.open();
        for (const int row : {2, 3}) {
            QVERIFY(!setup_.find("Text_sensor_loc", row)->isEnabled());
            QCOMPARE(setup_.tabs()->tabText(row + 1), QString("No sensor"));
            QVERIFY(!setup_.tabs()->isTabEnabled(row + 1));
        }
        QVERIFY(setup_.find("Text_sensor_loc", 1)->isEnabled());
    }

    void the_arrow_keys_change_the_tab() {
        QTest::keyClick(setup_.tabs()->tabBar(), Qt::Key_Right);
        QTRY_COMPARE(frmSetup::state.SSTab.Tab, i16{1});
        QTest::keyClick(setup_.tabs()->tabBar(), Qt::Key_Right);
        QTest::keyClick(setup_.tabs()->tabBar(), Qt::Key_Right); // past the last that can be chosen
        QTest::qWait(50);
        QCOMPARE(setup_.tabs()->currentIndex(), 2);
    }

    void while_measuring_the_first_sensor_is_in_front_and_the_settings_are_locked() {
        setup_.close();
        sensor::state.measure_running = true;
        setup_.open();
        QCOMPARE(setup_.tabs()->currentIndex(), 1);
        click_tab(0);
        QTRY_COMPARE(frmSetup::state.SSTab.Tab, i16{0});
        for (const char* const name :
             {"frame_comport", "XY_Chart", "th_a", "TvmV", "Select_com(0)", "Text_alm1(1)", "Check_tst(0)",
              "scroll_max_commport", "Opt_diffmode(0)", "Opt_event(1)", "Text_evtlogfile_path",
              "cmd_browse_evtpath", "cmd_browse_path(0)"})
            QVERIFY2(!setup_.find(name)->isEnabled(), name);
        QVERIFY(setup_.find("Lbl_locked")->isVisible());
        QVERIFY(setup_.find<QLabel>("Lbl_locked")->text().endsWith("Stop all channels first."));
        const number_flag before = sensor::state.channels[0].tstsig_visible;
        QTest::mouseClick(setup_.find("Check_tst(0)"), Qt::LeftButton);
        QTest::qWait(50);
        QCOMPARE(sensor::state.channels[0].tstsig_visible, before);
        for (const char* const name : {"cmd_OK", "cmd_cancel", "cmd_Refresh"})
            QVERIFY2(setup_.find(name)->isEnabled(), name);
        setup_.close();
        sensor::state.measure_running = false;
        setup_.open();
        QVERIFY(setup_.find("frame_comport")->isEnabled());
        QVERIFY(!setup_.find("Lbl_locked")->isVisible());
    }

    void while_measuring_the_tab_of_a_silent_first_evaluator_stays_in_front() {
        setup_.close();
        sensor::state.measure_running = true;
        sensor::state.channels[0].status_valid = false;
        setup_.open();
        for (int again = 0; again < 3; ++again) {
            setup_.show_state();
            QTest::qWait(30);
            QCOMPARE(setup_.tabs()->currentIndex(), 1);
            QVERIFY(!setup_.tabs()->isTabEnabled(1));
            QVERIFY(setup_.find("Frame_sensor(0)")->isVisible());
        }
        QCOMPARE(frmSetup::state.SSTab.Tab, i16{1});
        click_tab(2);
        QTRY_COMPARE(frmSetup::state.SSTab.Tab, i16{2});
    }

    void a_caption_is_whole_while_there_is_room_for_it() {
        const std::string location = "Starboard main engine, aft engine room 2";
        setup_.close();
        sensor::state.channels[0].location = location;
        setup_.open();
        const QTabBar& bar = *setup_.tabs()->tabBar();
        const QString caption = "1 : " + QString::fromStdString(location);
        QCOMPARE(setup_.tabs()->tabText(1), caption);
        QVERIFY(bar.tabRect(1).width() > bar.fontMetrics().horizontalAdvance(caption));
        QCOMPARE(setup_.tabs()->tabToolTip(1), QString());
        setup_.close();
        for (channel_rec& channel : sensor::state.channels)
            channel.location = location + location + location;
        setup_.open();
        QVERIFY(bar.tabRect(4).right() <= setup_.dialog()->width()); // they give way
        QVERIFY(setup_.tabs()->tabToolTip(1).contains(caption));
    }

    void a_location_of_200_letters_widens_nothing() {
        const QSize usual = setup_.dialog()->minimumSizeHint();
        setup_.close();
        sensor::state.channels[0].location = "<i>" + std::string(197, 'W');
        setup_.open();
        QVERIFY(setup_.dialog()->minimumSizeHint().width() <= usual.width());
        QVERIFY(setup_.tabs()->tabText(1).startsWith("1 : <i>WWW"));
        QVERIFY(setup_.tabs()->tabToolTip(1).contains("&lt;i&gt;" + QString(197, 'W')));
        QVERIFY(setup_.find("Frame_sensor(0)")->toolTip().contains("&lt;i&gt;" + QString(197, 'W')));
        QCOMPARE(explained(setup_.find("Frame_sensor(0)")), "<i>" + QString(197, 'W'));
        QCOMPARE(setup_.find<QLineEdit>("Text_sensor_loc(0)")->text().size(), 200);
    }

  private:
    void click_tab(int tab) const {
        QTabBar* const bar = setup_.tabs()->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
    }

    setup_window setup_;
};

static const desktop_test<frmsetup_captions_test> known;
#include "frmsetup_captions_test.moc"
