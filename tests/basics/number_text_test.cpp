// Number texts and the number that a text begins with.

#include "basics/number_text.h"

#include "basics/failure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace tyxo {
namespace {

TEST(PlainForm, HasNeitherBlankNorPadding) {
    EXPECT_EQ(plain(0), "0");
    EXPECT_EQ(plain(255), "255");
    EXPECT_EQ(plain(-3), "-3");
    EXPECT_EQ(plain(std::numeric_limits<i32>::min()), "-2147483648");
    EXPECT_EQ(plain(std::numeric_limits<i32>::max()), "2147483647");
}

TEST(PlainForm, AppendsBehindWhatIsThere) {
    std::string text = "a";
    append_plain(text, -12);
    EXPECT_EQ(text, "a-12");
}

TEST(PaddedForm, FillsWithZerosFromTheLeft) {
    EXPECT_EQ(padded(7, 2), "07");
    EXPECT_EQ(padded(0, 4), "0000");
    EXPECT_EQ(padded(12, 2), "12");
    EXPECT_EQ(padded(123, 2), "123");
    std::string text = "9";
    append_padded(text, 5, 3);
    EXPECT_EQ(text, "9005");
}

struct signed_case {
    double value;
    const char* text;
};

class SignedNumber : public testing::TestWithParam<signed_case> {};

TEST_P(SignedNumber, HasItsText) {
    EXPECT_EQ(signed_form(GetParam().value), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    table, SignedNumber,
    testing::Values(signed_case{0, " 0"}, signed_case{-0.0, " 0"}, signed_case{1, " 1"},
                    signed_case{150, " 150"}, signed_case{-150, "-150"}, signed_case{.1, " .1"},
                    signed_case{-.1, "-.1"}, signed_case{-2.5, "-2.5"}, signed_case{.2, " .2"},
                    signed_case{.05, " .05"}, signed_case{.04, " .04"}, signed_case{10.25, " 10.25"},
                    signed_case{1.0 / 3, " .333333333333333"}, signed_case{2.0 / 3, " .666666666666667"},
                    signed_case{100.0 / 3, " 33.3333333333333"}, signed_case{0.1 + 0.2, " .3"}),
    [](const auto& info) { return "row_" + std::to_string(info.index); });

INSTANTIATE_TEST_SUITE_P(
    exponent, SignedNumber,
    testing::Values(signed_case{1.0 / 720, " 1.38888888888889E-03"},
                    signed_case{1.0 / 96, " 1.04166666666667E-02"},
                    signed_case{1.0 / 24, " 4.16666666666667E-02"},
                    signed_case{-1.0 / 720, "-1.38888888888889E-03"}, signed_case{1e15, " 1E+15"},
                    signed_case{-1.5e20, "-1.5E+20"}, signed_case{999999999999999, " 999999999999999"},
                    signed_case{99999999999999.9, " 99999999999999.9"},
                    signed_case{999999999999999.9, " 1E+15"}, signed_case{1e-15, " .000000000000001"},
                    signed_case{1e-16, " 1E-16"}, signed_case{1.5e-10, " .00000000015"},
                    signed_case{5e-324, " 4.94065645841247E-324"}, signed_case{1e300, " 1E+300"}),
    [](const auto& info) { return "row_" + std::to_string(info.index); });

TEST(PlainNumberForm, IsTheSignedFormWithoutBlankAndWithAZero) {
    const std::pair<double, const char*> rows[] = {{0, "0"},
                                                   {-0.0, "0"},
                                                   {150, "150"},
                                                   {-150, "-150"},
                                                   {.1, "0.1"},
                                                   {-.25, "-0.25"},
                                                   {-12.5, "-12.5"},
                                                   {1.0 / 3, "0.333333333333333"},
                                                   {1.0 / 720, "1.38888888888889E-03"},
                                                   {-1e15, "-1E+15"}};
    for (const auto& [value, text] : rows)
        EXPECT_EQ(plain_number(value), text);
    EXPECT_THROW((void)plain_number(std::numeric_limits<double>::infinity()), failure);
}

TEST(SignedNumberFailure, InfinityAndNanOverflow) {
    EXPECT_THROW((void)signed_form(std::numeric_limits<double>::infinity()), failure);
    EXPECT_THROW((void)signed_form(-std::numeric_limits<double>::infinity()), failure);
    EXPECT_THROW((void)signed_form(std::numeric_limits<double>::quiet_NaN()), failure);
}

TEST(SignedNumberRoundTrip, ReadsBackWithinFifteenDigits) {
    for (const double value : {1.0 / 720, 1.0 / 96, 1.0 / 24, 1.0, .04, 123456.789, -0.000123, 8.25e18}) {
        EXPECT_NEAR(leading_number(signed_form(value)), value, std::abs(value) * 1e-14);
    }
}

struct reading_case {
    const char* text;
    double value;
};

class LeadingNumberOf : public testing::TestWithParam<reading_case> {};

TEST_P(LeadingNumberOf, ReadsAsItsNumber) {
    EXPECT_DOUBLE_EQ(leading_number(GetParam().text), GetParam().value) << '"' << GetParam().text << '"';
}

INSTANTIATE_TEST_SUITE_P(numbers, LeadingNumberOf,
                         testing::Values(reading_case{"500", 500}, reading_case{" 500", 500},
                                         reading_case{"  \t 7", 7}, reading_case{"-3", -3},
                                         reading_case{"+3", 3}, reading_case{" +.25", .25},
                                         reading_case{".5", .5}, reading_case{"-.5", -.5},
                                         reading_case{"5.", 5}, reading_case{"1.5e2", 150},
                                         reading_case{"1.5E-1", .15}, reading_case{"1e+3", 1000},
                                         reading_case{"007", 7}),
                         [](const auto& info) { return "row_" + std::to_string(info.index); });

INSTANTIATE_TEST_SUITE_P(rests, LeadingNumberOf,
                         testing::Values(reading_case{"12abc", 12}, reading_case{"3;4", 3},
                                         reading_case{"1,5", 1}, reading_case{"1.2.3", 1.2},
                                         reading_case{"5e", 5}, reading_case{"5e+", 5},
                                         reading_case{"5 e3", 5}, reading_case{"0x10", 0},
                                         reading_case{"7-2", 7}),
                         [](const auto& info) { return "row_" + std::to_string(info.index); });

INSTANTIATE_TEST_SUITE_P(no_number, LeadingNumberOf,
                         testing::Values(reading_case{"", 0}, reading_case{"   ", 0}, reading_case{"abc", 0},
                                         reading_case{"inf", 0}, reading_case{"nan", 0},
                                         reading_case{"-inf", 0}, reading_case{"-", 0}, reading_case{"+", 0},
                                         reading_case{".", 0}, reading_case{"+.", 0}, reading_case{"-.", 0},
                                         reading_case{"+-5", 0}, reading_case{"--5", 0},
                                         reading_case{"e5", 0}, reading_case{"a1", 0}),
                         [](const auto& info) { return "row_" + std::to_string(info.index); });

TEST(LeadingNumberRange, BeyondADoubleOverflows) {
    EXPECT_THROW((void)leading_number("1e999"), failure);
    EXPECT_THROW((void)leading_number("-1e999"), failure);
    EXPECT_THROW((void)leading_number(std::string(400, '9')), failure);
    EXPECT_DOUBLE_EQ(leading_number("1e308"), 1e308);
}

TEST(LeadingNumberRange, TooSmallForADoubleIsZero) {
    EXPECT_EQ(leading_number("1e-999"), 0);
    EXPECT_EQ(leading_number("0." + std::string(400, '0') + "1"), 0);
}

TEST(LeadingNumberRange, ManyDigitsWithASmallExponentStillOverflow) {
    EXPECT_THROW((void)leading_number(std::string(400, '9') + "e-2"), failure);
}

TEST(LeadingNumber, WithAnExponentBeyondAllNumbersIsToldByItsSign) {
    EXPECT_THROW((void)leading_number("1e+400"), failure);
    EXPECT_THROW((void)leading_number("1e99999999999999999999"), failure);
    EXPECT_EQ(leading_number("1e-99999999999999999999"), 0);
}

TEST(LeadingNumberRange, AnExponentAtTheEndOfItsTypeIsStillLargeOrSmall) {
    EXPECT_THROW((void)leading_number("66e9223372036854775807"), failure);
    EXPECT_EQ(leading_number("0.01e-9223372036854775808"), 0);
}

} // namespace
} // namespace tyxo
