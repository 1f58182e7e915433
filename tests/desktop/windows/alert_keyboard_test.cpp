// Who has the keyboard while the alarm alert is on the screen, with real widgets.

#include "desktop/alert_window.h"
#include "desktop/desktop_test.h"
#include "desktop/started_window.h"
#include "platform/message_box.h"

#include <QElapsedTimer>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QTimer>

using namespace tyxo;

class alert_keyboard_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        qputenv("PULSE_SERVER", "unix:no-sound-server");
        window_.start(alert_settings);
        alert_ = alert_window();
        QVERIFY(alert_ != nullptr);
    }
    void init() {
        window_.view().activateWindow();
        QTRY_VERIFY(window_.view().isActiveWindow());
    }
    void cleanup() { end_alarms(); }
    void cleanupTestCase() { window_.end(); }

    void it_takes_the_keyboard_when_nobody_types() {
        raise_alarm(0);
        QTRY_VERIFY(alert_->isActiveWindow());
        QCOMPARE(QApplication::focusWidget(), part("CmdAck"));
    }

    void it_takes_no_key_until_it_has_had_the_keyboard_for_a_while() {
        raise_alarm(0);
        QTRY_VERIFY(alert_->isActiveWindow());
        QElapsedTimer has_keyboard;
        has_keyboard.start();
        while (has_keyboard.elapsed() < 550) {
            for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Escape})
                QTest::keyClick(alert_->windowHandle(), key);
            QTest::qWait(50);
        }
        QVERIFY(alert_->isVisible());
        QTest::keyPress(alert_->windowHandle(), Qt::Key_Space);
        QTest::qWait(250);
        QTest::keyRelease(alert_->windowHandle(), Qt::Key_Space);
        QVERIFY(alert_->isVisible());
        QTest::keyClick(alert_->windowHandle(), Qt::Key_Return);
        expect_confirmed();
    }

    void a_text_box_gets_the_keyboard_back_that_the_window_system_gave_to_the_alert() {
        raise_alarm(0);
        QWidget* const form = open_gateway_window();
        to_front(form);
        auto* const box = form->findChild<QLineEdit*>("Txt_IPport");
        box->setFocus();
        box->clear();
        for (const char letter : {'5', '0', '2'}) {
            alert_->activateWindow();
            QTest::keyClick(alert_->windowHandle(), letter);
            QTRY_VERIFY(form->isActiveWindow());
        }
        QTest::keyClick(alert_->windowHandle(), Qt::Key_Space);
        QVERIFY(alert_->isVisible());
        QCOMPARE(box->text().trimmed(), QString("502"));
        QTest::mouseClick(form->findChild<QPushButton*>("Cmd_close"), Qt::LeftButton);
        QTRY_VERIFY(alert_->isActiveWindow());
    }

    void it_leaves_the_keyboard_to_a_text_box_until_its_window_is_left() {
        QWidget* const form = open_gateway_window();
        QTRY_VERIFY(form->isActiveWindow());
        auto* const box = form->findChild<QLineEdit*>("Txt_IPport");
        box->setFocus();
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(box));
        box->clear();
        QTest::keyClick(QApplication::focusWindow(), Qt::Key_1);
        QTest::qWait(100);
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(box));
        raise_alarm(0);
        QTest::qWait(700);
        QTest::keyClick(QApplication::focusWindow(), Qt::Key_2);
        QCOMPARE(box->text(), QString("12"));
        QVERIFY(!alert_->isActiveWindow());
        QTest::mouseClick(form->findChild<QPushButton*>("Cmd_close"), Qt::LeftButton);
        QTRY_VERIFY(!form->isVisible());
        QTRY_VERIFY(alert_->isActiveWindow());
        QCOMPARE(QApplication::focusWidget(), part("CmdAck"));
    }

    void a_message_box_does_not_lock_it_and_keeps_the_keyboard() {
        bool went_well = false;
        QTimer::singleShot(100, this, [&] {
            auto* const box = window_.view().findChild<QMessageBox*>("message_box");
            QVERIFY(box != nullptr);
            raise_all_alarms();
            QVERIFY(!alert_->isActiveWindow());
            QTest::mouseClick(alert_->windowHandle(), Qt::LeftButton, {}, place_of_button());
            expect_confirmed();
            QVERIFY(box->isVisible());
            box->activateWindow();
            QTRY_VERIFY(box->isActiveWindow());
            take_status(0, 0);
            raise_alarm(0);
            QTest::keyClick(QApplication::focusWindow(), Qt::Key_Return);
            went_well = true;
        });
        desktop::run_handler(desktop::source::operator_,
                             [] { message_box("Question", box_icon::critical, box_buttons::ok_cancel); });
        QVERIFY(went_well);
        QVERIFY(alert_->isVisible());
        QTRY_VERIFY(alert_->isActiveWindow());
    }

  private:
    QWidget* open_gateway_window() {
        window_.open_menu_entry("Setup_menue", "setup_tcp");
        if (!QTest::qWaitFor([] { return shown_window("FrmSetupTCP") != nullptr; }))
            qFatal("it does not open");
        return shown_window("FrmSetupTCP");
    }
    QWidget* part(const char* name) const { return alert_->findChild<QWidget*>(name); }
    QPoint place_of_button() const {
        const QWidget* const button = part("CmdAck");
        return button->mapTo(alert_, button->rect().center());
    }

    started_window window_;
    QDialog* alert_ = nullptr;
};

static const desktop_test<alert_keyboard_test> known;
#include "alert_keyboard_test.moc"
