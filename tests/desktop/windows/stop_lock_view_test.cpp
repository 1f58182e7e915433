// The stop lock with its real widgets, before the command of all channels: keys and clicks as an operator
// gives them.

#include "desktop/desktop_test.h"
#include "desktop/stop_lock_window.h"

using namespace tyxo;

class stop_lock_view_test : public stop_lock_window {
    Q_OBJECT

  private slots:
    void initTestCase() { start(); }
    void init() { measure(); }
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
            QVERIFY(sensor::state.measure_running);
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
        for (const auto& passwords :
             {std::pair("R\xFChe7", ""), std::pair("R\xFChe7", "wrong"), std::pair("", "")}) {
            FrmAbort::SetPassword(passwords.first);
            ask([&] {
                type(passwords.second);
                QCOMPARE(lock_->focusWidget(), box_);
                for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
                    QTest::keyClick(box_, key);
                QTest::qWait(30);
                QVERIFY(lock_->isVisible());
            });
            QVERIFY(sensor::state.measure_running);
        }
    }

    void enter_and_space_press_the_button_with_the_focus() {
        for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
            sensor::state.measure_running = true;
            ask([&] {
                type(password);
                QTest::keyClick(lock_->focusWidget(), key);
            });
            QVERIFY(!sensor::state.measure_running);
            sensor::state.measure_running = true;
            ask([&] {
                type(password);
                QTest::keyClick(lock_->focusWidget(), Qt::Key_Tab);
                QCOMPARE(lock_->focusWidget(), continue_);
                QTest::keyClick(continue_, key);
            });
            QVERIFY(sensor::state.measure_running);
            QVERIFY(!indicators.Quit.Enabled);
        }
    }

    void a_click_on_stop_stops_and_one_on_continue_does_not() {
        ask([&] {
            type(password);
            QTest::mouseClick(continue_, Qt::LeftButton);
        });
        QVERIFY(sensor::state.measure_running);
        ask([&] {
            type(password);
            QTest::mouseClick(stop_, Qt::LeftButton);
        });
        QVERIFY(!sensor::state.measure_running);
        QVERIFY(!sensor::state.channel_running[0]);
    }

    void escape_and_the_windows_frame_do_not_stop() {
        ask([&] {
            type(password);
            QTest::keyClick(lock_, Qt::Key_Escape);
        });
        QVERIFY(sensor::state.measure_running);
        ask([&] {
            type(password);
            lock_->close();
        });
        QVERIFY(sensor::state.measure_running);
        QCOMPARE(FrmAbort::GetStatus(), i16{0});
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
        FrmAbort::SetPassword("");
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
        FrmAbort::SetPassword("");
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
};

static const desktop_test<stop_lock_view_test> known;
#include "stop_lock_view_test.moc"
