// The Evaluators of one process, with their devices and records.
#pragma once

#include "channel.h"
#include "pseudo_terminal.h"
#include "replay.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

namespace tyxo::evaluator_sim {

constexpr int max_channels = 4;

/// All channels exist from the start; one without a port is silent. Channels are numbered 1 to 4.
class Plant {
  public:
    using Say = std::function<void(const std::string&)>;

    /// `ports` is the folder of the links; `say` takes each line of text for the user.
    Plant(std::string ports, std::uint64_t seed, Pace pace, Say say);

    Channel& channel(int number) { return station(number).channel; }
    /// The device behind the channel's link; empty while there is none.
    const std::string& device(int number) { return station(number).device.device(); }

    /// Puts the channel on serial port `port`: the link COM<port> in the folder of the links.
    /// Throws std::runtime_error if another channel has it or the device cannot be made.
    void attach(int number, int port);
    /// Takes the channel's device away, link and all, and brings it back as a new device under the same link.
    void vanish(int number);
    void bring_back(int number);

    /// Writes every byte that reaches the channel's device into a file from now on; an empty name ends that.
    void record(int number, const std::string& file);

    /// Plays a log on the channel while somebody listens, and says "channel N replayed" at its end; an empty
    /// name ends that. Throws InputError if the file is no log.
    void replay(int number, const std::string& file, double speed, double time);

    /// Says "channel N drained" once all that waits for the line has left.
    void tell_when_drained(int number) { station(number).tell_drained = true; }

    /// Says what went over each line.
    void report();

    void quit() { ended_ = true; }
    bool ended() const { return ended_; }

    /// Moves bytes over all lines up to `time`, in seconds since the start.
    void step(double time);

    void say(const std::string& line) { say_(line); }

  private:
    struct Station {
        Station(int number, std::uint64_t seed) : channel(number, seed) {}
        Channel channel;
        PseudoTerminal device;
        int port = 0;
        std::ofstream record;
        std::unique_ptr<Replay> replay;
        bool tell_drained = false;
        unsigned shown_alarm = 0;
        unsigned shown_error = 0;
    };
    Station& station(int number) { return *stations_.at(static_cast<size_t>(number - 1)); }
    void open_device(int number);
    void step(int number, double time);
    void play(int number, double time);
    void tell_status(int number, double time);

    std::string ports_;
    Say say_;
    std::array<std::unique_ptr<Station>, max_channels> stations_;
    bool ended_ = false;
};

} // namespace tyxo::evaluator_sim
