#pragma once
// What several threads say of several files, in the order of the files.

#include "xlg/words.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

namespace tyxo::xlg {

/// What is said of the first file that is not finished goes on at once, what is said of others waits in
/// memory: eight megabytes in all, then whoever says more waits too. So files have to be begun in their
/// order.
class ordered_output {
  public:
    ordered_output(std::size_t files, text_sink to);

    /// Says something of a file. Failure: that of the sink, also if another thread has met it.
    void say(std::size_t file, std::string_view text);
    /// Nothing more will be said of it.
    void finish(std::size_t file);

  private:
    void pass_on(std::string_view text);
    void pass_on_waiting(std::size_t file);

    text_sink to_;
    std::mutex mutex_;
    std::condition_variable turn_;
    std::vector<std::string> waiting_;
    std::size_t waiting_bytes_ = 0; ///< of all files
    std::vector<bool> finished_;
    std::size_t first_ = 0; ///< that is not finished
    std::string failed_;    ///< why the sink takes no more
};

} // namespace tyxo::xlg
