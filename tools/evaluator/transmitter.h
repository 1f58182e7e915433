// The sending end of a serial line: frames queue behind each other and leave at the line's pace.
#pragma once

#include <deque>
#include <string>
#include <vector>

namespace tyxo::evaluator_sim {

/// Characters per second of a line with one start and one stop bit.
constexpr double characters_per_second(double baud) {
    return baud / 10;
}

/// How many characters a line may carry between two moments. The part of a character that is left over counts
/// the next time; an idle line saves nothing up.
class Pacer {
  public:
    explicit Pacer(double per_second) : per_second_(per_second) {}
    void set_pace(double per_second) { per_second_ = per_second; }

    /// Characters that fit between the last call and `time`. A gap of more than `longest_gap` seconds (the
    /// process was not scheduled) counts as that long, so that no burst follows.
    size_t allowance(double time);

    /// To be called when nothing is left to send: the rest of the allowance is gone.
    void idle(double time);

    static constexpr double longest_gap = 0.1;

  private:
    double per_second_;
    double last_ = 0;
    double credit_ = 0;
};

/// Bytes in the queue that belong together.
struct Outgoing {
    std::string bytes;
    std::string code;   ///< two characters; empty for bytes that are no frame
    bool intact = true; ///< the frame reaches its receiver undamaged
};

/// The queues of one line. Curves wait behind everything else, block by block, so that a curve does not hold
/// back the values; between two frames, never inside one.
class Transmitter {
  public:
    /// Queues in the order of the calls.
    void put(Outgoing item) { urgent_.push_back(std::move(item)); }
    /// Queues behind all that put queues.
    void put_curve(Outgoing item) { curves_.push_back(std::move(item)); }
    bool waiting(const std::string& code) const;
    bool empty() const { return current_.bytes.empty() && urgent_.empty() && curves_.empty(); }
    size_t waiting_bytes() const;
    /// Forgets everything, also the rest of a frame that has begun to leave.
    void clear();

    /// The next at most `count` bytes for the line.
    std::string take(size_t count);

    /// Tells how many of the bytes of the last take went out; the others are lost. Returns the items that
    /// went out complete with it.
    std::vector<Outgoing> settle(size_t sent);

    /// Items that lost at least one byte, since the start.
    size_t lost_items() const { return lost_items_; }

  private:
    struct Finished {
        Outgoing item;
        size_t end; ///< behind its last byte in the bytes taken
    };
    bool next_item();

    std::deque<Outgoing> urgent_;
    std::deque<Outgoing> curves_;
    Outgoing current_;
    size_t position_ = 0;
    bool current_damaged_ = false; ///< bytes of the frame under way were lost in an earlier chunk
    std::vector<Finished> finished_;
    size_t taken_ = 0;
    size_t lost_items_ = 0;
};

} // namespace tyxo::evaluator_sim
