// The options of the setup dialog with its real widgets: what is chosen counts at once.

#include "desktop/desktop_test.h"
#include "desktop/setup_window.h"
#include "displays/chart.h"
#include "settings/ini.h"
#include "settings/settings.h"

using namespace tyxo;

class frmsetup_options_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { setup_.start(); }
    void init() { setup_.open(); }
    void cleanup() { setup_.close(); }
    void cleanupTestCase() { setup_.end(); }

    void options_count_at_once_by_mouse_and_keyboard() {
        const i16 runs = settings.eventfile_ena;
        for (const int index : {1, 0, 1}) {
            QTest::mouseClick(setup_.find("Opt_diffmode", index), Qt::LeftButton, {}, QPoint(8, 8));
            QTRY_COMPARE(settings.speedbar_mode, static_cast<i16>(index));
            QTest::mouseClick(setup_.find("Opt_event", index), Qt::LeftButton, {}, QPoint(8, 8));
            QTRY_COMPARE(settings.eventfile_ena_edit, static_cast<i16>(index));
        }
        setup_.find("Opt_diffmode", 1)->setFocus();
        QTest::keyClick(setup_.dialog()->focusWidget(), Qt::Key_Left);
        QTRY_COMPARE(settings.speedbar_mode, i16{0});
        setup_.find("Opt_event", 1)->setFocus();
        QTest::keyClick(setup_.dialog()->focusWidget(), Qt::Key_Left);
        QTRY_COMPARE(settings.eventfile_ena_edit, i16{0});
        QTRY_VERIFY(option(setup_.dialog(), "Opt_event", 0)->isChecked());
        QVERIFY(option(setup_.dialog(), "Opt_diffmode", 0)->isChecked());
        QCOMPARE(settings.eventfile_ena, runs);
    }

    void another_value_selects_neither_option() {
        settings.speedbar_mode = 7;
        settings.eventfile_ena_edit = -1;
        setup_.click("cmd_Refresh");
        QTRY_VERIFY(!option(setup_.dialog(), "Opt_diffmode", 0)->isChecked());
        for (const char* const array : {"Opt_diffmode", "Opt_event"}) {
            for (int index = 0; index < 2; ++index)
                QVERIFY(!option(setup_.dialog(), array, index)->isChecked());
        }
        settings.speedbar_mode = settings.eventfile_ena_edit = 0;
    }

    void space_toggles_the_check_boxes_and_cancel_keeps_it() {
        for (const auto& [name, key] :
             {std::pair{"th_a", "xy_tha"}, {"th_eff", "xy_theff"}, {"th_eff_AC", "xy_theff_AC"}}) {
            QVERIFY(setup_.find<QCheckBox>(name)->isChecked());
            setup_.press_space(name);
            QTRY_COMPARE(Ini::ini_read(key), std::string("0"));
        }
        QVERIFY(!setup_.find<QCheckBox>("TvmV")->isChecked());
        setup_.press_space("TvmV");
        QTRY_COMPARE(Ini::ini_read("xy_tmv"), std::string("1"));
        setup_.click("cmd_cancel");
        QTRY_VERIFY(!setup_.dialog()->isVisible());
        QCOMPARE(settings.xy_tha, i16{0});
        QVERIFY(!charts.chart[0].curves[0].Visible);
        QVERIFY(charts.chart[0].curves[3].Visible);
        setup_.open();
        QVERIFY(!setup_.find<QCheckBox>("th_a")->isChecked());
        for (const char* const name : {"th_a", "TvmV", "th_eff", "th_eff_AC"})
            setup_.press_space(name);
        QTRY_COMPARE(Ini::ini_read("xy_theff_AC"), std::string("1"));
    }

    void the_test_signal_counts_at_once() {
        for (int row = 0; row < 3; ++row) {
            const QString name = QString("Check_tst(%1)").arg(row);
            const number_flag& visible = sensor::state.channels[row].tstsig_visible;
            setup_.press_space(name);
            QTRY_COMPARE(visible, i16{1});
            QTRY_VERIFY(setup_.find<QCheckBox>(name)->isChecked());
            QTest::mouseClick(setup_.find(name), Qt::LeftButton);
            QTRY_COMPARE(visible, i16{0});
        }
    }

    void the_mnemonic_leads_to_the_chart_boxes() {
        QTest::keyClick(setup_.dialog(), Qt::Key_X, Qt::AltModifier);
        QTRY_VERIFY(setup_.find("XY_Chart")->isAncestorOf(setup_.dialog()->focusWidget()));
    }

  private:
    setup_window setup_;
};

static const desktop_test<frmsetup_options_test> known;
#include "frmsetup_options_test.moc"
