#pragma once
// "xlg mend": a copy of a log, repaired as far as that can be done without inventing anything.

#include "xlg/line_reader.h"
#include "xlg/words.h"

#include <string>

namespace tyxo::xlg {

/// Writes the copy: line ends that are missing are added, and in the place of a line that cannot be read, or
/// of a second header, stands a comment with the time of the line before. In the header such a line is left
/// out. What is whole stays as it is. Each change, and what is wrong and stays, is told to `out`, and a last
/// line has the figures. True if the log was sound. Mending the copy changes nothing. Failure: that of the
/// source or of a sink.
[[nodiscard]] bool mend_log(const std::string& name, byte_source source, const text_sink& copy,
                            const text_sink& out);

/// The same into a file, which is there as a whole or not at all: it is written beside its place, with
/// ".part" behind its name. A link stays, and what it leads to is replaced. Failure: the file is there
/// already and `force` does not hold, it is the log itself or no plain file, or it cannot be written.
[[nodiscard]] bool mend_file(const std::string& name, byte_source source, const std::string& path, bool force,
                             const text_sink& out);

} // namespace tyxo::xlg
