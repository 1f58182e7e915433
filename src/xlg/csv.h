#pragma once
// "xlg csv": a log as rows of a table, by RFC 4180, in UTF-8.

#include "xlg/arguments.h"
#include "xlg/line_reader.h"
#include "xlg/words.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tyxo::xlg {

/// The first row: names, and units in brackets. CR LF stands behind it, as behind each row.
[[nodiscard]] std::string csv_head(csv_lines lines);

/// Writes a row for each line of this kind: file, line, time, and what it holds. Damaged lines of all kinds
/// are left out; the result is their number. Failure: that of the source or of the sink.
[[nodiscard]] std::int64_t csv_of_log(const std::string& name, byte_source source, csv_lines lines,
                                      const text_sink& out);

/// Appends a text as a field: in quotes where it has one, a comma or a line end, or is empty or begins or
/// ends with a blank.
void append_csv_text(std::string& row, std::string_view utf8);

} // namespace tyxo::xlg
