// Every way of closing every window, with real widgets: by its frame, by Escape, by the end of the desktop
// session. None of them counts as "OK", and each window opens again.

#include "desktop/alert_window.h"
#include "desktop/desktop_test.h"
#include "desktop/operated_windows.h"
#include "desktop/settings_file.h"
#include "displays/chart.h"
#include "link/indicators.h"
#include "platform/desktop/text.h"
#include "settings/settings.h"

#include <QMessageBox>
#include <QProcess>

#include <cstdio>

using namespace tyxo;

namespace {

/// What no way of closing may change.
struct program_state {
    QByteArray settings_file = tyxo::settings_file();
    std::string location = sensor::state.channels[0].location;
    std::string logpath = sensor::state.channels[0].logpath;
    std::string status_text{indicators.Text_status.text()};
    i16 port = settings.IPport;
    bool measuring = sensor::state.measure_running;
    bool operator==(const program_state&) const = default;
};

const window_row& row_of(const char* name) {
    return *std::ranges::find(all_windows(), QString(name), &window_row::name);
}

} // namespace

class window_closing_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        qputenv("PULSE_SERVER", "unix:no-sound-server");
        window_.start(all_windows_settings);
        sensor::state.channels[0].param_valid = true;
    }
    void init() {
        sensor::state.measure_running = false;
        to_front(&window_.view());
        boxes_ = 0;
        answers_.setInterval(5);
        answers_.disconnect();
        connect(&answers_, &QTimer::timeout, this, [this] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            ++boxes_;
            box->accept();
        });
        answers_.start();
    }
    void cleanupTestCase() { window_.end(); }

    void the_frame_closes_a_window_as_its_cancel_does_data() { add_all_windows(); }
    void the_frame_closes_a_window_as_its_cancel_does() {
        expect_cancel(this_window(), [](QWidget* window) { window->close(); });
        // The gateway's window has no cancel: it says so and stays.
        QCOMPARE(boxes_, this_window().kind == window_kind::beside ? 1 : 0);
    }

    void escape_closes_a_window_as_its_cancel_does_data() { add_all_windows(); }
    void escape_closes_a_window_as_its_cancel_does() {
        expect_cancel(this_window(),
                      [](QWidget*) { QTest::keyClick(QApplication::focusWindow(), Qt::Key_Escape); });
        QCOMPARE(boxes_, 0);
    }

    void the_stop_lock_closed_by_its_frame_means_go_on() {
        for (const char* const typed : {"", "Secret7"}) {
            while_open(row_of("FrmAbort"), [&](QWidget* window) {
                press_keys(typed);
                QCOMPARE(window->findChild<QPushButton*>("CmdStop")->isEnabled(), *typed != '\0');
                window->close();
                QTRY_VERIFY(!window->isVisible());
            });
            QCOMPARE(FrmAbort::GetStatus(), i16{0});
            QVERIFY(sensor::state.measure_running);
        }
    }

    void the_alert_closed_by_its_frame_or_escape_writes_its_one_line() {
        for (const bool by_frame : {true, false}) {
            to_front(&window_.view());
            raise_alarm(0);
            QDialog* const alert = alert_window();
            const QString before = qt_text(indicators.Text_status.text());
            to_front(alert);
            if (by_frame) {
                alert->close();
            } else {
                wait_until_it_takes_keys();
                QTest::keyClick(alert, Qt::Key_Escape);
            }
            QTRY_VERIFY(!alert->isVisible());
            const QString after = qt_text(indicators.Text_status.text());
            QVERIFY(after.startsWith(before));
            QCOMPARE(after.mid(before.size()).count("\r\n"), 1);
            QVERIFY(after.endsWith(" Mainalarm confirmed by operator!\r\n"));
            QVERIFY(!sensor::state.alert_open);
            take_status(0, 0);
        }
    }

    // The main window.

    void its_frame_and_clicks_do_nothing_while_a_dialog_is_open_data() { add_all_windows(); }
    void its_frame_and_clicks_do_nothing_while_a_dialog_is_open() {
        const window_row& row = this_window();
        charts.chart[2].Frozen = false;
        while_open(row, [&](QWidget* window) {
            const auto lines = stop_lines();
            click_chart();
            QCOMPARE(charts.chart[2].Frozen, !row.locks());
            QCOMPARE(stop_lines(), lines);
            QVERIFY(window->isVisible());
            QVERIFY(window_.view().isVisible());
        });
        const bool frozen = charts.chart[2].Frozen;
        click_chart();
        QCOMPARE(charts.chart[2].Frozen, !frozen);
    }

    // The end of the desktop session.

    void a_session_that_lets_nobody_ask_ends_over_every_window_data() { add_all_windows(); }
    void a_session_that_lets_nobody_ask_ends_over_every_window() {
        const window_row& row = this_window();
        while_open(row, [&](QWidget* window) {
            sensor::state.measure_running = true;
            const auto lines = stop_lines();
            QVERIFY(window_.view().end_session([] { return false; }));
            QCOMPARE(stop_lines(), lines + 1);
            QVERIFY(window->isVisible());
            QCOMPARE(shown_window("FrmAbort") != nullptr, row.name == QString("FrmAbort"));
            QVERIFY(sensor::state.measure_running);
        });
    }

    void the_stop_lock_asks_over_every_window_and_continue_keeps_both_data() { add_all_windows(); }
    void the_stop_lock_asks_over_every_window_and_continue_keeps_both() {
        const window_row& row = this_window();
        while_open(row, [&](QWidget* window) {
            sensor::state.measure_running = true;
            QLineEdit* const box = text_box(row, window);
            if (box != nullptr) press_keys("12");
            bool asked = false;
            QTimer look;
            look.setInterval(5);
            connect(&look, &QTimer::timeout, this, [&] {
                QWidget* const lock = shown_window("FrmAbort");
                if (lock == nullptr) return;
                look.stop();
                asked = true;
                auto* const go_on = lock->findChild<QPushButton*>("CmdContinue");
                QTest::mouseClick(lock->windowHandle(), Qt::LeftButton, {},
                                  go_on->mapTo(lock, go_on->rect().center()));
            });
            // The lock that is up already belongs to another request and is not answered by this one.
            const bool lock_itself = row.name == QString("FrmAbort");
            if (!lock_itself) look.start();
            QVERIFY(!window_.view().end_session([] { return true; }));
            QCOMPARE(asked, !lock_itself);
            QTRY_COMPARE(shown_window("FrmAbort") != nullptr, lock_itself);
            QVERIFY(sensor::state.measure_running);
            QVERIFY(window->isVisible());
            to_front(window);
            if (box == nullptr) return;
            press_keys("34");
            QCOMPARE(box->text(), QString("1234"));
        });
    }

    void a_session_that_ends_while_nothing_measures_ends_the_program_data() {
        add_all_windows([](const window_row& row) { return row.name != QString("FrmAbort"); });
    }
    void a_session_that_ends_while_nothing_measures_ends_the_program() {
        QProcess program;
        program.start(QCoreApplication::applicationFilePath(),
                      {"ended_session", "-silent", QString("ends:%1").arg(this_window().name)});
        QVERIFY(program.waitForFinished(20'000));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        QVERIFY(program.readAllStandardOutput().endsWith("open\n"));
    }

  private:
    /// Closes a window with something typed into it, twice: it is gone, nothing else has changed, and it
    /// opens again without what was typed.
    template <class Close> void expect_cancel(const window_row& row, Close close_it) {
        const bool stays = row.kind == window_kind::beside;
        for (int time = 1; time <= 2; ++time) {
            while_open(row, [&](QWidget* window) {
                if (row.text_box != nullptr)
                    QVERIFY(window->findChild<QLineEdit*>(row.text_box)->text() != "x7");
                const program_state before;
                if (text_box(row, window) != nullptr) press_keys("x7");
                if (time == 1 || !stays) close_it(window);
                if (stays) QTest::qWait(50); // and does not go a little later
                QTRY_COMPARE(shown_window(row.name) != nullptr, stays);
                QTest::qWait(5); // what follows a closing has followed
                QVERIFY(program_state() == before);
                QCOMPARE(sensor::state.measure_running, row.name == QString("FrmAbort"));
            });
        }
    }

    void click_chart() const {
        const QWidget* const chart = window_.widget("chart", 2);
        mainfrm_view& view = window_.view();
        QTest::mouseClick(view.windowHandle(), Qt::LeftButton, {},
                          chart->mapTo(&view, chart->rect().center()));
    }

    static qsizetype stop_lines() {
        return written_file("TY_all_events.txt").count("Tyxo Data Logger software stopped !");
    }

    started_window window_;
    QTimer answers_; // to message boxes
    int boxes_ = 0;
};

/// A program of its own for one window: the session ends while it is open, and nothing measures.
class ended_session : public QObject {
    Q_OBJECT

  private slots:
    void ends_data() { add_all_windows(); }
    void ends() {
        started_window window;
        window.start(all_windows_settings);
        sensor::state.channels[0].param_valid = true;
        while_open(this_window(), [&](QWidget*) {
            std::puts("open");
            std::fflush(stdout);
            window.view().end_session([] { return true; });
            std::puts("still there");
        });
        QFAIL("the program goes on");
    }
};

static const desktop_test<window_closing_test> known;
static const desktop_test<ended_session> known_program;
#include "window_closing_test.moc"
