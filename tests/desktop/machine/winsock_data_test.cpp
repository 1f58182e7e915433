// The TCP client socket on the real event loop: bytes that go and come, and floods of them.

#include "basics/failure.h"
#include "desktop/desktop_test.h"
#include "desktop/tcp_peers.h"
#include "platform/program.h"

#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <ctime>
#include <string>

using namespace tyxo;

namespace {

/// The event loop as it runs in the program, without the naps of the test library.
void run_loop(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

class winsock_data_test : public QObject {
    Q_OBJECT

  private slots:
    void bytes_reach_the_peer_and_their_end_is_told() {
        conversation talk;
        talk.self.socket.SendData(std::string_view("\0\x01 two", 6));
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
        hold_events(true); // so that Qt's own guard does not cover the event
        talk.server.peer().write("first");
        QTest::qWait(50);
        hold_events(false);
        QTRY_COMPARE(seen, QByteArrayList({"first", "second"}));
        QCOMPARE(deepest, 1);
    }

    void a_peer_that_takes_nothing_does_not_fill_the_memory() {
        conversation talk;
        talk.server.peer().setReadBufferSize(1);
        const std::string frame(1000, 'x');
        bool refused = false;
        for (int count = 0; count < 60'000 && !refused; ++count) // the system itself takes some megabytes
            refused = attempt([&] { talk.self.socket.SendData(frame); }).has_value();
        QVERIFY(refused);
        const int told = talk.self.sent;
        talk.server.peer().setReadBufferSize(0);
        QTRY_VERIFY((talk.server.peer().readAll(), talk.self.sent > told));
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

static const desktop_test<winsock_data_test, QCoreApplication> known;
#include "winsock_data_test.moc"
