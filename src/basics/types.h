#pragma once
// The integer widths that the records, the settings and the files are defined in.

#include <cstdint>

namespace tyxo {

using i16 = std::int16_t;
using i32 = std::int32_t;
using u8 = std::uint8_t;

/// Evaluators that one plant can have: index 0 to 3 in the code, number 1 to 4 in every text and key.
inline constexpr i16 channel_count = 4;

} // namespace tyxo
