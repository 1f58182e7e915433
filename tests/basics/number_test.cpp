// Rounding to even and range-checked narrowing.

#include "basics/number.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace tyxo {
namespace {

struct rounding_case {
    double value;
    i32 rounded;
};

class RoundToEven : public testing::TestWithParam<rounding_case> {};

TEST_P(RoundToEven, TakesTheNearestAndAHalfToTheEvenNeighbour) {
    EXPECT_EQ(round_even<i32>(GetParam().value), GetParam().rounded) << GetParam().value;
}

INSTANTIATE_TEST_SUITE_P(table, RoundToEven,
                         testing::Values(rounding_case{0.0, 0}, rounding_case{-0.0, 0}, rounding_case{0.4, 0},
                                         rounding_case{0.5, 0}, rounding_case{0.50000001, 1},
                                         rounding_case{1.5, 2}, rounding_case{2.5, 2}, rounding_case{3.5, 4},
                                         rounding_case{-0.5, 0}, rounding_case{-1.5, -2},
                                         rounding_case{-2.5, -2}, rounding_case{-2.51, -3},
                                         rounding_case{2147483646.5, 2147483646},
                                         rounding_case{2147483647.4, 2147483647},
                                         rounding_case{-2147483648.5, std::numeric_limits<i32>::min()}),
                         [](const auto& info) { return "row_" + std::to_string(info.index); });

TEST(RoundEvenLimits, Of16Bits) {
    EXPECT_EQ(round_even<i16>(32767.49), 32767);
    EXPECT_EQ(round_even<i16>(-32768.5), -32768);
    EXPECT_THROW((void)round_even<i16>(32767.5), failure);
    EXPECT_THROW((void)round_even<i16>(-32768.51), failure);
}

TEST(RoundEvenLimits, Of8BitsWithoutSign) {
    EXPECT_EQ(round_even<u8>(255.49), 255);
    EXPECT_EQ(round_even<u8>(-0.5), 0);
    EXPECT_THROW((void)round_even<u8>(255.5), failure);
    EXPECT_THROW((void)round_even<u8>(-0.51), failure);
}

TEST(RoundEvenLimits, Of32Bits) {
    EXPECT_THROW((void)round_even<i32>(2147483647.5), failure);
    EXPECT_THROW((void)round_even<i32>(-2147483648.6), failure);
}

TEST(RoundEvenLimits, InfinityAndNanOverflow) {
    for (const double value :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN(), 1e300}) {
        EXPECT_THROW((void)round_even<i32>(value), failure) << value;
    }
}

TEST(DivideEven, AgreesWithTheExactQuotient) {
    for (i32 divisor = 1; divisor <= 12; ++divisor) {
        for (i32 dividend = 0; dividend <= 240; ++dividend) {
            // Whole multiples and halves of these small numbers are exact in a double.
            const i32 expected = round_even<i32>(static_cast<double>(dividend) / divisor);
            EXPECT_EQ(divide_even(dividend, divisor), expected) << dividend << " / " << divisor;
        }
    }
}

TEST(DivideEven, TakesAHalfToTheEvenNeighbour) {
    EXPECT_EQ(divide_even(5, 10), 0);
    EXPECT_EQ(divide_even(15, 10), 2);
    EXPECT_EQ(divide_even(25, 10), 2);
    EXPECT_EQ(divide_even(65535, 10), 6554);
}

TEST(DivideEven, HoldsForTheLargestNumbers) {
    constexpr i32 greatest = std::numeric_limits<i32>::max();
    EXPECT_EQ(divide_even(greatest, 1), greatest);
    EXPECT_EQ(divide_even(greatest, greatest), 1);
    EXPECT_EQ(divide_even(2'000'000'000, greatest), 1);
    EXPECT_EQ(divide_even(1'073'741'823, greatest), 0);
    EXPECT_EQ(divide_even(greatest - 1, greatest), 1);
}

TEST(DivideEven, RefusesZero) {
    EXPECT_THROW((void)divide_even(1, 0), failure);
    EXPECT_THROW((void)divide_even(0, 0), failure);
}

TEST(Narrow, KeepsWhatFits) {
    EXPECT_EQ(narrow<i16>(32767), 32767);
    EXPECT_EQ(narrow<i16>(-32768), -32768);
    EXPECT_EQ(narrow<u8>(255), 255);
    EXPECT_EQ(narrow<i32>(std::int64_t{-2147483648LL}), std::numeric_limits<i32>::min());
}

TEST(Narrow, OverflowsOnWhatDoesNot) {
    EXPECT_THROW((void)narrow<i16>(32768), failure);
    EXPECT_THROW((void)narrow<i16>(-32769), failure);
    EXPECT_THROW((void)narrow<i16>(65536), failure);
    EXPECT_THROW((void)narrow<u8>(256), failure);
    EXPECT_THROW((void)narrow<u8>(-1), failure);
    EXPECT_THROW((void)narrow<i32>(std::int64_t{2147483648LL}), failure);
}

TEST(Narrow, MindsTheSignBetweenTypesOfOneWidth) {
    EXPECT_THROW((void)narrow<i32>(4294967295U), failure);
    EXPECT_THROW((void)narrow<std::uint32_t>(-1), failure);
}

} // namespace
} // namespace tyxo
