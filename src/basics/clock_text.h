#pragma once
// A moment of local time, and its texts.

#include "basics/types.h"

#include <string>

namespace tyxo {

/// Local wall-clock time: year in full, month 1 to 12, day 1 to 31, hour 0 to 23.
struct local_time {
    i32 year = 0;
    i32 month = 0;
    i32 day = 0;
    i32 hour = 0;
    i32 minute = 0;
    i32 second = 0;
    bool operator==(const local_time&) const = default;
};

/// "07-02-2026". Looks like a mistake and stays: month, day, year, whatever the locale
/// (EventFileOfAStart.StartAndCloseOfTheProgramAreLinesOfTheirTime).
[[nodiscard]] std::string date_text(const local_time& moment);

/// "13:05:09".
[[nodiscard]] std::string time_text(const local_time& moment);
void append_time(std::string& text, const local_time& moment);

/// Date and time: "07-02-2026 13:05:09", with this character between them.
[[nodiscard]] std::string stamp_text(const local_time& moment, char between);

/// "20260702": the date for names and headers of logs.
[[nodiscard]] std::string date_digits(const local_time& moment);

} // namespace tyxo
