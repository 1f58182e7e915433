// The dialog "Setup Password" with its real widgets: opened from the menu, typed into, answered by keys.

#include "desktop/desktop_test.h"
#include "desktop/started_window.h"
#include "dialogs/frmpwd.h"
#include "settings/ini.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

using namespace tyxo;

namespace {

constexpr const char* settings_text = "[tyxo]\r\n"
                                      "upd_periode= 250\r\n"
                                      "max_sensors= 1\r\n"
                                      "passwd=Ruhe7\r\n";

} // namespace

class password_view_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { window_.start(settings_text); }
    void init() {
        Ini::ini_write("passwd", "Ruhe7");
        open();
    }
    void cleanup() {
        if (dialog_->isVisible()) close_with_escape(dialog_);
    }
    void cleanupTestCase() { window_.end(); }

    void the_menu_opens_it_with_its_texts() {
        QCOMPARE(dialog_->windowTitle(), QString("Setup Password"));
        QCOMPARE(dialog_->windowModality(), Qt::WindowModal);
        QCOMPARE(dialog_->findChild<QGroupBox*>("Frame1")->title(), QString("Change password"));
        QStringList labels;
        for (const auto* const label : dialog_->findChildren<QLabel*>())
            labels << label->text() + " -> " + label->buddy()->objectName();
        QCOMPARE(labels, QStringList({"Enter old password -> oldpasswd", "Enter new password -> newpasswd",
                                      "Confirm new password -> newpasswd2"}));
        QVERIFY(!button(dialog_, "CmdOK", "OK")->isEnabled());
        QVERIFY(button(dialog_, "CmdCancel", "Cancel")->isEnabled());
        QCOMPARE(dialog_->focusWidget(), box("oldpasswd"));
        check_texts(dialog_);
    }

    void every_box_has_an_accessible_name_and_masks_nothing() {
        for (const auto& [name, label] :
             {std::pair("oldpasswd", "Enter old password"), std::pair("newpasswd", "Enter new password"),
              std::pair("newpasswd2", "Confirm new password")}) {
            QCOMPARE(box(name)->accessibleName(), QString(label));
            QCOMPARE(box(name)->echoMode(), QLineEdit::Normal);
        }
    }

    void the_old_password_enables_ok_at_its_last_letter_and_one_more_disables_it() {
        type("oldpasswd", "ruhe7");
        QTRY_COMPARE(frmpwd::state.oldpasswd.Text, std::string("ruhe7"));
        QVERIFY(!ok()->isEnabled());
        box("oldpasswd")->clear();
        type("oldpasswd", "Ruhe7");
        QTRY_VERIFY(ok()->isEnabled());
        type("oldpasswd", "x");
        QTRY_VERIFY(!ok()->isEnabled());
    }

    void keys_alone_change_the_password() {
        type("oldpasswd", "Ruhe7");
        QTRY_VERIFY(ok()->isEnabled());
        for (const char* const text : {"Neu8", "Neu8"}) {
            QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
            QTest::keyClicks(dialog_->focusWidget(), text);
        }
        QTest::keyClick(dialog_->focusWidget(), Qt::Key_Return);
        QTRY_VERIFY(!dialog_->isVisible());
        QCOMPARE(Ini::ini_read("passwd"), std::string("Neu8"));
    }

    void an_umlaut_is_stored_in_the_files_character_set() {
        Ini::ini_write("passwd", "");
        type("oldpasswd", "x");
        QTest::keyClick(box("oldpasswd"), Qt::Key_Backspace);
        QTRY_VERIFY(ok()->isEnabled());
        for (const char* const name : {"newpasswd", "newpasswd2"}) {
            box(name)->setFocus();
            QTest::sendKeyEvent(QTest::Click, box(name), Qt::Key_unknown,
                                QString::fromUtf8("\xC3\xBC\xE2\x82\xAC"), Qt::NoModifier);
        }
        QTest::mouseClick(ok(), Qt::LeftButton);
        QTRY_VERIFY(!dialog_->isVisible());
        QCOMPARE(Ini::ini_read("passwd"), std::string("\xFC\x80"));
    }

    void enter_does_nothing_before_the_old_password_is_right() {
        type("newpasswd", "a");
        type("newpasswd2", "a");
        QTest::keyClick(dialog_->focusWidget(), Qt::Key_Return);
        QTest::qWait(30);
        QVERIFY(dialog_->isVisible());
        QCOMPARE(Ini::ini_read("passwd"), std::string("Ruhe7"));
    }

    void different_inputs_are_told_and_the_dialog_stays_with_its_contents() {
        type("oldpasswd", "Ruhe7");
        type("newpasswd", "Neu8");
        type("newpasswd2", "neu8");
        QTRY_VERIFY(ok()->isEnabled());
        QString text;
        auto icon = QMessageBox::NoIcon;
        QTimer look;
        connect(&look, &QTimer::timeout, this, [&] {
            auto* const shown = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (shown == nullptr) return;
            look.stop();
            text = shown->text();
            icon = shown->icon();
            shown->button(QMessageBox::Ok)->click();
        });
        look.start(5);
        QTest::mouseClick(ok(), Qt::LeftButton);
        QCOMPARE(text, QString("New password inputs different !! \nPlease enter password again ! "));
        QCOMPARE(icon, QMessageBox::Critical);
        window_.show_state();
        QVERIFY(dialog_->isVisible());
        QCOMPARE(box("oldpasswd")->text(), QString("Ruhe7"));
        QCOMPARE(box("newpasswd")->text(), QString("Neu8"));
        QCOMPARE(box("newpasswd2")->text(), QString("neu8"));
        QCOMPARE(Ini::ini_read("passwd"), std::string("Ruhe7"));
    }

    void cancel_escape_and_the_frame_store_nothing_and_it_opens_empty_again() {
        const QByteArray before = settings_file();
        for (const int way : {0, 1, 2}) {
            type("oldpasswd", "Ruhe7");
            type("newpasswd", "Neu8");
            type("newpasswd2", "Neu8");
            if (way == 0) QTest::mouseClick(button(dialog_, "CmdCancel", "Cancel"), Qt::LeftButton);
            if (way == 1) QTest::keyClick(dialog_->focusWidget(), Qt::Key_Escape);
            if (way == 2) dialog_->close();
            QTRY_VERIFY(!dialog_->isVisible());
            QCOMPARE(settings_file(), before);
            open();
            for (const char* const name : {"oldpasswd", "newpasswd", "newpasswd2"})
                QCOMPARE(box(name)->text(), QString());
            QVERIFY(!ok()->isEnabled());
            QCOMPARE(dialog_->focusWidget(), box("oldpasswd"));
        }
    }

    void tab_follows_the_eye() {
        type("oldpasswd", "Ruhe7");
        QTRY_VERIFY(ok()->isEnabled());
        for (const char* const next : {"newpasswd", "newpasswd2", "CmdOK", "CmdCancel", "oldpasswd"}) {
            QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
            QCOMPARE(dialog_->focusWidget()->objectName(), QString(next));
        }
    }

  private:
    QLineEdit* box(const char* name) const { return dialog_->findChild<QLineEdit*>(name); }
    QPushButton* ok() const { return dialog_->findChild<QPushButton*>("CmdOK"); }

    void type(const char* name, const char* text) const {
        box(name)->setFocus();
        QTest::keyClicks(box(name), text);
    }
    void open() {
        window_.open_menu_entry("Setup_menue", "setup_passwd");
        dialog_ = window_.dialog("frmpwd");
        QTRY_VERIFY(dialog_->isVisible());
    }

    started_window window_;
    QDialog* dialog_ = nullptr;
};

static const desktop_test<password_view_test> known;
#include "password_view_test.moc"
