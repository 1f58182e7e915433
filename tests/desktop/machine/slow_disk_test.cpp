// A disk that hangs in a sync: this file's fdatasync stands in the place of the system's and takes as long as
// a test wants.

#include "real_files.h"

#include "basics/failure.h"
#include "platform/desktop/descriptor.h"
#include "platform/desktop/output_file.h"
#include "platform/desktop/step_thread.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <fstream>
#include <functional>
#include <mutex>
#include <set>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace tyxo;
using namespace tyxo::real_files;
using namespace std::chrono_literals;
using clock_type = std::chrono::steady_clock;

/// The disk, as the syncs see it.
struct disk {
    std::mutex guard;
    std::condition_variable news;
    bool hangs = false;
    std::chrono::milliseconds takes{};
    int writes_beside = 0; ///< by the test's own thread to a file whose sync is under way
    std::multiset<ino_t> syncing;
    int waiting = 0;                             ///< syncs that hang
    std::vector<std::pair<ino_t, off_t>> synced; ///< file and its length, for each sync that ended

    void hang(bool from_now_on) {
        const std::lock_guard lock(guard);
        hangs = from_now_on;
        news.notify_all();
    }
    void sync(const struct stat& file) {
        std::unique_lock lock(guard);
        ++waiting;
        syncing.insert(file.st_ino);
        news.notify_all();
        news.wait_for(lock, takes, [] { return false; });
        news.wait(lock, [this] { return !hangs; });
        --waiting;
        syncing.erase(syncing.find(file.st_ino));
        synced.emplace_back(file.st_ino, file.st_size);
        news.notify_all();
    }
    bool wait_for_syncs(std::size_t count, clock_type::duration patience) {
        std::unique_lock lock(guard);
        return news.wait_for(lock, patience, [&] { return synced.size() >= count; });
    }
    void wait_for_hanging_sync() {
        std::unique_lock lock(guard);
        news.wait(lock, [this] { return waiting > 0; });
    }
};

disk& the_disk() {
    static auto* const one = new disk;
    return *one;
}

clock_type::duration time_of(const std::function<void()>& step) {
    const auto begin = clock_type::now();
    step();
    return clock_type::now() - begin;
}

class SlowDisk : public in_a_folder {
  protected:
    void SetUp() override {
        in_a_folder::SetUp();
        desktop::longest_disk_wait = usual_wait;
        desktop::finish_files(10s);
        the_disk().synced.clear();
        the_disk().takes = 0ms;
        the_disk().writes_beside = 0;
    }
    void TearDown() override {
        the_disk().hang(false);
        file.close();
        events.close();
        desktop::finish_files(10s);
        in_a_folder::TearDown();
    }
    [[nodiscard]] bool on_disk(const std::string& name) const {
        const std::lock_guard lock(the_disk().guard);
        const std::pair whole(inode(name), static_cast<off_t>(content_now(name).size()));
        return std::ranges::find(the_disk().synced, whole) != the_disk().synced.end();
    }

    output_file file;
    output_file events;
};

constexpr auto bound = 200ms; ///< twenty times what a step may wait: the machine is shared

} // namespace

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" int fdatasync(int handle) {
    struct stat file {};
    if (::fstat(handle, &file) != 0) return -1;
    the_disk().sync(file);
    return 0;
}

/// Of folders and of settings: they hang too, and nobody counts them.
extern "C" int fsync(int /*handle*/) {
    std::unique_lock lock(the_disk().guard);
    the_disk().news.wait(lock, [] { return !the_disk().hangs; });
    return 0;
}

extern "C" ssize_t write(int handle, const void* bytes, std::size_t count) {
    struct stat file {};
    const std::lock_guard lock(the_disk().guard);
    const bool busy = ::fstat(handle, &file) == 0 && the_disk().syncing.contains(file.st_ino);
    if (busy && ::gettid() == ::getpid()) ++the_disk().writes_beside;
    return ::syscall(SYS_write, handle, bytes, count);
}

namespace {

TEST_F(SlowDisk, AnEventLineIsOnAFastDiskWhenTheCallReturns) {
    the_disk().takes = 2ms;
    desktop::longest_disk_wait = 10s;
    int there = 0;
    for (int line = 0; line < 100; ++line) {
        file.open({.path = path("events"), .each_line = true});
        file.print("event");
        there += on_disk("events") ? 1 : 0;
        file.close();
    }
    EXPECT_EQ(there, 100);
}

/// Of a new log's header: before it gets its name, and with the name.
constexpr std::size_t header_syncs = 2;

TEST_F(SlowDisk, ANewLogGetsItsNameBehindItsHeader) {
    the_disk().hang(true);
    file.open({.path = path("log"), .header = "header\r\n"});
    std::this_thread::sleep_for(100ms);
    EXPECT_FALSE(std::filesystem::exists(path("log")));
    the_disk().hang(false);
    EXPECT_TRUE(the_disk().wait_for_syncs(header_syncs, 2s));
    EXPECT_EQ(content("log"), "header\r\n");
}

TEST_F(SlowDisk, HeadersAndClosingsReachTheDiskAtOnceAndLinesDoNot) {
    file.open({.path = path("log"), .header = "header\r\n"});
    EXPECT_TRUE(the_disk().wait_for_syncs(header_syncs, 2s));
    EXPECT_TRUE(on_disk("log"));
    file.print("line");
    EXPECT_FALSE(the_disk().wait_for_syncs(header_syncs + 1, 500ms));
    file.close();
    EXPECT_TRUE(the_disk().wait_for_syncs(header_syncs + 1, 2s));
    EXPECT_TRUE(on_disk("log"));
}

TEST_F(SlowDisk, ALogLineIsOnTheDiskAfterFiveSeconds) {
    file.open({.path = path("log"), .header = "header\r\n"});
    const auto begin = clock_type::now();
    while (clock_type::now() - begin < 3s) { // later lines do not put it off
        file.print("line");
        std::this_thread::sleep_for(100ms);
    }
    EXPECT_TRUE(the_disk().wait_for_syncs(header_syncs + 1, 5s - (clock_type::now() - begin)));
    EXPECT_TRUE(on_disk("log"));
}

TEST_F(SlowDisk, ASyncThatHangsHoldsUpNoLineAndKeepsNoneInMemory) {
    file.open({.path = path("log"), .header = "header\r\n"});
    the_disk().hang(true);
    clock_type::duration longest{};
    std::string written;
    for (int line = 0; line < 100; ++line) {
        longest = std::max(longest, time_of([&] {
                               file.print("line");
                               events.open({.path = path("events"), .each_line = true});
                               events.print("event");
                               events.close();
                           }));
        written += "event\r\n";
    }
    the_disk().wait_for_hanging_sync();
    EXPECT_LT(longest, bound);
    file.print("line");
    EXPECT_EQ(the_disk().writes_beside, 0) << "there are file systems on which that waits for the sync";
    for (int wait = 0; wait < 500 && content_now("events") != written; ++wait)
        std::this_thread::sleep_for(10ms);
    EXPECT_EQ(content_now("events"), written) << "the system has them, though the sync hangs";
}

TEST_F(SlowDisk, OpeningAndClosingAFileWhoseSyncHangsTakesNoTime) {
    file.open({.path = path("first"), .each_line = true});
    the_disk().hang(true);
    file.print("line");
    the_disk().wait_for_hanging_sync();
    EXPECT_LT(time_of([&] {
                  file.close();
                  file.open({.path = path("second"), .header = "header\r\n"});
                  file.print("line");
                  file.close();
              }),
              bound);
    the_disk().hang(false);
    EXPECT_TRUE(desktop::finish_files(10s));
    EXPECT_EQ(content_now("second"), "header\r\nline\r\n");
    EXPECT_TRUE(on_disk("second"));
}

TEST(StepThread, AFailureIsThrownToWhoWaitsAndKeptForWhoDoesNot) {
    desktop::step_thread thread;
    EXPECT_THROW(thread.run([] { throw failure("x"); }, clock_type::now() + 10s), failure);
    EXPECT_FALSE(thread.failed_late());
    const auto fail_later = [] {
        std::this_thread::sleep_for(50ms);
        throw failure("x");
    };
    EXPECT_FALSE(thread.run(fail_later, clock_type::now()));
    EXPECT_TRUE(thread.finish(clock_type::now() + 10s));
    EXPECT_TRUE(thread.failed_late());
    EXPECT_FALSE(thread.failed_late());
}

TEST_F(SlowDisk, SettingsAreReadAsTheyWereWrittenThoughTheDiskHangs) {
    replace_file(path("tyxo.ini"), "first");
    EXPECT_TRUE(desktop::finish_files(10s));
    EXPECT_EQ(content_now("tyxo.ini"), "first");
    the_disk().hang(true);
    for (const char* const text : {"second", "third"}) {
        EXPECT_LT(time_of([&] { replace_file(path("tyxo.ini"), text); }), bound);
        EXPECT_EQ(content_now("tyxo.ini"), text);
    }
    EXPECT_EQ(desktop::read_system_file(path("tyxo.ini")), "first");
    the_disk().hang(false);
    EXPECT_TRUE(desktop::finish_files(10s));
    EXPECT_EQ(desktop::read_system_file(path("tyxo.ini")), "third");
    std::ofstream(path("tyxo.ini")) << "by hand";
    EXPECT_EQ(content_now("tyxo.ini"), "by hand") << "once written, the file itself counts again";
}

TEST_F(SlowDisk, TheEndWaitsForLinesAndSyncsForABoundedTime) {
    desktop::longest_disk_wait = 10s;
    file.open({.path = path("log"), .header = "header\r\n"});
    file.print("line");
    EXPECT_FALSE(on_disk("log"));
    EXPECT_TRUE(desktop::finish_files(10s));
    EXPECT_TRUE(on_disk("log"));
    desktop::longest_disk_wait = usual_wait;
    the_disk().hang(true);
    file.print("more");
    bool finished = true;
    const auto waited = time_of([&] { finished = desktop::finish_files(300ms); });
    EXPECT_FALSE(finished);
    EXPECT_GE(waited, 300ms);
    EXPECT_LT(waited, 300ms + bound);
}

} // namespace
