// The TCP client socket on the real event loop, against servers on this machine.

#include "platform/winsock.h"

#include "basics/failure.h"
#include "platform/desktop/handlers.h"
#include "platform/program.h"

#include <QEventLoop>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <ctime>
#include <vector>

using namespace tyxo;

namespace {

/// A server that keeps what it receives.
class controller {
  public:
    controller() {
        if (!server_.listen(QHostAddress::LocalHost)) qFatal("no port to listen on");
        QObject::connect(&server_, &QTcpServer::newConnection, [this] {
            while (QTcpSocket* const next = server_.nextPendingConnection())
                peers.push_back(next);
        });
    }

    [[nodiscard]] quint16 port() const { return server_.serverPort(); }
    [[nodiscard]] QTcpSocket& peer() const { return *peers.back(); }
    void stop_listening() { server_.close(); }

    std::vector<QTcpSocket*> peers; // they belong to the server

  private:
    QTcpServer server_;
};

/// A socket that keeps its events.
struct client {
    Winsock socket;
    QByteArrayList arrivals;
    int sent = 0;
    int errors = 0;
    bool takes = true;

    client() {
        socket.on_data_arrival([this](i32 bytes) {
            QByteArray taken;
            for (i32 index = 0; takes && index < bytes; ++index)
                taken += static_cast<char>(socket.GetData());
            arrivals << taken;
        });
        socket.on_send_complete([this] { ++sent; });
        socket.on_error([this] { ++errors; });
    }
    void dial(std::string_view host, i32 port) {
        socket.RemoteHost(host);
        socket.RemotePort(port);
        socket.Connect();
    }
    [[nodiscard]] QByteArray all() const { return arrivals.join(); }
};

/// A client that is connected to a controller.
struct conversation {
    controller server;
    client self;

    conversation() {
        self.dial("127.0.0.1", server.port());
        if (!QTest::qWaitFor(
                [this] { return self.socket.State() == socket_state::connected && !server.peers.empty(); }))
            qFatal("no connection");
    }
};

/// The event loop as it runs in the program, without the naps of the test library.
void run_loop(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/// A port that nobody listens on.
quint16 closed_port() {
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

} // namespace

class winsock_test : public QObject {
    Q_OBJECT

  private slots:
    void is_closed_at_first() {
        client self;
        QCOMPARE(self.socket.State(), socket_state::closed);
        self.socket.Close();
        QCOMPARE(self.socket.State(), socket_state::closed);
        QVERIFY_THROWS_EXCEPTION(failure, self.socket.SendData("x"));
        QVERIFY_THROWS_EXCEPTION(failure, static_cast<void>(self.socket.GetData()));
    }

    void connects_by_address_and_by_name() {
        for (const char* host : {"127.0.0.1", "localhost", " 127.0.0.1 "}) {
            controller server;
            client self;
            self.dial(host, server.port());
            QCOMPARE(self.socket.State(), socket_state::connecting);
            QTRY_COMPARE(self.socket.State(), socket_state::connected);
            QCOMPARE(self.errors, 0);
        }
    }

    void connects_over_ipv6() {
        QTcpServer server;
        if (!server.listen(QHostAddress::LocalHostIPv6)) {
            client self; // a machine without it: an error, and no worse
            self.dial("::1", closed_port());
            QTRY_COMPARE(self.socket.State(), socket_state::error);
            return;
        }
        client self;
        self.dial("::1", server.serverPort());
        QTRY_COMPARE(self.socket.State(), socket_state::connected);
    }

    void connects_inside_a_handler_that_waits() {
        controller server;
        client self;
        bool connected = false;
        desktop::run_handler(desktop::source::operator_, [&] {
            self.dial("127.0.0.1", server.port());
            for (int step = 0; step < 100 && self.socket.State() != socket_state::connected; ++step)
                wait_events(10);
            connected = self.socket.State() == socket_state::connected;
        });
        QVERIFY(connected);
    }

    void a_refused_connection_is_an_error() {
        client self;
        self.dial("127.0.0.1", closed_port());
        QTRY_COMPARE(self.socket.State(), socket_state::error);
        QTRY_COMPARE(self.errors, 1);
        QVERIFY_THROWS_EXCEPTION(failure, self.socket.SendData("x"));
        QVERIFY_THROWS_EXCEPTION(failure, self.socket.Connect());
        self.socket.Close();
        QCOMPARE(self.socket.State(), socket_state::closed);
    }

    void an_unknown_name_is_an_error_or_still_looked_up_and_can_be_closed() {
        client self;
        self.dial("no-such-host.invalid", 502);
        const bool failed = QTest::qWaitFor([&] { return self.socket.State() == socket_state::error; }, 3000);
        QVERIFY(failed || self.socket.State() == socket_state::connecting);
        self.socket.Close();
        QCOMPARE(self.socket.State(), socket_state::closed);
        const int errors = self.errors;
        QTest::qWait(50);
        QCOMPARE(self.errors, errors);
    }

    void what_is_no_address_is_an_error() {
        struct target {
            std::string_view host;
            i32 port;
        };
        for (const target& row : {target{"", 502},
                                  {"   ", 502},
                                  {"127.0.0.1", -1},
                                  {"127.0.0.1", 65536},
                                  {"127.0.0.1", 2147483647},
                                  {"127.0.0.1", 0}}) {
            client self;
            self.dial(row.host, row.port);
            QTRY_COMPARE(self.socket.State(), socket_state::error);
            QTRY_COMPARE(self.errors, 1);
            self.socket.Close();
            QCOMPARE(self.socket.State(), socket_state::closed);
        }
    }

    void a_name_in_windows_1252_does_no_harm() {
        client self;
        self.dial("plc.m\xFChle.invalid", 502);
        QTest::qWait(20);
        self.socket.Close();
        QCOMPARE(self.socket.State(), socket_state::closed);
    }

    void only_a_closed_socket_connects() {
        conversation talk;
        QVERIFY_THROWS_EXCEPTION(failure, talk.self.socket.Connect());
        QCOMPARE(talk.self.socket.State(), socket_state::connected);
    }

    void bytes_reach_the_peer_and_their_end_is_told_by_the_event_loop() {
        conversation talk;
        talk.self.socket.SendData(std::string_view("\0\x01 two", 6));
        QCOMPARE(talk.self.sent, 0);
        QTRY_COMPARE(talk.self.sent, 1);
        QTRY_COMPARE(talk.server.peer().bytesAvailable(), 6);
        QCOMPARE(talk.server.peer().readAll(), QByteArray("\0\x01 two", 6));
        talk.self.socket.SendData("more");
        QTRY_COMPARE(talk.self.sent, 2);
    }

    void an_arrival_is_one_event_for_all_that_is_there() {
        conversation talk;
        talk.server.peer().write(QByteArray("\xFF\0z", 3));
        QTRY_COMPARE(talk.self.arrivals, QByteArrayList({QByteArray("\xFF\0z", 3)}));
        QVERIFY_THROWS_EXCEPTION(failure, static_cast<void>(talk.self.socket.GetData()));
    }

    void what_comes_in_two_pieces_is_two_events() {
        conversation talk;
        talk.server.peer().write("first");
        QTRY_COMPARE(talk.self.arrivals.size(), 1);
        talk.server.peer().write("second");
        QTRY_COMPARE(talk.self.arrivals, QByteArrayList({"first", "second"}));
    }

    void what_a_handler_leaves_is_dropped() {
        conversation talk;
        talk.self.takes = false;
        talk.server.peer().write("left");
        QTRY_COMPARE(talk.self.arrivals.size(), 1);
        QVERIFY_THROWS_EXCEPTION(failure, static_cast<void>(talk.self.socket.GetData()));
        talk.self.takes = true;
        talk.server.peer().write("taken");
        QTRY_COMPARE(talk.self.all(), QByteArray("taken"));
    }

    void a_handler_that_takes_too_much_fails_and_the_next_event_comes() {
        conversation talk;
        int events = 0;
        talk.self.socket.on_data_arrival([&](i32) {
            ++events;
            for (;;)
                static_cast<void>(talk.self.socket.GetData());
        });
        talk.server.peer().write("a");
        QTRY_COMPARE(events, 1);
        talk.server.peer().write("b");
        QTRY_COMPARE(events, 2);
    }

    void an_event_inside_a_handler_waits_for_its_end() {
        conversation talk;
        int depth = 0;
        int deepest = 0;
        QByteArrayList seen;
        talk.self.socket.on_data_arrival([&](i32 bytes) {
            deepest = std::max(deepest, ++depth);
            if (seen.isEmpty()) talk.server.peer().write("second");
            QTest::qWait(30);
            QByteArray taken;
            while (bytes-- > 0)
                taken += static_cast<char>(talk.self.socket.GetData());
            seen << taken;
            --depth;
        });
        talk.server.peer().write("first");
        QTRY_COMPARE(seen, QByteArrayList({"first", "second"}));
        QCOMPARE(deepest, 1);
    }

    void a_closing_peer_is_seen_and_is_no_error() {
        conversation talk;
        talk.server.peer().write("last words");
        talk.server.peer().disconnectFromHost();
        QTRY_COMPARE(talk.self.socket.State(), socket_state::closing);
        QTRY_COMPARE(talk.self.all(), QByteArray("last words"));
        QCOMPARE(talk.self.errors, 0);
        QVERIFY_THROWS_EXCEPTION(failure, talk.self.socket.SendData("x"));
        talk.self.socket.Close();
        QCOMPARE(talk.self.socket.State(), socket_state::closed);
    }

    void a_peer_that_breaks_off_ends_the_connection() {
        conversation talk;
        talk.server.peer().abort();
        QTRY_VERIFY(talk.self.socket.State() == socket_state::closing ||
                    talk.self.socket.State() == socket_state::error);
    }

    void closing_is_at_once_and_drops_what_waits() {
        conversation talk;
        talk.server.peer().write("late");
        talk.server.peer().flush();
        QTest::qSleep(20);
        talk.self.socket.Close();
        QCOMPARE(talk.self.socket.State(), socket_state::closed);
        QTest::qWait(50);
        QVERIFY(talk.self.arrivals.isEmpty());
        QCOMPARE(talk.self.errors, 0);
        QTRY_COMPARE(talk.server.peer().state(), QAbstractSocket::UnconnectedState);
    }

    void a_closed_socket_connects_again() {
        conversation talk;
        for (int round = 0; round < 3; ++round) {
            talk.self.socket.Close();
            talk.self.socket.Connect();
            QTRY_COMPARE(talk.self.socket.State(), socket_state::connected);
            QTRY_COMPARE(talk.server.peers.size(), static_cast<std::size_t>(round + 2));
        }
        talk.server.peer().write("hello");
        QTRY_COMPARE(talk.self.all(), QByteArray("hello"));
    }

    void it_can_be_closed_and_connected_inside_its_own_data_event() {
        conversation talk;
        int events = 0;
        talk.self.socket.on_data_arrival([&](i32) {
            ++events;
            talk.self.socket.Close();
            talk.self.socket.Connect();
        });
        talk.server.peer().write("x");
        QTRY_COMPARE(events, 1);
        QTRY_COMPARE(talk.self.socket.State(), socket_state::connected);
        QTRY_COMPARE(talk.server.peers.size(), 2U);
        talk.server.peer().write("y");
        QTRY_COMPARE(events, 2);
    }

    void it_can_be_closed_inside_its_other_events() {
        conversation talk;
        talk.self.socket.on_send_complete([&] { talk.self.socket.Close(); });
        talk.self.socket.SendData("x");
        QTRY_COMPARE(talk.self.socket.State(), socket_state::closed);

        client refused;
        refused.socket.on_error([&] { refused.socket.Close(); });
        refused.dial("127.0.0.1", closed_port());
        QTRY_COMPARE(refused.socket.State(), socket_state::closed);
    }

    void a_failure_in_its_handler_does_not_leave_it() {
        conversation talk;
        talk.self.socket.on_data_arrival([](i32) { failures::subscript(); });
        talk.server.peer().write("x");
        QTest::qWait(50);
        QCOMPARE(talk.self.socket.State(), socket_state::connected);
    }

    void events_wait_while_they_are_held_and_the_connection_is_made_all_the_same() {
        controller server;
        client self;
        hold_events(true);
        self.dial("127.0.0.1", server.port());
        QTRY_COMPARE(self.socket.State(), socket_state::connected);
        QTRY_VERIFY(!server.peers.empty());
        server.peer().write("early");
        self.socket.SendData("x");
        client refused;
        refused.dial("127.0.0.1", closed_port());
        QTRY_COMPARE(refused.socket.State(), socket_state::error);
        QTest::qWait(60);
        QVERIFY(self.arrivals.isEmpty());
        QCOMPARE(self.sent, 0);
        QCOMPARE(refused.errors, 0);
        hold_events(false);
        QTRY_COMPARE(self.all(), QByteArray("early"));
        QTRY_COMPARE(self.sent, 1);
        QTRY_COMPARE(refused.errors, 1);
    }

    void a_peer_that_takes_nothing_does_not_fill_the_memory() {
        conversation talk;
        talk.server.peer().setReadBufferSize(1);
        const std::string frame(1000, 'x');
        bool refused = false;
        for (int count = 0; count < 100 && !refused; ++count)
            refused = attempt([&] { talk.self.socket.SendData(frame); }).has_value();
        QVERIFY(refused); // nothing was handed over without the event loop
        QTRY_COMPARE(talk.self.sent, 1);
        talk.self.socket.SendData(frame);
    }

    void a_flood_leaves_time_and_memory_for_everything_else() {
        conversation talk;
        qint64 greatest = 0;
        qint64 received = 0;
        int events = 0;
        talk.self.socket.on_data_arrival([&](i32 bytes) {
            greatest = std::max<qint64>(greatest, bytes);
            received += bytes;
            ++events;
        });
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] { ++ticks; });
        timer.start(10);
        const QByteArray chunk(65536, 'f');
        QTcpSocket& peer = talk.server.peer();
        const auto pour = [&] {
            while (peer.bytesToWrite() < 4 * chunk.size())
                peer.write(chunk);
        };
        connect(&peer, &QTcpSocket::bytesWritten, this, pour);
        pour();
        const double before = processor_seconds();
        run_loop(1500);
        const double used = processor_seconds() - before;
        qInfo("flood: %d events, %lld bytes, %d ticks, %.2f s of processor time", events,
              static_cast<long long>(received), ticks, used);
        QVERIFY(events > 16); // it goes on after a rest
        QVERIFY(events <= 16 * 8);
        QVERIFY(greatest <= 16384);
        QVERIFY(ticks > 75);
        QVERIFY(used < 0.75);
        peer.disconnect(this);
        talk.self.socket.Close();
        QCOMPARE(talk.self.socket.State(), socket_state::closed);
    }

    void a_flood_of_small_pieces_rests_too_and_nothing_is_lost() {
        conversation talk;
        QTcpSocket& peer = talk.server.peer();
        peer.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        QTimer timer;
        int count = 0;
        connect(&timer, &QTimer::timeout, this, [&] {
            if (count < 200) peer.write(QByteArray(1, static_cast<char>('a' + count++ % 26)));
            peer.flush();
        });
        timer.start(1);
        run_loop(600);
        QTRY_COMPARE(talk.self.all().size(), 200);
        QVERIFY(talk.self.arrivals.size() < 80);
        peer.write("end");
        peer.disconnectFromHost();
        QTRY_VERIFY(talk.self.all().endsWith("end"));
    }

  private:
    static double processor_seconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }
};

QTEST_GUILESS_MAIN(winsock_test)
#include "winsock_test.moc"
