#include "platform/desktop/handlers.h"

#include "basics/failure.h"
#include "platform/debug_output.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <deque>
#include <utility>
#include <vector>

namespace tyxo::desktop {

namespace {

struct running_handler {
    source from;
    bool shown = false; // the windows were told once while it waited
};
std::vector<running_handler> running;       // inside each other, the innermost last
std::deque<std::function<void()>> commands; // of the operator, not run yet
std::function<void(source)> handled;

/// Wakes the event loop up every so many milliseconds, until nobody has asked for it for a while: starting a
/// timer for each of many short waits would cost more than the waits.
void wake_up_after(int milliseconds) {
    constexpr int idle_beats = 100;
    static QPointer<QTimer> beat;
    static int unused = 0;
    unused = 0;
    if (!beat) {
        beat = new QTimer(QCoreApplication::instance());
        beat->setTimerType(Qt::PreciseTimer);
        QObject::connect(beat, &QTimer::timeout, beat, [] {
            if (++unused > idle_beats) beat->stop();
        });
    }
    if (!beat->isActive() || beat->interval() > milliseconds) beat->start(milliseconds);
}

void run_now(source from, const std::function<void()>& handler) {
    running.push_back({from});
    if (const auto why = attempt(handler)) debug_output(*why);
    running.pop_back();
    if (handled) handled(from);
}

/// Runs what the operator has commanded, in order, unless a tick waits: never a command inside a tick. A
/// command may wait too; what comes meanwhile runs inside its wait.
void run_commands() {
    while (!inside_device_handler() && !commands.empty()) {
        const auto next = std::move(commands.front());
        commands.pop_front();
        run_now(source::operator_, next);
    }
}

} // namespace

void run_handler(source from, std::function<void()> handler) {
    if (from == source::operator_) {
        commands.push_back(std::move(handler));
        run_commands();
        return;
    }
    run_now(from, handler);
    // From the event loop: the timer or port of this handler counts as busy until it has returned.
    if (!inside_device_handler() && !commands.empty())
        QMetaObject::invokeMethod(QCoreApplication::instance(), run_commands, Qt::QueuedConnection);
}

std::function<void()> on_command(std::function<void()> handler) {
    return [handler = std::move(handler)] { run_handler(source::operator_, handler); };
}

std::function<void()> on_view_command(std::function<void()> handler) {
    return [handler = std::move(handler)] { run_handler(source::view, handler); };
}

bool inside_device_handler() {
    const auto innermost =
        std::ranges::find_if(running.rbegin(), running.rend(),
                             [](const running_handler& one) { return one.from != source::view; });
    return innermost != running.rend() && innermost->from != source::operator_;
}

void yield() {
    QCoreApplication::processEvents();
}

void wait(int milliseconds) {
    if (!running.empty() && !std::exchange(running.back().shown, true) && handled) handled(source::operator_);
    wake_up_after(milliseconds);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void on_handled(std::function<void(source)> hook) {
    handled = std::move(hook);
}

} // namespace tyxo::desktop
