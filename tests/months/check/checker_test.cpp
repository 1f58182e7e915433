// What the checker demands of the program, one rule at a time.

#include "checker.h"

#include <gtest/gtest.h>

namespace months::check {
namespace {

TEST(Checker, HasNothingToComplainOfAtFirst) {
    const checker check;
    EXPECT_TRUE(check.complaints().empty());
}

} // namespace
} // namespace months::check
