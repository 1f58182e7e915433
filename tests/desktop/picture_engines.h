#pragma once
// The engines in the pictures of the windows, and what their Evaluators send.

#include "displays/xy_plot.h"
#include "link/channel_rec.h"
#include "link/frame_dispatch.h"
#include "link/frames.h"

#include "engine.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tyxo {

namespace simulated = tyxo::evaluator_sim;

struct engine {
    const char* name;
    simulated::Parameters parameters;
};

inline std::vector<engine> engines() {
    return {{"inline6-4", *simulated::engine_preset("inline6-4")},
            {"v16-4", *simulated::engine_preset("v16-4")},
            {"inline5-2", *simulated::engine_preset("inline5-2")},
            {"inline24-4", simulated::plain_engine(false, 24, 4, 750, 860)},
            {"v24-4", simulated::plain_engine(true, 24, 4, 1000, 1150)}};
}

inline void send(i16 channel, const std::string& body) {
    sensor::frame_dispatch(link_testing::closed(body), channel);
}

/// A channel that measures an engine: parameters, values, one curve of each kind.
inline void run_engine(i16 channel, const simulated::Parameters& parameters) {
    send(channel, simulated::parameters_body(parameters, simulated::ParameterForm::percent));
    channel_rec& rec = sensor::state.channels[channel];
    rec.eva_mode = evaluator_mode::standard;
    rec.fwvers = "V4.31";
    simulated::EngineState state = simulated::running_engine(parameters, 11);
    simulated::warm_cylinder(state, 2, 105, 0, 0);
    const simulated::Geometry geometry(parameters);
    const auto percent = simulated::thermo_percent(state, geometry, parameters, 10);
    const auto thermo =
        simulated::thermo_curve(percent, simulated::dc_gain(parameters, simulated::ParameterForm::percent));
    const auto angacc = simulated::acceleration_curve(state, geometry, simulated::clock_tick(rec.fwvers), 10);
    for (std::size_t sample = 0; sample < curve_samples; ++sample) {
        rec.thermo_data[sample] = static_cast<i32>(thermo[sample]);
        rec.angacc_data[sample] = static_cast<i32>(angacc[sample]);
    }
    process_thermo(channel);
    process_angacc(channel);
}

/// What an Evaluator tells about itself and its engine.
inline void report(i16 channel, const simulated::Parameters& parameters, simulated::ParameterForm form) {
    send(channel, simulated::parameters_body(parameters, form));
    sensor::state.channels[channel].status_valid = true;
    sensor::state.channels[channel].fwvers = "V4.31";
}

} // namespace tyxo
