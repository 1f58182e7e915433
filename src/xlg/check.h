#pragma once
// "xlg check": what is wrong in a log, at which line, in which record.

#include "xlg/line_reader.h"
#include "xlg/words.h"

#include <optional>
#include <string>

namespace tyxo::xlg {

/// Tells each finding in a line, and figures in a last one. A time between two lines that is longer than
/// `gap_minutes` is wrong too, unless the measurement was stopped before it. True if nothing is wrong.
/// Failure: that of the source or of the sink.
[[nodiscard]] bool check_log(const std::string& name, byte_source source, std::optional<int> gap_minutes,
                             const text_sink& out);

} // namespace tyxo::xlg
