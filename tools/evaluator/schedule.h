// When an Evaluator sends which frame by itself.
#pragma once

#include <array>
#include <vector>

namespace tyxo::evaluator_sim {

enum class Pace {
    off,    ///< nothing by itself
    normal, ///< every code at its period
    full,   ///< as normal, and the line never idle: codes 01, 03 and 04 fill every gap
};

class Schedule {
  public:
    Pace pace() const { return pace_; }
    void set_pace(Pace pace, double time);

    /// The period of a code 0 to 8 in seconds; 0 stops it. The first frame comes at once.
    void set_period(int code, double seconds, double time);

    /// While paused nothing is due; what would have been due meanwhile is skipped.
    void pause() { paused_ = true; }
    void resume(double time);

    /// The codes due at `time`. A code that is late by more than a period is due once, not once per period.
    std::vector<int> due(double time);

    /// Whether gaps on the line are to be filled.
    bool fills_gaps() const { return pace_ == Pace::full && !paused_; }

  private:
    struct Entry {
        double period; ///< seconds, 0 for never
        double next;   ///< seconds
    };
    void restart(double time);

    Pace pace_ = Pace::normal;
    bool paused_ = false;
    // Identification and parameters come at once, then the values; the two curves take turns.
    std::array<Entry, 9> entries_ = {{
        {60, 0},
        {0.1, 0},
        {0, 0},
        {2, 0},
        {2, 1},
        {0, 0},
        {5, 0},
        {0, 0},
        {1, 0},
    }};
};

} // namespace tyxo::evaluator_sim
