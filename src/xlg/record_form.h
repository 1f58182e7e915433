#pragma once
// The form of a record line, made of the same tables that the logs are written by.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo::xlg {

/// The greatest number that a column may hold; the least is 0 everywhere.
struct column_limit {
    std::string_view name;   ///< "Speed"
    std::string_view unit;   ///< of the values in the record, "rpm"
    std::uint32_t most = 0;  ///< at most 99,999
    unsigned digits = 0;     ///< of `most`
    std::uint64_t order = 0; ///< what `most` is in the order of texts of its length
};

/// "<REC1> 13:05:09 41 723 1234 38 12 </REC1>": opening, time, a blank, values with a blank behind each,
/// closing.
struct record_form {
    std::string tag;     ///< "REC1"
    std::string opening; ///< "<REC1> "
    std::string closing; ///< "</REC1>", of a curve with a blank in front of it
    bool curve = false;
    std::vector<column_limit> columns; ///< one for each value, the time left out

    /// Where the values stand in a line that fits.
    [[nodiscard]] std::string_view values_of(std::string_view text) const;
    /// True if the line is such a record, and every value in its range. It is quick.
    [[nodiscard]] bool fits(std::string_view text) const;
};

/// What is wrong with a record that does not fit.
struct record_fault {
    std::string what;   ///< "Speed is 7000, not within 0 to 6554"
    bool whole = false; ///< it has all its values, though they are out of their ranges
};

/// REC1, REC2, REC3.
[[nodiscard]] std::span<const record_form> record_forms();

/// The form of a line that begins with the opening of one, or null.
[[nodiscard]] const record_form* form_of(std::string_view text);

/// For a line that has the form's opening and does not fit.
[[nodiscard]] record_fault fault_of(const record_form& form, std::string_view text);

/// True if the text is a time of day, "13:05:09".
[[nodiscard]] bool is_time(std::string_view text);

/// Its seconds since midnight, 0 to 86,399.
[[nodiscard]] int seconds_of(std::string_view time);

} // namespace tyxo::xlg
