// Going on past failed steps, and checked subscripts.

#include "basics/failure.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace tyxo {
namespace {

std::string description(void (*fail)()) {
    try {
        fail();
    } catch (const failure& why) {
        return why.what();
    }
    return "no failure";
}

TEST(Failures, CarryTheirDescriptions) {
    EXPECT_EQ(description(failures::overflow), "Overflow");
    EXPECT_EQ(description(failures::division_by_zero), "Division by zero");
    EXPECT_EQ(description(failures::subscript), "Subscript out of range");
    EXPECT_EQ(description(failures::type_mismatch), "Type mismatch");
}

TEST(Attempt, WithoutAFailureHasNoDescription) {
    int done = 0;
    EXPECT_EQ(attempt([&] { ++done; }, [&] { ++done; }), std::nullopt);
    EXPECT_EQ(done, 2);
}

TEST(Attempt, GoesOnPastAFailedStepInOrder) {
    std::vector<int> done;
    const auto last =
        attempt([&] { done.push_back(1); }, [] { failures::overflow(); }, [&] { done.push_back(3); });
    EXPECT_EQ(done, (std::vector{1, 3}));
    EXPECT_EQ(last, "Overflow");
}

TEST(Attempt, TellsTheLastOfSeveralFailures) {
    const auto last = attempt([] { failures::overflow(); }, [] { failures::subscript(); }, [] {});
    EXPECT_EQ(last, "Subscript out of range");
}

TEST(Attempt, GivesUpTheRestOfTheFailedStepOnly) {
    int done = 0;
    attempt(
        [&] {
            ++done;
            failures::overflow();
            ++done;
        },
        [&] { done += 10; });
    EXPECT_EQ(done, 11);
}

TEST(Attempt, LetsOtherExceptionsThrough) {
    EXPECT_THROW(attempt([] { throw std::logic_error("a defect"); }), std::logic_error);
}

TEST(Subscript, GivesTheElementThatExists) {
    std::array<int, 3> items{10, 11, 12};
    at(items, 2) = 22;
    EXPECT_EQ(at(std::as_const(items), 0), 10);
    EXPECT_EQ(items[2], 22);
}

TEST(Subscript, OutsideTheArrayIsAFailure) {
    std::array<int, 3> items{};
    EXPECT_THROW((void)at(items, -1), failure);
    EXPECT_THROW((void)at(items, 3), failure);
    EXPECT_THROW((void)at(std::as_const(items), 3), failure);
    EXPECT_THROW((void)at(std::as_const(items), std::numeric_limits<long>::min()), failure);
}

} // namespace
} // namespace tyxo
