#pragma once
// Frames as an Evaluator sends them, built without any help of the program.

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

/// A ":06" frame with every field another value, cut to `length`.
inline std::string parameters(i32 overspeed, std::size_t length = parameter_length, i32 ratedspeed = 0x0203) {
    frame_text frame("06", parameter_length);
    frame.hex(4, 4, 0x0101).hex(8, 4, 0x0102).hex(12, 4, ratedspeed).hex(16, 4, overspeed);
    frame.hex(20, 4, 4).hex(24, 4, 12).hex(28, 4, 2);
    for (i32 index = 0; index < 24; ++index) {
        frame.hex(32 + 2 * static_cast<std::size_t>(index), 2, 101 + index);
        frame.hex(80 + 4 * static_cast<std::size_t>(index), 4, 1000 + 30 * index);
    }
    frame.hex(176, 4, 0x0A01).hex(180, 4, 0x0A02).hex(184, 4, 0x0A03).hex(188, 2, 0xA4);
    frame.hex(190, 4, 0x0A05).hex(194, 4, 0x0A06).hex(198, 4, 0x0A07).text(202, "V3.21 beta");
    frame.hex(212, 4, 0x0A08).hex(216, 4, 0x0A09).hex(220, 4, 0x0A0A).hex(224, 4, 0x0A0B).hex(228, 4, 0x0A0C);
    frame.hex(232, 4, 0x0A0D).text(236, "SN-00815").hex(244, 4, 0x0A0E);
    return closed(frame.str().substr(0, length - 4));
}

/// What a ":08" frame carries.
struct raw_status {
    i32 alarm = 0;
    i32 error = 0;
    i32 mode = 0;
    i32 inhibit_on = 0;
    i32 inhibit_left = 0;
    i32 ext = 0;
};

inline std::string status(const raw_status& raw, std::size_t length = long_status_length) {
    frame_text frame("08", long_status_length);
    frame.text(4, "V2.10").hex(9, 4, raw.alarm).hex(13, 4, raw.error).text(17, "zzzz");
    frame.hex(21, 2, raw.mode).hex(23, 4, raw.inhibit_on).hex(27, 4, raw.inhibit_left).hex(31, 2, raw.ext);
    return closed(frame.str().substr(0, length - 4));
}

} // namespace tyxo::link_testing
