// Main alarms while each of the windows is open, with real widgets: the alert comes in front, disturbs nobody
// who types, and can be confirmed.

#include "desktop/alert_window.h"
#include "desktop/desktop_test.h"
#include "desktop/operated_windows.h"
#include "link/indicators.h"

#include <QPrintDialog>

using namespace tyxo;

class alert_over_windows_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        qputenv("PULSE_SERVER", "unix:no-sound-server");
        window_.start(all_windows_settings);
        alert_ = alert_window();
        QVERIFY(alert_ != nullptr);
        sensor::state.channels[0].param_valid = true;
    }
    void init() { to_front(&window_.view()); }
    void cleanup() {
        confirm_alert();
        all_quiet();
        sensor::state.measure_running = false;
        sensor::state.max_sensors = 4;
    }
    void cleanupTestCase() { window_.end(); }

    void every_window_of_the_program_is_in_the_table() {
        for (const QWidget* const window : QApplication::topLevelWidgets()) {
            const QString name = window->objectName();
            if (!window->isWindow() || window->windowType() == Qt::Popup || window == alert_ ||
                window == &window_.view() || name.isEmpty())
                continue;
            const auto& rows = all_windows();
            QVERIFY2(std::ranges::count(rows, name, [](const window_row& row) { return QString(row.name); }),
                     qPrintable(name));
        }
    }

    void it_comes_in_front_with_all_lines_and_typing_goes_on_data() { add_all_windows(); }
    void it_comes_in_front_with_all_lines_and_typing_goes_on() {
        const window_row& row = this_window();
        while_open(row, [&](QWidget* window) {
            QLineEdit* const box = text_box(row, window);
            if (box != nullptr) press_keys("Sec");
            QWidget* const focus = QApplication::focusWidget();
            raise_all_alarms();
            next_phase();
            next_phase();
            expect_all_lines();
            QCOMPARE(window->isVisible(), !row.hidden_by_alert());
            if (row.hidden_by_alert()) return;
            QVERIFY(window->isActiveWindow());
            QVERIFY(!alert_->isActiveWindow());
            QCOMPARE(QApplication::focusWidget(), focus);
            if (box == nullptr) return;
            press_keys("ret");
            QTest::qWait(100);
            QCOMPARE(box->text(), QString("Secret"));
            QCOMPARE(box->cursorPosition(), 6);
            QVERIFY(alert_->isVisible());
        });
    }

    void what_is_typed_arrives_though_the_window_system_gives_the_alert_the_keyboard_data() {
        add_all_windows([](const window_row& row) { return !row.hidden_by_alert(); });
    }
    void what_is_typed_arrives_though_the_window_system_gives_the_alert_the_keyboard() {
        const window_row& row = this_window();
        if (row.name == QString("frmSplash")) return; // which any key closes
        while_open(row, [&](QWidget* window) {
            QLineEdit* const box = text_box(row, window);
            raise_all_alarms();
            for (const char* letter = "4711"; *letter != '\0'; ++letter) {
                alert_->activateWindow();
                QTest::keyClick(alert_->windowHandle(), *letter);
                const bool keeps_nothing = box == nullptr && !row.locks();
                QVERIFY(QTest::qWaitFor([&] { return keeps_nothing || window->isActiveWindow(); }));
            }
            QVERIFY(alert_->isVisible());
            if (box != nullptr) QCOMPARE(box->text(), QString("4711"));
        });
        QVERIFY(alert_->isVisible());
    }

    void the_mouse_confirms_it_beside_the_open_window_which_goes_on_data() { add_all_windows(); }
    void the_mouse_confirms_it_beside_the_open_window_which_goes_on() {
        const window_row& row = this_window();
        while_open(row, [&](QWidget* window) {
            QLineEdit* box = text_box(row, window);
            if (box != nullptr) press_keys("12");
            raise_all_alarms();
            if (row.hidden_by_alert()) { // the operator opens it again beside the alert
                QVERIFY(QTest::qWaitFor([&] { return !window->isVisible(); }));
                desktop::run_handler(desktop::source::operator_, row.open);
                QVERIFY(QTest::qWaitFor([&] { return window->isVisible(); }));
                next_phase();
                next_phase();
                QVERIFY(window->isVisible());
            }
            QVERIFY(alert_->isVisible());
            click_confirm();
            expect_confirmed();
            QVERIFY(window->isVisible());
            to_front(window);
            if (box != nullptr) {
                press_keys("34");
                QCOMPARE(box->text(), QString("1234"));
            } else if (row.name != QString("frmSplash")) { // which any key closes
                QTest::keyClick(QApplication::focusWindow(), Qt::Key_Tab);
                QWidget* const focus = QApplication::focusWidget();
                QVERIFY(focus == nullptr || window == focus || window->isAncestorOf(focus));
            }
            leave_by_hand(row, window);
            QVERIFY(QTest::qWaitFor([&] { return shown_window(row.name) == nullptr; }));
        });
    }

    void it_takes_the_keyboard_when_the_window_is_closed_first_data() { add_all_windows(); }
    void it_takes_the_keyboard_when_the_window_is_closed_first() {
        const window_row& row = this_window();
        while_open(row, [&](QWidget* window) {
            if (QLineEdit* const box = text_box(row, window)) box->setFocus();
            raise_all_alarms();
            if (!row.hidden_by_alert()) {
                leave_by_hand(row, window);
                QVERIFY(QTest::qWaitFor([&] { return shown_window(row.name) == nullptr; }));
            }
            if (row.name == QString("frmbrowse")) { // the setup behind it is still open
                QWidget* const setup = shown_window("frmSetup");
                QVERIFY(setup != nullptr);
                QVERIFY(!alert_->isActiveWindow());
                QTest::keyClick(setup, Qt::Key_Escape);
            }
            QVERIFY(QTest::qWaitFor([&] { return alert_->isActiveWindow(); }));
            QCOMPARE(QApplication::focusWidget(), part("CmdAck"));
            expect_all_lines();
            wait_until_it_takes_keys();
            QTest::keyClick(QApplication::focusWindow(), Qt::Key_Return);
            expect_confirmed();
        });
    }

    void the_half_typed_password_of_the_stop_lock_still_stops() {
        const window_row& row = *std::ranges::find(all_windows(), QString("FrmAbort"), &window_row::name);
        FrmAbort::SetPassword("Secret7");
        while_open(row, [&](QWidget* window) {
            static_cast<void>(text_box(row, window));
            press_keys("Secr");
            raise_all_alarms();
            press_keys("et7");
            auto* const stop = window->findChild<QPushButton*>("CmdStop");
            QVERIFY(stop->isEnabled());
            QTRY_VERIFY(stop->hasFocus());
            QTest::keyClick(QApplication::focusWindow(), Qt::Key_Return);
            QVERIFY(QTest::qWaitFor([&] { return !window->isVisible(); }));
            QVERIFY(alert_->isVisible());
        });
        QVERIFY(!sensor::state.measure_running);
    }

    void the_dialogs_belong_to_a_window_and_lock_only_that_data() { add_all_windows(); }
    void the_dialogs_belong_to_a_window_and_lock_only_that() {
        const window_row& row = this_window();
        while_open(row, [&](QWidget* window) {
            const QWidget* const parent = window->parentWidget();
            QVERIFY(parent != nullptr);
            QCOMPARE(parent->window()->objectName(),
                     QString(row.name == QString("frmbrowse") ? "frmSetup" : "mainfrm"));
            QCOMPARE(window->windowModality(), row.locks() ? Qt::WindowModal : Qt::NonModal);
            QCOMPARE(qobject_cast<QPrintDialog*>(window) != nullptr, row.name == QString("print_dialog"));
        });
    }

  private:
    QWidget* part(const char* name) const { return alert_->findChild<QWidget*>(name); }

    static void all_quiet() {
        for (i16 channel = 0; channel < channel_count; ++channel)
            take_status(channel, 0);
    }
    void expect_all_lines() const {
        QVERIFY(alert_->isVisible());
        QVERIFY(!alert_->isMinimized());
        QVERIFY(alert_->windowFlags() & Qt::WindowStaysOnTopHint);
        for (int channel = 0; channel < channel_count; ++channel) {
            const auto* const line = alert_->findChild<QLabel*>(QString("lbl_inst1(%1)").arg(channel));
            QVERIFY(line->isVisible());
            QVERIFY(line->text().endsWith("  Mainalarm AC"));
            QVERIFY(part(qPrintable(QString("lbl_inst(%1)").arg(channel)))->isVisible());
        }
    }
    /// By way of the window system, which gives a locked window nothing.
    void click_confirm() const {
        const QWidget* const button = part("CmdAck");
        QTest::mouseClick(alert_->windowHandle(), Qt::LeftButton, {},
                          button->mapTo(alert_, button->rect().center()));
    }
    void expect_confirmed() const {
        QVERIFY(QTest::qWaitFor([&] { return !alert_->isVisible(); }));
        QVERIFY(!sensor::state.alert_open);
        QVERIFY(indicators.Text_status.text().ends_with(" Mainalarm confirmed by operator!\r\n"));
    }

    started_window window_;
    QDialog* alert_ = nullptr;
};

static const desktop_test<alert_over_windows_test> known;
#include "alert_over_windows_test.moc"
