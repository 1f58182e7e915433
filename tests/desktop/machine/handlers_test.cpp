// In which order the system's handlers run when one of them waits.

#include "basics/failure.h"
#include "desktop/desktop_test.h"
#include "platform/desktop/handlers.h"
#include "platform/message_box.h"
#include "platform/program.h"
#include "platform/timer.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace tyxo;

namespace {

constexpr int step = 5; // ms

void command(std::function<void()> handler) {
    desktop::run_handler(desktop::source::operator_, std::move(handler));
}

void view_command(std::function<void()> handler) {
    desktop::run_handler(desktop::source::view, std::move(handler));
}

void device_event(std::function<void()> handler) {
    desktop::run_handler(desktop::source::device, std::move(handler));
}

/// From the event loop, as soon as it runs.
void soon(std::function<void()> happen) {
    QTimer::singleShot(0, qApp, std::move(happen));
}

void wait_until(const bool& flag) {
    while (!flag)
        wait_events(step);
}

/// Lets the event loop run, without an end that depends on the clock.
void yield_often() {
    for (int round = 0; round < 20; ++round)
        do_events();
}

void answer_boxes() {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (auto* const box = qobject_cast<QMessageBox*>(window); box != nullptr && box->isVisible())
            box->button(QMessageBox::Ok)->click();
    }
}

} // namespace

class handlers_test : public QObject {
    Q_OBJECT

  private slots:
    void init() { order_.clear(); }

    void a_command_runs_at_once_and_inside_the_wait_of_another_command() {
        bool answered = false;
        command([&] {
            soon([&] {
                command([&] {
                    order_ << "answer";
                    answered = true;
                });
                order_ << "answered";
            });
            wait_until(answered);
            order_ << "asked";
        });
        QCOMPARE(order_, QStringList({"answer", "answered", "asked"}));
    }

    void commands_that_come_while_a_tick_waits_run_behind_it_in_order() {
        device_event([&] {
            soon([&] {
                QVERIFY(desktop::inside_device_handler());
                command([&] { order_ << "first"; });
                command([&] { order_ << "second"; });
            });
            yield_often();
            order_ << "tick";
        });
        QVERIFY(!desktop::inside_device_handler());
        QTRY_COMPARE(order_, QStringList({"tick", "first", "second"}));
    }

    void a_question_is_answered_by_a_command_that_came_while_a_tick_waited_inside_it() {
        bool answered = false;
        command([&] {
            soon([&] {
                device_event([&] {
                    soon([&] {
                        command([&] { order_ << "letter"; });
                        command([&] {
                            order_ << "answer";
                            answered = true;
                        });
                    });
                    yield_often();
                    order_ << "tick";
                });
            });
            wait_until(answered);
            order_ << "asked";
        });
        QCOMPARE(order_, QStringList({"tick", "letter", "answer", "asked"}));
    }

    void a_command_waits_for_every_tick_that_waits() {
        device_event([&] {
            soon([&] {
                device_event([&] {
                    soon([&] { command([&] { order_ << "command"; }); });
                    yield_often();
                    order_ << "inner";
                });
            });
            yield_often();
            yield_often();
            order_ << "outer";
        });
        QTRY_COMPARE(order_, QStringList({"inner", "outer", "command"}));
    }

    void a_tick_inside_a_tick_that_waits_inside_a_question_holds_nothing_for_ever() {
        bool answered = false;
        command([&] {
            soon([&] {
                device_event([&] {
                    soon([&] {
                        device_event([&] {
                            soon([&] { command([&] { answered = true; }); });
                            yield_often();
                            order_ << "inner";
                        });
                    });
                    yield_often();
                    yield_often();
                    order_ << (answered ? "too early" : "outer");
                });
            });
            wait_until(answered);
            order_ << "asked";
        });
        QCOMPARE(order_, QStringList({"inner", "outer", "asked"}));
    }

    void a_kept_command_comes_before_a_later_one() {
        bool answered = false;
        device_event([&] {
            soon([&] {
                command([&] {
                    order_ << "question";
                    soon([&] { command([&] { order_ << "later"; }); });
                    soon([&] { command([&] { answered = true; }); });
                    wait_until(answered);
                });
                command([&] { order_ << "kept"; });
            });
            yield_often();
        });
        QTRY_COMPARE(order_, QStringList({"question", "kept", "later"}));
    }

    void a_timer_goes_on_while_a_command_that_its_tick_held_up_waits() {
        Timer timer;
        int ticks = 0;
        bool answered = false;
        bool asked = false;
        timer.on_tick([&] {
            if (++ticks > 1) return;
            soon([&] {
                command([&] {
                    asked = true;
                    wait_until(answered);
                    order_ << "answered";
                });
            });
            yield_often();
            order_ << (asked ? "too early" : "tick");
        });
        timer.Interval(16);
        timer.Enabled(true);
        QTimer::singleShot(5000, &timer_guard_, [&] { answered = true; });
        QTimer beat;
        connect(&beat, &QTimer::timeout, this, [&] {
            if (asked && ticks > 3) answered = true;
        });
        beat.start(step);
        QTRY_COMPARE(order_, QStringList({"tick", "answered"}));
        QVERIFY(ticks > 3);
    }

    void a_view_command_runs_inside_a_tick_that_waits_and_before_kept_commands() {
        device_event([&] {
            soon([&] {
                command([&] { order_ << "kept"; });
                view_command([&] { order_ << "view"; });
                desktop::on_view_command([&] { order_ << "another view"; })();
            });
            yield_often();
            order_ << "tick";
        });
        QTRY_COMPARE(order_, QStringList({"view", "another view", "tick", "kept"}));
    }

    void a_view_command_inside_a_tick_lets_no_command_in() {
        device_event([&] {
            soon([&] {
                view_command([&] {
                    QVERIFY(desktop::inside_device_handler());
                    command([&] { order_ << "command"; });
                    order_ << "view";
                });
            });
            yield_often();
            order_ << "tick";
        });
        QTRY_COMPARE(order_, QStringList({"view", "tick", "command"}));
        view_command([] { QVERIFY(!desktop::inside_device_handler()); });
    }

    void a_box_of_a_view_command_inside_a_tick_does_not_wait() {
        device_event([&] {
            soon([&] {
                view_command([&] {
                    message_box("told");
                    order_ << "view";
                });
            });
            yield_often();
            order_ << "tick";
        });
        QCOMPARE(order_, QStringList({"view", "tick"}));
        answer_boxes();
    }

    void the_windows_are_told_of_a_view_command_while_the_tick_goes_on_waiting() {
        int told = 0;
        desktop::on_handled([&](desktop::source) { ++told; });
        device_event([&] {
            yield_often();
            wait_events(1);
            const int before = told;
            soon([&] { view_command([] {}); });
            yield_often();
            QCOMPARE(told, before + 1);
        });
        desktop::on_handled({});
    }

    void two_message_boxes_are_answered_though_a_tick_waits_in_between() {
        bool second_up = false;
        QTimer clicks;
        connect(&clicks, &QTimer::timeout, this, [&] {
            if (second_up) answer_boxes();
        });
        command([&] {
            soon([&] {
                device_event([&] {
                    soon([&] {
                        command([&] {
                            soon([&] { second_up = true; });
                            message_box("second");
                            order_ << "second";
                        });
                    });
                    yield_often();
                    order_ << "tick";
                });
                clicks.start(step);
            });
            message_box("first");
            order_ << "first";
        });
        QCOMPARE(order_, QStringList({"tick", "second", "first"}));
    }

    void a_failure_while_a_tick_waits_loses_no_command() {
        device_event([&] {
            soon([&] {
                command([] { throw failure("first"); });
                command([&] { order_ << "second"; });
            });
            yield_often();
            throw failure("tick");
        });
        QVERIFY(!desktop::inside_device_handler());
        QTRY_COMPARE(order_, QStringList{"second"});
    }

    void the_windows_are_told_when_a_handler_ends_and_when_it_begins_to_wait() {
        int told = 0;
        desktop::on_handled([&](desktop::source) { ++told; });
        command([&] {
            QCOMPARE(told, 0);
            wait_events(1);
            QCOMPARE(told, 1);
            wait_events(1);
            QCOMPARE(told, 1); // once is enough: whatever happens meanwhile tells them too
        });
        QCOMPARE(told, 2);
        device_event([] {});
        QCOMPARE(told, 3);
        desktop::on_handled({});
    }

    void waiting_outside_of_any_handler_is_harmless() {
        wait_events(1);
        do_events();
        QVERIFY(!desktop::inside_device_handler());
    }

  private:
    QStringList order_;
    QObject timer_guard_;
};

static const desktop_test<handlers_test> known;
#include "handlers_test.moc"
