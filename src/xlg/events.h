#pragma once
// "xlg events": the plant's event file, what is wrong in it, and as a table.

#include "xlg/line_reader.h"
#include "xlg/words.h"

#include <cstdint>
#include <string>

namespace tyxo::xlg {

/// Tells each finding in a line, and figures in a last one. True if nothing is wrong. Failure: that of the
/// source or of the sink.
[[nodiscard]] bool check_events(const std::string& name, byte_source source, const text_sink& out);

/// The first row of the table.
[[nodiscard]] std::string events_csv_head();

/// Writes a row for each event: file, line, time, text. Damaged lines are left out; the result is their
/// number. Failure: likewise.
[[nodiscard]] std::int64_t csv_of_events(const std::string& name, byte_source source, const text_sink& out);

} // namespace tyxo::xlg
