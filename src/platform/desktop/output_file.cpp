// Output files on threads of their own: one for each file's steps, and one for its syncs (flusher.h). The
// thread of the measurement hands a step over and waits for it, but never longer than `longest_wait`. A write
// of its own could wait for a sync of the same file, for a share that does not answer, or for the disk's
// other users.

#include "platform/desktop/output_file.h"

#include "basics/failure.h"
#include "platform/debug_output.h"
#include "platform/desktop/disk_file.h"
#include "platform/files.h"
#include "platform/line_file.h"

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace tyxo {

namespace {

using desktop::flusher;
using std::chrono::milliseconds;

constexpr milliseconds longest_wait{10};

/// Steps that may wait for a disk; at the pace of a serial line they come in a quarter of an hour or more,
/// and they take 12 MB at most.
constexpr std::size_t most_waiting = 10'000;

} // namespace

struct output_file::lane : std::enable_shared_from_this<lane> {
    using step = std::function<void(line_file&)>;

    /// Hands the step over, and waits for its end if that is near. Failure: that of the step.
    void run(step what);
    /// Steps that have not begun.
    [[nodiscard]] std::size_t waiting() {
        const std::lock_guard lock(guard);
        return steps.size();
    }
    /// Waits until all steps are done and on the disk.
    bool finish(flusher::clock::time_point until);
    /// The steps' thread, to the lane's end.
    void work();

    std::mutex guard;
    std::condition_variable news;
    std::condition_variable done;
    std::deque<step> steps;
    std::uint64_t asked = 0;
    std::uint64_t ended = 0;
    std::uint64_t awaited = 0;         ///< the step whose end is waited for; 0: none
    std::optional<std::string> reason; ///< why the awaited step failed
    bool started = false;
    bool ending = false;
    line_file file; ///< but for its flusher, the thread's own
};

namespace {

/// The lanes of all output files; never destroyed, since files may live as long as the process.
std::vector<std::weak_ptr<output_file::lane>>& all_lanes() {
    static auto* const lanes = new std::vector<std::weak_ptr<output_file::lane>>;
    return *lanes;
}

} // namespace

void output_file::lane::run(step what) {
    std::unique_lock lock(guard);
    if (!std::exchange(started, true)) std::thread([self = shared_from_this()] { self->work(); }).detach();
    flusher& syncs = file.on_disk().own().flusher;
    const bool idle = asked == ended && syncs.wait({});
    steps.push_back(std::move(what));
    const std::uint64_t number = ++asked;
    news.notify_one();
    if (!idle) return;
    const auto until = flusher::clock::now() + longest_wait;
    awaited = number;
    const bool known = done.wait_until(lock, until, [&] { return ended >= number; });
    awaited = 0;
    if (!known) return;
    if (const auto why = std::exchange(reason, {})) throw failure(*why);
    lock.unlock();
    static_cast<void>(syncs.wait(until)); // on a disk that is fast enough the line is there when this returns
}

bool output_file::lane::finish(flusher::clock::time_point until) {
    std::unique_lock lock(guard);
    if (!done.wait_until(lock, until, [this] { return asked == ended; })) return false;
    flusher& syncs = file.on_disk().own().flusher;
    syncs.hurry();
    return syncs.wait(until);
}

void output_file::lane::work() {
    std::unique_lock lock(guard);
    for (;;) {
        news.wait(lock, [this] { return ending || !steps.empty(); });
        if (steps.empty()) return;
        const step next = std::move(steps.front());
        steps.pop_front();
        lock.unlock();
        auto why = attempt([&] { next(file); });
        lock.lock();
        const bool told = awaited == ++ended;
        if (told) reason = std::move(why);
        done.notify_all();
        if (told || !why) continue;
        lock.unlock();
        debug_output("file : " + *why);
        lock.lock();
    }
}

output_file::output_file() : lane_(std::make_shared<lane>()) {
    std::erase_if(all_lanes(), [](const auto& known) { return known.expired(); });
    all_lanes().push_back(lane_);
}

output_file::~output_file() {
    const std::lock_guard lock(lane_->guard);
    lane_->ending = true;
    lane_->news.notify_one();
}

void output_file::open(file_place place) {
    open_ = true;
    lane_->run([place = std::move(place)](line_file& file) { file.open(place); });
}

void output_file::print(std::string_view line) {
    if (!open_) throw failure("The file is not open");
    if (lane_->waiting() >= most_waiting) throw failure("The disk does not answer");
    lane_->run([line = std::string(line)](line_file& file) { file.print(line); });
}

void output_file::close() {
    if (!std::exchange(open_, false)) return;
    lane_->run([](line_file& file) { file.close(); });
}

bool desktop::finish_files(milliseconds patience) {
    const auto until = flusher::clock::now() + patience;
    bool finished = true;
    for (const auto& known : all_lanes()) {
        const auto lane = known.lock();
        if (lane != nullptr && !lane->finish(until)) finished = false;
    }
    return finished;
}

} // namespace tyxo
