// Date and time texts.

#include "basics/clock_text.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

TEST(ClockTexts, DateIsMonthDayYear) {
    EXPECT_EQ(date_text({2026, 7, 2, 13, 5, 9}), "07-02-2026");
    EXPECT_EQ(date_text({1999, 12, 31, 0, 0, 0}), "12-31-1999");
    EXPECT_EQ(date_text({987, 1, 1, 0, 0, 0}), "01-01-0987");
}

TEST(ClockTexts, TimeHasTwoDigitsEach) {
    EXPECT_EQ(time_text({2026, 7, 2, 13, 5, 9}), "13:05:09");
    EXPECT_EQ(time_text({2026, 7, 2, 0, 0, 0}), "00:00:00");
    EXPECT_EQ(time_text({2026, 7, 2, 23, 59, 59}), "23:59:59");
}

TEST(ClockTexts, TimeAppendsBehindWhatIsThere) {
    std::string text = "at ";
    append_time(text, {2026, 7, 2, 1, 2, 3});
    EXPECT_EQ(text, "at 01:02:03");
}

TEST(clock_texts, stamp_is_date_and_time_with_a_character_between) {
    EXPECT_EQ(stamp_text({2026, 7, 2, 13, 5, 9}, ' '), "07-02-2026 13:05:09");
    EXPECT_EQ(stamp_text({2026, 7, 2, 1, 2, 3}, ';'), "07-02-2026;01:02:03");
}

TEST(clock_texts, date_digits_begin_with_the_year) {
    EXPECT_EQ(date_digits({2026, 7, 2, 13, 5, 9}), "20260702");
    EXPECT_EQ(date_digits({987, 12, 31, 0, 0, 0}), "09871231");
}

} // namespace
} // namespace tyxo
