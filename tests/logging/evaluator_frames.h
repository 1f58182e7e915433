#pragma once
// The frames of a test's Evaluator: bodies from ":" to the last data character.

#include "basics/types.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace tyxo::simulation {

inline std::string hex_digits(i32 value, int width) {
    std::string digits;
    for (int place = width - 1; place >= 0; --place)
        digits += "0123456789ABCDEF"[(value >> (4 * place)) & 15];
    return digits;
}

/// How much of the parameter frame an Evaluator sends: each form has all of the forms in front of it.
enum class parameter_form : std::size_t {
    shortest = 179, ///< characters of the body
    test_signal = 187,
    ext1 = 211,
    ext2 = 223,
    theff = 231,
    inhibit = 243,
    full = 247
};

struct parameter_values {
    i32 alarmlevel = 320;
    i32 prealarmlevel = 75;
    i32 ratedspeed = 1500;
    i32 overspeed = 1650;
    i32 enginetype = 4;
    i32 numzyl = 6;
    i32 cylconf = 4;
    std::array<i32, 24> firingorder{1, 5, 3, 6, 2, 4};
    std::array<i32, 24> firingangle{0, 120, 120, 120, 120, 120};
    i32 impoffset = 17;
    i32 tsttime = 24;
    i32 tstlen = 10;
    i32 aimp_level_cur = 45;
    i32 ialarmlevel1 = 110;
    i32 ialarmlevel2 = 130;
    i32 ialmrpm = 800;
    std::string fwvers_ext = "V3.10-0042";
    i32 ialarmdelay = 3;
    i32 ialarmlen = 5;
    i32 ialarmlevel = 90;
    i32 theff_alm = 12;
    i32 theff_cnt = 64;
    i32 alminhibit_time = 300;
    std::string evasnr = "SN004711";
    i32 dcalarmpercent = 85;
};

inline std::string parameter_body(const parameter_values& values,
                                  parameter_form form = parameter_form::full) {
    std::string body = ":06";
    const auto put = [&body](i32 value, int width = 4) { body += hex_digits(value, width); };
    for (const i32 value : {values.alarmlevel, values.prealarmlevel, values.ratedspeed, values.overspeed,
                            values.enginetype, values.numzyl, values.cylconf})
        put(value);
    for (const i32 cylinder : values.firingorder)
        put(cylinder, 2);
    for (const i32 angle : values.firingangle)
        put(angle);
    for (const i32 value : {values.impoffset, values.tsttime, values.tstlen})
        put(value);
    put(values.aimp_level_cur, 2);
    for (const i32 value : {values.ialarmlevel1, values.ialarmlevel2, values.ialmrpm})
        put(value);
    body += values.fwvers_ext;
    for (const i32 value : {values.ialarmdelay, values.ialarmlen, values.ialarmlevel, values.theff_alm,
                            values.theff_cnt, values.alminhibit_time})
        put(value);
    body += values.evasnr;
    put(values.dcalarmpercent);
    return body.substr(0, static_cast<std::size_t>(form));
}

struct measured_values {
    i32 tsignal = 51;
    i32 speed = 1480;
    i32 test_signal = 0;
    i32 tvoltage = 1234;
    i32 teff_dc = 48;
    i32 teff_ac = 7;
};

inline std::string measured_body(const measured_values& values = {}) {
    return ":01" + hex_digits(32768 + 10 * values.tsignal, 4) + hex_digits(10 * values.speed, 4) +
           hex_digits(values.test_signal, 4) + hex_digits(32768 + values.tvoltage, 4) +
           hex_digits(10 * values.teff_dc, 4) + hex_digits(10 * values.teff_ac, 4);
}

/// Block 1 to 4 of a curve whose sample i is `first` + i.
inline std::string curve_body(std::string_view code, i32 block, i32 first) {
    std::string body(code);
    body += hex_digits(block, 2);
    for (i32 sample = 0; sample < 64; ++sample)
        body += hex_digits(first + 64 * (block - 1) + sample, 4);
    return body;
}

struct status_values {
    std::string fwvers = "V2.07";
    i32 alarm = 0;
    i32 error = 0;
    i32 eva_mode = 1;
    i32 inhibit_on = 0;
    i32 inhibit_left = 0;
};

inline std::string status_body(const status_values& values = {}) {
    return ":08" + values.fwvers + hex_digits(values.alarm, 4) + hex_digits(values.error, 4) + "0000" +
           hex_digits(values.eva_mode, 2) + hex_digits(values.inhibit_on, 4) +
           hex_digits(values.inhibit_left, 4) + "00";
}

} // namespace tyxo::simulation
