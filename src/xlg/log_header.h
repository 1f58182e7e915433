#pragma once
// The header of a log: its lines in their order, made of the same tables that logs are written by, and the
// values that the tool needs.

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo::xlg {

/// The first line of a header, by which it is known wherever it stands.
inline constexpr std::string_view header_begin = "<?xml version=\"1.0\"?>";
/// The line behind which records and comments stand.
inline constexpr std::string_view log_begin = "<LOG>";

/// Takes the lines of one header, one behind the other.
class header_lines {
  public:
    /// What is wrong with the line at this place, or nothing.
    [[nodiscard]] std::string take(std::string_view text);
    /// What is missing behind the last line that was taken, or nothing.
    [[nodiscard]] std::string missing() const;
    /// It was written for a channel whose Evaluator had sent no parameters.
    [[nodiscard]] bool all_zero() const;

    /// The value of the tag's line, without the blanks around it; empty when there was none.
    [[nodiscard]] std::string value(const std::string& tag) const;
    /// Of an entry type: of("T3", "UNIT").
    [[nodiscard]] std::string of(const std::string& type, const std::string& tag) const {
        return value(type + "/" + tag);
    }
    /// More cylinders than the tables have end a header behind its RATEDSPEED.
    [[nodiscard]] bool ends_early() const;

  private:
    std::size_t next_ = 0; ///< row that is expected
    std::map<std::string, std::string> values_;
};

} // namespace tyxo::xlg
