#pragma once
// Plays sound files on the machine's sound server, on a thread of its own: a server may be slow, hang, die
// and come back.

#include "platform/desktop/sound_stream.h"

#include <chrono>
#include <mutex>
#include <optional>
#include <string>

namespace tyxo::desktop {

class sound_player {
  public:
    /// Starts a file from its beginning; an empty path stands for a file that does not exist. Never waits,
    /// for any thread. A file that is not begun yet is replaced, not queued. What is the matter when nothing
    /// is heard goes to the debug output, once in an alarm and again when it changes.
    void play(std::string path);

    /// Plays what is asked for, for ever; for the player's own thread.
    [[noreturn]] void run();

  private:
    using clock = std::chrono::steady_clock;

    std::optional<std::string> take();
    void start(const std::string& path);
    void hear(const std::string& path);
    template <class condition> void wait_until(condition holds);
    void complain(const std::string& why);

    std::mutex mutex_; // what the threads share
    std::optional<std::string> wanted_;
    clock::time_point wanted_at_;
    bool new_alarm_ = false;

    sound_loop loop_; // the player's own, but for its waking
    std::optional<sound_stream> stream_;
    std::string complaint_; // said last, while it holds
};

} // namespace tyxo::desktop
