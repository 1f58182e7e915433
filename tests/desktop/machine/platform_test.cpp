// Timers and serial ports on the real event loop, with real pseudo-terminals.

#include "basics/failure.h"
#include "desktop/desktop_test.h"
#include "desktop/serial_line.h"
#include "platform/desktop/handlers.h"
#include "platform/program.h"
#include "platform/timer.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <ctime>
#include <optional>

using namespace tyxo;

namespace {

double processor_seconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

} // namespace

class platform_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { QVERIFY(QDir::setCurrent(folder_.path())); }

    void a_timer_ticks_at_its_interval_until_it_is_disabled() {
        Timer timer;
        int ticks = 0;
        timer.on_tick([&] { ++ticks; });
        timer.Interval(30);
        QTest::qWait(60);
        QCOMPARE(ticks, 0); // not enabled yet
        timer.Enabled(true);
        QTRY_VERIFY(ticks >= 3);
        timer.Enabled(false);
        const int before = ticks;
        QTest::qWait(60);
        QCOMPARE(ticks, before);
    }

    void no_timer_ticks_faster_than_64_times_a_second() {
        Timer timer;
        int ticks = 0;
        timer.on_tick([&] { ++ticks; });
        timer.Interval(1);
        timer.Enabled(true);
        QElapsedTimer clock;
        clock.start();
        QTRY_VERIFY(ticks >= 20);
        QVERIFY(clock.elapsed() >= 20 * 15);
    }

    void a_tick_never_runs_inside_a_tick_of_the_same_timer() {
        Timer timer;
        int depth = 0;
        int deepest = 0;
        timer.on_tick([&] {
            deepest = std::max(deepest, ++depth);
            QTest::qWait(60);
            --depth;
        });
        timer.Interval(16);
        timer.Enabled(true);
        QTest::qWait(200);
        timer.Enabled(false);
        QTRY_COMPARE(depth, 0);
        QCOMPARE(deepest, 1);
    }

    void a_command_that_comes_while_a_tick_yields_runs_behind_the_tick() {
        Timer timer;
        QStringList order;
        QTimer::singleShot(
            0, [&] { desktop::run_handler(desktop::source::operator_, [&] { order << "command"; }); });
        timer.on_tick([&] {
            timer.Enabled(false);
            QTimer::singleShot(0, [&] {
                desktop::run_handler(desktop::source::operator_, [&] { order << "late command"; });
            });
            QTest::qSleep(5);
            do_events();
            order << "tick";
        });
        timer.Interval(16);
        timer.Enabled(true);
        QTRY_COMPARE(order, QStringList({"command", "tick", "late command"}));
    }

    void a_failure_in_a_handler_does_not_leave_it() {
        bool after = false;
        desktop::run_handler(desktop::source::operator_, [] { failures::overflow(); });
        desktop::run_handler(desktop::source::operator_, [&] { after = true; });
        QVERIFY(after);
    }

    void bytes_arrive_as_receive_events() {
        serial_line wire(7);
        listener listening;
        listening.open();
        wire.send(":00a0\r\n");
        QTRY_COMPARE(listening.bytes, std::string(":00a0\r\n"));
        QVERIFY(listening.events.front() == comm_event::receive);
    }

    void output_reaches_the_line_and_the_empty_send_buffer_is_an_event() {
        serial_line wire(7);
        listener listening;
        listening.open();
        listening.port.Output(":80092f\r\n");
        QTRY_COMPARE(wire.all_received(), std::string(":80092f\r\n"));
        QTRY_VERIFY(!listening.events.empty());
        QCOMPARE(listening.events.front(), comm_event::send_buffer_low);
    }

    void output_before_a_close_reaches_the_line() {
        serial_line wire(7);
        listener listening;
        listening.open();
        listening.port.Output(":80092f\r\n");
        listening.port.PortOpen(false);
        QTRY_COMPARE(wire.all_received(), std::string(":80092f\r\n"));
    }

    void held_events_deliver_nothing_until_the_release() {
        serial_line wire(7);
        listener listening;
        Timer timer;
        int ticks = 0;
        timer.on_tick([&] { ++ticks; });
        hold_events(true);
        listening.open();
        timer.Interval(16);
        timer.Enabled(true);
        wire.send("early");
        QTest::qWait(100);
        QCOMPARE(ticks, 0);
        QVERIFY(listening.bytes.empty());
        hold_events(false);
        QCOMPARE(listening.bytes, std::string("early"));
        QTRY_VERIFY(ticks > 0);
    }

    void a_port_that_does_not_exist_cannot_be_opened() {
        QFile::remove("ports/COM7");
        listener listening;
        QVERIFY_THROWS_EXCEPTION(failure, listening.open());
        QVERIFY(!listening.port.PortOpen());
    }

    void number_0_is_no_port() {
        MSComm port;
        QVERIFY_THROWS_EXCEPTION(failure, port.CommPort(0));
    }

    void a_vanished_device_leaves_the_port_open_and_the_processor_idle() {
        serial_line wire(7);
        listener listening;
        listening.open();
        wire.send("x");
        QTRY_COMPARE(listening.bytes, std::string("x"));
        wire.vanish();
        QTest::qWait(50);
        const double before = processor_seconds();
        QTest::qWait(1000);
        QVERIFY2(processor_seconds() - before < 0.05, "an end of file is read over and over");
        QVERIFY(listening.port.PortOpen());
        QVERIFY_THROWS_EXCEPTION(failure, listening.port.Output("y"));
        listening.port.PortOpen(false);
        QVERIFY(!listening.port.PortOpen());
    }

    void a_device_that_returned_can_be_opened_again() {
        std::optional<serial_line> wire;
        wire.emplace(7);
        listener listening;
        listening.open();
        wire->vanish();
        QTest::qWait(50);
        listening.port.PortOpen(false);
        wire.reset();
        wire.emplace(7);
        listening.open();
        wire->send("again");
        QTRY_COMPARE(listening.bytes, std::string("again"));
    }

  private:
    QTemporaryDir folder_;
};

static const desktop_test<platform_test, QCoreApplication> known;
#include "platform_test.moc"
