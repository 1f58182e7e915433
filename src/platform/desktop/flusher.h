#pragma once
// Brings files from the system's memory to the disk, on a thread of its own: a disk that hangs in it holds up
// nobody else.

#include "platform/desktop/descriptor.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <string>

namespace tyxo::desktop {

class flusher {
  public:
    using clock = std::chrono::steady_clock;

    flusher();
    ~flusher(); ///< what was asked for is still done
    flusher(const flusher&) = delete;
    flusher& operator=(const flusher&) = delete;

    /// Has the file synchronised when it is due; of several requests for one file the earliest counts. The
    /// file stays open until then. A new file names its folder, whose entry for it has to be kept too.
    void ask(std::shared_ptr<const descriptor> file, clock::time_point due, const std::string& folder = {});
    /// True if the file waits for a sync, which then covers whatever is written before it begins.
    [[nodiscard]] bool waits(const std::shared_ptr<const descriptor>& file);
    /// Waits until nothing that is due is outstanding; false when `until` comes first. Any thread may ask.
    [[nodiscard]] bool wait(clock::time_point until);
    /// While the lock is held no sync begins; it holds nothing when one is under way.
    [[nodiscard]] std::unique_lock<std::mutex> pause();
    /// Everything that was asked for is due now.
    void hurry();

  private:
    struct work;
    std::shared_ptr<work> work_;
};

} // namespace tyxo::desktop
