// Every window for those who use the keyboard alone, listen to it, or need larger or stronger print.

#include "desktop/accessibility.h"
#include "desktop/all_windows.h"
#include "desktop/desktop_test.h"
#include "desktop/started_window.h"
#include "dialogs/frmlog.h"
#include "dialogs/frmresetinhtime.h"
#include "displays/chart.h"
#include "displays/frmdetailedpic.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "platform/desktop/text.h"

#include <QHash>

#include <algorithm>
#include <functional>

using namespace tyxo;

class accessibility_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        window_.start(accessible_settings);
        show_all_controls();
        window_.show_state();
    }
    void cleanupTestCase() {
        large_.reset();
        window_.end();
    }

    void every_control_has_a_name_data() { all_states(); }
    void every_control_has_a_name() {
        const opened_window opened(*this);
        int named = 0;
        for (QWidget* control : visible_controls(opened.widget)) {
            if (!is_stop(control) && !is_painted_value(control)) continue;
            QVERIFY2(!spoken(control).isEmpty(), qPrintable(described(control)));
            QVERIFY2(has_role(control), qPrintable(described(control)));
            ++named;
        }
        QVERIFY(named > 0 || opened.row->name == QString("frmSplash"));
        QVERIFY(!opened.widget->windowTitle().isEmpty());
        QVERIFY(has_role(opened.widget));
    }

    void no_two_controls_have_the_same_name_data() { all_states(); }
    void no_two_controls_have_the_same_name() {
        const opened_window opened(*this);
        QHash<QString, QString> names;
        for (QWidget* control : visible_controls(opened.widget)) {
            if (!is_stop(control) && !is_painted_value(control)) continue;
            const QString name = spoken(control);
            QVERIFY2(!names.contains(name),
                     qPrintable('"' + name + "\": " + described(control) + ", " + names[name]));
            names[name] = described(control);
        }
    }

    void no_letters_of_a_markup_are_heard_data() { all_states(); }
    void no_letters_of_a_markup_are_heard() {
        const opened_window opened(*this);
        QVERIFY(visible_controls(opened.widget).size() > 1);
        for (QWidget* control : visible_controls(opened.widget))
            QVERIFY2(!explained(control).contains('<'),
                     qPrintable(described(control) + ": " + explained(control)));
    }

    void controls_of_a_channel_tell_its_number() {
        for (QWidget* control : visible_controls(&window_.view())) {
            if (!is_stop(control) && !is_painted_value(control)) continue;
            const QString index = control->objectName().section('(', 1).section(')', 0, 0);
            if (index.isEmpty() || control->objectName().startsWith("opt_res")) continue;
            const QString number = QString::number(index.toInt() + 1);
            QVERIFY2(spoken(control).endsWith("channel " + number) ||
                         spoken(control).startsWith("Chart " + number + ": "),
                     qPrintable(described(control) + ": " + spoken(control)));
        }
    }

    void tab_stops_at_every_control_in_the_order_of_the_eye_data() { all_states(); }
    void tab_stops_at_every_control_in_the_order_of_the_eye() {
        const opened_window opened(*this);
        const std::vector<QWidget*> stops = walk(opened.widget);
        for (std::size_t index = 1; index < stops.size(); ++index) {
            QVERIFY2(follows_the_eye(on_window(stops[index - 1]), on_window(stops[index])),
                     qPrintable(described(stops[index - 1]) + " -> " + described(stops[index])));
        }
        for (QWidget* control : visible_controls(opened.widget)) {
            if (is_stop(control))
                QVERIFY2(std::ranges::count(stops, control) == 1, qPrintable(described(control)));
        }
    }

    void the_focus_is_seen_data() { all_states(); }
    void the_focus_is_seen() {
        const opened_window opened(*this);
        const std::vector<QWidget*> stops = walk(opened.widget);
        QHash<QWidget*, QImage> without;
        if (QWidget* const focus = QApplication::focusWidget()) focus->clearFocus();
        for (QWidget* stop : stops)
            without[stop] = stop->grab().toImage();
        for (QWidget* stop : walk(opened.widget)) {
            stop->setFocus(Qt::TabFocusReason);
            QVERIFY(stop->hasFocus());
            // The default button has its rim with and without the focus: Enter presses it from everywhere.
            const auto* const button = qobject_cast<const QPushButton*>(stop);
            if (button != nullptr && button->isDefault()) continue;
            QVERIFY2(stop->grab().toImage() != without[stop], qPrintable(described(stop)));
        }
    }

    void texts_stand_out_from_their_ground_data() { all_states(); }
    void texts_stand_out_from_their_ground() {
        const opened_window opened(*this);
        for (const QWidget* control : visible_controls(opened.widget)) {
            const auto colours = text_colours(control);
            if (!colours) continue;
            const double found = contrast(colours->first, colours->second);
            QVERIFY2(found >= least_contrast,
                     qPrintable(described(control) + ": " + QString::number(found, 'f', 2)));
        }
    }

    void locked_values_stand_out_too() {
        sensor::state.measure_running = true;
        const opened_window opened(*this, "frmscale_polar");
        int locked = 0;
        for (const QWidget* control : visible_controls(opened.widget)) {
            const auto colours = text_colours(control);
            if (!colours || control->isEnabled()) continue;
            ++locked;
            QVERIFY2(contrast(colours->first, colours->second) >= least_contrast,
                     qPrintable(described(control)));
        }
        sensor::state.measure_running = false;
        QVERIFY(locked > 0);
    }

    void nothing_is_cut_off_data() { all_states(); }
    void nothing_is_cut_off() {
        const opened_window opened(*this);
        if (opened.row->grows_with_font()) check_room(opened.widget);
    }

    // The keyboard does what the mouse does.

    void keys_freeze_a_chart_and_let_it_go() {
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
            press("chart", 1, key);
            QVERIFY(charts.chart[1].Frozen);
            QVERIFY(!charts.chart[0].Frozen);
            press("chart", 1, key);
            QVERIFY(!charts.chart[1].Frozen);
        }
    }

    void other_keys_leave_a_chart_alone() {
        press("chart", 1, Qt::Key_A);
        QVERIFY(!charts.chart[1].Frozen);
    }

    void keys_open_the_detailed_display() {
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
            press("XYplot", 2, key);
            QTRY_VERIFY(frmdetailedpic::state.form.Visible);
            QCOMPARE(sensor::state.polar_channel, i16{3});
            frmdetailedpic::unload();
            window_.show_state();
        }
    }

    void keys_change_the_value_of_the_thermo_gauge() {
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
            const std::string before = panels.Label4[3].Caption;
            press("Label4", 3, key);
            QVERIFY(panels.Label4[3].Caption != before);
            window_.show_state();
            QVERIFY(spoken(window_.widget("Gauge_thermo", 3)).startsWith(qt_text(panels.Label4[3].Caption)));
        }
    }

    void keys_ask_for_the_restart_of_the_inhibit_time() {
        press("Lbl_alminhibit", 2, Qt::Key_Return);
        QVERIFY(FrmResetInhTime::state.form.Visible);
        QCOMPARE(sensor::state.inhibit_reset_channel, i16{2});
        FrmResetInhTime::CmdCancel_click();
        window_.show_state();
    }

    void keys_open_software_info() {
        QWidget* const name = window_.view().findChild<QWidget*>("Lbl_TY_logger");
        name->setFocus();
        QTest::keyClick(name, Qt::Key_Space);
        QVERIFY(Frmlog::state.form.Visible);
        Frmlog::Cmd_ok_click();
        window_.show_state();
    }

    void tab_skips_what_an_enlarged_chart_covers() {
        to_front(&window_.view());
        mainfrm::cmd_zoom_xy_click(0);
        window_.show_state();
        const std::vector<QWidget*> stops = walk(&window_.view());
        for (const int covered : {0, 2}) {
            for (const char* array : {"Label4", "Lbl_alminhibit", "XYplot", "Cmd_diagramm", "Cmd_diagramm2"})
                QVERIFY(std::ranges::count(stops, window_.widget(array, covered)) == 0);
            QVERIFY(std::ranges::count(stops, window_.widget("cmd_zoom_xy", covered)) == 1);
        }
        QVERIFY(std::ranges::count(stops, window_.widget("Label4", 1)) == 1);
        mainfrm::cmd_zoom_xy_click(0);
        window_.show_state();
        const std::vector<QWidget*> again = walk(&window_.view());
        QVERIFY(std::ranges::count(again, window_.widget("Label4", 2)) == 1);
    }

    void a_missing_channels_texts_stand_out_too() {
        setup_missing_panel(3);
        window_.show_state();
        int texts = 0;
        const QWidget* const frame = window_.widget("Frame_sensor", 3);
        QVERIFY(!frame->isEnabled());
        for (const QWidget* control : visible_controls(&window_.view())) {
            if (control->isEnabled() || (control != frame && !frame->isAncestorOf(control))) continue;
            const auto colours = text_colours(control);
            if (!colours) continue;
            ++texts;
            const double found = contrast(colours->first, colours->second);
            QVERIFY2(found >= least_contrast,
                     qPrintable(described(control) + ": " + QString::number(found, 'f', 2)));
        }
        QVERIFY(texts > 5);
    }

    // The last test: a second main window, made with larger print.

    void nothing_is_cut_off_with_larger_print() {
        QFont font = QApplication::font();
        font.setPointSize(14);
        QApplication::setFont(font);
        window_.end();
        large_ = std::make_unique<mainfrm_view>();
        large_->show();
        for (const window_row& row : window_states()) {
            if (!row.grows_with_font()) continue;
            row.open();
            large_->show_state();
            QTest::qWait(50);
            QWidget* const window = shown_window(row.window());
            QVERIFY2(window != nullptr, row.name);
            QVERIFY2(window->font().pointSize() >= 14, row.name);
            check_room(window);
            row.leave();
            large_->show_state();
        }
    }

  private:
    /// A window of the table while it is open.
    class opened_window {
      public:
        explicit opened_window(accessibility_test& test, QString name = QTest::currentDataTag())
            : row(&*std::ranges::find(window_states(), name, &window_row::name)), test_(test) {
            to_front(&test_.window_.view()); // this screen leaves the keyboard with a hidden window
            row->open();
            test_.window_.show_state();
            const QString window = name.section(' ', 0, 0);
            if (!QTest::qWaitFor([&] { return (widget = shown_window(window)) != nullptr; }))
                qFatal("%s does not open", row->name);
            to_front(widget);
        }
        ~opened_window() {
            row->leave();
            test_.window_.show_state();
        }
        opened_window(const opened_window&) = delete;
        opened_window& operator=(const opened_window&) = delete;

        const window_row* row;
        QWidget* widget = nullptr;

      private:
        accessibility_test& test_;
    };

    static void all_states() {
        QTest::addColumn<int>("unused");
        for (const window_row& row : window_states())
            QTest::newRow(row.name) << 0;
    }

    void press(const char* array, int channel, Qt::Key key) {
        to_front(&window_.view());
        QWidget* const control = window_.widget(array, channel);
        control->setFocus();
        QVERIFY(control->hasFocus());
        QTest::keyClick(control, key);
    }

    started_window window_;
    std::unique_ptr<mainfrm_view> large_;
};

static const desktop_test<accessibility_test> known;
#include "accessibility_test.moc"
