// The polar scopes of the panels and the dialog "Setup scales" with their real widgets: opened from the menu,
// clicked and typed into as an operator does.

#include "desktop/desktop_test.h"
#include "desktop/started_window.h"
#include "dialogs/frmscale_polar.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "link/channel_rec.h"
#include "settings/ini.h"
#include "settings/settings.h"

using namespace tyxo;

namespace {

constexpr const char* settings_text = "[tyxo]\r\n"
                                      "upd_periode= 250\r\n"
                                      "max_sensors= 2\r\n"
                                      "scale_polar_a= .7\r\n"
                                      "scale_polar_t= 3\r\n"
                                      "log_mode= 0\r\n"
                                      "location 1=Engine & pump\r\n"
                                      "location 2=K\xFChlung\r\n";

} // namespace

class scope_dialogs_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { window_.start(settings_text); }

    void cleanupTestCase() { window_.end(); }

    // The panel's scope.

    void the_scope_tells_its_axes_and_curves() {
        const QWidget* const scope = panel_scope(0);
        QCOMPARE(scope->property("XAxisMin").toDouble(), -65.0);
        QCOMPARE(scope->property("XAxisSpan").toDouble(), 130.0);
        QCOMPARE(scope->property("YAxisMin").toDouble(), -65.0);
        QCOMPARE(scope->property("YAxisSpan").toDouble(), 130.0);
        QCOMPARE(scope->property("CurveTitle(0)").toString(), QString("zero"));
        QCOMPARE(scope->property("CurveTitle(1)").toString(), QString());
        QCOMPARE(scope->property("CurveColor(0)").toInt(), rgb(255, 255, 255));
        QCOMPARE(scope->property("CurveColor(1)").toInt(), rgb(255, 0, 0));
        QCOMPARE(scope->property("CurveColor(2)").toInt(), rgb(0, 0, 255));
        QCOMPARE(scope->property("CurveVisible(2)").toBool(), true);
        QCOMPARE(scope->property("CurvePoints(0)").toInt(), 256);
        QCOMPARE(scope->property("CurvePoints(1)").toInt(), 0);
        QVERIFY(!scope->accessibleName().isEmpty());
        QVERIFY(scope->toolTip().contains("Detailed Display"));
        QCOMPARE(scope->cursor().shape(), Qt::PointingHandCursor);
    }

    void the_scope_follows_the_control() {
        panels.XYplot[0].Visible = true;
        sensor::state.channels[0].thermo_data.fill(100);
        process_thermo(0);
        window_.show_state();
        QVERIFY(panel_scope(0)->isVisible());
        QCOMPARE(panel_scope(0)->property("CurvePoints(1)").toInt(), 256);
        clear_curves(0);
        panels.XYplot[0].Visible = false;
        window_.show_state();
        QVERIFY(!panel_scope(0)->isVisible());
        QCOMPARE(panel_scope(0)->property("CurvePoints(1)").toInt(), 0);
    }

    void a_click_on_a_panels_scope_chooses_its_channel() {
        panels.XYplot[1].Visible = true;
        window_.show_state();
        QTest::mouseClick(panel_scope(1), Qt::LeftButton);
        QTRY_COMPARE(sensor::state.polar_channel, i16{2});
        close_dialogs();
        panels.XYplot[1].Visible = false;
        window_.show_state();
    }

    // "Setup scales".

    void the_menu_opens_the_scales_in_front_of_everything() {
        open_scales();
        QCOMPARE(scales_->windowTitle(), QString("Setup scales"));
        QCOMPARE(scales_->windowModality(), Qt::WindowModal);
        const std::vector<std::pair<const char*, const char*>> titles{
            {"Frame1", "Scale polardisplay"},
            {"Frame_scale_a", "Scale Angle acceleration"},
            {"Frame_scale_t", "Scale Thermosignal"},
            {"Frame_refresh", "Refresh time for chart in ms"},
            {"Frame_logtime", "Time interval for creating new logfile"}};
        for (const auto& [name, title] : titles) {
            const auto* const frame = scales_->findChild<QGroupBox*>(name);
            QVERIFY2(frame != nullptr, name);
            QCOMPARE(frame->title(), QString(title));
            QVERIFY(frame->isEnabled());
        }
        close_with_escape(scales_);
    }

    void every_option_has_its_caption() {
        const char* const factors[] = {"x 5", "x 3", "x 2", "x 1", "x 0.5", "x 0.2", "x 0.1", "x 0.03"};
        for (int index = 0; index < 8; ++index) {
            option(scales_, "Opt_scale", index);
            option(scales_, "Opt_scale_t", index);
            for (const int label : {index, index + 8}) {
                const auto* const text = scales_->findChild<QLabel*>(QString("Lbl_scale(%1)").arg(label));
                QVERIFY(text != nullptr);
                QCOMPARE(text->text(), QString(factors[index]));
            }
        }
        const char* const times[] = {"100 ms", "250 ms", "500 ms", "1000 ms"};
        for (int index = 0; index < 4; ++index)
            QCOMPARE(option(scales_, "Opt_refr", index)->text(), QString(times[index]));
        QCOMPARE(option(scales_, "Opt_logtime", 0)->text(), QString("1 hour"));
        QCOMPARE(option(scales_, "Opt_logtime", 1)->text(), QString("1 day  (24 hours)"));
    }

    void the_options_of_the_values_are_selected_and_none_for_another_value() {
        sensor::state.scale_polar_a = 0.7;
        sensor::state.scale_polar_t = 3;
        open_scales();
        QCOMPARE(selected("Opt_scale", 8), -1);
        QCOMPARE(selected("Opt_scale_t", 8), 1);
        QCOMPARE(selected("Opt_refr", 4), 1);
        QCOMPARE(selected("Opt_logtime", 2), 1);
        close_with_escape(scales_);
        sensor::state.scale_polar_a = 0.03;
        sensor::state.scale_polar_t = 0.7;
        open_scales();
        QCOMPARE(selected("Opt_scale", 8), 7);
        QCOMPARE(selected("Opt_scale_t", 8), -1);
        close_with_escape(scales_);
    }

    void a_click_on_an_option_or_its_label_counts_at_once_and_escape_stores_nothing() {
        const QByteArray before = settings_file();
        open_scales();
        QTest::mouseClick(option(scales_, "Opt_scale", 2), Qt::LeftButton, {}, QPoint(8, 8));
        QTRY_COMPARE(sensor::state.scale_polar_a, 2.0);
        QTest::mouseClick(scales_->findChild<QLabel*>("Lbl_scale(5)"), Qt::LeftButton);
        QTRY_COMPARE(sensor::state.scale_polar_a, 0.2);
        QTest::mouseClick(scales_->findChild<QLabel*>("Lbl_scale(14)"), Qt::LeftButton);
        QTRY_COMPARE(sensor::state.scale_polar_t, 0.1);
        click_option("Opt_refr", 3);
        QTRY_COMPARE(sensor::state.upd_periode, i16{1000});
        click_option("Opt_logtime", 0);
        QTRY_COMPARE(settings.log_mode, i16{1});
        QTRY_COMPARE(selected("Opt_scale", 8), 5);
        QTRY_COMPARE(selected("Opt_scale_t", 8), 6);
        close_with_escape(scales_);
        QVERIFY(!frmscale_polar::state.form.Visible);
        QCOMPARE(settings_file(), before);
        QCOMPARE(sensor::state.scale_polar_a, 0.2);
    }

    void the_windows_close_button_stores_nothing_either() {
        const QByteArray before = settings_file();
        open_scales();
        click_option("Opt_refr", 0);
        QTRY_COMPARE(sensor::state.upd_periode, i16{100});
        scales_->close();
        QTRY_VERIFY(!scales_->isVisible());
        QCOMPARE(settings_file(), before);
        QCOMPARE(sensor::state.upd_periode, i16{100});
    }

    void default_settings_select_their_options() {
        open_scales();
        QTest::mouseClick(button(scales_, "cmd_default", "default settings"), Qt::LeftButton);
        QTRY_COMPARE(selected("Opt_scale", 8), 4);
        QTRY_COMPARE(selected("Opt_scale_t", 8), 1);
        QVERIFY(scales_->isVisible());
        close_with_escape(scales_);
    }

    void ok_stores_and_closes() {
        sensor::state.scale_polar_a = 0.5;
        open_scales();
        QTest::mouseClick(button(scales_, "Cmd_ok", "OK"), Qt::LeftButton);
        QTRY_VERIFY(!scales_->isVisible());
        QCOMPARE(Ini::ini_read("scale_polar_a"), std::string(".5"));
        QCOMPARE(Ini::ini_read("upd_periode"), std::string("100"));
    }

    void enter_is_ok_unless_another_button_has_the_focus() {
        for (const char* const focus : {"Opt_refr(0)", "Cmd_ok"}) {
            sensor::state.scale_polar_t = 0.2;
            Ini::ini_write("scale_polar_t", "9");
            open_scales();
            scales_->findChild<QWidget*>(focus)->setFocus();
            QTest::keyClick(scales_->focusWidget(), Qt::Key_Return);
            QTRY_VERIFY(!scales_->isVisible());
            QCOMPARE(Ini::ini_read("scale_polar_t"), std::string(".2"));
        }
    }

    void tab_goes_through_the_groups_in_order() {
        sensor::state.scale_polar_a = 5;
        sensor::state.scale_polar_t = 5;
        sensor::state.upd_periode = 100;
        settings.log_mode = 1;
        open_scales();
        option(scales_, "Opt_scale", 0)->setFocus();
        for (const char* const next :
             {"Opt_scale_t(0)", "Opt_refr(0)", "Opt_logtime(0)", "cmd_default", "Cmd_ok", "Opt_scale(0)"}) {
            QTest::keyClick(scales_->focusWidget(), Qt::Key_Tab);
            QCOMPARE(scales_->focusWidget()->objectName(), QString(next));
        }
        QTest::keyClick(scales_->focusWidget(), Qt::Key_Down);
        QTRY_COMPARE(sensor::state.scale_polar_a, 3.0);
        close_with_escape(scales_);
    }

    void while_measuring_enter_leaves_at_once() {
        open_scales();
        option(scales_, "Opt_refr", 0)->setFocus();
        close_with_escape(scales_);
        sensor::state.measure_running = true;
        open_scales();
        QCOMPARE(scales_->focusWidget()->objectName(), QString("Cmd_ok"));
        QTest::keyClick(scales_->focusWidget(), Qt::Key_Return);
        QTRY_VERIFY(!scales_->isVisible());
        sensor::state.measure_running = false;
    }

    void while_measuring_the_values_can_only_be_looked_at() {
        sensor::state.scale_polar_a = 2;
        sensor::state.measure_running = true;
        open_scales();
        for (const char* const name : {"Frame_scale_a", "Frame_scale_t", "Frame_refresh", "Frame_logtime"})
            QVERIFY2(!scales_->findChild<QGroupBox*>(name)->isEnabled(), name);
        QVERIFY(scales_->findChild<QLabel*>("Lbl_locked")->isVisible());
        QVERIFY(scales_->findChild<QLabel*>("Lbl_locked")->text().endsWith("Stop all channels first."));
        QCOMPARE(selected("Opt_scale", 8), 2);
        QTest::mouseClick(option(scales_, "Opt_scale", 0), Qt::LeftButton, {}, QPoint(8, 8));
        QTest::mouseClick(scales_->findChild<QLabel*>("Lbl_scale(0)"), Qt::LeftButton);
        QTest::mouseClick(button(scales_, "cmd_default", "default settings"), Qt::LeftButton);
        QTest::qWait(50);
        QCOMPARE(sensor::state.scale_polar_a, 2.0);
        QCOMPARE(selected("Opt_scale", 8), 2);
        QTest::mouseClick(button(scales_, "Cmd_ok", "OK"), Qt::LeftButton);
        QTRY_VERIFY(!scales_->isVisible());
        QCOMPARE(Ini::ini_read("scale_polar_a"), std::string("2"));
        sensor::state.measure_running = false;
        open_scales();
        QVERIFY(scales_->findChild<QGroupBox*>("Frame_refresh")->isEnabled());
        QVERIFY(!scales_->findChild<QLabel*>("Lbl_locked")->isVisible());
        close_with_escape(scales_);
    }

    void no_text_is_cut_off() {
        sensor::state.measure_running = true;
        open_scales();
        check_texts(scales_);
        close_with_escape(scales_);
        sensor::state.measure_running = false;
        open_scales();
        check_texts(scales_);
        close_with_escape(scales_);
    }

    void every_option_has_an_accessible_name() {
        QCOMPARE(option(scales_, "Opt_scale", 4)->accessibleName(),
                 QString("Scale Angle acceleration: x 0.5"));
        QCOMPARE(option(scales_, "Opt_scale_t", 0)->accessibleName(), QString("Scale Thermosignal: x 5"));
        QCOMPARE(option(scales_, "Opt_refr", 3)->accessibleName(),
                 QString("Refresh time for chart in ms: 1000 ms"));
        QCOMPARE(option(scales_, "Opt_logtime", 0)->accessibleName(),
                 QString("Time interval for creating new logfile: 1 hour"));
    }

  private:
    QWidget* panel_scope(int channel) const { return window_.widget("XYplot", channel); }

    int selected(const char* array, int count) const {
        int found = -1;
        for (int index = 0; index < count; ++index) {
            if (!option(scales_, array, index)->isChecked()) continue;
            if (found >= 0) qFatal("two of %s", array);
            found = index;
        }
        return found;
    }

    void click_option(const char* array, int index) const {
        QTest::mouseClick(option(scales_, array, index), Qt::LeftButton, {}, QPoint(8, 8));
    }

    void open_scales() {
        window_.open_menu_entry("Setup_menue", "setup_scale");
        scales_ = window_.dialog("frmscale_polar");
        QTRY_VERIFY(scales_->isVisible());
    }

    /// Whatever a click has opened that is not under test here.
    static void close_dialogs() {
        QTest::qWait(50);
        if (auto* const modal = QApplication::activeModalWidget()) {
            modal->close();
            QTest::qWait(50);
        }
    }

    started_window window_;
    QDialog* scales_ = nullptr;
};

static const desktop_test<scope_dialogs_test> known;
#include "scope_dialogs_test.moc"
