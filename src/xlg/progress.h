#pragma once
// How far the reading of files has come, as a line that is painted over and over on a terminal.

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <string>

namespace tyxo::xlg {

/// "[#####               ] 25 % of 1.2 GB, 640 MB/s".
[[nodiscard]] std::string progress_text(std::int64_t done, std::int64_t total, double seconds);

/// Threads may share it.
class progress {
  public:
    /// Of so many bytes in all. Without a stream nothing is shown.
    progress(std::FILE* stream, std::int64_t total) : stream_(stream), total_(total) {}
    ~progress() { hide(); }
    progress(const progress&) = delete;
    progress& operator=(const progress&) = delete;

    /// So many bytes more were read; shown a few times a second.
    void add(std::size_t bytes);
    /// Makes room for other lines.
    void hide();

  private:
    using clock = std::chrono::steady_clock;

    std::FILE* stream_;
    std::int64_t total_;
    std::mutex mutex_;
    std::int64_t done_ = 0;
    clock::time_point begin_ = clock::now();
    clock::time_point shown_at_ = begin_;
    bool shown_ = false;
};

} // namespace tyxo::xlg
