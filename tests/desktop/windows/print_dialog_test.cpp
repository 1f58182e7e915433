// The dialog "Select print" with its real widgets: opened from the menu, clicked and typed into as an
// operator does.

#include "desktop/desktop_test.h"
#include "desktop/started_window.h"
#include "dialogs/frmselectprint.h"
#include "link/channel_rec.h"

#include <QTimer>

using namespace tyxo;

namespace {

constexpr const char* settings_text = "[tyxo]\r\n"
                                      "upd_periode= 250\r\n"
                                      "max_sensors= 2\r\n"
                                      "location 1=Engine & pump\r\n"
                                      "location 2=K\xFChlung\r\n";

} // namespace

class print_dialog_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { window_.start(settings_text); }

    void cleanupTestCase() { window_.end(); }

    void the_menu_opens_the_print_dialog() {
        open_print();
        QCOMPARE(print_->windowTitle(), QString("Select print"));
        QCOMPARE(print_->windowModality(), Qt::WindowModal);
        QCOMPARE(print_->findChild<QLabel*>("Lblprintheader")->text(), QString("xy - diagram printout"));
        QCOMPARE(print_->findChild<QGroupBox*>("Frmprint")->title(), QString("Sensor select"));
        QCOMPARE(option(print_, "optPrint", 0)->text(), QString("1:   Engine && pump"));
        QCOMPARE(option(print_, "optPrint", 1)->text(), QString::fromUtf8("2:   K\xC3\xBChlung"));
        QVERIFY(option(print_, "optPrint", 0)->isChecked());
        QVERIFY(option(print_, "optPrint", 1)->isEnabled());
        QVERIFY(!option(print_, "optPrint", 2)->isEnabled());
        QVERIFY(!option(print_, "optPrint", 3)->isEnabled());
        close_with_escape(print_);
        QVERIFY(!frmselectprint::state.form.Visible);
    }

    void a_choice_counts_at_once_and_survives_cancel() {
        open_print();
        QTest::mouseClick(option(print_, "optPrint", 1), Qt::LeftButton, {}, QPoint(8, 8));
        QTRY_COMPARE(frmselectprint::state.print_channel, i16{1});
        QTRY_COMPARE(print_->findChild<QLabel*>("LblPrint")->text(),
                     QString("Prints channel 2, the last 2 min"));
        QTest::mouseClick(option(print_, "optPrint", 2), Qt::LeftButton, {}, QPoint(8, 8));
        QTest::mouseClick(button(print_, "cmd_cancel", "cancel"), Qt::LeftButton);
        QTRY_VERIFY(!print_->isVisible());
        QCOMPARE(frmselectprint::state.print_channel, i16{1});
        open_print();
        QVERIFY(option(print_, "optPrint", 1)->isChecked());
        close_with_escape(print_);
        QCOMPARE(frmselectprint::state.print_channel, i16{1});
    }

    void no_option_is_selected_for_a_channel_that_went_out_of_use() {
        frmselectprint::state.print_channel = 3;
        open_print();
        for (int index = 0; index < 4; ++index)
            QVERIFY(!option(print_, "optPrint", index)->isChecked());
        close_with_escape(print_);
        QCOMPARE(frmselectprint::state.print_channel, i16{3});
    }

    void ok_and_enter_close_before_the_printer_is_asked() {
        for (const bool by_enter : {false, true}) {
            frmselectprint::state.print_channel = 0;
            open_print();
            bool open_meanwhile = false;
            QTimer printer_dialogs; // whatever the printing asks is declined
            connect(&printer_dialogs, &QTimer::timeout, this, [&] {
                auto* const modal = qobject_cast<QDialog*>(QApplication::activeModalWidget());
                if (modal == nullptr || modal == print_) return;
                open_meanwhile = open_meanwhile || print_->isVisible();
                modal->reject();
            });
            printer_dialogs.start(50);
            if (by_enter) {
                QTest::keyClick(print_, Qt::Key_Return);
            } else {
                QTest::mouseClick(button(print_, "Cmd_ok", "ok"), Qt::LeftButton);
            }
            QVERIFY(!print_->isVisible());
            QTest::qWait(100);
            QVERIFY(!print_->isVisible());
            QVERIFY(!open_meanwhile);
            QVERIFY(!frmselectprint::state.form.Visible);
        }
    }

    void no_text_is_cut_off() {
        sensor::state.channels[0].location =
            "A location as long as the settings file holds one, sixty-nine letters";
        open_print();
        check_texts(print_);
        close_with_escape(print_);
    }

  private:
    void open_print() {
        window_.open_menu_entry("file", "prt");
        print_ = window_.dialog("frmselectprint");
        QTRY_VERIFY(print_->isVisible());
    }

    started_window window_;
    QDialog* print_ = nullptr;
};

static const desktop_test<print_dialog_test> known;
#include "print_dialog_test.moc"
