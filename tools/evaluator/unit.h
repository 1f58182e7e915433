// One Evaluator without its line: engine, alarms, parameters, and the contents of its frames at a given time.
#pragma once

#include "alarms.h"
#include "engine.h"
#include "frames.h"
#include "parameters.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tyxo::evaluator_sim {

class Unit {
  public:
    explicit Unit(std::uint64_t seed);

    Parameters parameters;
    ParameterForm parameter_form = ParameterForm::percent;
    ValuesForm values_form = ValuesForm::effective_ac;
    StatusForm status_form = StatusForm::full;
    Identification identification;
    std::string firmware = "V4.31";
    int mode = 1;
    int status_extension = 0;
    int test_signal = 0; ///< 0 off, 1 or 2
    EngineState engine;
    AlarmSettings alarms;
    Inhibit inhibit;

    /// Replaces the engine's layout and speeds, keeps all other parameters, and runs the engine at its rated
    /// speed.
    void set_engine(const Parameters& layout, double time);

    /// Begins the alarm inhibit time that the parameters tell.
    void restart_inhibit(double time) { inhibit.start(time, parameters.alminhibit_time); }

    /// Measures and compares; to be called often enough for the alarms to follow the signals.
    void update(double time);

    /// Bodies of the frames of codes 00, 01, 06, 08.
    std::string identification_body() const;
    std::string values_body(double time);
    std::string parameters_body(double time);
    std::string status_body(double time);

    /// A curve of code 3 or 4.
    Curve curve(int code, double time);

    unsigned alarm_word(double time) const;

  private:
    const Geometry& geometry();
    Values shown_values() const;

    Geometry geometry_;
    Values measured_;
    AlarmLatches latches_;
};

} // namespace tyxo::evaluator_sim
