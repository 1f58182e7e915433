// The stop lock with its real widgets before each request that it guards: one channel, the program, the
// session.

#include "desktop/desktop_test.h"
#include "desktop/stop_lock_window.h"

using namespace tyxo;

class stop_lock_requests_test : public stop_lock_window {
    Q_OBJECT

  private slots:
    void initTestCase() { start(); }
    void init() { measure(); }
    void cleanupTestCase() { window_.end(); }

    void continue_leaves_quit_disabled_and_the_frame_still_closes() {
        ask([&] { QTest::mouseClick(continue_, Qt::LeftButton); });
        window_.show_state();
        QVERIFY(!window_.view().findChild<QAction*>("Quit")->isEnabled());
        const auto before = stop_lines();
        const auto look = [&] { QCOMPARE(stop_lines(), before + 1); };
        ask_by(look, [&] { window_.view().close(); });
        QVERIFY(window_.view().isVisible());
        QVERIFY(sensor::state.measure_running);
        QCOMPARE(stop_lines(), before + 1);
    }

    void the_menus_exit_asks_too() {
        ask_by([] {}, [&] { window_.open_menu_entry("file", "Quit"); });
        QVERIFY(window_.view().isVisible());
    }

    void one_channel_is_stopped_behind_the_same_question_which_names_it() {
        sensor::state.channels[0].location = "Engine <b>1</b> & pump";
        when_asked([&] {
            auto* const what = lock_->findChild<QLabel*>("Lbl_what");
            QCOMPARE(what->text(), QString("Stops channel 1: Engine <b>1</b> & pump"));
            QCOMPARE(what->textFormat(), Qt::PlainText);
            type(password);
            QTest::keyClick(lock_->focusWidget(), Qt::Key_Space);
        });
        window_.open_menu_entry("start", "start_channel(0)");
        QTRY_VERIFY(!sensor::state.channel_running[0]);
        QVERIFY(sensor::state.channel_running[1]);
        QVERIFY(sensor::state.measure_running);
    }

    void the_windows_go_on_while_it_is_up() {
        ask([&] {
            auto* const bar = window_.view().findChild<QLabel*>("StatusBar(1)");
            desktop::run_handler(desktop::source::device, [] { indicators.StatusBar = "news"; });
            QTRY_COMPARE(bar->text(), QString("news"));
            QVERIFY(lock_->isVisible());
        });
    }

    void keys_typed_while_a_tick_waits_answer_it() {
        std::optional<bool> stopped_in_the_tick;
        ask([&] {
            desktop::run_handler(desktop::source::device, [&] {
                QTimer::singleShot(0, lock_, [&] {
                    type(password);
                    QVERIFY(!stop_->isEnabled());
                    desktop::run_handler(desktop::source::operator_, FrmAbort::CmdStop_click);
                });
                for (int round = 0; round < 20; ++round)
                    wait_events(2);
                stopped_in_the_tick = FrmAbort::GetStatus() != 0;
            });
            QTRY_VERIFY(!FrmAbort::state.form.Visible);
        });
        QCOMPARE(stopped_in_the_tick, std::optional(false));
        QVERIFY(!sensor::state.measure_running);
    }

    void a_minimised_main_window_comes_back_with_the_question() {
        window_.view().showMinimized();
        ask_by([&] { QVERIFY(!window_.view().isMinimized()); }, [&] { window_.view().close(); });
        window_.view().showNormal();
    }

    // The end of the desktop session.

    void a_session_is_kept_by_continue_logging() {
        const auto before = stop_lines();
        bool asked = false;
        when_asked([&] {
            asked = true;
            QTest::mouseClick(continue_, Qt::LeftButton);
        });
        QVERIFY(!window_.view().end_session([] { return true; }));
        QVERIFY(asked);
        QCOMPARE(stop_lines(), before + 1);
        QVERIFY(sensor::state.measure_running);
    }

    void a_session_that_lets_nobody_ask_goes_on_ending() {
        const auto before = stop_lines();
        QVERIFY(window_.view().end_session([] { return false; }));
        QVERIFY(!is_up());
        QCOMPARE(stop_lines(), before + 1);
        QVERIFY(sensor::state.measure_running);
    }

    void a_session_that_ends_while_a_tick_waits_is_kept_and_the_operator_asked_behind_the_tick() {
        const auto before = stop_lines();
        bool kept = false;
        bool asked_in_the_tick = false;
        bool asked = false;
        when_asked([&] { asked = true; });
        desktop::run_handler(desktop::source::device, [&] {
            kept = !window_.view().end_session([] {
                qFatal("nobody may wait here");
                return true;
            });
            wait_events(30);
            asked_in_the_tick = FrmAbort::state.form.Visible;
        });
        QVERIFY(kept);
        QVERIFY(!asked_in_the_tick);
        QTRY_VERIFY(asked);
        QTRY_VERIFY(!is_up());
        QCOMPARE(stop_lines(), before + 1);
    }
};

static const desktop_test<stop_lock_requests_test> known;
#include "stop_lock_requests_test.moc"
