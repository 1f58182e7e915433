// The stop lock with its real widgets, before all three requests: keys and clicks as an operator gives them.

#include "desktop/settings_file.h"
#include "desktop/started_window.h"
#include "dialogs/frmabort.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "platform/desktop/handlers.h"
#include "platform/program.h"

#include <QLineEdit>
#include <QTimer>

#include <functional>
#include <optional>

using namespace tyxo;

namespace {

constexpr const char* settings_text = "[tyxo]\r\n"
                                      "upd_periode= 250\r\n"
                                      "max_sensors= 2\r\n"
                                      "passwd=R\xFChe7\r\n"
                                      "eventfile_ena= 1\r\n"
                                      "evtpath=.\\\r\n";

const QString password = QString::fromUtf8("R\xC3\xBChe7");

} // namespace

class stop_lock_view_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        window_.start(settings_text);
        lock_ = window_.dialog("FrmAbort");
        QVERIFY(lock_ != nullptr);
        box_ = lock_->findChild<QLineEdit*>("TextPassword");
        stop_ = lock_->findChild<QPushButton*>("CmdStop");
        continue_ = lock_->findChild<QPushButton*>("CmdContinue");
        QVERIFY(box_ != nullptr && stop_ != nullptr && continue_ != nullptr);
    }

    void init() {
        QTRY_VERIFY(!lock_->isVisible());
        SetPassword("R\xFChe7");
        sensor::measure_running = true;
        sensor::channel_running = {true, true, false, false};
        indicators.Quit.Enabled = true;
        window_.show_state();
    }

    void cleanupTestCase() { window_.end(); }

    void it_opens_in_front_with_its_texts_and_the_focus_in_the_box() {
        ask([&] {
            QCOMPARE(lock_->windowTitle(), QString("stop data logging"));
            QCOMPARE(lock_->windowModality(), Qt::WindowModal);
            QCOMPARE(QApplication::activeModalWidget(), lock_);
            QCOMPARE(lock_->findChild<QLabel*>("Label1")->text(),
                     QString("To stop data-logging enter password :"));
            QCOMPARE(lock_->findChild<QLabel*>("Lbl_what")->text(), QString("Stops all channels"));
            QCOMPARE(stop_->text(), QString("Stop Logging"));
            QCOMPARE(continue_->text(), QString("Continue Logging"));
            QCOMPARE(lock_->focusWidget(), box_);
            QCOMPARE(box_->text(), QString());
            QVERIFY(!stop_->isEnabled());
            QVERIFY(continue_->isEnabled());
            QCOMPARE(lock_->findChildren<QWidget*>(QRegularExpression("^Image[12]$")).size(), 2);
            check_texts(lock_);
        });
    }

    void typing_is_not_masked() {
        ask([&] {
            type("abc");
            QCOMPARE(box_->echoMode(), QLineEdit::Normal);
            QCOMPARE(box_->displayText(), QString("abc"));
        });
    }

    void the_last_letter_enables_stop_and_moves_the_focus_at_once() {
        ask([&] {
            type(password.chopped(1));
            QVERIFY(!stop_->isEnabled());
            QCOMPARE(lock_->focusWidget(), box_);
            type(password.right(1));
            QVERIFY(stop_->isEnabled());
            QCOMPARE(lock_->focusWidget(), stop_);
        });
    }

    void one_more_letter_reaches_the_box_only_after_the_operator_went_back_and_disables_stop() {
        ask([&] {
            type(password);
            type("x");
            QCOMPARE(box_->text(), password);
            QVERIFY(stop_->isEnabled());
            QTest::mouseClick(box_, Qt::LeftButton);
            QCOMPARE(lock_->focusWidget(), box_);
            QTest::keyClick(box_, Qt::Key_End);
            type("x");
            QCOMPARE(box_->text(), password + "x");
            QVERIFY(!stop_->isEnabled());
            QTest::keyClick(box_, Qt::Key_Backspace);
            QVERIFY(stop_->isEnabled());
            QCOMPARE(lock_->focusWidget(), stop_);
        });
    }

    void other_case_and_other_umlauts_do_not_match() {
        for (const char* const text : {"r\xC3\xBChe7", "R\xC3\x9CHE7", "Ruhe7", " R\xC3\xBChe7"}) {
            ask([&] {
                type(QString::fromUtf8(text));
                QCOMPARE(box_->text(), QString::fromUtf8(text));
                QVERIFY(!stop_->isEnabled());
                QTest::mouseClick(stop_, Qt::LeftButton);
                QVERIFY(lock_->isVisible());
            });
            QVERIFY(sensor::measure_running);
        }
    }

    void a_pasted_password_counts_as_typed() {
        ask([&] {
            box_->insert(password); // as the clipboard's text comes
            emit box_->textEdited(box_->text());
            QVERIFY(stop_->isEnabled());
            QCOMPARE(lock_->focusWidget(), stop_);
        });
    }

    void enter_in_the_box_neither_stops_nor_closes() {
        for (const auto& [stored, typed] :
             {std::pair("R\xFChe7", ""), std::pair("R\xFChe7", "wrong"), std::pair("", "")}) {
            SetPassword(stored);
            ask([&] {
                type(typed);
                QCOMPARE(lock_->focusWidget(), box_);
                for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
                    QTest::keyClick(box_, key);
                QTest::qWait(30);
                QVERIFY(lock_->isVisible());
            });
            QVERIFY(sensor::measure_running);
        }
    }

    void enter_and_space_press_the_button_with_the_focus() {
        for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
            sensor::measure_running = true;
            ask([&] {
                type(password);
                QTest::keyClick(lock_->focusWidget(), key);
            });
            QVERIFY(!sensor::measure_running);
            sensor::measure_running = true;
            ask([&] {
                type(password);
                QTest::keyClick(lock_->focusWidget(), Qt::Key_Tab);
                QCOMPARE(lock_->focusWidget(), continue_);
                QTest::keyClick(continue_, key);
            });
            QVERIFY(sensor::measure_running);
            QVERIFY(!indicators.Quit.Enabled);
        }
    }

    void a_click_on_stop_stops_and_one_on_continue_does_not() {
        ask([&] {
            type(password);
            QTest::mouseClick(continue_, Qt::LeftButton);
        });
        QVERIFY(sensor::measure_running);
        ask([&] {
            type(password);
            QTest::mouseClick(stop_, Qt::LeftButton);
        });
        QVERIFY(!sensor::measure_running);
        QVERIFY(!sensor::channel_running[0]);
    }

    void escape_and_the_windows_frame_do_not_stop() {
        ask([&] {
            type(password);
            QTest::keyClick(lock_, Qt::Key_Escape);
        });
        QVERIFY(sensor::measure_running);
        ask([&] {
            type(password);
            lock_->close();
        });
        QVERIFY(sensor::measure_running);
        QCOMPARE(GetStatus(), i16{0});
    }

    void it_opens_anew_every_time() {
        ask([&] { type(password); });
        ask([&] {
            QCOMPARE(box_->text(), QString());
            QVERIFY(!stop_->isEnabled());
            QCOMPARE(lock_->focusWidget(), box_);
            QVERIFY(!lock_->isHidden());
        });
    }

    void with_an_empty_password_stop_is_enabled_and_the_focus_is_in_the_box() {
        SetPassword("");
        ask([&] {
            QVERIFY(stop_->isEnabled());
            QCOMPARE(lock_->focusWidget(), box_);
            type("x");
            QVERIFY(!stop_->isEnabled());
            QTest::keyClick(box_, Qt::Key_Backspace);
            QVERIFY(stop_->isEnabled());
            QCOMPARE(lock_->focusWidget(), stop_);
        });
    }

    void tab_goes_from_the_box_to_the_buttons() {
        SetPassword("");
        ask([&] {
            for (QWidget* const next : {static_cast<QWidget*>(stop_), static_cast<QWidget*>(continue_),
                                        static_cast<QWidget*>(box_)}) {
                QTest::keyClick(lock_->focusWidget(), Qt::Key_Tab);
                QCOMPARE(lock_->focusWidget(), next);
            }
        });
    }

    void every_control_has_an_accessible_name() {
        ask([&] { QCOMPARE(box_->accessibleName(), QString("To stop data-logging enter password :")); });
    }

    void continue_leaves_quit_disabled_and_the_frame_still_closes() {
        ask([&] { QTest::mouseClick(continue_, Qt::LeftButton); });
        window_.show_state();
        QVERIFY(!window_.view().findChild<QAction*>("Quit")->isEnabled());
        const auto before = stop_lines();
        const auto look = [&] { QCOMPARE(stop_lines(), before + 1); };
        ask_by(look, [&] { window_.view().close(); });
        QVERIFY(window_.view().isVisible());
        QVERIFY(sensor::measure_running);
        QCOMPARE(stop_lines(), before + 1);
    }

    void the_menus_exit_asks_too() {
        ask_by([] {}, [&] { window_.open_menu_entry("file", "Quit"); });
        QVERIFY(window_.view().isVisible());
    }

    void one_channel_is_stopped_behind_the_same_question_which_names_it() {
        sensor::channels[0].location = "Engine <b>1</b> & pump";
        when_asked([&] {
            auto* const what = lock_->findChild<QLabel*>("Lbl_what");
            QCOMPARE(what->text(), QString("Stops channel 1: Engine <b>1</b> & pump"));
            QCOMPARE(what->textFormat(), Qt::PlainText);
            type(password);
            QTest::keyClick(lock_->focusWidget(), Qt::Key_Space);
        });
        window_.open_menu_entry("start", "start_channel(0)");
        QTRY_VERIFY(!sensor::channel_running[0]);
        QVERIFY(sensor::channel_running[1]);
        QVERIFY(sensor::measure_running);
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
                    desktop::run_handler(desktop::source::operator_, CmdStop_click);
                });
                for (int round = 0; round < 20; ++round)
                    wait_events(2);
                stopped_in_the_tick = GetStatus() != 0;
            });
            QTRY_VERIFY(!FrmAbort.form.Visible);
        });
        QCOMPARE(stopped_in_the_tick, std::optional(false));
        QVERIFY(!sensor::measure_running);
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
        QVERIFY(sensor::measure_running);
    }

    void a_session_that_lets_nobody_ask_goes_on_ending() {
        const auto before = stop_lines();
        QVERIFY(window_.view().end_session([] { return false; }));
        QVERIFY(!lock_->isVisible());
        QCOMPARE(stop_lines(), before + 1);
        QVERIFY(sensor::measure_running);
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
            asked_in_the_tick = FrmAbort.form.Visible;
        });
        QVERIFY(kept);
        QVERIFY(!asked_in_the_tick);
        QTRY_VERIFY(asked);
        QTRY_VERIFY(!lock_->isVisible());
        QCOMPARE(stop_lines(), before + 1);
    }

  private:
    /// Acts as soon as the lock is up. A lock that is still up behind that is left by its frame.
    void when_asked(std::function<void()> act) {
        auto* const look = new QTimer(this);
        look->setInterval(5);
        connect(look, &QTimer::timeout, this, [this, look, act = std::move(act)] {
            if (!lock_->isVisible()) return;
            look->stop();
            look->deleteLater();
            act();
            if (FrmAbort.form.Visible) lock_->reject();
        });
        look->start();
    }
    /// The command of all channels, and what the operator does while it asks.
    void ask(std::function<void()> act) {
        ask_by(std::move(act), [&] { window_.open_menu_entry("start", "startstop"); });
    }
    void ask_by(std::function<void()> act, const std::function<void()>& request) {
        bool asked = false;
        when_asked([&] {
            asked = true;
            act();
        });
        request();
        QTRY_VERIFY(asked); // a menu entry asks from the event loop
        QTRY_VERIFY(!lock_->isVisible());
    }
    /// Into whatever has the focus.
    void type(const QString& text) const {
        for (const QChar letter : text) {
            auto* const box = qobject_cast<QLineEdit*>(lock_->focusWidget());
            if (letter.unicode() < 128 || box == nullptr) {
                QTest::keyClick(lock_->focusWidget(), letter.toLatin1());
            } else {
                QTest::sendKeyEvent(QTest::Click, box, Qt::Key_unknown, QString(letter), Qt::NoModifier);
            }
        }
    }
    static qsizetype stop_lines() {
        return written_file("TY_all_events.txt").count("Tyxo Data Logger software stopped !");
    }

    started_window window_;
    QDialog* lock_ = nullptr;
    QLineEdit* box_ = nullptr;
    QPushButton* stop_ = nullptr;
    QPushButton* continue_ = nullptr;
};

QTEST_MAIN(stop_lock_view_test)
#include "stop_lock_view_test.moc"
