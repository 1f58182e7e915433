#pragma once
// One sound on its way to the sound server, over a connection of its own. Nothing here waits for the server:
// whoever plays turns the loop and asks how far things are.

#include "platform/desktop/sound_file.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <pulse/pulseaudio.h>

namespace tyxo::desktop {

/// What serves the connections. One thread turns it, any thread may wake it.
class sound_loop {
  public:
    /// Failure: the process has no more descriptors.
    sound_loop();

    /// Waits for the sound server or for somebody who wakes, at most so long, and serves what came.
    void turn(std::chrono::microseconds at_most);

    /// Ends the turn that waits, or the next one at once.
    void wake();

    [[nodiscard]] pa_mainloop_api* api() const { return pa_mainloop_get_api(loop_.get()); }

  private:
    std::unique_ptr<pa_mainloop, decltype(&pa_mainloop_free)> loop_;
    std::atomic<bool> woken_ = false;
};

/// Its steps in their order: made, connected, opened, played, over. Each of them but the last raises a
/// failure that says what is missing.
class sound_stream {
  public:
    explicit sound_stream(const sound_loop& loop);
    ~sound_stream();
    sound_stream(const sound_stream&) = delete;
    sound_stream& operator=(const sound_stream&) = delete;

    [[nodiscard]] bool connected() const;
    void open(const sound_samples& sound);
    [[nodiscard]] bool opened() const;

    /// Hands the whole sound to the server, which plays it without further help.
    void play(const sound_samples& sound);

    /// Played to its end, or the server is gone.
    [[nodiscard]] bool over() const;

  private:
    pa_context* context_ = nullptr;
    pa_stream* stream_ = nullptr;
    pa_operation* drained_ = nullptr;
};

} // namespace tyxo::desktop
