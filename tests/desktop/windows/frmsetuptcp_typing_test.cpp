// Typing into the gateway's window and its commands on what was typed.

#include "desktop/desktop_test.h"
#include "desktop/tcp_window.h"
#include "desktop/tool_tip.h"
#include "gateway/frmsetuptcp.h"
#include "gateway/modbus.h"
#include "platform/desktop/handlers.h"

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

using namespace tyxo;

namespace {

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

class frmsetuptcp_typing_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { window_.start(tcp_settings); }
    void init() {
        if (!window_.is_open()) window_.open();
    }
    void cleanupTestCase() { window_.end(); }

    void typing_reaches_the_core() {
        window_.type(window_.edit("Txt_IPport"), "1502x");
        QCOMPARE(FrmSetupTCP::state.Txt_IPport, std::string("1502x"));
        window_.type(window_.edit("Txt_IPadr"), QString::fromUtf8("m\xC3\xBChle"));
        QCOMPARE(FrmSetupTCP::state.Txt_IPadr, std::string("m\xFChle"));
        window_.type(window_.box(122), "17");
        QCOMPARE(FrmSetupTCP::state.Text4[122], std::string("17"));
        window_.type(window_.edit("Txt_regbase"), QString::fromUtf8("1\xE2\x82\xAC\xD0\x96"));
        QCOMPARE(FrmSetupTCP::state.Txt_regbase, std::string("1\x80?"));
        QTRY_COMPARE(window_.edit("Txt_regbase")->text(), QString::fromUtf8("1\xE2\x82\xAC?"));
        window_.type(window_.edit("Txt_regbase"), "1000");
        window_.type(window_.edit("Txt_IPadr"), "127.0.0.1");
    }

    void typing_while_a_tick_waits_is_not_undone() {
        window_.type(window_.edit("Txt_IPport"), "1");
        desktop::run_handler(desktop::source::device, [&] {
            QTimer::singleShot(0, window_.form(), [&] {
                QTest::keyClicks(window_.edit("Txt_IPport"), "2");
                window_.show_state();
                QTest::keyClicks(window_.edit("Txt_IPport"), "3");
            });
            QTest::qSleep(2);
            desktop::yield();
            window_.show_state();
            QCOMPARE(FrmSetupTCP::state.Txt_IPport, std::string("1"));
            QCOMPARE(window_.edit("Txt_IPport")->text(), QString("123"));
        });
        QTRY_COMPARE(FrmSetupTCP::state.Txt_IPport, std::string("123"));
        window_.show_state();
        QCOMPARE(window_.edit("Txt_IPport")->text(), QString("123"));
        FrmSetupTCP::state.Txt_IPport = "502";
        window_.show_state();
        QCOMPARE(window_.edit("Txt_IPport")->text(), QString("502"));
    }

    void filling_the_boxes_leaves_the_cursor_where_it_is() {
        window_.type(window_.box(5), "12345");
        window_.box(5)->setCursorPosition(2);
        FrmSetupTCP::state.Text4[6] = "1";
        window_.show_state();
        QCOMPARE(window_.box(5)->cursorPosition(), 2);
        QCOMPARE(window_.box(6)->text(), QString("1"));
        FrmSetupTCP::state.Text4[5] = "12346";
        window_.show_state();
        QCOMPARE(window_.box(5)->text(), QString("12346"));
        QCOMPARE(window_.box(5)->cursorPosition(), 2);
        window_.edit("Txt_IPadr")->setFocus();
    }

    void a_text_too_long_for_its_box_shows_its_front_and_a_tool_tip() {
        FrmSetupTCP::state.Text4[7] = "-12.3333330154419";
        window_.show_state();
        QCOMPARE(tip_of(window_.box(7)), QString("<p>-12.3333330154419</p>"));
        QCOMPARE(window_.box(7)->cursorPosition(), 0);
        FrmSetupTCP::state.Text4[7] = "65535";
        window_.show_state();
        QCOMPARE(tip_of(window_.box(7)), QString());
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
                FrmSetupTCP::state.Text4[static_cast<std::size_t>(index)] = std::to_string(60000 + round);
            window_.show_state();
        }
        const qint64 changed = clock.elapsed() / 50;
        qInfo("1000 updates without a change: %lld us each; with 50 new values: %lld ms each",
              static_cast<long long>(unchanged), static_cast<long long>(changed));
        QVERIFY(unchanged < 1000); // less than 1 ms each, on a loaded machine too
        QVERIFY(changed < 20);
    }

    void saving_stores_the_typed_texts() {
        window_.type(window_.edit("Txt_IPadr"), "127.0.0.2");
        window_.type(window_.edit("Txt_regbase"), "70000");
        QTest::mouseClick(window_.button("Cmd_save"), Qt::LeftButton);
        QTRY_COMPARE(window_.edit("Txt_regbase")->text(), QString("62300"));
        QVERIFY(settings_file().contains("IPAdr=127.0.0.2\r\n"));
        QVERIFY(settings_file().contains("REGBase= 62300\r\n"));
        QVERIFY(settings_file().contains("Sendbase=40\r\n"));
    }

    void manual_commands_without_connection_say_so() {
        gateway.Winsock_A.Close();
        for (const char* name : {"Cmd_read_R", "Cmd_write_R"}) {
            FrmSetupTCP::show_tcp_status("", status_colour::green);
            QTest::mouseClick(window_.button(name), Qt::LeftButton);
            QTRY_COMPARE(window_.edit("Text5")->text(), QString("Device not connected via TCP/IP"));
            QCOMPARE(window_.edit("Text5")->property("BackColor").toInt(), 255);
        }
    }

    void a_manual_read_keeps_its_limits() {
        connect_socket();
        window_.type(window_.edit("Txt_sendbase"), "65411");
        window_.type(window_.edit("Txt_regnumber"), "200");
        QTest::mouseClick(window_.button("Cmd_read_R"), Qt::LeftButton);
        QTRY_COMPARE(window_.edit("Txt_sendbase")->text(), QString("65410"));
        QCOMPARE(window_.edit("Txt_regnumber")->text(), QString("123"));
        QTRY_VERIFY(!transaction_open());
        gateway.Winsock_A.Close();
    }

    void a_manual_write_corrects_its_values() {
        connect_socket();
        window_.type(window_.edit("Txt_sendbase"), "65410");
        window_.type(window_.edit("Txt_regnumber"), "5");
        window_.type(window_.box(0), "70000");
        window_.type(window_.box(1), "-5");
        window_.type(window_.box(2), "2.5");
        window_.type(window_.box(3), "65535");
        window_.type(window_.box(4), "abc");
        window_.type(window_.box(5), "70000");
        QTest::mouseClick(window_.button("Cmd_write_R"), Qt::LeftButton);
        QTRY_COMPARE(window_.box(0)->text(), QString("65535"));
        QCOMPARE(window_.box(1)->text(), QString("65535"));
        QCOMPARE(window_.box(2)->text(), QString("2"));
        QCOMPARE(window_.box(3)->text(), QString("65535"));
        QCOMPARE(window_.box(4)->text(), QString("0"));
        QCOMPARE(window_.box(5)->text(), QString("70000")); // not among the written ones
        QCOMPARE(window_.edit("Txt_sendbase")->text(), QString("65410"));
        QCOMPARE(modbus.mb_reg[0], 65535);
        QCOMPARE(modbus.mb_reg[1], 65535);
        QCOMPARE(modbus.mb_reg[2], 2);
        QCOMPARE(modbus.mb_reg[3], 65535);
        QCOMPARE(modbus.mb_reg[4], 0);
        QTRY_VERIFY(!transaction_open());
        gateway.Winsock_A.Close();
    }

    void saving_closes_the_connection() {
        connect_socket();
        QTest::mouseClick(window_.button("Cmd_save"), Qt::LeftButton);
        QTRY_COMPARE(gateway.Winsock_A.State(), socket_state::closed);
    }

  private:
    /// The socket alone, without what the connection does about it.
    void connect_socket() {
        gateway.Winsock_A.Close();
        gateway.Winsock_A.RemoteHost("127.0.0.1");
        gateway.Winsock_A.RemotePort(server_.port());
        gateway.Winsock_A.Connect();
        QTRY_COMPARE(gateway.Winsock_A.State(), socket_state::connected);
    }

    tcp_window window_;
    answering_server server_;
};

static const desktop_test<frmsetuptcp_typing_test> known;
#include "frmsetuptcp_typing_test.moc"
