#pragma once
// Opens many logs on all processors, while the window goes on.

#include "view/lane.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace tyxo::view {

/// The logs that these files and folders are; of a folder those in it and in folders below it, by their
/// names. What is no folder is taken as a log, whatever its name.
[[nodiscard]] std::vector<std::string> logs_named(const std::vector<std::string>& names);

/// Bytes that logs of so many bytes take when they are open.
[[nodiscard]] std::int64_t memory_of_logs(std::int64_t bytes);

/// Bytes that the machine can give without moving others out; a very great number where it does not say.
[[nodiscard]] std::int64_t free_memory();

class log_loader {
  public:
    /// Begins at once.
    explicit log_loader(std::vector<std::string> files);
    /// Stops what is not ended yet.
    ~log_loader();
    log_loader(const log_loader&) = delete;
    log_loader& operator=(const log_loader&) = delete;

    [[nodiscard]] std::int64_t total() const { return total_; } ///< bytes
    [[nodiscard]] std::int64_t done() const { return done_; }
    [[nodiscard]] bool ended() const { return left_ == 0; }
    void stop() { stopped_ = true; }
    [[nodiscard]] bool stopped() const { return stopped_; }

    /// Once it has ended: what was opened, in the order of the files, and why the others were not.
    [[nodiscard]] log_list take_logs();
    [[nodiscard]] const std::vector<std::string>& failures() const { return failures_; }

  private:
    void work();
    void count(std::size_t bytes);

    std::vector<std::string> files_;
    log_list logs_; ///< of each file, null where it could not be read
    std::mutex telling_;
    std::vector<std::string> failures_;
    std::int64_t total_ = 0;
    std::atomic<std::int64_t> done_ = 0;
    std::atomic<std::size_t> next_ = 0;
    std::atomic<std::size_t> left_ = 0;
    std::atomic<bool> stopped_ = false;
    std::vector<std::jthread> workers_;
};

} // namespace tyxo::view
