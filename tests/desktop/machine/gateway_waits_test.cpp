// The gateway's waits on the real event loop and the real clock: what an operator does meanwhile.

#include "app/wiring.h"
#include "desktop/desktop_test.h"
#include "desktop/tcp_peers.h"
#include "gateway/connection.h"
#include "gateway/frmsetuptcp.h"
#include "gateway/modbus.h"
#include "platform/clock.h"
#include "platform/desktop/handlers.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <ctime>

using namespace tyxo;

namespace {

constexpr int day = 86400; // s
constexpr int last_second = day - 1;

/// Gives this process a time zone in which midnight is 0.2 to 0.4 s away.
void bring_midnight_near() {
    double part = 0; // of the second, the same in every zone
    while (part < 0.6 || part > 0.8) {
        QTest::qSleep(10);
        part = std::fmod(seconds_of_day(), 1);
    }
    const auto behind_utc = static_cast<int>((std::time(nullptr) % day - last_second + day) % day);
    const QString zone = "LOC%1:%2:%3";
    qputenv("TZ", zone.arg(behind_utc / 3600).arg(behind_utc / 60 % 60).arg(behind_utc % 60).toLatin1());
    ::tzset();
}

} // namespace

class gateway_waits_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        wire();
        start_gateway();
    }
    void init() {
        gateway.Winsock_A.Close();
        tcp = {};
        modbus = {};
        FrmSetupTCP::state.Txt_IPadr = "127.0.0.1";
        order_.clear();
    }

    void a_reconnection_over_midnight_lets_the_operator_in_again() {
        silent_host host;
        FrmSetupTCP::state.Txt_IPport = std::to_string(host.port());
        bring_midnight_near();
        QElapsedTimer clock;
        qint64 viewed = 0;
        qint64 commanded = 0;
        QTimer::singleShot(700, this, [&] {
            QVERIFY2(seconds_of_day() < 3600, "not behind midnight");
            desktop::run_handler(desktop::source::operator_, [&] { commanded = clock.elapsed(); });
            desktop::run_handler(desktop::source::view, [&] { viewed = clock.elapsed(); });
        });
        clock.start();
        desktop::run_handler(desktop::source::device, FrmSetupTCP::Timer_reconnect_tick);
        const qint64 waited = clock.elapsed();
        QVERIFY2(waited >= 4900 && waited < 5500, qPrintable(QString::number(waited)));
        QVERIFY2(viewed >= 690 && viewed < 900, qPrintable(QString::number(viewed)));
        QCOMPARE(commanded, 0); // inside the tick
        QTRY_VERIFY(commanded >= waited);
        QVERIFY2(commanded < 6000, qPrintable(QString::number(commanded)));
        QCOMPARE(FrmSetupTCP::state.Text5.Text, std::string("Can't connect to 127.0.0.1  State: 9"));
        QCOMPARE(tcp.tcp_fail_count, i16{1});
    }

    void an_attempt_at_any_other_time_takes_half_a_second() {
        silent_host host;
        FrmSetupTCP::state.Txt_IPport = std::to_string(host.port());
        qputenv("TZ",
                "LOC" + QByteArray::number(static_cast<int>(std::time(nullptr) % day / 3600 + 12) % 24));
        ::tzset(); // noon
        QElapsedTimer clock;
        clock.start();
        desktop::run_handler(desktop::source::device, FrmSetupTCP::Timer_reconnect_tick);
        QVERIFY2(clock.elapsed() >= 480 && clock.elapsed() < 2000, // far from 5 s
                 qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(FrmSetupTCP::state.Text5.Text, std::string("Can't connect to 127.0.0.1  State: 6"));
    }

    void a_write_that_waits_for_its_answer_lets_view_commands_in() {
        controller server; // answers nothing
        FrmSetupTCP::state.Txt_IPport = std::to_string(server.port());
        TCP_connect(1);
        QVERIFY(tcp.tcp_connected);
        QTimer::singleShot(300, this, [&] {
            desktop::run_handler(desktop::source::operator_, [&] { order_ << "command"; });
            desktop::run_handler(desktop::source::view, [&] { order_ << "view"; });
        });
        desktop::run_handler(desktop::source::device, [&] {
            FC16MB_write(1000, 1);
            order_ << "tick";
        });
        QTRY_COMPARE(order_, QStringList({"view", "tick", "command"}));
        QVERIFY(modbus.mb_timed_out);
    }

  private:
    QStringList order_;
};

static const desktop_test<gateway_waits_test, QCoreApplication> known;
#include "gateway_waits_test.moc"
