#include "platform/desktop/flusher.h"

#include "platform/debug_output.h"

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <mutex>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tyxo::desktop {

namespace {

bool same_file(const descriptor& one, const descriptor& other) {
    struct stat first {};
    struct stat second {};
    return ::fstat(one.get(), &first) == 0 && ::fstat(other.get(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

void bring_to_disk(const descriptor& file, const std::string& folder) {
    if (::fdatasync(file.get()) != 0 && errno != EINVAL) { // a device has nothing to bring
        debug_output("fdatasync : " + std::generic_category().message(errno));
    }
    if (folder.empty()) return;
    sync_folder(folder);
    sync_folder(folder + "/.."); // the folder may be as new as the file
}

} // namespace

struct flusher::work {
    struct request {
        std::shared_ptr<const descriptor> file;
        clock::time_point due;
        std::string folder;
    };

    std::mutex disk; ///< held during a sync
    std::mutex guard;
    std::condition_variable news;
    std::condition_variable done;
    std::vector<request> requests;
    bool started = false;
    bool syncing = false;
    bool ending = false;

    [[nodiscard]] bool idle() const {
        const auto now = clock::now();
        return !syncing &&
               std::ranges::none_of(requests, [now](const request& one) { return one.due <= now; });
    }

    void run() {
        std::unique_lock lock(guard);
        for (;;) {
            const auto next = std::ranges::min_element(requests, {}, &request::due);
            if (next == requests.end()) {
                if (ending) return;
                news.wait(lock);
                continue;
            }
            if (next->due > clock::now()) {
                const auto due = next->due;
                news.wait_until(lock, due);
                continue;
            }
            {
                const request wanted = std::move(*next);
                requests.erase(next);
                syncing = true;
                lock.unlock();
                const std::lock_guard busy(disk);
                bring_to_disk(*wanted.file, wanted.folder);
            } // closes the file if nobody else has it open, which may take its time too
            lock.lock();
            syncing = false;
            done.notify_all();
        }
    }
};

flusher::flusher() : work_(std::make_shared<work>()) {}

flusher::~flusher() {
    hurry();
    const std::lock_guard lock(work_->guard);
    work_->ending = true;
    work_->news.notify_one();
}

void flusher::ask(std::shared_ptr<const descriptor> file, clock::time_point due, const std::string& folder) {
    const std::lock_guard lock(work_->guard);
    auto& requests = work_->requests;
    const bool first = std::ranges::all_of(requests, [due](const auto& one) { return due < one.due; });
    const auto known = std::ranges::find_if(
        requests, [&file](const auto& one) { return one.file == file || same_file(*one.file, *file); });
    if (known == requests.end()) {
        requests.push_back({std::move(file), due, folder});
    } else {
        known->due = std::min(known->due, due);
        if (!folder.empty()) known->folder = folder;
    }
    if (!std::exchange(work_->started, true)) std::thread([work = work_] { work->run(); }).detach();
    if (first) work_->news.notify_one();
}

bool flusher::waits(const std::shared_ptr<const descriptor>& file) {
    const std::lock_guard lock(work_->guard);
    return std::ranges::any_of(work_->requests, [&file](const auto& one) { return one.file == file; });
}

bool flusher::wait(clock::time_point until) {
    std::unique_lock lock(work_->guard);
    return work_->done.wait_until(lock, until, [this] { return work_->idle(); });
}

std::unique_lock<std::mutex> flusher::pause() {
    return std::unique_lock(work_->disk, std::try_to_lock);
}

void flusher::hurry() {
    const std::lock_guard lock(work_->guard);
    for (auto& one : work_->requests)
        one.due = clock::time_point::min();
    work_->news.notify_one();
}

} // namespace tyxo::desktop
