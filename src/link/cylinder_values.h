#pragma once
// From a curve of one cycle to one value per cylinder: the arithmetic that the bar diagrams and the gateway
// share.

#include "link/channel_rec.h"

namespace tyxo {

/// Divisor per alarm level, 0 to 5: the thermosignal samples above the zero point that are 100 %.
inline constexpr std::array<i16, 6> alarm_gain_table{999, 25, 50, 100, 225, 450};

} // namespace tyxo
