#pragma once
// The frames of a test's Evaluator, built without any help of the program.

#include "basics/types.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace tyxo::link_testing {

/// The two lower-case check digits: what the characters behind the ":" lack to a multiple of 256.
inline std::string check_of(std::string_view body) {
    std::uint8_t rest = 0;
    for (std::size_t index = 1; index < body.size(); ++index)
        rest = static_cast<std::uint8_t>(rest - static_cast<std::uint8_t>(body[index]));
    std::array<char, 3> digits{};
    std::snprintf(digits.data(), digits.size(), "%02x", static_cast<unsigned>(rest));
    return digits.data();
}

/// The body with its check and CR LF.
inline std::string closed(std::string_view body) {
    return std::string(body) + check_of(body) + "\r\n";
}

inline std::string hex_digits(i32 value, int digits) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%0*X", digits, static_cast<unsigned>(value));
    return text.data();
}

/// A frame under construction: positions count from 1, the ":"; what is not put is "0".
class frame_text {
  public:
    /// `length` is that of the whole frame, check and CR LF included; at least 7.
    frame_text(std::string_view code, std::size_t length)
        : body_(':' + std::string(code) + std::string(length - 7, '0')) {}

    frame_text& text(std::size_t position, std::string_view characters) {
        body_.replace(position - 1, characters.size(), characters);
        return *this;
    }
    frame_text& hex(std::size_t position, int digits, i32 value) {
        return text(position, hex_digits(value, digits));
    }
    [[nodiscard]] std::string str() const { return closed(body_); }

  private:
    std::string body_;
};

inline constexpr std::size_t measured_length = 31;   ///< of a full ":01" frame
inline constexpr std::size_t curve_length = 265;     ///< of ":03" and ":04"
inline constexpr std::size_t parameter_length = 251; ///< of a full ":06" frame
inline constexpr std::size_t short_status_length = 24;
inline constexpr std::size_t long_status_length = 36;

/// What a long ":01" frame carries, raw.
struct raw_values {
    i32 tsignal = 32768;
    i32 speed = 0;
    i32 test_signal = 0;
    i32 tvoltage = 32768;
    i32 teff_dc = 0;
    i32 teff_ac = 0;
};

inline std::string measured(const raw_values& raw, std::size_t length = measured_length) {
    frame_text frame("01", measured_length);
    frame.hex(4, 4, raw.tsignal).hex(8, 4, raw.speed).hex(12, 4, raw.test_signal);
    frame.hex(16, 4, raw.tvoltage).hex(20, 4, raw.teff_dc).hex(24, 4, raw.teff_ac);
    return closed(frame.str().substr(0, length - 4));
}

/// A curve block; sample i is `first` + i.
inline std::string curve_block(std::string_view code, i32 block, i32 first) {
    frame_text frame(code, curve_length);
    frame.hex(4, 2, block);
    for (i32 sample = 0; sample < 64; ++sample)
        frame.hex(6 + 4 * static_cast<std::size_t>(sample), 4, (first + sample) & 0xFFFF);
    return frame.str();
}

/// What a ":06" frame carries.
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

inline std::string parameter_frame(const parameter_values& values, std::size_t length = parameter_length) {
    frame_text frame("06", parameter_length);
    frame.hex(4, 4, values.alarmlevel).hex(8, 4, values.prealarmlevel).hex(12, 4, values.ratedspeed);
    frame.hex(16, 4, values.overspeed).hex(20, 4, values.enginetype).hex(24, 4, values.numzyl);
    frame.hex(28, 4, values.cylconf);
    for (std::size_t index = 0; index < 24; ++index) {
        frame.hex(32 + 2 * index, 2, values.firingorder[index]);
        frame.hex(80 + 4 * index, 4, values.firingangle[index]);
    }
    frame.hex(176, 4, values.impoffset).hex(180, 4, values.tsttime).hex(184, 4, values.tstlen);
    frame.hex(188, 2, values.aimp_level_cur)
        .hex(190, 4, values.ialarmlevel1)
        .hex(194, 4, values.ialarmlevel2);
    frame.hex(198, 4, values.ialmrpm).text(202, values.fwvers_ext);
    frame.hex(212, 4, values.ialarmdelay).hex(216, 4, values.ialarmlen).hex(220, 4, values.ialarmlevel);
    frame.hex(224, 4, values.theff_alm).hex(228, 4, values.theff_cnt).hex(232, 4, values.alminhibit_time);
    frame.text(236, values.evasnr).hex(244, 4, values.dcalarmpercent);
    return closed(frame.str().substr(0, length - 4));
}

/// A ":06" frame with every field another value, cut to `length`.
inline std::string parameters(i32 overspeed, std::size_t length = parameter_length, i32 ratedspeed = 0x0203) {
    parameter_values values{0x0101, 0x0102, ratedspeed, overspeed, 4, 12, 2};
    for (i32 index = 0; index < 24; ++index) {
        values.firingorder[static_cast<std::size_t>(index)] = 101 + index;
        values.firingangle[static_cast<std::size_t>(index)] = 1000 + 30 * index;
    }
    values.impoffset = 0x0A01;
    values.tsttime = 0x0A02;
    values.tstlen = 0x0A03;
    values.aimp_level_cur = 0xA4;
    values.ialarmlevel1 = 0x0A05;
    values.ialarmlevel2 = 0x0A06;
    values.ialmrpm = 0x0A07;
    values.fwvers_ext = "V3.21 beta";
    values.ialarmdelay = 0x0A08;
    values.ialarmlen = 0x0A09;
    values.ialarmlevel = 0x0A0A;
    values.theff_alm = 0x0A0B;
    values.theff_cnt = 0x0A0C;
    values.alminhibit_time = 0x0A0D;
    values.evasnr = "SN-00815";
    values.dcalarmpercent = 0x0A0E;
    return parameter_frame(values, length);
}

/// What a ":08" frame carries.
struct raw_status {
    i32 alarm = 0;
    i32 error = 0;
    i32 mode = 0;
    i32 inhibit_on = 0;
    i32 inhibit_left = 0;
    i32 ext = 0;
    std::string_view fwvers = "V2.10";
};

inline std::string status(const raw_status& raw, std::size_t length = long_status_length) {
    frame_text frame("08", long_status_length);
    frame.text(4, raw.fwvers).hex(9, 4, raw.alarm).hex(13, 4, raw.error).text(17, "zzzz");
    frame.hex(21, 2, raw.mode).hex(23, 4, raw.inhibit_on).hex(27, 4, raw.inhibit_left).hex(31, 2, raw.ext);
    return closed(frame.str().substr(0, length - 4));
}

} // namespace tyxo::link_testing
