// The parameter set of one Evaluator: alarm levels, speeds, engine layout, and the frames that carry it.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tyxo::evaluator_sim {

constexpr int max_cylinders = 24;

struct Parameters {
    int alarmlevel = 3;     ///< step 0 to 5 of the gain table
    int prealarmlevel = 80; ///< % of the alarm level
    int ratedspeed = 750;   ///< rpm
    int overspeed = 860;    ///< rpm
    int enginetype = 4;     ///< strokes: 2 or 4
    int numzyl = 6;
    int cylconf = 4; ///< 4 in-line, 2 V
    std::array<int, max_cylinders>
        firingorder{}; ///< cylinder per firing position; bank A 100+n, bank B 200+n
    std::array<int, max_cylinders> firingangle{}; ///< degrees from the position before to this one
    int impoffset = 12;
    int tsttime = 60;
    int tstlen = 5;
    int aimp_level_cur = 2; ///< AC level step in use; follows the speed
    int ialarmlevel1 = 2;
    int ialarmlevel2 = 3;
    int ialmrpm = 400; ///< rpm from which ialarmlevel2 holds
    std::string fwvers_ext = "V4.31-0117";
    int ialarmdelay = 30;
    int ialarmlen = 60;
    int ialarmlevel = 60; ///< % of the AC level step
    int theff_alm = 0;    ///< not 0: the effective value takes the place of the signal for the DC alarm
    int theff_cnt = 16;
    int alminhibit_time = 120; ///< seconds
    std::string evasnr = "EV004711";
    int dcalarmpercent = 100; ///< % of the DC level step
};

/// How much stands in a code 06 frame; each form holds what the one before it holds and one group more.
enum class ParameterForm { base, test, impulse, delay, effective, inhibit, percent };

std::string parameters_body(const Parameters& parameters, ParameterForm form);

/// A whole-number parameter that commands may set by its name.
struct NumberParameter {
    std::string_view name;
    int Parameters::*member;
};

std::span<const NumberParameter> number_parameters();

/// Takes over a parameter write (the frame without check digits and CR LF).
/// Returns False and changes nothing if its length, a digit or a value is wrong.
bool apply_parameter_write(Parameters& parameters, std::string_view body);

/// ADC counts of 100 % at a level step; steps outside the table count as step 3.
double level_gain(int step);

/// ADC counts of 100 % DC. The percentage takes part only in a set that carries it.
double dc_gain(const Parameters& parameters, ParameterForm form);

/// ADC counts of 100 % AC; a set without AC levels measures against the DC level.
double ac_gain(const Parameters& parameters, ParameterForm form);

/// A ready-made engine by name, or nothing. Only the engine's own fields differ from the defaults.
std::optional<Parameters> engine_preset(std::string_view name);

/// The names engine_preset knows, separated by ", ".
std::string engine_preset_names();

/// Evenly firing engine with the plain order 1, 2, 3... or A1, B1, A2, B2...
/// Cylinders 1 to max_cylinders, strokes 2 or 4.
Parameters plain_engine(bool v_engine, int cylinders, int strokes, int ratedspeed, int overspeed);

} // namespace tyxo::evaluator_sim
