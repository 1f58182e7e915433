// The main window with its real widgets, driven and looked at as an operator does.

#include "desktop/desktop_test.h"
#include "desktop/started_window.h"
#include "displays/panel.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "link/status_update.h"
#include "settings/ini.h"

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

using namespace tyxo;

namespace {

constexpr const char* settings_text = "[tyxo]\r\n"
                                      "upd_periode= 100\r\n"
                                      "max_sensors= 2\r\n"
                                      "xy_tha= 1\r\n"
                                      "comport 1= 7\r\n"
                                      "location 1=Engine & pump\r\n"
                                      "text_almrel1 1=Slow down now, bearing!\r\n"
                                      "comport 2= 8\r\n"
                                      "location 2=K\xFChlung\r\n";

} // namespace

class mainfrm_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        program_.start(settings_text);
        window_ = &program_.view();
    }

    void cleanupTestCase() { program_.end(); }

    void beside_it_only_the_alert_is_made_before_it_is_opened() {
        QStringList made;
        for (const QWidget* const window : QApplication::topLevelWidgets())
            if (window->windowType() == Qt::Window || window->windowType() == Qt::Dialog)
                made << window->objectName();
        made.sort();
        QCOMPARE(made, QStringList({"FrmAlert", "mainfrm"}));
    }

    void the_window_bears_its_caption() {
        QCOMPARE(window_->windowTitle(), QString(" Quarvo / Tyxo Data Logger  Version 2.10_4"));
    }

    void the_menu_has_all_entries_with_their_captions() {
        const std::vector<std::pair<const char*, const char*>> entries{
            {"prt", "&Print"},
            {"Quit", "E&xit"},
            {"setup", "Setup preferences"},
            {"setup_scale", "Setup scales"},
            {"setup_passwd", "Setup password"},
            {"setup_tcp", "Setup Modbus TCP/IP"},
            {"startstop", "Start all channels"},
            {"start_channel(0)", "Start channel 1"},
            {"start_channel(1)", "Start channel 2"},
            {"start_channel(2)", "Start channel 3"},
            {"start_channel(3)", "Start channel 4"},
            {"about", "&About"},
        };
        for (const auto& [name, caption] : entries) {
            const auto* const entry = window_->findChild<QAction*>(name);
            QVERIFY2(entry != nullptr, name);
            QCOMPARE(entry->text(), QString(caption));
        }
        QVERIFY(window_->findChild<QAction*>("null")->isSeparator());
        QVERIFY(window_->findChild<QAction*>("null1")->isSeparator());
    }

    void entries_of_channels_not_in_use_are_disabled() {
        QVERIFY(window_->findChild<QAction*>("start_channel(1)")->isEnabled());
        QVERIFY(!window_->findChild<QAction*>("start_channel(2)")->isEnabled());
        QVERIFY(!window_->findChild<QAction*>("start_channel(3)")->isEnabled());
    }

    void every_panel_control_exists_for_four_channels() {
        const char* const arrays[] = {
            "Frame_sensor",  "Gauge_thermo", "digi_Thermo",   "Label4",       "t_mv",           "Lbl_tmv",
            "drehzahl",      "lbl_rpm",      "dig_drehzahl",  "dig_sens",     "lbl_sens",       "lbl_sens1",
            "lbl_sens2",     "dig_sens2",    "lbl_aimplevel", "Label2",       "Lbl_dc_percent", "LED_Rdy",
            "LED_prealarm",  "LED_Alarm",    "Lbl_alm1",      "lbl_alm2",     "Lbl_alminhibit", "Lbl_inhtime",
            "Frame_message", "Lbl_dama",     "XYplot",        "Cmd_diagramm", "Cmd_diagramm2",  "cmd_zoom_xy",
            "chart"};
        for (const char* const array : arrays) {
            for (int channel = 0; channel < 4; ++channel)
                widget<QWidget>(array, channel);
        }
    }

    void captions_follow_the_settings() {
        QCOMPARE(widget<QGroupBox>("Frame_sensor", 0)->title(), QString("1: Engine && pump"));
        QCOMPARE(widget<QGroupBox>("Frame_sensor", 1)->title(), QString::fromUtf8("2: K\xC3\xBChlung"));
        QCOMPARE(widget<QGroupBox>("Frame_sensor", 2)->title(), QString("not installed"));
        QVERIFY(!widget<QGroupBox>("Frame_sensor", 3)->isEnabled());
        QCOMPARE(widget<QLabel>("Lbl_alm1", 0)->text(), QString("Slow down now, bearing!"));
        QCOMPARE(widget<QWidget>("chart", 1)->property("Title").toString(),
                 QString::fromUtf8("2: K\xC3\xBChlung"));
    }

    void gauges_have_their_design_values() {
        const QWidget* const thermo = widget<QWidget>("Gauge_thermo", 0);
        QCOMPARE(thermo->property("PositionMax").toDouble(), 125.0);
        QCOMPARE(thermo->property("SectionEnd1").toDouble(), 100.0);
        QCOMPARE(thermo->property("SectionColor1").toInt(), rgb(192, 192, 192));
        QCOMPARE(thermo->property("SectionColor2").toInt(), rgb(255, 120, 55));
        QCOMPARE(thermo->property("PointerColor").toInt(), 198);
        QCOMPARE(thermo->property("ShowMaxPointer").toBool(), true);
        const QWidget* const speed = widget<QWidget>("drehzahl", 0);
        QCOMPARE(speed->property("ArcStartDegrees").toInt(), 230);
        QCOMPARE(speed->property("ArcRangeDegrees").toInt(), 280);
        QCOMPARE(speed->property("PositionMax").toDouble(), 1000.0);
        QCOMPARE(speed->property("SectionEnd1").toDouble(), 1000.0);
        QCOMPARE(speed->property("SectionColor1").toInt(), rgb(0, 255, 0));
        QCOMPARE(speed->property("Label1Text").toString(), QString("RPM"));
        QCOMPARE(widget<QWidget>("dig_drehzahl", 0)->property("SegmentColor").toInt(), 16738370);
        QCOMPARE(widget<QWidget>("dig_drehzahl", 2)->property("SegmentColor").toInt(), rgb(0, 0, 128));
        QCOMPARE(widget<QWidget>("LED_prealarm", 0)->property("InactiveColor").toInt(), 16512);
        QCOMPARE(widget<QWidget>("t_mv", 0)->property("UnitsText").toString(), QString("mV"));
    }

    void a_click_on_the_label_toggles_the_thermo_value_and_keeps_it() {
        auto* const label = widget<QLabel>("Label4", 0);
        QCOMPARE(label->text(), QString("Tsig %DCA"));
        QTest::mouseClick(label, Qt::LeftButton);
        QTRY_COMPARE(label->text(), QString("Teff %DCA"));
        QCOMPARE(Ini::ini_read("th_dig_val 1"), std::string("1"));
        QCOMPARE(widget<QWidget>("digi_Thermo", 0)->property("ForeColor").toInt(), rgb(255, 0, 255));
        QTest::mouseClick(label, Qt::RightButton);
        QTest::keyClick(label, Qt::Key_Space);
        QTRY_COMPARE(label->text(), QString("Tsig %DCA"));
        QCOMPARE(Ini::ini_read("th_dig_val 1"), std::string("0"));
    }

    void a_panel_shows_what_its_record_holds() {
        channel_rec& rec = sensor::state.channels[0];
        rec.speed = 723;
        rec.tsignal = 41;
        rec.tvoltage = 1234;
        rec.alarmlevel = 3;
        rec.eva_mode = evaluator_mode::standard;
        update_panel(0);
        window_->show_state();
        QCOMPARE(widget<QWidget>("drehzahl", 0)->property("Position").toDouble(), 723.0);
        QCOMPARE(widget<QWidget>("dig_drehzahl", 0)->property("Value").toDouble(), 723.0);
        QCOMPARE(widget<QWidget>("Gauge_thermo", 0)->property("Position").toDouble(), 41.0);
        QCOMPARE(widget<QWidget>("digi_Thermo", 0)->property("Text").toString(), QString("41 %"));
        QCOMPARE(widget<QWidget>("t_mv", 0)->property("Text").toString(), QString("12.34 mV"));
        QVERIFY(widget<QWidget>("XYplot", 0)->isVisible());
        QVERIFY(!widget<QWidget>("Frame_message", 0)->isVisible());
        QVERIFY(widget<QPushButton>("Cmd_diagramm", 0)->isVisible());
        rec.eva_mode = evaluator_mode::advanced;
        update_panel(0);
        window_->show_state();
        QVERIFY(!widget<QWidget>("XYplot", 0)->isVisible());
        QVERIFY(widget<QWidget>("Frame_message", 0)->isVisible());
    }

    void inhibit_labels_take_the_place_of_the_relays_names() {
        channel_rec& rec = sensor::state.channels[0];
        rec.connected = true;
        rec.alminhibit_on = 1;
        rec.alminhibit_left = 42;
        sensor::status_update(0);
        window_->show_state();
        QVERIFY(widget<QLabel>("Lbl_alminhibit", 0)->isVisible());
        QCOMPARE(widget<QLabel>("Lbl_inhtime", 0)->text(), QString("42"));
        QVERIFY(!widget<QLabel>("Lbl_alm1", 0)->isVisible());
        rec.alminhibit_on = 0;
        sensor::status_update(0);
        window_->show_state();
        QVERIFY(!widget<QLabel>("Lbl_alminhibit", 0)->isVisible());
        QVERIFY(widget<QLabel>("Lbl_alm1", 0)->isVisible());
    }

    void a_port_that_is_missing_is_told_in_a_box_and_the_channel_stops() {
        QString told;
        QTimer::singleShot(200, [&] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            told = box->text();
            QTest::keyClick(box, Qt::Key_Return);
        });
        program_.open_menu_entry("start", "start_channel(0)");
        QTRY_COMPARE(told, QString("no Comport configurated for sensor nr. 1"));
        QTRY_VERIFY(!sensor::state.channel_running[0]);
        QTRY_VERIFY(text("Text_status").contains("KVD Engine & pump ## Measure stopped "));
    }

    void a_time_resolution_applies_to_all_four_charts() {
        QTest::mouseClick(widget<QRadioButton>("opt_res", 2), Qt::LeftButton);
        for (int channel = 0; channel < 4; ++channel) {
            QTRY_COMPARE(widget<QWidget>("chart", channel)->property("XAxisSpan").toDouble(), 1.0 / 24);
        }
    }

    void a_click_on_a_caption_chooses_its_time_resolution() {
        for (const int index : {3, 1}) {
            QTest::mouseClick(widget<QLabel>("Lbl_opt_res", index), Qt::LeftButton);
            QTRY_VERIFY(widget<QRadioButton>("opt_res", index)->isChecked());
            QTRY_COMPARE(widget<QWidget>("chart", 0)->property("XAxisSpan").toDouble(),
                         index == 3 ? 1.0 : 1.0 / 96);
        }
    }

    void a_caption_stands_with_its_circle_and_apart_from_the_next() {
        for (int index = 0; index < 4; ++index) {
            const QRect circle = widget<QRadioButton>("opt_res", index)->geometry();
            const QRect caption = widget<QLabel>("Lbl_opt_res", index)->geometry();
            const int within = caption.left() - circle.right();
            QVERIFY2(within <= 4, qPrintable(QString::number(within)));
            if (index == 3) continue;
            const int apart = widget<QRadioButton>("opt_res", index + 1)->x() - caption.right();
            QVERIFY2(apart >= 2 * within && apart > 6, qPrintable(QString::number(apart)));
        }
    }

    void the_status_bar_shows_its_panel() {
        indicators.StatusBar = "Sensor 2 not connected";
        window_->show_state();
        QCOMPARE(window_->findChild<QLabel*>("StatusBar(1)")->text(), QString("Sensor 2 not connected"));
    }

    void a_maximised_window_shares_its_space_and_the_design_comes_back() {
        const QRect design = widget<QWidget>("Frame_sensor", 3)->geometry();
        window_->showMaximized();
        QTRY_VERIFY(window_->isMaximized());
        const int half = window_->centralWidget()->width() / 2;
        QTRY_VERIFY(widget<QWidget>("Frame_sensor", 3)->x() >= half);
        QVERIFY(widget<QWidget>("Frame_sensor", 3)->x() < half + 10);
        window_->showNormal();
        QTRY_COMPARE(widget<QWidget>("Frame_sensor", 3)->geometry(), design);
    }

    void no_text_is_cut_off_in_the_design_size() { check_texts(); }

    void no_text_is_cut_off_in_a_large_window() {
        window_->showMaximized();
        window_->resize(1920, 1080);
        QTRY_COMPARE(window_->width(), 1920);
        check_texts();
        window_->showNormal();
    }

    void alt_s_twice_reaches_the_second_of_the_two_menus_that_share_it() {
        to_front(window_);
        const auto press_alt_s = [] {
            QWidget* const menu = QApplication::activePopupWidget();
            QTest::keyClick(menu != nullptr ? menu : QApplication::focusWidget(), Qt::Key_S, Qt::AltModifier);
            return qobject_cast<QMenu*>(QApplication::activePopupWidget());
        };
        // The entry that Enter would choose.
        for (const auto& [menu_name, entry] : {std::pair("Setup_menue", "setup"), {"start", "startstop"}}) {
            QMenu* const menu = press_alt_s();
            QVERIFY2(menu != nullptr, menu_name);
            QCOMPARE(menu->objectName(), QString(menu_name));
            QVERIFY(menu->activeAction() != nullptr);
            QCOMPARE(menu->activeAction()->objectName(), QString(entry));
        }
        while (QWidget* const menu = QApplication::activePopupWidget())
            QTest::keyClick(menu, Qt::Key_Escape);
    }

  private:
    template <class Widget> Widget* widget(const char* array, int channel) const {
        auto* const found =
            window_->centralWidget()->findChild<Widget*>(QString("%1(%2)").arg(array).arg(channel));
        if (found == nullptr) qFatal("no %s(%d)", array, channel);
        return found;
    }

    [[nodiscard]] QString text(const char* box) const {
        return window_->centralWidget()->findChild<QPlainTextEdit*>(box)->toPlainText();
    }

    /// The system's own captions fit into their labels; an operator's text may be longer than its label.
    void check_texts() const {
        for (const auto* const label : window_->centralWidget()->findChildren<QLabel*>()) {
            const bool own_text =
                label->objectName().startsWith("Lbl_alm1") || label->objectName().startsWith("lbl_alm2");
            if (!label->isVisible() || label->wordWrap() || own_text ||
                label->objectName().startsWith("StatusBar"))
                continue;
            const QSize need = label->fontMetrics().size(0, label->text());
            QVERIFY2(need.width() <= label->width(), qPrintable(label->objectName() + ": " + label->text()));
        }
    }

    started_window program_;
    mainfrm_view* window_ = nullptr;
};

static const desktop_test<mainfrm_test> known;
#include "mainfrm_test.moc"
