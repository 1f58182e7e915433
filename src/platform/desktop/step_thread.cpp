#include "platform/desktop/step_thread.h"

#include "basics/failure.h"
#include "platform/debug_output.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>

namespace tyxo::desktop {

struct step_thread::work {
    std::mutex guard;
    std::condition_variable news;
    std::condition_variable done;
    std::deque<std::function<void()>> steps;
    std::uint64_t asked = 0;
    std::uint64_t ended = 0;
    std::uint64_t awaited = 0;         ///< the step whose end is waited for; 0: none
    std::optional<std::string> reason; ///< why the awaited step failed
    bool failed_late = false;
    bool started = false;
    bool ending = false;

    void run() {
        std::unique_lock lock(guard);
        for (;;) {
            news.wait(lock, [this] { return ending || !steps.empty(); });
            if (steps.empty()) return;
            std::function<void()> next = std::move(steps.front());
            steps.pop_front();
            lock.unlock();
            const auto why = attempt(next);
            next = {}; // and with it whatever it has kept alive
            lock.lock();
            const bool told = awaited == ++ended;
            if (told) reason = why;
            const bool late = why && !told;
            if (late) failed_late = true;
            lock.unlock();
            done.notify_all();
            if (late) debug_output("file : " + *why);
            lock.lock();
        }
    }
};

step_thread::step_thread() : work_(std::make_shared<work>()) {}

step_thread::~step_thread() {
    const std::lock_guard lock(work_->guard);
    work_->ending = true;
    work_->news.notify_one();
}

bool step_thread::run(std::function<void()> step, clock::time_point until) {
    std::unique_lock lock(work_->guard);
    if (!std::exchange(work_->started, true)) std::thread([work = work_] { work->run(); }).detach();
    work_->steps.push_back(std::move(step));
    const std::uint64_t number = ++work_->asked;
    work_->awaited = number;
    lock.unlock(); // who is woken finds it free
    work_->news.notify_one();
    lock.lock();
    const bool known = work_->done.wait_until(lock, until, [&] { return work_->ended >= number; });
    work_->awaited = 0;
    if (const auto why = std::exchange(work_->reason, {})) throw failure(*why);
    return known;
}

bool step_thread::failed_late() {
    const std::lock_guard lock(work_->guard);
    return std::exchange(work_->failed_late, false);
}

std::size_t step_thread::waiting() {
    const std::lock_guard lock(work_->guard);
    return work_->steps.size();
}

bool step_thread::idle() {
    const std::lock_guard lock(work_->guard);
    return work_->asked == work_->ended;
}

bool step_thread::finish(clock::time_point until) {
    std::unique_lock lock(work_->guard);
    return work_->done.wait_until(lock, until, [this] { return work_->asked == work_->ended; });
}

} // namespace tyxo::desktop
