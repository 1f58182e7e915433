#pragma once
// A file that may still be written, read up to its last whole line.

#include "xlg/files.h"

#include <cstdint>
#include <span>
#include <string>

namespace tyxo::xlg {

/// Gives the bytes of a file in pieces that end with a line's end, so that a line that is just being written
/// waits until it is whole. It is open from `open` to `close` only.
class whole_lines {
  public:
    explicit whole_lines(std::string name) : name_(std::move(name)) {}

    /// False if the file has become shorter than what was read, so that it is another one. Failure: it cannot
    /// be opened, or is none that can be read from any place.
    [[nodiscard]] bool open();
    void close() { file_.reset(); }

    /// As a `byte_source`: 0 when no further line is whole. A line that is longer than the room comes in
    /// pieces.
    std::size_t read(std::span<char> room);

    /// The bytes from one place to another, for whoever reads again what was read before.
    [[nodiscard]] std::string bytes(std::int64_t from, std::int64_t to) const;

    /// Read so far.
    [[nodiscard]] std::int64_t place() const { return place_; }
    void begin_again() { place_ = 0; }
    [[nodiscard]] const std::string& name() const { return name_; }

  private:
    std::string name_;
    open_file file_;
    std::int64_t place_ = 0;
};

} // namespace tyxo::xlg
