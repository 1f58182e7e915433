// Periods of a timer on the real event loop, above all of one that is restarted before they end.

#include "desktop/desktop_test.h"
#include "platform/timer.h"

#include <QElapsedTimer>
#include <QTest>

#include <memory>

using namespace tyxo;

class timer_test : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        timer_ = std::make_unique<Timer>();
        ticks_ = 0;
        timer_->on_tick([this] {
            ++ticks_;
            ticked_ = since_.elapsed();
        });
    }

    void a_deadline_that_moves_ticks_a_whole_interval_behind_its_last_move() {
        start(200);
        for (int move = 0; move < 12; ++move) {
            QTest::qWait(20);
            restart();
        }
        QCOMPARE(ticks_, 0);
        QTRY_COMPARE(ticks_, 1);
        QVERIFY2(ticked_ >= 200 && ticked_ < 300, qPrintable(QString::number(ticked_)));
    }

    void behind_a_moved_deadline_the_period_is_kept() {
        start(50);
        QTest::qWait(30);
        restart();
        QTRY_COMPARE(ticks_, 10);
        QVERIFY2(ticked_ >= 500 && ticked_ < 590, qPrintable(QString::number(ticked_)));
    }

    void setting_the_interval_starts_the_period_anew() {
        start(100);
        QTest::qWait(60);
        since_.start();
        timer_->Interval(100);
        QTRY_COMPARE(ticks_, 1);
        QVERIFY2(ticked_ >= 100 && ticked_ < 190, qPrintable(QString::number(ticked_)));
    }

    void enabling_one_that_is_enabled_moves_nothing() {
        start(100);
        QTest::qWait(60);
        timer_->Enabled(true);
        QTRY_COMPARE(ticks_, 1);
        QVERIFY2(ticked_ < 150, qPrintable(QString::number(ticked_)));
    }

    void a_restart_with_a_shorter_interval_ticks_in_time() {
        start(1000);
        QTest::qWait(20);
        timer_->Enabled(false);
        start(50);
        QTRY_COMPARE(ticks_, 1);
        QVERIFY2(ticked_ >= 50 && ticked_ < 500, qPrintable(QString::number(ticked_)));
    }

    void a_shorter_interval_ticks_in_time() {
        start(1000);
        since_.start();
        timer_->Interval(50);
        QTRY_COMPARE(ticks_, 1);
        QVERIFY2(ticked_ >= 50 && ticked_ < 500, qPrintable(QString::number(ticked_)));
    }

    void one_that_was_disabled_in_between_never_ticks() {
        start(50);
        QTest::qWait(20);
        restart();
        timer_->Enabled(false);
        QTest::qWait(200);
        QCOMPARE(ticks_, 0);
    }

    void one_with_the_interval_0_never_ticks() {
        start(50);
        timer_->Interval(0);
        QTest::qWait(200);
        QCOMPARE(ticks_, 0);
    }

    void ticks_that_come_due_while_one_waits_are_lost() {
        timer_->on_tick([this] {
            ticked_ = since_.elapsed();
            if (++ticks_ == 1) QTest::qWait(250);
        });
        start(100);
        QTRY_COMPARE(ticks_, 2);
        QVERIFY2(ticked_ >= 395, qPrintable(QString::number(ticked_))); // not at 350, when the wait has ended
    }

  private:
    void start(int interval) {
        since_.start();
        timer_->Interval(interval);
        timer_->Enabled(true);
    }
    void restart() {
        since_.start();
        timer_->Enabled(false);
        timer_->Enabled(true);
    }

    std::unique_ptr<Timer> timer_;
    int ticks_ = 0;
    QElapsedTimer since_; ///< the last start
    qint64 ticked_ = 0;   ///< ms from there to the last tick
};

static const desktop_test<timer_test, QCoreApplication> known;
#include "timer_test.moc"
