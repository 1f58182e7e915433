#pragma once
// Lines and numbers as the tool tells them.

#include "xlg/line_reader.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tyxo::xlg {

/// Takes what a command says, piece by piece. Failure: it cannot be written.
using text_sink = std::function<void(std::string_view)>;

/// The text in UTF-8, control characters and bytes without a character as "\x00"; of a text of more bytes
/// than `most` the beginning, with "..." behind it.
[[nodiscard]] std::string shortened(std::string_view ansi, std::size_t most = 60);

/// "1,234,567".
[[nodiscard]] std::string grouped(std::int64_t number);

/// "1 line", "2 lines".
[[nodiscard]] std::string counted(std::int64_t number, std::string_view one, std::string_view more);

/// A length of time: "7 s", "3 min 5 s", "2 h 0 min".
[[nodiscard]] std::string duration(std::int64_t seconds);

/// True if no line of the files has this byte: control characters, and those without a character in
/// Windows-1252.
[[nodiscard]] bool is_no_text(char byte);

/// What is wrong with the bytes of a line, or nothing: "2 bytes are no text, the first one 0x00 at character
/// 5".
[[nodiscard]] std::string bytes_fault(std::string_view text);

/// Of the text of a comment: "KVD Prealarm ON", "KVD Main ALARM DC ON", "KVD Overspeed Alarm ON".
[[nodiscard]] bool begins_alarm(std::string_view text);

/// What is wrong with the end of a line, or nothing.
[[nodiscard]] std::string_view end_fault(line_end end);

/// Tells what is wrong in a file, "FILE:LINE: what (words of the line)", and counts it.
class findings {
  public:
    findings(std::string name, const text_sink& out) : name_(std::move(name)), out_(out) {}

    /// At a line.
    void wrong(const line& where, std::string_view what);
    /// Of the file as a whole.
    void wrong(std::string_view what);
    /// Worth knowing, and no damage.
    void remark(const line& where, std::string_view what);
    void remark(std::string_view what);
    /// "FILE: 2 wrong, 1 remark" and the figures behind it, the last line of a file.
    void close(std::string_view figures);

    [[nodiscard]] std::int64_t wrong_count() const { return wrong_; }

  private:
    void tell(const line* where, std::string_view what);

    std::string name_;
    const text_sink& out_;
    std::int64_t wrong_ = 0;
    std::int64_t remarks_ = 0;
};

} // namespace tyxo::xlg
