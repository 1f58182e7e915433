// A pseudo-terminal under a link, as the device that a program opens in place of a serial port.
#pragma once

#include <string>
#include <string_view>

namespace tyxo::evaluator_sim {

/// Our side of the pair is never blocked by the other. While no program has the device open, and while a
/// program does not empty it, bytes are lost, as on a real line.
class PseudoTerminal {
  public:
    PseudoTerminal() = default;
    ~PseudoTerminal() { close(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    /// Makes the pair and the link `link` (its folder too if absent). A link that is there already is
    /// replaced, any other kind of file is not. Throws std::runtime_error with a description.
    void open(const std::string& link);

    /// Closes our side, so that a program on the other side sees the device vanish, and removes the link
    /// unless it has come to point elsewhere.
    void close();

    bool is_open() const { return master_ >= 0; }
    const std::string& link() const { return link_; }
    const std::string& device() const { return device_; }

    /// Bytes the program has written. Also finds out whether a program has the device open, see listened.
    std::string read();

    /// Whether a program had the device open at the last read.
    bool listened() const { return listened_; }

    /// Hands bytes to the program; returns how many it got room for.
    size_t write(std::string_view bytes);

  private:
    bool freshen();

    int master_ = -1;
    bool listened_ = false;
    std::string link_;
    std::string device_;
};

} // namespace tyxo::evaluator_sim
