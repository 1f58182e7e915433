#pragma once
// One frame of an Evaluator becomes fields of the channel record.

#include "basics/types.h"

#include <string_view>

namespace tyxo::sensor {

/// Checks the frame and stores what it carries; a frame with a wrong check leaves a line in the debug output.
/// Failure: a field that reaches beyond the frame's end or is no hexadecimal number; what was stored before
/// stays.
void frame_dispatch(std::string_view frame, i16 channel);

} // namespace tyxo::sensor
