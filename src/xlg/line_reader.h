#pragma once
// The lines of a text file of any size, in constant memory.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>

namespace tyxo::xlg {

/// Fills the span from its front with the bytes that come next, and says how many: 0 is the end. Failure:
/// they cannot be read.
using byte_source = std::function<std::size_t(std::span<char>)>;

/// What stands behind a line. The last line of a file may end in CR alone, or not at all.
enum class line_end { cr_lf, lf, cr, none };

/// No line of a log or of the event file is longer, in bytes; the longest record has 1,560.
inline constexpr std::int64_t longest_line = 4096;

struct line {
    /// Without its end, valid until the next line is read. Of a line that is too long it is the first
    /// `longest_line` bytes.
    std::string_view text;
    std::int64_t number = 0; ///< from 1
    std::int64_t length = 0; ///< of the whole line, bytes without its end
    line_end end = line_end::cr_lf;

    [[nodiscard]] bool too_long() const { return length > longest_line; }
};

class line_reader {
  public:
    /// Reads blocks of so many bytes, at least four of the longest lines.
    explicit line_reader(byte_source source, std::size_t block = default_block);

    /// Puts the next line into `found`; false at the end. Failure: that of the source.
    bool next(line& found);

    /// Read so far, the end of the last line included.
    [[nodiscard]] std::int64_t bytes() const { return bytes_; }

  private:
    static constexpr std::size_t default_block = std::size_t{256} * 1024;

    bool fill();
    void finish(line& found, std::size_t length, line_end end);

    byte_source source_;
    std::unique_ptr<char[]> memory_; ///< not filled before it is read into
    std::span<char> block_;
    std::size_t begin_ = 0;     ///< of what was not handed out
    std::size_t end_ = 0;       ///< of what was read
    std::size_t searched_ = 0;  ///< bytes behind `begin_` that have no LF
    std::int64_t left_out_ = 0; ///< bytes of this line that were not kept
    std::int64_t number_ = 0;
    std::int64_t bytes_ = 0;
};

} // namespace tyxo::xlg
