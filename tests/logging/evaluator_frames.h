#pragma once
// What a test's Evaluator measures and tells, as bodies of frames: from ":" to the last data character.

#include "link/frames.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tyxo::simulation {

using link_testing::closed;
using link_testing::hex_digits;
using link_testing::parameter_values;

/// Without its check and CR LF.
inline std::string body_of(std::string_view frame) {
    return std::string(frame.substr(0, frame.size() - 4));
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

inline std::string parameter_body(const parameter_values& values,
                                  parameter_form form = parameter_form::full) {
    return body_of(link_testing::parameter_frame(values)).substr(0, static_cast<std::size_t>(form));
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
    return body_of(link_testing::measured({.tsignal = 32768 + 10 * values.tsignal,
                                           .speed = 10 * values.speed,
                                           .test_signal = values.test_signal,
                                           .tvoltage = 32768 + values.tvoltage,
                                           .teff_dc = 10 * values.teff_dc,
                                           .teff_ac = 10 * values.teff_ac}));
}

/// Block 1 to 4 of a curve whose sample i is `first` + i.
inline std::string curve_body(std::string_view code, i32 block, i32 first) {
    return body_of(link_testing::curve_block(code.substr(1), block, first + 64 * (block - 1)));
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
    return body_of(link_testing::status({.alarm = values.alarm,
                                         .error = values.error,
                                         .mode = values.eva_mode,
                                         .inhibit_on = values.inhibit_on,
                                         .inhibit_left = values.inhibit_left,
                                         .fwvers = values.fwvers}));
}

} // namespace tyxo::simulation
