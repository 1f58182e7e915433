// The TCP client socket on the real event loop: how connections begin and end.

#include "basics/failure.h"
#include "desktop/desktop_test.h"
#include "desktop/tcp_peers.h"
#include "platform/desktop/handlers.h"
#include "platform/program.h"

#include <QElapsedTimer>

#include <netinet/tcp.h>

using namespace tyxo;

namespace {

/// The descriptor of this process that is connected to a local port, or -1.
int connected_node(quint16 port) {
    for (int node = 0; node < 1024; ++node) {
        sockaddr_in peer{};
        socklen_t length = sizeof peer;
        if (::getpeername(node, reinterpret_cast<sockaddr*>(&peer), &length) == 0 &&
            peer.sin_family == AF_INET && ntohs(peer.sin_port) == port)
            return node;
    }
    return -1;
}

int option(int node, int level, int name) {
    int value = -1;
    socklen_t length = sizeof value;
    ::getsockopt(node, level, name, &value, &length);
    return value;
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

    void an_unknown_name_is_an_error_however_long_it_is_looked_up() {
        client self;
        self.dial("no-such-host.invalid", 502);
        QTRY_COMPARE_WITH_TIMEOUT(self.socket.State(), socket_state::error, attempt_limit + 200);
        self.socket.Close();
        QCOMPARE(self.socket.State(), socket_state::closed);
        const int errors = self.errors;
        QTest::qWait(50);
        QCOMPARE(self.errors, errors);
    }

    void an_attempt_that_nobody_answers_is_given_up_behind_900_ms_for_good() {
        silent_host host;
        client self;
        QElapsedTimer clock;
        clock.start();
        self.dial("127.0.0.1", host.port());
        QTest::qWait(600);
        QCOMPARE(self.socket.State(), socket_state::connecting);
        QTRY_COMPARE(self.socket.State(), socket_state::error);
        QVERIFY2(clock.elapsed() >= 890 && clock.elapsed() < 2000,
                 qPrintable(QString::number(clock.elapsed())));
        QTRY_COMPARE(self.errors, 1);
        QCOMPARE(host.accept_all(), 1); // there would be room for it now
        QTest::qWait(700);              // the network tries again behind a second, from the first attempt
        QCOMPARE(host.accept_all(), 0);
        QCOMPARE(self.socket.State(), socket_state::error);
        QCOMPARE(self.errors, 1);
    }

    void a_new_attempt_has_its_own_900_ms() {
        silent_host host;
        client self;
        self.dial("127.0.0.1", host.port());
        QTest::qWait(600);
        self.socket.Close();
        self.socket.Connect();
        QTest::qWait(600);
        QCOMPARE(self.socket.State(), socket_state::connecting);
        QTRY_COMPARE(self.socket.State(), socket_state::error);
        QCOMPARE(self.errors, 1);
    }

    void a_connection_is_not_given_up() {
        conversation talk;
        QTest::qWait(attempt_limit + 200);
        QCOMPARE(talk.self.socket.State(), socket_state::connected);
        QCOMPARE(talk.self.errors, 0);
    }

    void a_peer_that_vanished_is_given_up_behind_two_minutes() {
        conversation talk;
        const int node = connected_node(talk.server.port());
        QVERIFY(node >= 0);
        QCOMPARE(option(node, SOL_SOCKET, SO_KEEPALIVE), 1);
        QCOMPARE(option(node, IPPROTO_TCP, TCP_USER_TIMEOUT), 120'000); // ms; with data on its way
        // And with none.
        QCOMPARE(option(node, IPPROTO_TCP, TCP_KEEPIDLE) +
                     option(node, IPPROTO_TCP, TCP_KEEPINTVL) * option(node, IPPROTO_TCP, TCP_KEEPCNT),
                 120);
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
};

static const desktop_test<winsock_test, QCoreApplication> known;
#include "winsock_test.moc"
