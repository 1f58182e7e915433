// Which commands of the real windows run inside a tick that waits, and which are kept until it has ended.

#include "desktop/alert_window.h"
#include "desktop/desktop_test.h"
#include "desktop/operated_windows.h"
#include "dialogs/frmstatustext.h"
#include "displays/chart.h"
#include "link/indicators.h"
#include "platform/desktop/handlers.h"

#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QComboBox>
#include <QMessageBox>
#include <QScrollBar>
#include <QTabWidget>

using namespace tyxo;

namespace {

/// What an operator does, and how the core shows that it was done.
struct step {
    const char* what;
    std::function<void()> act;
    std::function<bool()> done;
};

void left_click(QWidget* on) {
    QTest::mouseClick(on, Qt::LeftButton);
}

} // namespace

class view_commands_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        qputenv("PULSE_SERVER", "unix:no-sound-server");
        window_.start(all_windows_settings);
        sensor::state.channels[0].param_valid = true;
        sensor::state.channels[0].eva_mode = evaluator_mode::standard;
        update_panel(0);
        window_.show_state();
    }
    void cleanupTestCase() { window_.end(); }

    void commands_of_the_main_window_that_only_change_what_is_seen_run_at_once() {
        run_inside_ticks({
            {"freeze", [&] { left_click(main("chart", 0)); }, [] { return charts.chart[0].Frozen; }},
            {"go on", [&] { left_click(main("chart", 0)); }, [] { return !charts.chart[0].Frozen; }},
            {"enlarge", [&] { left_click(main("cmd_zoom_xy", 0)); },
             [] { return sensor::state.channels[0].xy_zoom_state; }},
            {"reduce", [&] { left_click(main("cmd_zoom_xy", 0)); },
             [] { return !sensor::state.channels[0].xy_zoom_state; }},
            {"time resolution", [&] { qobject_cast<QRadioButton*>(main("opt_res", 2))->click(); },
             [] { return charts.opt_res == 2; }},
            {"the gauge's value", [&] { left_click(main("Label4", 0)); },
             [] { return sensor::state.channels[0].th_dig_val == 1; }},
        });
    }

    void windows_that_only_show_open_and_close_at_once() {
        run_inside_ticks({
            {"Detailed Display", [&] { left_click(main("XYplot", 0)); },
             [] { return frmdetailedpic::state.form.Visible; }},
            {"its curve", [&] { child<QCheckBox>("frmdetailedpic", "Chck_aa")->click(); },
             [] { return frmdetailedpic::state.Chck_aa == 0; }},
            {"its end", [&] { shown_window("frmdetailedpic")->close(); },
             [] { return !frmdetailedpic::state.form.Visible; }},
            {"speed bars", [&] { left_click(main("Cmd_diagramm", 0)); },
             [] { return frmbarpic::state.form.Visible; }},
            {"their end", [&] { shown_window("frmbarpic")->close(); },
             [] { return !frmbarpic::state.form.Visible; }},
            {"thermosignal bars", [&] { left_click(main("Cmd_diagramm2", 0)); },
             [] { return Frmbarpic2::state.form.Visible; }},
            {"their end", [&] { shown_window("Frmbarpic2")->close(); },
             [] { return !Frmbarpic2::state.form.Visible; }},
            {"status window",
             [&] {
                 QTest::mouseDClick(window_.view()
                                        .centralWidget()
                                        ->findChild<QAbstractScrollArea*>("Text_status")
                                        ->viewport(),
                                    Qt::LeftButton);
             },
             [] { return frmstatustext::state.form.Visible; }},
            {"its refresh",
             [&] {
                 indicators.Text_status.append("news");
                 child<QPushButton>("frmstatustext", "Cmdrefresh")->click();
             },
             [] { return frmstatustext::state.Text_status.Text.ends_with("news"); }},
            {"its end", [&] { child<QPushButton>("frmstatustext", "Cmdclose")->click(); },
             [] { return !frmstatustext::state.form.Visible; }},
            {"software info", [&] { left_click(window_.view().findChild<QWidget*>("Lbl_TY_logger")); },
             [] { return Frmlog::state.form.Visible; }},
            {"its end", [&] { window_.dialog("Frmlog")->reject(); },
             [] { return !Frmlog::state.form.Visible; }},
            {"about", [&] { window_.view().findChild<QAction*>("about")->trigger(); },
             [] { return frmSplash::state.form.Visible; }},
            {"its end", [&] { QTest::keyClick(window_.dialog("frmSplash"), Qt::Key_Space); },
             [] { return !frmSplash::state.form.Visible; }},
        });
    }

    void lists_scroll_bars_and_tabs_of_the_setup_follow_at_once() {
        sensor::state.channels[0].status_valid = true;
        mainfrm::setup_click();
        frmSetup::state.Select_com[1].List = {"COM7", "COM9"};
        window_.show_state();
        QTRY_VERIFY(shown_window("frmSetup") != nullptr);
        run_inside_ticks({
            {"list",
             [&] {
                 auto* const list = child<QComboBox>("frmSetup", "Select_com(1)");
                 list->setFocus();
                 QTest::keyClick(list, Qt::Key_End);
             },
             [] { return frmSetup::state.comport_edit[1] == 9; }},
            {"scroll bar", [&] { child<QScrollBar>("frmSetup", "scroll_max_commport")->setValue(2); },
             [] { return frmSetup::state.num_sensors_edit == 2; }},
            {"tab", [&] { child<QTabWidget>("frmSetup", "SSTab")->setCurrentIndex(1); },
             [] { return frmSetup::state.SSTab.Tab == 1; }},
        });
        frmSetup::cmd_cancel_click();
        window_.show_state();
    }

    void an_alarm_is_confirmed_at_once() {
        const auto alert_over = [] { return !sensor::state.alert_open; };
        for (const step& confirmation :
             {step{"button", [] { alert_window()->findChild<QPushButton*>("CmdAck")->click(); }, alert_over},
              step{"key", [] { QTest::keyClick(alert_window(), Qt::Key_Return); }, alert_over},
              step{"escape", [] { QTest::keyClick(alert_window(), Qt::Key_Escape); }, alert_over}}) {
            raise_alarm(0);
            run_inside_ticks({confirmation});
            QTRY_VERIFY(!alert_window()->isVisible());
            take_status(0, 0);
        }
    }

    void a_diagram_without_parameters_tells_so_and_holds_no_tick_up() {
        left_click_inside_a_tick(main("Cmd_diagramm", 0),
                                 [] { sensor::state.channels[0].param_valid = false; });
        QTRY_VERIFY(shown_window("message_box") != nullptr);
        qobject_cast<QMessageBox*>(shown_window("message_box"))->accept();
        QVERIFY(!frmbarpic::state.form.Visible);
        sensor::state.channels[0].param_valid = true;
    }

    void commands_that_ask_or_concern_the_gateway_are_kept() {
        run_behind_ticks({
            {"setup", [&] { trigger("setup"); }, [] { return frmSetup::state.form.Visible; }},
            {"its end", [&] { window_.dialog("frmSetup")->reject(); },
             [] { return !frmSetup::state.form.Visible; }},
            {"print", [&] { trigger("prt"); }, [] { return frmselectprint::state.form.Visible; }},
            {"its end", [&] { window_.dialog("frmselectprint")->reject(); },
             [] { return !frmselectprint::state.form.Visible; }},
            {"gateway", [&] { trigger("setup_tcp"); }, [] { return FrmSetupTCP::state.form.Visible; }},
            {"data", [&] { child<QCheckBox>("FrmSetupTCP", "Check2")->click(); },
             [] { return FrmSetupTCP::state.Check2 == 1; }},
            {"speed", [&] { trigger("fast"); }, [] { return FrmSetupTCP::state.fast; }},
            {"its end", [&] { child<QPushButton>("FrmSetupTCP", "Cmd_close")->click(); },
             [] { return !FrmSetupTCP::state.form.Visible; }},
        });
    }

  private:
    QWidget* main(const char* array, int index) { return window_.widget(array, index); }
    template <class Control> static Control* child(const char* window, const char* name) {
        return shown_window(window)->findChild<Control*>(name);
    }
    void trigger(const char* entry) { window_.view().findChild<QAction*>(entry)->trigger(); }

    /// Each step inside a tick of its own, in which it takes effect.
    void run_inside_ticks(const std::vector<step>& steps) {
        for (const step& one : steps) {
            QVERIFY2(!one.done(), one.what);
            bool at_once = false;
            desktop::run_handler(desktop::source::device, [&] {
                one.act();
                at_once = one.done();
            });
            QVERIFY2(at_once, one.what);
            window_.show_state();
        }
    }
    void run_behind_ticks(const std::vector<step>& steps) {
        for (const step& one : steps) {
            bool at_once = true;
            desktop::run_handler(desktop::source::device, [&] {
                one.act();
                at_once = one.done();
            });
            QVERIFY2(!at_once, one.what);
            QTRY_VERIFY2(one.done(), one.what);
            window_.show_state();
        }
    }
    static void left_click_inside_a_tick(QWidget* on, const std::function<void()>& before) {
        desktop::run_handler(desktop::source::device, [&] {
            before();
            left_click(on); // returns though a box has come up
        });
    }

    started_window window_;
};

static const desktop_test<view_commands_test> known;
#include "view_commands_test.moc"
