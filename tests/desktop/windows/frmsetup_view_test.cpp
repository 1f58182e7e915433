// The setup dialog with its real widgets: opened from the menu, its first tab clicked and typed into.

#include "desktop/accessibility.h"
#include "desktop/desktop_test.h"
#include "desktop/setup_window.h"
#include "desktop/tool_tip.h"
#include "displays/chart.h"
#include "settings/ini.h"
#include "settings/settings.h"

#include <QClipboard>

using namespace tyxo;

namespace {

constexpr std::array<const char*, 5> text_arrays{"Text_sensor_loc", "Text_logfile_path", "Text_type_code",
                                                 "Text_alm1", "Text_alm2"};

} // namespace

class frmsetup_view_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { setup_.start(); }
    void init() {
        sensor::state.max_sensors = 3;
        sensor::state.comport = {{2, 17, 99, 4}};
        setup_.open();
    }
    void cleanup() { setup_.close(); }
    void cleanupTestCase() { setup_.end(); }

    void the_menu_opens_it_in_front_of_the_main_window() {
        QCOMPARE(setup_.dialog()->windowTitle(), QString("Setup"));
        QCOMPARE(setup_.dialog()->windowModality(), Qt::WindowModal);
        QCOMPARE(setup_.tabs()->currentIndex(), 0);
        QCOMPARE(setup_.dialog()->focusWidget(), setup_.tabs()->tabBar());
    }

    void the_keyboard_opens_it() {
        setup_.close();
        auto* const menu = setup_.main().findChild<QMenu*>("Setup_menue");
        menu->popup(setup_.main().mapToGlobal(QPoint(10, 10)));
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
        QTRY_VERIFY(setup_.dialog()->isVisible());
    }

    void captions_are_exact() {
        const std::vector<std::pair<const char*, QString>> groups{
            {"frame_comport", "Settings"}, {"Frame_events", "All events logfile"}, {"XY_Chart", "&XY-Chart"}};
        for (const auto& [name, title] : groups)
            QCOMPARE(setup_.find<QGroupBox>(name)->title(), title);
        const std::vector<std::pair<const char*, QString>> controls{
            {"th_a", "Thermosignal (%A_DC)"},
            {"TvmV", "Thermovoltage in mV"},
            {"th_eff", "Thermosignal eff. (%A_DC)"},
            {"th_eff_AC", "Thermosignal eff. (%A_AC)"},
            {"Opt_diffmode(0)", "Difference diagrams in engine geometric order "},
            {"Opt_diffmode(1)", "Difference diagrams in engine firing order"},
            {"Opt_event(0)", "disabled"},
            {"Opt_event(1)", "enabled"},
            {"cmd_OK", "OK"},
            {"cmd_cancel", "Cancel"},
            {"cmd_Refresh", "Refresh"},
            {"cmd_browse_path(3)", "Browse"},
            {"cmd_browse_evtpath", "Browse"}};
        for (const auto& [name, caption] : controls)
            QCOMPARE(setup_.find<QAbstractButton>(name)->text(), caption);
        QStringList labels;
        for (const auto* const label : setup_.tabs()->widget(0)->findChildren<QLabel*>())
            labels.append(label->text());
        for (const char* const text :
             {"Comport", "Sensor location", "Logfile path", "engine type code", "Alarmrel 1", "Alarmrel 2",
              "Testsignal", "Sensor 1", "Sensor 2", "Sensor 3", "Sensor 4", "Number of connected sensors",
              "TY system  all events logfile path"})
            QCOMPARE(labels.count(text), 1);
        QVERIFY(!setup_.find("frame_comport")->isAncestorOf(setup_.find("XY_Chart")));
        QVERIFY(setup_.find("frame_comport")->isAncestorOf(setup_.find("Frame_events")));
    }

    void rows_show_the_channels_and_the_unused_one_is_locked() {
        QCOMPARE(text("Text_sensor_loc", 0), QString("Engine & pump"));
        QCOMPARE(text("Text_sensor_loc", 1), QString::fromUtf8("K\xC3\xBChlung"));
        QCOMPARE(text("Text_sensor_loc", 2), QString("<b>Bold</b>"));
        QCOMPARE(list(0)->currentText(), QString("COM2"));
        QCOMPARE(list(1)->currentText(), QString("COM17"));
        QCOMPARE(list(1)->count(), 4);
        QCOMPARE(list(3)->count(), 0);
        for (const char* const array : text_arrays) {
            QVERIFY2(setup_.find(array, 2)->isEnabled(), array);
            QVERIFY2(!setup_.find(array, 3)->isEnabled(), array);
        }
        for (const char* const array : {"Select_com", "cmd_browse_path", "Check_tst"}) {
            QVERIFY2(setup_.find(array, 2)->isEnabled(), array);
            QVERIFY2(!setup_.find(array, 3)->isEnabled(), array);
        }
    }

    void a_stored_port_that_is_gone_leaves_its_list_empty_and_ok_keeps_it() {
        QCOMPARE(list(2)->currentIndex(), -1);
        QCOMPARE(list(2)->currentText(), QString());
        setup_.click("cmd_OK");
        QTRY_VERIFY(!setup_.dialog()->isVisible());
        QCOMPARE(sensor::state.comport[2], i16{99});
    }

    void everything_typed_in_all_rows_counts_with_ok() {
        sensor::state.max_sensors = 4;
        setup_.click("cmd_Refresh");
        QTRY_VERIFY(setup_.find("Text_alm2", 3)->isEnabled());
        for (int row = 0; row < channel_count; ++row) {
            for (const char* const array : text_arrays)
                setup_.type(setup_.find<QLineEdit>(array, row), typed(array, row));
        }
        setup_.type(setup_.find<QLineEdit>("Text_evtlogfile_path"), "/events/");
        QVERIFY(sensor::state.channels[0].location != typed("Text_sensor_loc", 0).toStdString());
        setup_.click("cmd_OK");
        QTRY_VERIFY(!setup_.dialog()->isVisible());
        for (int row = 0; row < channel_count; ++row) {
            const channel_rec& rec = sensor::state.channels[row];
            QCOMPARE(rec.location, typed("Text_sensor_loc", row).toStdString());
            QCOMPARE(rec.logpath, typed("Text_logfile_path", row).toStdString());
            QCOMPARE(rec.typecode, typed("Text_type_code", row).toStdString());
            QCOMPARE(rec.text_almrel1, typed("Text_alm1", row).toStdString());
            QCOMPARE(rec.text_almrel2, typed("Text_alm2", row).toStdString());
        }
        QCOMPARE(settings.evtpath, std::string("/events/"));
        QVERIFY(settings_file().contains("Text_alm2 of 4"));
    }

    void umlauts_ampersands_tags_and_200_letters_are_typed_as_they_are() {
        const QString umlauts = QString::fromUtf8("\xC3\x84nde & <i>\xC3\xBC</i> ");
        const QString all = umlauts + QString(200 - umlauts.size(), 'x');
        setup_.type(setup_.find<QLineEdit>("Text_sensor_loc", 1), all);
        QTRY_COMPARE(text("Text_sensor_loc", 1), all);
        setup_.click("cmd_OK");
        QTRY_VERIFY(!setup_.dialog()->isVisible());
        QCOMPARE(sensor::state.channels[1].location, "\xC4nde & <i>\xFC</i> " + std::string(184, 'x'));
        QCOMPARE(sensor::state.channels[1].location.size(), std::size_t{200});
        sensor::state.channels[1].location = "K\xFChlung";
    }

    void a_tool_tip_has_all_of_a_text_too_long_for_its_box_as_it_is() {
        setup_.open();
        auto* const path = setup_.find<QLineEdit>("Text_logfile_path", 0);
        setup_window::type(path, "/logs/");
        QCOMPARE(tip_of(path), QString());
        setup_window::type(path, "/<b>" + QString(100, 'x') + "/");
        QVERIFY2(tip_of(path).contains("/&lt;b&gt;" + QString(100, 'x') + "/"), qPrintable(tip_of(path)));
        QCOMPARE(explained(path), QString()); // as the text it is heard already
    }

    void a_line_break_that_is_pasted_gets_no_further() {
        setup_.open();
        auto* const location = setup_.find<QLineEdit>("Text_sensor_loc", 0);
        location->setFocus();
        location->selectAll();
        QApplication::clipboard()->setText("Mill\r\n1\n");
        QTest::keySequence(location, QKeySequence::Paste);
        QTRY_COMPARE(location->text(), QString("Mill1"));
        QCOMPARE(frmSetup::state.Text_sensor_loc[0].Text, "Mill1");
    }

    void the_keyboard_chooses_a_port() {
        list(0)->setFocus();
        QTest::keyClick(list(0), Qt::Key_Down);
        QTRY_COMPARE(frmSetup::state.comport_edit[0], i16{17});
        QCOMPARE(sensor::state.comport[0], i16{2});
        QTest::keyClick(list(0), Qt::Key_End);
        QTRY_COMPARE(frmSetup::state.comport_edit[0], i16{256});
        list(2)->setFocus();
        QTest::keyClick(list(2), Qt::Key_Home);
        QTRY_COMPARE(frmSetup::state.comport_edit[2], i16{1});
        QTRY_COMPARE(list(2)->currentText(), QString("COM1"));
        setup_.click("cmd_OK");
        QTRY_COMPARE(sensor::state.comport[0], i16{256});
        QCOMPARE(sensor::state.comport[2], i16{1});
    }

    void arrow_keys_step_the_number_of_sensors_from_one() {
        auto* const bar = setup_.find<QScrollBar>("scroll_max_commport");
        QCOMPARE(bar->value(), 1); // whatever number is shown
        QCOMPARE(bar->minimum(), 1);
        QCOMPARE(bar->maximum(), 4);
        QCOMPARE(number(), QString("3"));
        bar->setFocus();
        QTest::keyClick(bar, Qt::Key_Right);
        QTRY_COMPARE(number(), QString("2"));
        QTRY_VERIFY(!setup_.find("Text_sensor_loc", 2)->isEnabled());
        QCOMPARE(text("Text_sensor_loc", 2).toStdString(),
                 sensor::state.channels[2].location); // what stands stays
        QTest::keyClick(bar, Qt::Key_End);
        QTRY_COMPARE(number(), QString("4"));
        QTRY_VERIFY(setup_.find("Check_tst", 3)->isEnabled());
        QTest::keyClick(bar, Qt::Key_Left);
        QTRY_COMPARE(number(), QString("3"));
        QCOMPARE(sensor::state.max_sensors, i16{3});
        QTest::keyClick(bar, Qt::Key_Home);
        QTRY_COMPARE(number(), QString("1"));
        setup_.close();
        QCOMPARE(sensor::state.max_sensors, i16{3});
    }

    void the_number_is_saved_with_ok_and_can_only_be_read() {
        auto* const box = setup_.find<QLineEdit>("Text_num_sensors");
        QVERIFY(box->isReadOnly());
        setup_.type(box, "9");
        QCOMPARE(number(), QString("3"));
        auto* const bar = setup_.find<QScrollBar>("scroll_max_commport");
        bar->setFocus();
        QTest::keyClick(bar, Qt::Key_Right);
        QTRY_COMPARE(number(), QString("2"));
        setup_.click("cmd_OK");
        QTRY_COMPARE(sensor::state.max_sensors, i16{2});
    }

    void showing_the_scroll_bar_runs_no_command() {
        setup_.find<QScrollBar>("scroll_max_commport")->setFocus();
        QTest::keyClick(setup_.dialog()->focusWidget(), Qt::Key_End);
        QTRY_COMPARE(number(), QString("4"));
        setup_.close();
        setup_.open(); // the bar falls back to 1
        QTest::qWait(60);
        QCOMPARE(number(), QString("3"));
        QCOMPARE(frmSetup::state.num_sensors_edit, i16{3});
    }

    void refresh_fetches_the_programs_values_and_drops_what_was_typed() {
        setup_.type(setup_.find<QLineEdit>("Text_alm1", 0), "typed");
        sensor::state.channels[0].typecode = "refreshed";
        setup_.click("cmd_Refresh");
        QTRY_COMPARE(text("Text_type_code", 0), QString("refreshed"));
        QVERIFY(text("Text_alm1", 0) != "typed");
        QVERIFY(setup_.dialog()->isVisible());
    }

    void cancel_escape_and_the_frame_store_nothing() {
        const QByteArray before = settings_file();
        const std::function<void()> ends[] = {[this] { setup_.click("cmd_cancel"); },
                                              [this] { QTest::keyClick(setup_.dialog(), Qt::Key_Escape); },
                                              [this] { setup_.dialog()->close(); }};
        for (const auto& end : ends) {
            if (!setup_.is_open()) setup_.open();
            setup_.type(setup_.find<QLineEdit>("Text_sensor_loc", 0), "never");
            end();
            QTRY_VERIFY(!setup_.dialog()->isVisible());
            QVERIFY(!frmSetup::state.form.Visible);
            QVERIFY(sensor::state.channels[0].location != "never");
            QCOMPARE(settings_file(), before);
        }
    }

    void the_wheel_changes_nothing_in_a_control_without_the_focus() {
        const auto turn = [&](const QWidget* over) {
            const QPointF place = over->mapTo(setup_.dialog(), over->rect().center());
            QWheelEvent down(place, setup_.dialog()->mapToGlobal(place), {}, {0, -120}, Qt::NoButton,
                             Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(setup_.dialog()->windowHandle(), &down);
        };
        QComboBox* const ports = list(0);
        auto* const count = setup_.find<QScrollBar>("scroll_max_commport");
        setup_.find("cmd_OK")->setFocus();
        for (int time = 0; time < 2; ++time) { // the first turn does not give it the focus
            turn(ports);
            turn(count);
            QTest::qWait(30);
            QVERIFY(setup_.find("cmd_OK")->hasFocus());
            QCOMPARE(ports->currentText(), QString("COM2"));
            QCOMPARE(count->value(), 1);
        }
        ports->setFocus();
        turn(ports);
        QTRY_COMPARE(ports->currentText(), QString("COM17"));
        count->setFocus();
        const int before = count->value();
        turn(count);
        QTRY_VERIFY(count->value() != before || before == count->minimum());
    }

    void enter_is_ok_unless_a_button_has_the_focus() {
        for (const char* const focus : {"Text_sensor_loc(0)", "Select_com(1)", "Check_tst(0)", "cmd_OK"}) {
            if (!setup_.is_open()) setup_.open();
            setup_.type(setup_.find<QLineEdit>("Text_type_code", 2), focus);
            setup_.find(focus)->setFocus();
            QTest::keyClick(setup_.dialog()->focusWidget(), Qt::Key_Return);
            QTRY_VERIFY(!setup_.dialog()->isVisible());
            QCOMPARE(sensor::state.channels[2].typecode, std::string(focus));
        }
    }

    void without_a_list_of_ports_it_opens_with_its_rows_unfilled() {
        setup_.close();
        const auto ports = std::exchange(serial::serial_ports, std::nullopt);
        setup_.open();
        QCOMPARE(list(0)->count(), 0);
        QCOMPARE(text("Text_sensor_loc", 0), QString());
        setup_.close();
        serial::serial_ports = ports;
    }

  private:
    QComboBox* list(int row) const { return setup_.find<QComboBox>("Select_com", row); }
    QString text(const char* array, int row) const { return setup_.find<QLineEdit>(array, row)->text(); }
    QString number() const { return setup_.find<QLineEdit>("Text_num_sensors")->text(); }
    static QString typed(const char* array, int row) { return QString("%1 of %2").arg(array).arg(row + 1); }

    setup_window setup_;
};

static const desktop_test<frmsetup_view_test> known;
#include "frmsetup_view_test.moc"
