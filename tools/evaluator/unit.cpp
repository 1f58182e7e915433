#include "unit.h"

namespace tyxo::evaluator_sim {

namespace {

// What the thermo input shows while a test signal is fed in, % of the DC alarm level.
constexpr double test_signal_1 = 110;
constexpr double test_signal_2 = 55;

} // namespace

Unit::Unit(std::uint64_t seed)
    : parameters(*engine_preset("inline6-4")), engine(running_engine(parameters, seed)),
      geometry_(parameters) {
    update(0);
}

void Unit::set_engine(const Parameters& layout, double time) {
    parameters.enginetype = layout.enginetype;
    parameters.cylconf = layout.cylconf;
    parameters.numzyl = layout.numzyl;
    parameters.ratedspeed = layout.ratedspeed;
    parameters.overspeed = layout.overspeed;
    parameters.ialmrpm = layout.ialmrpm;
    parameters.firingorder = layout.firingorder;
    parameters.firingangle = layout.firingangle;
    const double rated = layout.ratedspeed;
    engine.speed = {rated, rated, time, 0};
}

const Geometry& Unit::geometry() {
    if (!geometry_.fits(parameters)) geometry_ = Geometry(parameters);
    return geometry_;
}

void Unit::update(double time) {
    parameters.aimp_level_cur =
        engine_speed(engine, time) >= parameters.ialmrpm ? parameters.ialarmlevel2 : parameters.ialarmlevel1;
    measured_ = measure(engine, geometry(), parameters, parameter_form, time);
    AlarmInputs inputs;
    inputs.dc = parameters.theff_alm != 0 ? measured_.effective_dc : measured_.tsignal;
    inputs.ac = measured_.effective_ac;
    inputs.measures_ac = parameter_form >= ParameterForm::impulse;
    inputs.speed = measured_.speed;
    inputs.overspeed = parameters.overspeed;
    inputs.prealarmlevel = parameters.prealarmlevel;
    latches_ = compare(latches_, inputs);
}

Values Unit::shown_values() const {
    Values values = measured_;
    values.test_signal = test_signal;
    if (test_signal == 1 || test_signal == 2) {
        values.tsignal = test_signal == 1 ? test_signal_1 : test_signal_2;
        values.voltage = values.tsignal * dc_gain(parameters, parameter_form) / 10000;
    }
    return values;
}

std::string Unit::identification_body() const {
    return evaluator_sim::identification_body(identification);
}

std::string Unit::values_body(double time) {
    update(time);
    return evaluator_sim::values_body(shown_values(), values_form);
}

std::string Unit::parameters_body(double time) {
    update(time);
    return evaluator_sim::parameters_body(parameters, parameter_form);
}

std::string Unit::status_body(double time) {
    update(time);
    Status status;
    status.firmware = firmware;
    status.alarm = alarm_word(time);
    status.error = alarms.errors;
    status.mode = mode;
    status.inhibit_on = inhibit.on(time);
    status.inhibit_left = inhibit.left(time);
    status.extension = status_extension;
    return evaluator_sim::status_body(status, status_form);
}

Curve Unit::curve(int code, double time) {
    if (code == 4) return acceleration_curve(engine, geometry(), clock_tick(firmware), time);
    return thermo_curve(thermo_percent(engine, geometry(), parameters, time),
                        dc_gain(parameters, parameter_form));
}

unsigned Unit::alarm_word(double time) const {
    return evaluator_sim::alarm_word(latches_, alarms, inhibit.on(time));
}

} // namespace tyxo::evaluator_sim
