// The gateway's window with its real widgets, opened from the menu, clicked and typed into.

#include "desktop/started_window.h"
#include "gateway/connection.h"
#include "gateway/frmsetuptcp.h"
#include "gateway/modbus.h"
#include "platform/desktop/handlers.h"
#include "settings/settings.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QWindow>

using namespace tyxo;

namespace {

constexpr const char* settings_text = "[tyxo]\r\n"
                                      "max_sensors= 1\r\n"
                                      "IPAdr=127.0.0.1\r\n"
                                      "IPport= 502\r\n"
                                      "REGBase= 1000\r\n"
                                      "REGView= 1\r\n"
                                      "Sendbase= 40\r\n"
                                      "IPRefresh= 1\r\n";

constexpr int register_count = 123;

/// A controller that confirms every write and answers every read with the register's number.
class answering_server {
  public:
    answering_server() {
        if (!server_.listen(QHostAddress::LocalHost)) qFatal("no port to listen on");
        QObject::connect(&server_, &QTcpServer::newConnection, [this] {
            QTcpSocket* const peer = server_.nextPendingConnection();
            QObject::connect(peer, &QTcpSocket::readyRead, peer, [peer] { answer(*peer); });
        });
    }
    [[nodiscard]] quint16 port() const { return server_.serverPort(); }

  private:
    static void answer(QTcpSocket& peer) {
        const QByteArray frame = peer.readAll();
        if (frame.size() < 12) return;
        QByteArray reply = frame.first(12);
        reply[5] = 6;
        if (frame[7] == 3) {
            const int count = static_cast<unsigned char>(frame[11]);
            reply = frame.first(8) + static_cast<char>(2 * count);
            for (int index = 0; index < count; ++index)
                reply.append('\0').append(static_cast<char>(index));
            reply[5] = static_cast<char>(2 * count + 3);
        }
        peer.write(reply);
    }

    QTcpServer server_;
};

} // namespace

class frmsetuptcp_view_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        window_.start(settings_text);
        form_ = window_.view().findChild<QMainWindow*>("FrmSetupTCP");
        QVERIFY(form_ != nullptr);
        QVERIFY(!form_->isVisible());
    }

    void init() {
        if (form_->isVisible()) return;
        window_.open_menu_entry("Setup_menue", "setup_tcp");
        QTRY_VERIFY(form_->isVisible());
    }

    void cleanupTestCase() { window_.end(); }

    void the_menu_opens_it_beside_the_main_window() {
        QCOMPARE(form_->windowTitle(), QString("Setup data transmission over Modbus TCP/IP"));
        QCOMPARE(form_->windowModality(), Qt::NonModal);
        QVERIFY(form_->width() <= 1000);
        QVERIFY(form_->height() <= 760);
        QCOMPARE(edit("Txt_IPadr")->text(), QString("127.0.0.1"));
        QCOMPARE(edit("Txt_IPport")->text(), QString("502"));
        QCOMPARE(edit("Txt_regbase")->text(), QString("1000"));
        QCOMPARE(edit("Txt_sendbase")->text(), QString("40"));
        QCOMPARE(edit("Txt_regnumber")->text(), QString("123"));
        QCOMPARE(edit("Text5")->text(), QString("Disconnected"));
        QCOMPARE(group("IP_frame")->title(), QString("TCP IP parameters"));
        QCOMPARE(group("IP_Test_Frame")->title(), QString("TCP IP manual transmission to holding registers"));
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
            const auto* const control = form_->findChild<QAbstractButton*>(name);
            QVERIFY2(control != nullptr, name);
            QCOMPARE(control->text(), QString(caption));
        }
        for (const char* text : {"Target IP address", "Target IP port", "Register base address  0 - 62300",
                                 "Status", "Start register", "number max.123"}) {
            const auto labels = form_->findChildren<QLabel*>();
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
            QVERIFY2(item(name) != nullptr, name);
            QCOMPARE(item(name)->text(), QString(caption));
            QCOMPARE(item(name)->isCheckable(), QString(name) != "res_con");
        }
        QCOMPARE(form_->findChild<QMenu*>("TCP_view")->title(), QString("View"));
        QCOMPARE(form_->findChild<QMenu*>("data_refresh")->title(), QString("Data refresh"));
    }

    void every_register_has_its_box() {
        for (int index = 0; index < register_count; ++index) {
            QCOMPARE(box(index)->accessibleName(), QString("Register %1").arg(index));
            QVERIFY(box(index)->isVisible());
            QVERIFY(box(index)->width() >= box(index)->fontMetrics().horizontalAdvance("65535") + 10);
        }
        QVERIFY(box(10)->y() > box(9)->y());
        QCOMPARE(box(10)->x(), box(0)->x());
    }

    void the_tab_key_follows_the_eye() {
        const QStringList expected{"Txt_IPadr",  "Txt_IPport",   "Txt_regbase",   "Check1",     "Check2",
                                   "Check3",     "Check4",       "Cmd_save",      "Text5",      "Connect",
                                   "cmd_discon", "Txt_sendbase", "Txt_regnumber", "Cmd_read_R", "Cmd_write_R",
                                   "Text4(0)",   "Text4(1)"};
        form_->activateWindow();
        edit("Txt_IPadr")->setFocus();
        for (const QString& name : expected) {
            QCOMPARE(form_->focusWidget()->objectName(), name);
            QTest::keyClick(form_->focusWidget(), Qt::Key_Tab);
        }
    }

    void typing_reaches_the_core() {
        type(edit("Txt_IPport"), "1502x");
        QCOMPARE(FrmSetupTCP.Txt_IPport, std::string("1502x"));
        type(edit("Txt_IPadr"), QString::fromUtf8("m\xC3\xBChle"));
        QCOMPARE(FrmSetupTCP.Txt_IPadr, std::string("m\xFChle"));
        type(box(122), "17");
        QCOMPARE(FrmSetupTCP.Text4[122], std::string("17"));
        type(edit("Txt_regbase"), QString::fromUtf8("1\xE2\x82\xAC\xD0\x96"));
        QCOMPARE(FrmSetupTCP.Txt_regbase, std::string("1\x80?"));
        QTRY_COMPARE(edit("Txt_regbase")->text(), QString::fromUtf8("1\xE2\x82\xAC?"));
        type(edit("Txt_regbase"), "1000");
        type(edit("Txt_IPadr"), "127.0.0.1");
    }

    void typing_while_a_tick_waits_is_not_undone() {
        type(edit("Txt_IPport"), "1");
        desktop::run_handler(desktop::source::device, [&] {
            QTimer::singleShot(0, form_, [&] {
                QTest::keyClicks(edit("Txt_IPport"), "2");
                window_.show_state();
                QTest::keyClicks(edit("Txt_IPport"), "3");
            });
            QTest::qSleep(2);
            desktop::yield();
            window_.show_state();
            QCOMPARE(FrmSetupTCP.Txt_IPport, std::string("1"));
            QCOMPARE(edit("Txt_IPport")->text(), QString("123"));
        });
        QCOMPARE(FrmSetupTCP.Txt_IPport, std::string("123"));
        window_.show_state();
        QCOMPARE(edit("Txt_IPport")->text(), QString("123"));
        FrmSetupTCP.Txt_IPport = "502";
        window_.show_state();
        QCOMPARE(edit("Txt_IPport")->text(), QString("502"));
    }

    void filling_the_boxes_leaves_the_cursor_where_it_is() {
        type(box(5), "12345");
        box(5)->setCursorPosition(2);
        FrmSetupTCP.Text4[6] = "1";
        window_.show_state();
        QCOMPARE(box(5)->cursorPosition(), 2);
        QCOMPARE(box(6)->text(), QString("1"));
        FrmSetupTCP.Text4[5] = "12346";
        window_.show_state();
        QCOMPARE(box(5)->text(), QString("12346"));
        QCOMPARE(box(5)->cursorPosition(), 2);
        edit("Txt_IPadr")->setFocus();
    }

    void a_text_too_long_for_its_box_shows_its_front_and_a_tool_tip() {
        FrmSetupTCP.Text4[7] = "-12.3333330154419";
        window_.show_state();
        QCOMPARE(box(7)->toolTip(), QString("-12.3333330154419"));
        QCOMPARE(box(7)->cursorPosition(), 0);
        FrmSetupTCP.Text4[7] = "65535";
        window_.show_state();
        QCOMPARE(box(7)->toolTip(), QString());
    }

    void updates_cost_next_to_nothing() {
        QElapsedTimer clock;
        clock.start();
        for (int round = 0; round < 1000; ++round)
            window_.show_state();
        const qint64 unchanged = clock.nsecsElapsed() / 1'000'000;
        clock.restart();
        for (int round = 0; round < 50; ++round) {
            for (int index = 0; index < 50; ++index)
                FrmSetupTCP.Text4[static_cast<std::size_t>(index)] = std::to_string(60000 + round);
            window_.show_state();
        }
        const qint64 changed = clock.elapsed() / 50;
        qInfo("1000 updates without a change: %lld us each; with 50 new values: %lld ms each",
              static_cast<long long>(unchanged), static_cast<long long>(changed));
        QVERIFY(unchanged < 1000); // less than 1 ms each, on a loaded machine too
        QVERIFY(changed < 20);
    }

    void check_boxes_click() {
        for (int index = 0; index < 4; ++index) {
            auto* const check = form_->findChild<QCheckBox*>(QString("Check%1").arg(index + 1));
            QTest::keyClick(check, Qt::Key_Space);
            const std::array<int, 4> values{settings.IPAutoC, settings.IPenaTRS, settings.IPpolar,
                                            settings.IPsysstat};
            for (int other = 0; other < 4; ++other)
                QCOMPARE(values[static_cast<std::size_t>(other)], other == index ? 1 : 0);
            QTRY_COMPARE(group("IP_Test_Frame")->isEnabled(), index == 0);
            QVERIFY(check->isChecked());
            QCOMPARE(group("IP_Test_Frame")->title(),
                     index == 0 ? QString("TCP IP manual transmission to holding registers")
                                : QString("TCP IP FC16 transmission to holding registers"));
            QTest::keyClick(check, Qt::Key_Space);
            QTRY_VERIFY(group("IP_Test_Frame")->isEnabled());
        }
        mainfrm::Timer_TCP.Enabled(false);
    }

    void a_disabled_frame_stays_legible() {
        Check3_click();
        window_.show_state();
        const QColor text = box(0)->palette().color(QPalette::Disabled, QPalette::Text);
        QVERIFY(text.lightness() < 100);
        Check3_click();
        window_.show_state();
    }

    void the_view_item_swaps_registers_and_picture() {
        auto* const picture = form_->findChild<QWidget*>("Image_TCP");
        QVERIFY(item("Reg_content")->isChecked());
        QVERIFY(!picture->isVisible());
        choose("TCP_view", "Reg_content");
        QTRY_VERIFY(picture->isVisible());
        QVERIFY(!group("IP_Test_Frame")->isVisible());
        QVERIFY(!item("Reg_content")->isChecked());
        QVERIFY(settings_file().contains("REGView= 0\r\n"));
        choose("TCP_view", "Reg_content");
        QTRY_VERIFY(group("IP_Test_Frame")->isVisible());
        QVERIFY(!picture->isVisible());
        QVERIFY(settings_file().contains("REGView= 1\r\n"));
    }

    void one_speed_is_checked() {
        QVERIFY(item("medium")->isChecked());
        const QByteArray before = settings_file();
        choose("data_refresh", "medium");
        QTest::qWait(50);
        QVERIFY(item("medium")->isChecked());
        QCOMPARE(settings_file(), before);
        choose("data_refresh", "fast");
        QTRY_VERIFY(item("fast")->isChecked());
        QTRY_VERIFY(!item("medium")->isChecked());
        QVERIFY(!item("slow")->isChecked());
        QVERIFY(settings_file().contains("IPRefresh= 2\r\n"));
        QCOMPARE(mainfrm::Timer_TCP.Interval(), 300);
        choose("data_refresh", "medium");
    }

    void the_status_is_black_on_its_colour() {
        for (const colour ground : {status_colour::green, status_colour::red, status_colour::yellow}) {
            show_tcp_status("Connected", ground);
            window_.show_state();
            QLineEdit* const status = edit("Text5");
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

    void saving_stores_the_typed_texts() {
        type(edit("Txt_IPadr"), "127.0.0.2");
        type(edit("Txt_regbase"), "70000");
        QTest::mouseClick(button("Cmd_save"), Qt::LeftButton);
        QTRY_COMPARE(edit("Txt_regbase")->text(), QString("62300"));
        QVERIFY(settings_file().contains("IPAdr=127.0.0.2\r\n"));
        QVERIFY(settings_file().contains("REGBase= 62300\r\n"));
        QVERIFY(settings_file().contains("Sendbase=40\r\n"));
    }

    void manual_commands_without_connection_say_so() {
        Winsock_A.Close();
        for (const char* name : {"Cmd_read_R", "Cmd_write_R"}) {
            show_tcp_status("", status_colour::green);
            QTest::mouseClick(button(name), Qt::LeftButton);
            QTRY_COMPARE(edit("Text5")->text(), QString("Device not connected via TCP/IP"));
            QCOMPARE(edit("Text5")->property("BackColor").toInt(), 255);
        }
    }

    void a_manual_read_keeps_its_limits() {
        connect_socket();
        type(edit("Txt_sendbase"), "65411");
        type(edit("Txt_regnumber"), "200");
        QTest::mouseClick(button("Cmd_read_R"), Qt::LeftButton);
        QTRY_COMPARE(edit("Txt_sendbase")->text(), QString("65410"));
        QCOMPARE(edit("Txt_regnumber")->text(), QString("123"));
        QTRY_VERIFY(!transaction_open());
        Winsock_A.Close();
    }

    void a_manual_write_corrects_its_values() {
        connect_socket();
        type(edit("Txt_sendbase"), "65410");
        type(edit("Txt_regnumber"), "5");
        type(box(0), "70000");
        type(box(1), "-5");
        type(box(2), "2.5");
        type(box(3), "65535");
        type(box(4), "abc");
        type(box(5), "70000");
        QTest::mouseClick(button("Cmd_write_R"), Qt::LeftButton);
        QTRY_COMPARE(box(0)->text(), QString("65535"));
        QCOMPARE(box(1)->text(), QString("65535"));
        QCOMPARE(box(2)->text(), QString("2"));
        QCOMPARE(box(3)->text(), QString("65535"));
        QCOMPARE(box(4)->text(), QString("0"));
        QCOMPARE(box(5)->text(), QString("70000")); // not among the written ones
        QCOMPARE(edit("Txt_sendbase")->text(), QString("65410"));
        QCOMPARE(modbus.mb_reg[0], 65535);
        QCOMPARE(modbus.mb_reg[1], 65535);
        QCOMPARE(modbus.mb_reg[2], 2);
        QCOMPARE(modbus.mb_reg[3], 65535);
        QCOMPARE(modbus.mb_reg[4], 0);
        QTRY_VERIFY(!transaction_open());
        Winsock_A.Close();
    }

    void saving_closes_the_connection() {
        connect_socket();
        QTest::mouseClick(button("Cmd_save"), Qt::LeftButton);
        QTRY_COMPARE(Winsock_A.State(), socket_state::closed);
    }

    void escape_and_enter_leave_it_open() {
        QTest::keyClick(form_, Qt::Key_Escape);
        QTest::keyClick(edit("Txt_IPadr"), Qt::Key_Escape);
        QTest::keyClick(edit("Txt_IPadr"), Qt::Key_Return);
        QTest::qWait(50);
        QVERIFY(form_->isVisible());
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
        form_->close();
        QTRY_COMPARE(
            text, QString("User tries to close the form via the \"X\" ! Please use 'close' button below !"));
        QCOMPARE(title, QString());
        QTest::qWait(50);
        QVERIFY(form_->isVisible());
    }

    void the_close_button_hides_it_and_the_menu_opens_it_again() {
        type(edit("Txt_IPadr"), "not saved");
        QTest::mouseClick(button("Cmd_close"), Qt::LeftButton);
        QTRY_VERIFY(!form_->isVisible());
        QVERIFY(FrmSetupTCP.form.Loaded);
        window_.open_menu_entry("Setup_menue", "setup_tcp");
        QTRY_VERIFY(form_->isVisible());
        QCOMPARE(edit("Txt_IPadr")->text(), QString("127.0.0.2"));
    }

    void a_minimised_window_comes_back_from_the_menu() {
        form_->showMinimized();
        window_.open_menu_entry("Setup_menue", "setup_tcp");
        QTRY_VERIFY(!form_->isMinimized());
        QVERIFY(form_->isVisible());
    }

    void nothing_is_cut_off() {
        QTest::qWait(50);
        for (const auto* const control : form_->findChildren<QWidget*>()) {
            if (!control->isVisible()) continue;
            QVERIFY2(control->width() >= control->minimumSizeHint().width(),
                     qPrintable(control->objectName()));
            if (const auto* const label = qobject_cast<const QLabel*>(control))
                QVERIFY2(label->fontMetrics().size(0, label->text()).width() <= label->width(),
                         qPrintable(label->text()));
        }
    }

  private:
    [[nodiscard]] QLineEdit* edit(const char* name) const { return form_->findChild<QLineEdit*>(name); }
    [[nodiscard]] QLineEdit* box(int index) const {
        return form_->findChild<QLineEdit*>(QString("Text4(%1)").arg(index));
    }
    [[nodiscard]] QGroupBox* group(const char* name) const { return form_->findChild<QGroupBox*>(name); }
    [[nodiscard]] QPushButton* button(const char* name) const { return form_->findChild<QPushButton*>(name); }
    [[nodiscard]] QAction* item(const char* name) const { return form_->findChild<QAction*>(name); }

    static void type(QLineEdit* into, const QString& text) {
        into->setFocus();
        into->selectAll();
        for (const QChar letter : text) {
            if (letter.unicode() < 128) {
                QTest::keyClick(into, letter.toLatin1());
            } else {
                into->insert(letter); // the test library has no keys for it
            }
        }
    }

    void choose(const char* menu_name, const char* item_name) const {
        auto* const menu = form_->findChild<QMenu*>(menu_name);
        menu->popup(form_->mapToGlobal(QPoint(10, 10)));
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(item(item_name)).center());
    }

    /// The socket alone, without what the connection does about it.
    void connect_socket() {
        Winsock_A.Close();
        Winsock_A.RemoteHost("127.0.0.1");
        Winsock_A.RemotePort(server_.port());
        Winsock_A.Connect();
        QTRY_COMPARE(Winsock_A.State(), socket_state::connected);
    }

    started_window window_;
    QMainWindow* form_ = nullptr;
    answering_server server_;
};

QTEST_MAIN(frmsetuptcp_view_test)
#include "frmsetuptcp_view_test.moc"
