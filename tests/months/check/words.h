#pragma once
// Numbers and times as the files write them, and numbers as the settings are read.

#include "checker.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace months::check {

/// What the time is, in the forms that lines need.
struct clock_now {
    std::int64_t ms = 0;
    wall_time local;
    std::string hms = "00:00:00";    ///< 13:05:09
    std::string mdy = "00-00-0000";  ///< 07-02-2026
    std::string digits = "00000000"; ///< 20260702
    void set(std::int64_t new_ms, const wall_time& new_local);
};

void append_number(std::string& text, std::int64_t number);

/// With a blank in front unless it is negative, without a zero before the point, 15 digits at most.
[[nodiscard]] std::string blank_number(double number);

/// To the nearest whole number, a half to the even one.
[[nodiscard]] std::int64_t nearest(double number);
[[nodiscard]] std::int64_t tenth(std::int64_t number); ///< the same of number / 10, which is not negative

/// The number that a text begins with; 0 without one.
[[nodiscard]] double leading_number(std::string_view text);

[[nodiscard]] std::string lower(std::string_view text);

/// The path with "/" between folders, each once, and no "./" in front.
[[nodiscard]] std::string plain_path(std::string_view path);

/// The text for a complaint: line ends made visible, a long one cut.
[[nodiscard]] std::string shown(std::string_view text);

/// A sum over bytes that can be gone on with.
struct byte_sum {
    std::uint64_t length = 0, sum = 0;
    void add(std::string_view bytes);
    bool operator==(const byte_sum&) const = default;
};

/// Complaints, as long as there is room for more.
class complaint_book {
  public:
    explicit complaint_book(const clock_now& now) : now_(now) {}
    void add(std::string what);
    [[nodiscard]] bool full() const { return complaints.size() >= 20; }
    std::vector<complaint> complaints;

  private:
    const clock_now& now_;
};

} // namespace months::check
