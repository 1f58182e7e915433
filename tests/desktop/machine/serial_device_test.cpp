// Serial ports whose device is slow, stuck, pulled or plugged in again, on real pseudo-terminals.

#include "basics/failure.h"
#include "desktop/desktop_test.h"
#include "desktop/serial_line.h"
#include "platform/desktop/open_ports.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

using namespace tyxo;

namespace {

constexpr int busy_second = 2900; // ms: a second on a busy machine, and less than one for each of three

constexpr int a_look = 1500; // ms, within which a vanished device has been looked for

/// More than any line takes when nobody reads it.
const std::string endless(1'000'000, 'x');

/// True while this process has the device of port 7 open, by its lock file.
bool locked() {
    const QString device = QFileInfo("ports/COM7").symLinkTarget();
    QFile lock("/var/lock/LCK.." + device.mid(5).replace('/', '_'));
    return lock.open(QIODevice::ReadOnly) && lock.readLine().trimmed().toLongLong() == ::getpid();
}

} // namespace

class serial_device_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { QVERIFY(QDir::setCurrent(folder_.path())); }

    void nothing_is_heard_while_a_port_closes() {
        serial_line wire(7);
        listener listening;
        listening.open();
        listening.port.Output(":80092f\r\n");
        wire.send(":0183E83A98zz\r\n");
        listening.port.PortOpen(false);
        QTest::qWait(50);
        QTRY_COMPARE(wire.all_received(), std::string(":80092f\r\n"));
        QCOMPARE(listening.bytes, std::string());
        QVERIFY(listening.events.empty());
    }

    void a_line_that_takes_nothing_holds_a_close_up_for_a_second() {
        serial_line wire(7);
        listener listening;
        listening.open();
        listening.port.Output(endless);
        QElapsedTimer clock;
        clock.start();
        listening.port.PortOpen(false);
        QVERIFY2(clock.elapsed() < busy_second, qPrintable(QString::number(clock.elapsed())));
        QVERIFY(!listening.port.PortOpen());
        listening.open(); // and is free again
        wire.send("x");
        QTRY_COMPARE(listening.bytes, std::string("x"));
    }

    void all_ports_are_closed_within_a_second_together() {
        const serial_line stuck(8);
        const serial_line stuck_too(9);
        const serial_line stuck_as_well(10);
        serial_line wire(7);
        listener first;
        listener second;
        listener third;
        listener fourth;
        first.open(8);
        second.open(9);
        third.open(7);
        fourth.open(10);
        for (listener* one : {&first, &second, &fourth})
            one->port.Output(endless);
        third.port.Output(":80092f\r\n");
        QVERIFY(locked());
        QElapsedTimer clock;
        clock.start();
        desktop::close_ports();
        QVERIFY2(clock.elapsed() < busy_second, qPrintable(QString::number(clock.elapsed())));
        for (const listener* one : {&first, &second, &third, &fourth})
            QVERIFY(!one->port.PortOpen());
        QVERIFY(!locked());
    }

    void what_waits_reaches_the_line_though_others_are_stuck() {
        const serial_line stuck(8);
        serial_line wire(9);
        listener first;
        listener second;
        first.open(8);
        second.open(9);
        first.port.Output(endless);
        second.port.Output(":80092f\r\n");
        desktop::close_ports();
        QTRY_COMPARE(wire.all_received(), std::string(":80092f\r\n"));
    }

    void a_vanished_device_that_is_back_under_its_name_is_used_again() {
        std::optional<serial_line> wire(7);
        listener listening;
        listening.open();
        for (const std::string bytes : {"first", "second"}) {
            wire.reset();
            QTest::qWait(a_look);
            QVERIFY(listening.port.PortOpen());
            QVERIFY_THROWS_EXCEPTION(failure, listening.port.Output("y"));
            wire.emplace(7);
            QTRY_VERIFY(locked());
            wire->send(bytes);
            QTRY_COMPARE(listening.bytes, bytes);
            listening.port.Output("back");
            QTRY_COMPARE(wire->all_received(), std::string("back"));
            listening.bytes.clear();
        }
    }

    void a_name_that_leads_to_a_device_in_use_opens_nothing() {
        std::optional<serial_line> wire(7);
        const serial_line other(8);
        listener listening;
        listener neighbour;
        listening.open(7);
        neighbour.open(8);
        wire.reset();
        other.link_as(7);
        QTest::qWait(a_look);
        for (const char letter : {'a', 'b', 'c', 'd'}) {
            other.send(std::string(1, letter));
            QTest::qWait(50);
        }
        QTRY_COMPARE(neighbour.bytes, std::string("abcd"));
        QCOMPARE(listening.bytes, std::string());
        wire.emplace(7); // its own device is back at last
        QTRY_VERIFY(locked());
        wire->send("own");
        QTRY_COMPARE(listening.bytes, std::string("own"));
    }

    void a_silent_line_is_not_opened_again() {
        serial_line wire(7);
        listener listening;
        listening.open();
        const serial_line elsewhere(7); // the link leads to another device now
        QTest::qWait(a_look);
        elsewhere.send("wrong");
        wire.send("right");
        QTRY_COMPARE(listening.bytes, std::string("right"));
    }

    void a_port_that_was_closed_meanwhile_stays_closed() {
        std::optional<serial_line> wire(7);
        listener listening;
        listening.open();
        wire.reset();
        QTest::qWait(50);
        listening.port.PortOpen(false);
        wire.emplace(7);
        QTest::qWait(a_look);
        QVERIFY(!listening.port.PortOpen());
        QVERIFY(!locked());
        listening.open();
        wire->send("opened");
        QTRY_COMPARE(listening.bytes, std::string("opened"));
    }

  private:
    QTemporaryDir folder_;
};

static const desktop_test<serial_device_test, QCoreApplication> known;
#include "serial_device_test.moc"
