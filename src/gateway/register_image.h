#pragma once
// The block of holding registers that a plant controller sees: 110 per channel, sent in four kinds of blocks.

#include "basics/types.h"

namespace tyxo {

inline constexpr i32 registers_per_channel = 110;

/// Assembles a block of a channel from its record, shows it in the dialog and writes it. A code that is no
/// block's does nothing. Waits for the answer, and fails, as `FC16MB_write` does.
void TCP_send(i16 channel, i16 block);

} // namespace tyxo
