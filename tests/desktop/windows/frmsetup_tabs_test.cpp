// The tabs of the setup dialog: the channels' fields, what is locked, and whether all of it can be read and
// reached.

#include "desktop/setup_window.h"

#include <QAbstractItemView>

#include <cmath>

using namespace tyxo;

namespace {

struct labelled_field {
    const char* array;
    const char* label;
};
constexpr std::array<labelled_field, 19> fields{{
    {"txt_Eva_ver", "Evaluator Version"},
    {"Txt_eva_snr", "Evaluator serial number"},
    {"txt_alminhibit", "Start alarminhibit time"},
    {"txt_engine_typ", "Engine type"},
    {"txt_num_cyl", "Number of cylinders"},
    {"txt_nendehzahl", "Nominal speed"},
    {"txt_overspeed", "Overspeed"},
    {"txt_impoffset", "TDC Impulsoffset"},
    {"txt_alarmlevel", "Alarmlevel DC"},
    {"txt_prealarmlevel", "Prealarmlevel"},
    {"Txt_dc_percent", "DC Alarm Level percent"},
    {"Txt_theff_alm", "Theff for DC measuring"},
    {"Txt_theff_cnt", "Values for Theff calc."},
    {"Txt_ialmlevel1", "Alarmlevel1 AC"},
    {"Txt_ialmlevel2", "Alarmlevel2 AC"},
    {"txt_ialmrpm", "RPM for Alarmlevel2 AC"},
    {"txt_aimp_del", "Alarm Impuls Delay"},
    {"txt_aimp_len", "Alarm Impuls Length"},
    {"txt_aimp_level", "Alarm Impuls Level"},
}};

/// A channel with a different number in every field.
void fill(channel_rec& rec, i32 from) {
    rec.ext1_valid = rec.ext2_valid = rec.dcpercent_valid = true;
    rec.fwvers_ext = "V4.31-0117";
    rec.evasnr = "EV" + std::to_string(from);
    rec.enginetype = 4;
    rec.cylconf = 2;
    i32 next = from;
    for (i32* const value :
         {&rec.alminhibit_time, &rec.numzyl, &rec.ratedspeed, &rec.overspeed, &rec.impoffset, &rec.alarmlevel,
          &rec.prealarmlevel, &rec.dcalarmpercent, &rec.theff_alm, &rec.theff_cnt, &rec.ialarmlevel1,
          &rec.ialarmlevel2, &rec.ialmrpm, &rec.ialarmdelay, &rec.ialarmlen, &rec.ialarmlevel})
        *value = next++;
    for (std::size_t place = 0; place < rec.firingorder.size(); ++place) {
        rec.firingorder[place] = static_cast<i32>(place % 2 == 0 ? 101 + place / 2 : 201 + place / 2);
        rec.firingangle[place] = from + 100 + static_cast<i32>(place);
    }
}

} // namespace

class frmsetup_tabs_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { setup_.start(); }
    void init() {
        sensor::max_sensors = 3;
        sensor::measure_running = false;
        sensor::channels[0].location = "Engine & pump";
        sensor::channels[1].location = "K\xFChlung";
        for (i16 channel = 0; channel < channel_count; ++channel) {
            sensor::channels[channel].status_valid = channel < 2;
            fill(sensor::channels[channel], 1000 * (channel + 1));
        }
        if (setup_.dialog() != nullptr) setup_.open();
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
        sensor::channels[2].status_valid = true;
        QTest::mouseClick(setup_.find("cmd_Refresh"), Qt::LeftButton);
        QTRY_VERIFY(tabs->isTabEnabled(3));
        click_tab(3);
        QTRY_COMPARE(frmSetup.SSTab.Tab, i16{3});
        QTest::qWait(50);
        QCOMPARE(tabs->currentIndex(), 3);
    }

    void two_sensors_lock_two_rows_and_two_tabs() {
        setup_.close();
        sensor::max_sensors = 2;
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
        QTRY_COMPARE(frmSetup.SSTab.Tab, i16{1});
        QTest::keyClick(setup_.tabs()->tabBar(), Qt::Key_Right);
        QTest::keyClick(setup_.tabs()->tabBar(), Qt::Key_Right); // past the last that can be chosen
        QTest::qWait(50);
        QCOMPARE(setup_.tabs()->currentIndex(), 2);
    }

    void every_field_stands_beside_its_label() {
        for (int channel = 0; channel < 2; ++channel) {
            click_tab(channel + 1);
            QTRY_VERIFY(setup_.find("txt_num_cyl", channel)->isVisible());
            i32 number = 1000 * (channel + 1);
            for (const auto& [array, label] : fields) {
                const auto* const box = setup_.find<QLineEdit>(array, channel);
                QVERIFY2(box->isReadOnly() && box->isEnabled(), array);
                QCOMPARE(box->accessibleName(), QString(label));
                const QLabel* const beside = label_of(box);
                QVERIFY2(beside != nullptr, array);
                QCOMPARE(beside->text(), QString(label));
                QVERIFY2(beside->x() < box->x(), array);
                QVERIFY2(std::abs(beside->geometry().center().y() - box->geometry().center().y()) < 4, array);
            }
            QCOMPARE(shown("txt_Eva_ver", channel), QString("V4.31-0117"));
            QCOMPARE(shown("Txt_eva_snr", channel), QString("EV%1").arg(number));
            QCOMPARE(shown("txt_engine_typ", channel), QString("4 stroke"));
            QCOMPARE(shown("txt_engine_anord", channel), QString("V-cylinder"));
            for (const auto& field : fields) {
                const std::string_view array = field.array;
                if (array.ends_with("_ver") || array.ends_with("_snr") || array.ends_with("_typ")) continue;
                QCOMPARE(shown(field.array, channel), QString::number(number++));
            }
        }
    }

    void the_tables_have_24_numbered_boxes() {
        const std::pair<const char*, const char*> tables[] = {{"Frame_exp", "Firing order"},
                                                              {"frame_ignit", "Firing angle"}};
        for (const int channel : {0, 1}) {
            for (const auto& [frame, title] : tables)
                QCOMPARE(setup_.find<QGroupBox>(frame, channel)->title(), QString(title));
            for (int place = 0; place < cylinder_max; ++place) {
                const int index = channel * cylinder_max + place;
                for (const char* const array : {"lbl_zundfolge", "lbl_zuendw"})
                    QCOMPARE(setup_.find<QLabel>(array, index)->text(), QString::number(place + 1));
                QCOMPARE(shown("Text_zundfolge", index),
                         QString("%1%2").arg(QChar(place % 2 == 0 ? 'A' : 'B')).arg(place / 2 + 1));
                QCOMPARE(shown("Text_zuendw", index), QString::number(1000 * (channel + 1) + 100 + place));
                QVERIFY(setup_.find("frame_ignit", channel)->isAncestorOf(setup_.find("Text_zuendw", index)));
            }
        }
    }

    void cylinders_without_a_bank_and_values_that_are_not_reported() {
        channel_rec& rec = sensor::channels[0];
        rec.firingorder[0] = 205;
        rec.firingorder[1] = 103;
        rec.firingorder[2] = 7;
        rec.ext1_valid = rec.ext2_valid = rec.dcpercent_valid = false;
        rec.theff_alm = rec.theff_cnt = unknown::theff;
        rec.alminhibit_time = unknown::alminhibit_time;
        QTest::mouseClick(setup_.find("cmd_Refresh"), Qt::LeftButton);
        QTRY_COMPARE(shown("Text_zundfolge", 0), QString("B5"));
        QCOMPARE(shown("Text_zundfolge", 1), QString("A3"));
        QCOMPARE(shown("Text_zundfolge", 2), QString("7"));
        for (const char* const array :
             {"Txt_ialmlevel1", "Txt_ialmlevel2", "txt_ialmrpm", "txt_aimp_del", "txt_aimp_len",
              "txt_aimp_level", "Txt_theff_alm", "Txt_theff_cnt", "txt_alminhibit", "Txt_dc_percent"})
            QCOMPARE(shown(array, 0), QString("NA"));
    }

    void fields_can_be_selected_and_not_changed() {
        click_tab(1);
        auto* const box = setup_.find<QLineEdit>("txt_nendehzahl(0)");
        QTRY_VERIFY(box->isVisible());
        const QString before = box->text();
        setup_window::type(box, "9");
        QTest::keyClick(box, Qt::Key_Delete);
        QCOMPARE(box->text(), before);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(box->selectedText(), before);
        QCOMPARE(box->palette().color(QPalette::Text), setup_.main().palette().color(QPalette::Text));
        QVERIFY(box->palette().color(QPalette::Base) != setup_.main().palette().color(QPalette::Base));
    }

    void arrow_keys_go_through_a_table_and_tab_leaves_it() {
        click_tab(2);
        auto* const first = setup_.find("Text_zundfolge(24)");
        QTRY_VERIFY(first->isVisible());
        first->setFocus();
        const std::pair<Qt::Key, const char*> way[] = {
            {Qt::Key_Right, "Text_zundfolge(25)"}, {Qt::Key_Down, "Text_zundfolge(37)"},
            {Qt::Key_Down, "Text_zundfolge(37)"},  {Qt::Key_Left, "Text_zundfolge(36)"},
            {Qt::Key_Up, "Text_zundfolge(24)"},    {Qt::Key_Left, "Text_zundfolge(24)"},
            {Qt::Key_Tab, "Text_zuendw(24)"},      {Qt::Key_Tab, "cmd_OK"}};
        for (const auto& [key, next] : way) {
            QTest::keyClick(setup_.dialog()->focusWidget(), key);
            QCOMPARE(setup_.dialog()->focusWidget()->objectName(), QString(next));
        }
    }

    void while_measuring_the_first_sensor_is_in_front_and_the_settings_are_locked() {
        setup_.close();
        sensor::measure_running = true;
        setup_.open();
        QCOMPARE(setup_.tabs()->currentIndex(), 1);
        click_tab(0);
        QTRY_COMPARE(frmSetup.SSTab.Tab, i16{0});
        for (const char* const name :
             {"frame_comport", "XY_Chart", "th_a", "TvmV", "Select_com(0)", "Text_alm1(1)", "Check_tst(0)",
              "scroll_max_commport", "Opt_diffmode(0)", "Opt_event(1)", "Text_evtlogfile_path",
              "cmd_browse_evtpath", "cmd_browse_path(0)"})
            QVERIFY2(!setup_.find(name)->isEnabled(), name);
        QVERIFY(setup_.find("Lbl_locked")->isVisible());
        QVERIFY(setup_.find<QLabel>("Lbl_locked")->text().endsWith("Stop all channels first."));
        const number_flag before = sensor::channels[0].tstsig_visible;
        QTest::mouseClick(setup_.find("Check_tst(0)"), Qt::LeftButton);
        QTest::qWait(50);
        QCOMPARE(sensor::channels[0].tstsig_visible, before);
        for (const char* const name : {"cmd_OK", "cmd_cancel", "cmd_Refresh"})
            QVERIFY2(setup_.find(name)->isEnabled(), name);
        setup_.close();
        sensor::measure_running = false;
        setup_.open();
        QVERIFY(setup_.find("frame_comport")->isEnabled());
        QVERIFY(!setup_.find("Lbl_locked")->isVisible());
    }

    void while_measuring_the_tab_of_a_silent_first_evaluator_stays_in_front() {
        setup_.close();
        sensor::measure_running = true;
        sensor::channels[0].status_valid = false;
        setup_.open();
        for (int again = 0; again < 3; ++again) {
            setup_.show_state();
            QTest::qWait(30);
            QCOMPARE(setup_.tabs()->currentIndex(), 1);
            QVERIFY(!setup_.tabs()->isTabEnabled(1));
            QVERIFY(setup_.find("Frame_sensor(0)")->isVisible());
        }
        QCOMPARE(frmSetup.SSTab.Tab, i16{1});
        click_tab(2);
        QTRY_COMPARE(frmSetup.SSTab.Tab, i16{2});
    }

    void a_caption_is_whole_while_there_is_room_for_it() {
        const std::string location = "Starboard main engine, aft engine room 2";
        setup_.close();
        sensor::channels[0].location = location;
        setup_.open();
        const QTabBar& bar = *setup_.tabs()->tabBar();
        const QString caption = "1 : " + QString::fromStdString(location);
        QCOMPARE(setup_.tabs()->tabText(1), caption);
        QVERIFY(bar.tabRect(1).width() > bar.fontMetrics().horizontalAdvance(caption));
        QCOMPARE(setup_.tabs()->tabToolTip(1), QString());
        setup_.close();
        for (channel_rec& channel : sensor::channels)
            channel.location = location + location + location;
        setup_.open();
        QVERIFY(bar.tabRect(4).right() <= setup_.dialog()->width()); // they give way
        QVERIFY(setup_.tabs()->tabToolTip(1).contains(caption));
    }

    void a_location_of_200_letters_widens_nothing() {
        const QSize usual = setup_.dialog()->minimumSizeHint();
        setup_.close();
        sensor::channels[0].location = "<i>" + std::string(197, 'W');
        setup_.open();
        QVERIFY(setup_.dialog()->minimumSizeHint().width() <= usual.width());
        QVERIFY(setup_.tabs()->tabText(1).startsWith("1 : <i>WWW"));
        QVERIFY(setup_.tabs()->tabToolTip(1).contains("&lt;i&gt;" + QString(197, 'W')));
        QVERIFY(setup_.find("Frame_sensor(0)")->toolTip().contains(QString(197, 'W')));
        QCOMPARE(setup_.find<QLineEdit>("Text_sensor_loc(0)")->text().size(), 200);
    }

    void tab_goes_through_the_settings_as_the_eye_does() {
        QStringList way;
        QPoint last(0, 0);
        setup_.tabs()->tabBar()->setFocus();
        for (int stop = 0; stop < 60; ++stop) {
            QTest::keyClick(setup_.dialog()->focusWidget(), Qt::Key_Tab);
            QWidget* const now = setup_.dialog()->focusWidget();
            if (now == setup_.tabs()->tabBar()) break;
            way.append(now->objectName());
            const QPoint place = now->mapTo(setup_.dialog(), now->rect().center());
            const bool same_line = std::abs(place.y() - last.y()) < 10;
            QVERIFY2(same_line ? place.x() > last.x() : place.y() > last.y(), qPrintable(way.last()));
            last = place;
        }
        QCOMPARE(way.size(), 3 * 8 + 2 + 1 + 1 + 2 + 4 + 3); // of an option array only the selected one
        QCOMPARE(way.first(), QString("Select_com(0)"));
        QCOMPARE(way.last(), QString("cmd_Refresh"));
    }

    void tab_goes_through_a_sensors_groups_one_after_the_other() {
        click_tab(1);
        QTRY_VERIFY(setup_.find("txt_num_cyl(0)")->isVisible());
        QStringList expected;
        for (const auto& field : fields) {
            expected.append(QString("%1(0)").arg(field.array));
            if (expected.last() == "txt_engine_typ(0)") expected.append("txt_engine_anord(0)");
        }
        expected.append({"Text_zundfolge(0)", "Text_zuendw(0)", "cmd_OK", "cmd_cancel", "cmd_Refresh"});
        setup_.tabs()->tabBar()->setFocus();
        for (const QString& next : expected) {
            QTest::keyClick(setup_.dialog()->focusWidget(), Qt::Key_Tab);
            QCOMPARE(setup_.dialog()->focusWidget()->objectName(), next);
        }
    }

    void every_control_has_an_accessible_name() {
        int controls = 0;
        for (const auto* const control : setup_.dialog()->findChildren<QWidget*>()) {
            if (control->objectName().startsWith("qt_") || control->focusPolicy() == Qt::NoFocus) continue;
            if (qobject_cast<const QAbstractItemView*>(control) != nullptr) continue; // a list's own popup
            if (qobject_cast<const QTabWidget*>(control) != nullptr) continue;
            const auto* const button = qobject_cast<const QAbstractButton*>(control);
            const bool named =
                !control->accessibleName().isEmpty() || (button != nullptr && !button->text().isEmpty());
            QVERIFY2(named, qPrintable(control->objectName()));
            ++controls;
        }
        QVERIFY(controls > 4 * (20 + 48) + 40);
        QCOMPARE(setup_.find("Text_alm2(3)")->accessibleName(), QString("Sensor 4: Alarmrel 2"));
        QCOMPARE(setup_.find("Text_zuendw(26)")->accessibleName(), QString("Firing angle 3"));
    }

    void nothing_is_cut_off_and_all_fits_on_a_small_screen() {
        check_dialog_size(setup_);
        QVERIFY2(setup_.dialog()->width() <= 1150, qPrintable(QString::number(setup_.dialog()->width())));
        QVERIFY2(setup_.dialog()->height() <= 700, qPrintable(QString::number(setup_.dialog()->height())));
    }

  private:
    void click_tab(int tab) const {
        QTabBar* const bar = setup_.tabs()->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
    }

    QString shown(const char* array, int index) const { return setup_.find<QLineEdit>(array, index)->text(); }

    const QLabel* label_of(const QWidget* box) const {
        for (const auto* const label : setup_.dialog()->findChildren<QLabel*>()) {
            if (label->buddy() == box) return label;
        }
        return nullptr;
    }

    setup_window setup_;
};

QTEST_MAIN(frmsetup_tabs_test)
#include "frmsetup_tabs_test.moc"
