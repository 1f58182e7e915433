#pragma once
// "xlg summary": what a log holds.

#include "xlg/line_reader.h"
#include "xlg/words.h"

#include <string>

namespace tyxo::xlg {

/// Tells engine and Evaluator, period, lines by kind, alarms, extremes of each value, and times between two
/// lines that are longer than `gap_minutes`. Damaged lines are left out; true if there were none. Failure:
/// that of the source or of the sink.
[[nodiscard]] bool summarise_log(const std::string& name, byte_source source, int gap_minutes,
                                 const text_sink& out);

} // namespace tyxo::xlg
