#pragma once
// A text box with many lines that only grows at its end and is cut at its start.

#include <cstdint>
#include <string>
#include <string_view>

namespace tyxo {

/// Adding a line costs the same whatever the box holds. A view follows by the two counters: what it has not
/// yet shown of `appended` is the end of `text`, and `dropped` tells how much went at the start.
class text_box {
  public:
    [[nodiscard]] std::string_view text() const { return std::string_view(buffer_).substr(front_); }
    [[nodiscard]] std::size_t size() const { return buffer_.size() - front_; }

    void append(std::string_view line);
    /// Keeps the last `characters` of the text.
    void keep_last(std::size_t characters);

    /// Puts the caret behind the last character, so that the box shows its last line.
    void caret_to_end() { caret_ = appended_; }
    /// Where the caret is, counted in characters ever appended.
    [[nodiscard]] std::uint64_t caret() const { return caret_; }

    [[nodiscard]] std::uint64_t appended() const { return appended_; }
    [[nodiscard]] std::uint64_t dropped() const { return appended_ - size(); }

  private:
    std::string buffer_;
    std::size_t front_ = 0; // characters at the start of the buffer that are cut off already
    std::uint64_t appended_ = 0;
    std::uint64_t caret_ = 0;
};

} // namespace tyxo
