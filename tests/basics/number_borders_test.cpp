// Numbers whose text no double can hold: too small counts as 0, too great is an overflow.

#include "basics/failure.h"
#include "basics/number_text.h"

#include <gtest/gtest.h>

#include <string>

namespace tyxo {
namespace {

const std::string many_zeros(500, '0');

TEST(NumberBorders, ManyZerosBehindThePointAreTooSmall) {
    EXPECT_EQ(leading_number("0." + many_zeros + "1"), 0);
    EXPECT_EQ(leading_number("." + many_zeros + "1"), 0);
    EXPECT_EQ(leading_number("-0." + many_zeros + "1"), 0);
}

TEST(NumberBorders, ManyDigitsBeforeThePointOverflow) {
    EXPECT_THROW((void)leading_number("1" + many_zeros), failure);
    EXPECT_THROW((void)leading_number("-1" + many_zeros + ".5"), failure);
}

TEST(NumberBorders, TheExponentCountsWithItsSign) {
    EXPECT_EQ(leading_number("0." + many_zeros + "1e+100"), 0);
    EXPECT_EQ(leading_number("1" + many_zeros + "e-900"), 0);
    EXPECT_THROW((void)leading_number("0." + many_zeros + "1e+900"), failure);
}

TEST(NumberBorders, AnExponentBeyondAllNumbersCountsByItsSign) {
    EXPECT_EQ(leading_number("1e-99999999999999999999"), 0);
    EXPECT_THROW((void)leading_number("1e99999999999999999999"), failure);
    EXPECT_THROW((void)leading_number("1e+99999999999999999999"), failure);
}

} // namespace
} // namespace tyxo
