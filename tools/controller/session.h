// A controller with its commands: what it counts, what it tells.
#pragma once

#include "controller/register_map.h"
#include "controller/server.h"

#include <array>
#include <functional>
#include <string>

namespace tyxo::controller_sim {

using Say = std::function<void(const std::string& line)>;

class Session {
  public:
    /// A controller on the port; the data logger's registers begin at `base`. Says on which port it listens.
    /// Throws std::runtime_error when it cannot listen.
    Session(int port, std::size_t base, Say say);

    Server& server() { return server_; }
    void say(const std::string& line) { say_(line); }
    void report();
    void quit() { ended_ = true; }
    bool ended() const { return ended_; }

    /// Frames of a channel by the elements of `blocks`.
    const std::array<std::size_t, blocks.size()>& frames(std::size_t channel) const {
        return frames_.at(channel);
    }

  private:
    void count(const Answer& answer);

    std::size_t base_;
    Say say_;
    bool ended_ = false;
    std::array<std::array<std::size_t, blocks.size()>, channels> frames_{};
    std::size_t other_writes_ = 0;
    std::size_t reads_ = 0;
    std::size_t refused_ = 0;
    Server server_;
};

} // namespace tyxo::controller_sim
