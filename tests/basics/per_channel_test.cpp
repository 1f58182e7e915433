// Arrays over the channels: as many rows as channels, and no row beside them.

#include "basics/per_channel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <type_traits>

namespace tyxo {
namespace {

template <std::size_t Count, class T>
constexpr bool made_of = std::is_constructible_v<per_channel<T>, T (&&)[Count]>;

static_assert(made_of<channel_count, i16>);
static_assert(!made_of<channel_count - 1, i16>, "a missing row");
static_assert(!made_of<channel_count + 1, i16>, "a row too many");
static_assert(!std::is_constructible_v<per_channel<i16>, i16>);
static_assert(!std::is_constructible_v<per_channel<i16>, i16, i16, i16, i16>, "rows stand in double braces");

per_channel<std::string> numbered() {
    return {{"1", "2", "3", "4"}};
}

TEST(per_channel, has_a_default_element_for_each_channel) {
    const per_channel<i16> zeros;
    EXPECT_EQ(std::ranges::count(zeros, 0), channel_count);
}

TEST(per_channel, gives_each_channel_its_row) {
    const auto rows = numbered();
    for (i16 channel = 0; channel < channel_count; ++channel)
        EXPECT_EQ(rows[channel], std::to_string(channel + 1));
}

TEST(per_channel, a_subscript_that_is_no_channel_is_a_failure) {
    auto rows = numbered();
    const auto& fixed = rows;
    for (const i16 none : {i16{-1}, channel_count, std::numeric_limits<i16>::max()}) {
        EXPECT_THROW((void)rows[none], failure) << none;
        EXPECT_THROW((void)fixed[none], failure) << none;
    }
    EXPECT_THROW((void)rows[0x10000], failure) << "no channel 0 in 16 bits";
}

TEST(per_channel, is_equal_when_all_elements_are) {
    auto rows = numbered();
    EXPECT_EQ(rows, numbered());
    rows[channel_count - 1] = "other";
    EXPECT_NE(rows, numbered());
}

} // namespace
} // namespace tyxo
