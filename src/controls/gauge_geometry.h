#pragma once
// The arithmetic behind the painted controls: from values to shares of a scale, angles, ticks, labels and
// digits. Pure functions on plain numbers. None of them fails: a value that is no number rests at the start
// of its scale, limits that span nothing give a scale whose every value lies at the start, and counts out of
// range are cut to what can be drawn.
//
// Lengths are logical pixels, x to the right and y downwards; angles are degrees, counter-clockwise from the
// right.

#include "basics/types.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo {

struct scale_limits {
    double least = 0;
    double greatest = 0;
    bool operator==(const scale_limits&) const = default;
};

/// Where a value lies on its scale: 0 at the least, 1 at the greatest, clamped to these.
[[nodiscard]] double scale_share(double value, const scale_limits& limits);

/// The angle of a share on an arc that runs clockwise from `start` over `range` degrees; a range outside 0 to
/// 360 is clamped.
[[nodiscard]] double arc_angle(double share, i32 start, i32 range);

/// The place of a share on a straight scale from `begin` to `end`.
[[nodiscard]] double line_place(double share, double begin, double end);

/// A coloured part of a scale, as shares; `colour_index` counts from 0.
struct section_range {
    double from = 0;
    double to = 0;
    i32 colour_index = 0;
    bool operator==(const section_range&) const = default;
};

/// The sections of a scale, from its start to its end without a hole. Section k ends at `ends[k]` and the
/// last one at the end of the scale. Ends beyond the scale are clamped; a section whose end lies before its
/// begin is empty, and empty ones are left out. `count` is cut to 0 .. `ends.size()` + 1.
[[nodiscard]] std::vector<section_range> section_ranges(const scale_limits& limits,
                                                        std::span<const double> ends, i32 count);

struct tick_mark {
    double share = 0;
    double value = 0;
    bool major = true;
    bool operator==(const tick_mark&) const = default;
};

inline constexpr i32 most_major_ticks = 101;
inline constexpr i32 most_minor_ticks = 9;

/// `major_count` ticks spread evenly from the start to the end of the scale, a single one at the start, with
/// `minor_count` ticks in each interval between two of them, in the order of the scale.
[[nodiscard]] std::vector<tick_mark> tick_marks(const scale_limits& limits, i32 major_count, i32 minor_count);

/// A tick's number, with as many decimals (3 at most) as the distance between two ticks asks for.
[[nodiscard]] std::string tick_text(double value, double distance);

struct box_size {
    double width = 0;
    double height = 0;
};

/// A label's place: its middle and its size.
struct label_box {
    double x = 0;
    double y = 0;
    box_size size;
};

/// The place of a label inside an arc, around the origin: at `angle`, touching the circle of `radius` from
/// within.
[[nodiscard]] label_box arc_label(double angle, double radius, const box_size& size);

/// Every how manyth label can be shown, from the first on, so that no two of those shown overlap; 0 when not
/// even two can stand together. Steps that also show the last label go first, as long as one stands between.
[[nodiscard]] i32 label_step(std::span<const label_box> labels);

/// A number for a display: `precision` decimals (cut to 0 .. 9), a half rounded to the even digit, no "-"
/// before a zero; "---" for what is no finite number.
[[nodiscard]] std::string display_text(double value, i32 precision);

/// The same with "+" before a positive number, if `show_sign`.
[[nodiscard]] std::string signed_display_text(double value, i32 precision, bool show_sign);

/// One place of a seven-segment display: a digit, "-", "+" or blank, and the point behind it.
struct digit_place {
    char symbol = ' ';
    bool point = false;
    bool operator==(const digit_place&) const = default;
};

inline constexpr i32 most_blank_digits = 40;

/// The places that a display text takes, filled with blanks from the left to `least_count` (at most
/// `most_blank_digits`).
[[nodiscard]] std::vector<digit_place> digit_places(std::string_view text, i32 least_count);

/// Bits of the lit segments.
namespace segment {
inline constexpr u8 top = 0x01;
inline constexpr u8 upper_right = 0x02;
inline constexpr u8 lower_right = 0x04;
inline constexpr u8 bottom = 0x08;
inline constexpr u8 lower_left = 0x10;
inline constexpr u8 upper_left = 0x20;
inline constexpr u8 middle = 0x40;
inline constexpr u8 upright_of_plus = 0x80; ///< crosses the middle segment; no part of an unlit place
} // namespace segment

/// The lit segments of a symbol; none for what is no digit or sign.
[[nodiscard]] u8 segment_bits(char symbol);

/// The pitch of the digits: the width of one place so that `count` of them fill at most `width` at the ratio
/// of `height` that suits digits; long numbers get narrower places.
[[nodiscard]] double digit_pitch(i32 count, double width, double height);

} // namespace tyxo
