// A recorded log played back: its lines as the frames that an Evaluator would have sent.
#pragma once

#include "channel.h"
#include "frames.h"
#include "parameters.h"

#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace tyxo::evaluator_sim {

/// What the header of a log tells of the Evaluator and its engine; the rest keeps its defaults.
/// `lines` is left behind "<LOG>". Throws InputError if there is none.
Parameters parameters_of_log(std::istream& lines);

/// A curve of code 3 or 4.
struct ReplayedCurve {
    int code = 3;
    Curve samples{};
};

/// The text of a comment or a note.
struct ReplayedEvent {
    std::string text;
};

/// A line of a log.
struct ReplayedLine {
    int second = 0; ///< of the day
    std::variant<Values, ReplayedCurve, ReplayedEvent> what;
};

/// Nothing for a line that is torn or none of a log.
std::optional<ReplayedLine> line_of_log(std::string_view text);

/// Plays while somebody listens. The Evaluator takes the engine and the parameters of the log; values and
/// curves come from the log alone, status and parameter frames at their usual periods. What a log does not
/// keep is made up: the alarm relays close with their alarms, an error that has no end lasts a moment.
class Replay {
  public:
    /// Seconds of the log that pass in one; a line that is too slow for them falls behind and loses nothing.
    static constexpr double most_speed = 100'000;
    /// A longer time without a line, in seconds of the log, is played as this long.
    static constexpr double longest_gap = 60;
    /// Seconds from the moment at which somebody listens to the next line: whoever has just opened a device
    /// may throw away what comes first, and has to get the parameters before a line.
    static constexpr double lead_in = 2;

    /// Reads the header. Throws InputError if the file cannot be read or is no log.
    Replay(const std::string& file, double speed);

    /// The Evaluator becomes that of the log and sends nothing of its own but status and parameters. To be
    /// called first.
    void take_over(Channel& channel, double time) const;
    /// Queues the frames of all lines that are due. Not to be called while nobody listens.
    void step(Channel& channel, double time);
    /// Nobody listens: the log stands still.
    void hold() { listened_since_.reset(); }
    [[nodiscard]] bool ended() const { return !next_; }

  private:
    void read_next();
    void play(Channel& channel, double time);
    static void tell(Channel& channel, std::string_view text, double time);

    std::ifstream file_;
    Parameters parameters_;
    double speed_;
    bool led_in_ = false;
    std::optional<double> listened_since_;
    double last_step_ = 0;
    double clock_ = 0; ///< seconds of the log that were played
    std::optional<ReplayedLine> next_;
    double due_ = 0; ///< of the next line, by `clock_`
    int in_second_ = 0;
};

} // namespace tyxo::evaluator_sim
