#include "parameters.h"

#include "frames.h"

#include <cctype>
#include <charconv>

namespace tyxo::evaluator_sim {

namespace {

constexpr size_t write_length = 71;

constexpr NumberParameter named[] = {
    {"alarmlevel", &Parameters::alarmlevel},
    {"prealarmlevel", &Parameters::prealarmlevel},
    {"ratedspeed", &Parameters::ratedspeed},
    {"overspeed", &Parameters::overspeed},
    {"enginetype", &Parameters::enginetype},
    {"numzyl", &Parameters::numzyl},
    {"cylconf", &Parameters::cylconf},
    {"impoffset", &Parameters::impoffset},
    {"tsttime", &Parameters::tsttime},
    {"tstlen", &Parameters::tstlen},
    {"ialarmlevel1", &Parameters::ialarmlevel1},
    {"ialarmlevel2", &Parameters::ialarmlevel2},
    {"ialmrpm", &Parameters::ialmrpm},
    {"ialarmdelay", &Parameters::ialarmdelay},
    {"ialarmlen", &Parameters::ialarmlen},
    {"ialarmlevel", &Parameters::ialarmlevel},
    {"theff_alm", &Parameters::theff_alm},
    {"theff_cnt", &Parameters::theff_cnt},
    {"alminhibit_time", &Parameters::alminhibit_time},
    {"dcalarmpercent", &Parameters::dcalarmpercent},
};

int hex_at(std::string_view body, size_t begin, size_t digits) {
    int value = 0;
    std::from_chars(body.data() + begin, body.data() + begin + digits, value, 16);
    return value;
}

} // namespace

std::string parameters_body(const Parameters& p, ParameterForm form) {
    std::string body = ":06";
    for (const int value :
         {p.alarmlevel, p.prealarmlevel, p.ratedspeed, p.overspeed, p.enginetype, p.numzyl, p.cylconf})
        body += hex_field(value, 4);
    for (const int cylinder : p.firingorder)
        body += hex_field(cylinder, 2);
    for (const int angle : p.firingangle)
        body += hex_field(angle, 4);
    body += hex_field(p.impoffset, 4);
    if (form >= ParameterForm::test) body += hex_field(p.tsttime, 4) + hex_field(p.tstlen, 4);
    if (form >= ParameterForm::impulse)
        body += hex_field(p.aimp_level_cur, 2) + hex_field(p.ialarmlevel1, 4) + hex_field(p.ialarmlevel2, 4) +
                hex_field(p.ialmrpm, 4) + text_field(p.fwvers_ext, 10);
    if (form >= ParameterForm::delay)
        body += hex_field(p.ialarmdelay, 4) + hex_field(p.ialarmlen, 4) + hex_field(p.ialarmlevel, 4);
    if (form >= ParameterForm::effective) body += hex_field(p.theff_alm, 4) + hex_field(p.theff_cnt, 4);
    if (form >= ParameterForm::inhibit) body += hex_field(p.alminhibit_time, 4) + text_field(p.evasnr, 8);
    if (form >= ParameterForm::percent) body += hex_field(p.dcalarmpercent, 4);
    return body;
}

std::span<const NumberParameter> number_parameters() {
    return named;
}

bool apply_parameter_write(Parameters& parameters, std::string_view body) {
    if (body.size() != write_length || !body.starts_with(":07")) return false;
    for (const char c : body.substr(3))
        if (!std::isxdigit(static_cast<unsigned char>(c))) return false;
    Parameters written = parameters;
    written.alarmlevel = hex_at(body, 3, 4);
    written.ratedspeed = hex_at(body, 7, 4);
    written.overspeed = hex_at(body, 11, 4);
    written.numzyl = hex_at(body, 15, 4);
    for (size_t i = 0; i < written.firingorder.size(); ++i)
        written.firingorder[i] = hex_at(body, 19 + 2 * i, 2);
    written.prealarmlevel = hex_at(body, 67, 4);
    if (written.alarmlevel > 5 || written.numzyl < 1 || written.numzyl > max_cylinders) return false;
    parameters = written;
    return true;
}

double level_gain(int step) {
    constexpr double gains[] = {999, 25, 50, 100, 225, 450};
    return step >= 0 && step <= 5 ? gains[step] : gains[3];
}

double dc_gain(const Parameters& parameters, ParameterForm form) {
    const double gain = level_gain(parameters.alarmlevel);
    const bool reduced = form >= ParameterForm::percent && parameters.dcalarmpercent > 0;
    return reduced ? gain * parameters.dcalarmpercent / 100 : gain;
}

double ac_gain(const Parameters& parameters, ParameterForm form) {
    if (form < ParameterForm::impulse) return dc_gain(parameters, form);
    const double gain = level_gain(parameters.aimp_level_cur);
    const bool reduced = form >= ParameterForm::delay && parameters.ialarmlevel > 0;
    return reduced ? gain * parameters.ialarmlevel / 100 : gain;
}

} // namespace tyxo::evaluator_sim
