#pragma once
// Hexadecimal fields and the check of a frame.

#include "basics/types.h"

#include <string>
#include <string_view>

namespace tyxo::funct {

/// Two upper-case digits with a leading zero; a larger value takes as many digits as it needs, a negative one
/// the four of its 16 bits.
[[nodiscard]] std::string hex2(i16 value);

/// Four upper-case digits, padded with zeros from the left; a larger value takes as many as it needs, a
/// negative one the eight of its 32 bits.
[[nodiscard]] std::string hex4(i32 value);

/// An unsigned hexadecimal text of either case: "FFFF" is 65535. Failures: a character that is no hexadecimal
/// digit, an empty text, a value beyond 32 bits signed.
[[nodiscard]] i32 hex_to_long(std::string_view text);

/// A hexadecimal text as 16 bits: "FFFF" is -1. The same failures; beyond four digits' worth is an overflow.
[[nodiscard]] i16 hex_to_int(std::string_view text);

/// The check of a frame's body, which begins with ":": 256 less the sum of all characters behind the ":", as
/// two lower-case digits.
[[nodiscard]] std::string frame_lrc(std::string_view body);

/// True if a whole frame, with check and CR LF, carries its right check in lower case.
[[nodiscard]] bool frame_lrc_ok(std::string_view frame);

/// The frame cut behind its first CR LF.
[[nodiscard]] std::string_view frame_trim(std::string_view frame);

} // namespace tyxo::funct
