#include "platform/desktop/handlers.h"

#include "basics/failure.h"
#include "platform/debug_output.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QPointer>
#include <QTimer>

#include <utility>
#include <vector>

namespace tyxo::desktop {

namespace {

std::vector<source> running; // the handlers that run inside each other, the innermost last
bool yielding = false;
std::vector<std::function<void()>> waiting; // commands of the operator that came while a tick yielded
std::function<void()> handled;

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
    running.push_back(from);
    if (const auto why = attempt(handler)) debug_output(*why);
    running.pop_back();
    if (handled) handled();
}

} // namespace

void run_handler(source from, std::function<void()> handler) {
    if (from == source::operator_ && yielding) {
        waiting.push_back(std::move(handler));
        return;
    }
    run_now(from, handler);
    while (running.empty() && !waiting.empty()) {
        const auto next = std::move(waiting.front());
        waiting.erase(waiting.begin());
        run_now(source::operator_, next);
    }
}

bool inside_device_handler() {
    return !running.empty() && running.back() == source::device;
}

void yield() {
    const bool before = std::exchange(yielding, inside_device_handler());
    QCoreApplication::processEvents();
    yielding = before;
}

void wait(int milliseconds) {
    const bool before = std::exchange(yielding, yielding || inside_device_handler());
    wake_up_after(milliseconds);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    yielding = before;
}

void on_handled(std::function<void()> hook) {
    handled = std::move(hook);
}

} // namespace tyxo::desktop
