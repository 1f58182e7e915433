// The gateway's window with its real widgets: what it shows, its menus, its opening and closing.

#include "desktop/desktop_test.h"
#include "desktop/tcp_window.h"
#include "gateway/connection.h"
#include "gateway/frmsetuptcp.h"
#include "link/main_timers.h"
#include "settings/settings.h"

#include <QCheckBox>
#include <QMessageBox>
#include <QTimer>

#include <algorithm>

using namespace tyxo;

namespace {

constexpr int register_count = 123;

} // namespace

class frmsetuptcp_view_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { window_.start(tcp_settings); }
    void init() {
        if (!window_.is_open()) window_.open();
    }
    void cleanupTestCase() { window_.end(); }

    void the_menu_opens_it_beside_the_main_window() {
        QCOMPARE(window_.form()->windowTitle(), QString("Setup data transmission over Modbus TCP/IP"));
        QCOMPARE(window_.form()->windowModality(), Qt::NonModal);
        QVERIFY(window_.form()->width() <= 1000);
        QVERIFY(window_.form()->height() <= 760);
        QCOMPARE(window_.edit("Txt_IPadr")->text(), QString("127.0.0.1"));
        QCOMPARE(window_.edit("Txt_IPport")->text(), QString("502"));
        QCOMPARE(window_.edit("Txt_regbase")->text(), QString("1000"));
        QCOMPARE(window_.edit("Txt_sendbase")->text(), QString("40"));
        QCOMPARE(window_.edit("Txt_regnumber")->text(), QString("123"));
        QCOMPARE(window_.edit("Text5")->text(), QString("Disconnected"));
        QCOMPARE(window_.group("IP_frame")->title(), QString("TCP IP parameters"));
        QCOMPARE(window_.group("IP_Test_Frame")->title(),
                 QString("TCP IP manual transmission to holding registers"));
    }

    void controls_have_their_captions() {
        const std::vector<std::pair<const char*, const char*>> buttons{
            {"Cmd_save", "Save parameters"},
            {"Connect", "Connect"},
            {"cmd_discon", "Disconnect"},
            {"Cmd_close", "close"},
            {"Cmd_read_R", "Read registers"},
            {"Cmd_write_R", "Write Registers"},
            {"Check1", "Enable automatic TCP IP connection"},
            {"Check2", "Enable linear data over  TCP IP"},
            {"Check3", "Enable differential data over TCP IP"},
            {"Check4", "Enable system status over TCP IP"}};
        for (const auto& [name, caption] : buttons) {
            const auto* const control = window_.form()->findChild<QAbstractButton*>(name);
            QVERIFY2(control != nullptr, name);
            QCOMPARE(control->text(), QString(caption));
        }
        for (const char* text : {"Target IP address", "Target IP port", "Register base address  0 - 62300",
                                 "Status", "Start register", "number max.123"}) {
            const auto labels = window_.form()->findChildren<QLabel*>();
            QVERIFY2(std::any_of(labels.begin(), labels.end(),
                                 [&](const QLabel* label) {
                                     return label->text() == text && label->buddy() != nullptr &&
                                            label->buddy()->accessibleName() == text;
                                 }),
                     text);
        }
    }

    void the_menus_have_their_items() {
        const std::vector<std::pair<const char*, const char*>> items{{"Reg_content", "Register Content"},
                                                                     {"res_con", "Reset connection"},
                                                                     {"slow", "slow"},
                                                                     {"medium", "medium"},
                                                                     {"fast", "fast"}};
        for (const auto& [name, caption] : items) {
            QVERIFY2(window_.item(name) != nullptr, name);
            QCOMPARE(window_.item(name)->text(), QString(caption));
            QCOMPARE(window_.item(name)->isCheckable(), QString(name) != "res_con");
        }
        QCOMPARE(window_.form()->findChild<QMenu*>("TCP_view")->title(), QString("View"));
        QCOMPARE(window_.form()->findChild<QMenu*>("data_refresh")->title(), QString("Data refresh"));
    }

    void every_register_has_its_box() {
        for (int index = 0; index < register_count; ++index) {
            QCOMPARE(window_.box(index)->accessibleName(), QString("Register %1").arg(index));
            QVERIFY(window_.box(index)->isVisible());
            QVERIFY(window_.box(index)->width() >=
                    window_.box(index)->fontMetrics().horizontalAdvance("65535") + 10);
        }
        QVERIFY(window_.box(10)->y() > window_.box(9)->y());
        QCOMPARE(window_.box(10)->x(), window_.box(0)->x());
    }

    void the_tab_key_follows_the_eye() {
        const QStringList expected{"Txt_IPadr",  "Txt_IPport",   "Txt_regbase",   "Check1",     "Check2",
                                   "Check3",     "Check4",       "Cmd_save",      "Text5",      "Connect",
                                   "cmd_discon", "Txt_sendbase", "Txt_regnumber", "Cmd_read_R", "Cmd_write_R",
                                   "Text4(0)",   "Text4(1)"};
        window_.form()->activateWindow();
        window_.edit("Txt_IPadr")->setFocus();
        for (const QString& name : expected) {
            QCOMPARE(window_.form()->focusWidget()->objectName(), name);
            QTest::keyClick(window_.form()->focusWidget(), Qt::Key_Tab);
        }
    }

    void check_boxes_click() {
        for (int index = 0; index < 4; ++index) {
            auto* const check = window_.form()->findChild<QCheckBox*>(QString("Check%1").arg(index + 1));
            QTest::keyClick(check, Qt::Key_Space);
            const std::array<int, 4> values{settings.IPAutoC, settings.IPenaTRS, settings.IPpolar,
                                            settings.IPsysstat};
            for (int other = 0; other < 4; ++other)
                QCOMPARE(values[static_cast<std::size_t>(other)], other == index ? 1 : 0);
            QTRY_COMPARE(window_.group("IP_Test_Frame")->isEnabled(), index == 0);
            QVERIFY(check->isChecked());
            QCOMPARE(window_.group("IP_Test_Frame")->title(),
                     index == 0 ? QString("TCP IP manual transmission to holding registers")
                                : QString("TCP IP FC16 transmission to holding registers"));
            QTest::keyClick(check, Qt::Key_Space);
            QTRY_VERIFY(window_.group("IP_Test_Frame")->isEnabled());
        }
        mainfrm::timers.Timer_TCP.Enabled(false);
    }

    void a_disabled_frame_stays_legible() {
        FrmSetupTCP::Check3_click();
        window_.show_state();
        const QColor text = window_.box(0)->palette().color(QPalette::Disabled, QPalette::Text);
        QVERIFY(text.lightness() < 100);
        FrmSetupTCP::Check3_click();
        window_.show_state();
    }

    void the_view_item_swaps_registers_and_picture() {
        auto* const picture = window_.form()->findChild<QWidget*>("Image_TCP");
        QVERIFY(window_.item("Reg_content")->isChecked());
        QVERIFY(!picture->isVisible());
        window_.choose("TCP_view", "Reg_content");
        QTRY_VERIFY(picture->isVisible());
        QVERIFY(!window_.group("IP_Test_Frame")->isVisible());
        QVERIFY(!window_.item("Reg_content")->isChecked());
        QVERIFY(settings_file().contains("REGView= 0\r\n"));
        window_.choose("TCP_view", "Reg_content");
        QTRY_VERIFY(window_.group("IP_Test_Frame")->isVisible());
        QVERIFY(!picture->isVisible());
        QVERIFY(settings_file().contains("REGView= 1\r\n"));
    }

    void one_speed_is_checked() {
        QVERIFY(window_.item("medium")->isChecked());
        const QByteArray before = settings_file();
        window_.choose("data_refresh", "medium");
        QTest::qWait(50);
        QVERIFY(window_.item("medium")->isChecked());
        QCOMPARE(settings_file(), before);
        window_.choose("data_refresh", "fast");
        QTRY_VERIFY(window_.item("fast")->isChecked());
        QTRY_VERIFY(!window_.item("medium")->isChecked());
        QVERIFY(!window_.item("slow")->isChecked());
        QVERIFY(settings_file().contains("IPRefresh= 2\r\n"));
        QCOMPARE(mainfrm::timers.Timer_TCP.Interval(), 300);
        window_.choose("data_refresh", "medium");
    }

    void the_status_is_black_on_its_colour() {
        for (const colour ground : {status_colour::green, status_colour::red, status_colour::yellow}) {
            FrmSetupTCP::show_tcp_status("Connected", ground);
            window_.show_state();
            QLineEdit* const status = window_.edit("Text5");
            QVERIFY(status->isReadOnly());
            QCOMPARE(status->text(), QString("Connected"));
            QCOMPARE(status->property("BackColor").toInt(), ground);
            const QImage picture = status->grab().toImage();
            const QColor seen = picture.pixelColor(status->width() - 6, status->height() / 2);
            QCOMPARE(seen.red(), ground & 255);
            QCOMPARE(seen.green(), (ground >> 8) & 255);
            QCOMPARE(status->palette().color(QPalette::Text), QColor(Qt::black));
        }
    }

    void escape_and_enter_leave_it_open() {
        QTest::keyClick(window_.form(), Qt::Key_Escape);
        QTest::keyClick(window_.edit("Txt_IPadr"), Qt::Key_Escape);
        QTest::keyClick(window_.edit("Txt_IPadr"), Qt::Key_Return);
        QTest::qWait(50);
        QVERIFY(window_.form()->isVisible());
    }

    void the_close_box_shows_its_message_and_leaves_it_open() {
        QString text;
        QString title = "none";
        QTimer answer;
        connect(&answer, &QTimer::timeout, this, [&] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            text = box->text();
            title = box->windowTitle();
            box->button(QMessageBox::Ok)->click();
        });
        answer.start(10);
        window_.form()->close();
        QTRY_COMPARE(
            text, QString("User tries to close the form via the \"X\" ! Please use 'close' button below !"));
        QCOMPARE(title, QString());
        QTest::qWait(50);
        QVERIFY(window_.form()->isVisible());
    }

    void the_close_button_hides_it_and_the_menu_opens_it_again() {
        window_.type(window_.edit("Txt_IPadr"), "not saved");
        QTest::mouseClick(window_.button("Cmd_close"), Qt::LeftButton);
        QTRY_VERIFY(!window_.form()->isVisible());
        QVERIFY(FrmSetupTCP::state.form.Loaded);
        window_.open();
        QCOMPARE(window_.edit("Txt_IPadr")->text(), QString("127.0.0.1"));
    }

    void a_minimised_window_comes_back_from_the_menu() {
        window_.form()->showMinimized();
        window_.open();
        QTRY_VERIFY(!window_.form()->isMinimized());
        QVERIFY(window_.form()->isVisible());
    }

    void nothing_is_cut_off() {
        QTest::qWait(50);
        for (const auto* const control : window_.form()->findChildren<QWidget*>()) {
            if (!control->isVisible()) continue;
            QVERIFY2(control->width() >= control->minimumSizeHint().width(),
                     qPrintable(control->objectName()));
            if (const auto* const label = qobject_cast<const QLabel*>(control))
                QVERIFY2(label->fontMetrics().size(0, label->text()).width() <= label->width(),
                         qPrintable(label->text()));
        }
    }

  private:
    tcp_window window_;
};

static const desktop_test<frmsetuptcp_view_test> known;
#include "frmsetuptcp_view_test.moc"
