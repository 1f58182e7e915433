// One Evaluator with the sending and receiving ends of its line, but without a device: bytes in, bytes out,
// and the time as an argument, so that a test can run it as fast as it likes.
#pragma once

#include "faults.h"
#include "receiver.h"
#include "schedule.h"
#include "transmitter.h"
#include "unit.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo::evaluator_sim {

/// What went over the line since the start.
struct Counters {
    std::map<std::string, size_t> frames; ///< by code, complete and undamaged
    std::array<size_t, fault_names.size()> faults{};
    std::array<size_t, 2> curves{}; ///< complete curves in the right order, codes 03 and 04
    size_t sent_bytes = 0;
    size_t lost_bytes = 0; ///< nobody had the device open, or nobody emptied its buffer
    size_t received_frames = 0;
};

class Channel {
  public:
    /// Evaluator `number`, 1 to 4; channels of one seed differ from each other.
    Channel(int number, std::uint64_t seed);

    Unit unit;
    Schedule schedule;
    Faults faults;
    bool answers = true; ///< whether received frames are answered

    const Counters& counters() const { return counters_; }
    const Transmitter& transmitter() const { return transmitter_; }

    /// Queues a frame of the present state; a curve as its four blocks. Faults strike it like a scheduled
    /// one.
    void send(int code, double time);
    /// Queues a body with check digits and CR LF added; no faults.
    void send_body(std::string_view body);
    /// Queues bytes as they are; no faults.
    void send_raw(std::string bytes);
    void send_noise(size_t count);

    /// Nothing leaves the line until `seconds` later, and nothing waits for its end.
    void silence(double time, double seconds);
    void set_baud(double baud) { pacer_.set_pace(characters_per_second(baud)); }

    /// Runs the schedule and returns the bytes that leave the line between the last call and `time`.
    std::string step(double time);
    /// Tells how many bytes of the last step reached the device.
    void settle(size_t sent);

    /// Takes bytes that came over the line, answers them, and returns a line of text for each frame.
    std::vector<std::string> receive(std::string_view bytes, double time);

  private:
    void queue_scheduled(int code, double time);
    void queue_built(const std::string& body, bool behind_values);
    void queue_curve(int code, double time, bool behind_values);
    void fill_gap(double time);
    void answer(const std::string& frame, double time);
    void count(const Outgoing& item);
    bool strikes(Fault fault);

    int number_;
    Random random_;
    Transmitter transmitter_;
    Pacer pacer_;
    Receiver receiver_;
    Counters counters_;
    double silent_until_ = 0;
    double next_update_ = 0;
    std::string last_step_;
    std::array<int, 2> last_block_{};
    std::array<Curve, 2> fill_curves_{};
    int fill_step_ = 0;
};

} // namespace tyxo::evaluator_sim
