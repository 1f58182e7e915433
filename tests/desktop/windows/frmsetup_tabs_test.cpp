// The fields of the channels in the setup dialog, and whether all of it can be read and reached.

#include "desktop/desktop_test.h"
#include "desktop/setup_window.h"

#include <QAbstractItemView>
#include <QScrollArea>
#include <QScrollBar>

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
        sensor::state.max_sensors = 3;
        sensor::state.measure_running = false;
        sensor::state.channels[0].location = "Engine & pump";
        sensor::state.channels[1].location = "K\xFChlung";
        for (i16 channel = 0; channel < channel_count; ++channel) {
            sensor::state.channels[channel].status_valid = channel < 2;
            fill(sensor::state.channels[channel], 1000 * (channel + 1));
        }
        setup_.open();
    }
    void cleanup() { setup_.close(); }
    void cleanupTestCase() { setup_.end(); }

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
        channel_rec& rec = sensor::state.channels[0];
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

    void a_sensor_is_seen_whole_on_a_screen_of_768_lines() {
        setup_.dialog()->resize(1140, 768 - 50 - 40); // less a desktop's panel, a title and a frame
        for (int tab = 0; tab < 5; ++tab) {
            setup_.tabs()->setCurrentIndex(tab);
            QCoreApplication::processEvents();
            const auto* const page = qobject_cast<QScrollArea*>(setup_.tabs()->widget(tab));
            QVERIFY(page != nullptr);
            QVERIFY2(page->verticalScrollBar()->maximum() == 0, qPrintable(QString::number(tab)));
        }
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

static const desktop_test<frmsetup_tabs_test> known;
#include "frmsetup_tabs_test.moc"
