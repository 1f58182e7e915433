#pragma once
// Files to read and to write, and standard input and output.

#include "xlg/line_reader.h"
#include "xlg/words.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace tyxo::xlg {

struct file_closer {
    void operator()(std::FILE* file) const;
};
using open_file = std::unique_ptr<std::FILE, file_closer>;

/// Opens the file; "-" is standard input. What was read is told to `on_read`, which may be empty. Failure: it
/// cannot be opened or is a folder.
[[nodiscard]] byte_source source_of_file(const std::string& name,
                                         std::function<void(std::size_t)> on_read = {});

/// Its bytes; 0 of what is no plain file.
[[nodiscard]] std::int64_t size_of_file(const std::string& name);

/// Writes to a stream of the C library. Failure, by the sink: the stream takes no more.
[[nodiscard]] text_sink sink_of_stream(std::FILE* stream, std::string name);

} // namespace tyxo::xlg
