#pragma once
// Files to read and to write, and standard input and output.

#include "xlg/line_reader.h"
#include "xlg/words.h"

#include <cstdint>
#include <cstdio>
#include <functional>
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

/// True if both lead to one file; "-" is standard input, which may be one too.
[[nodiscard]] bool same_file(const std::string& name, const std::string& path);

/// What `write` gives its sink becomes the file, which is there as a whole or not at all: it is written
/// beside its place, with ".part" behind its name. A link stays, and what it leads to is replaced. Failure:
/// the file is there already and `force` does not hold, it is no plain file, it cannot be written, or that of
/// `write`.
void write_whole_file(const std::string& path, bool force,
                      const std::function<void(const text_sink&)>& write);

} // namespace tyxo::xlg
