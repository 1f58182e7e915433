#pragma once
// "xlg plot".

#include "xlg/arguments.h"

namespace tyxo::view {

/// Writes the picture that is wanted and says so on standard output; the result is the exit code. Failure: it
/// cannot be written, or a log cannot be read.
[[nodiscard]] int run_plot(const xlg::arguments& wanted);

} // namespace tyxo::view
