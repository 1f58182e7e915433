// The extremes of a history, whatever the step that is asked for.

#include "xlg/history/value_pyramid.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace tyxo::xlg {
namespace {

constexpr log_seconds midnight = 1'782'950'400; // 2026-07-02

measured all(std::uint16_t value) {
    measured values{};
    values.fill(value);
    return values;
}

struct step {
    log_seconds first;
    std::uint16_t least;
    std::uint16_t greatest;
    bool operator==(const step&) const = default;
};

std::vector<step> steps_of(const value_pyramid& pyramid, int level, log_seconds from, log_seconds to,
                           std::size_t value = 0) {
    std::vector<step> found;
    pyramid.each(level, from, to, [&](log_seconds first, const extremes& values) {
        found.push_back({first, values.least[value], values.greatest[value]});
    });
    return found;
}

TEST(ValuePyramid, ASecondHasTheExtremesOfItsRecords) {
    value_pyramid pyramid;
    pyramid.add(midnight + 5, {7, 1, 2, 3, 4});
    pyramid.add(midnight + 5, {3, 9, 2, 3, 4});
    pyramid.add(midnight + 7, {8, 5, 2, 3, 4});
    pyramid.settle();
    EXPECT_EQ(steps_of(pyramid, 0, midnight, midnight + 100),
              (std::vector<step>{{midnight + 5, 3, 7}, {midnight + 7, 8, 8}}));
    EXPECT_EQ(steps_of(pyramid, 0, midnight, midnight + 100, 1),
              (std::vector<step>{{midnight + 5, 1, 9}, {midnight + 7, 5, 5}}));
}

TEST(ValuePyramid, AStepThatReachesIntoTheTimeAskedForIsPartOfIt) {
    value_pyramid pyramid;
    for (log_seconds second = 0; second < 64; ++second)
        pyramid.add(midnight + second, all(static_cast<std::uint16_t>(second)));
    pyramid.settle();
    EXPECT_EQ(steps_of(pyramid, 1, midnight + 5, midnight + 9),
              (std::vector<step>{{midnight + 4, 4, 7}, {midnight + 8, 8, 11}}));
    EXPECT_EQ(steps_of(pyramid, 2, midnight + 16, midnight + 32),
              (std::vector<step>{{midnight + 16, 16, 31}}));
    EXPECT_TRUE(steps_of(pyramid, 0, midnight - 100, midnight).empty());
    EXPECT_TRUE(steps_of(pyramid, 0, midnight + 64, midnight + 100).empty());
}

TEST(ValuePyramid, WhatWasNotSettledYetJoinsTheLevelsAboveWithTheNextSettling) {
    value_pyramid pyramid;
    pyramid.add(midnight, all(5));
    pyramid.settle();
    pyramid.add(midnight + 1, all(9));
    EXPECT_EQ(steps_of(pyramid, 1, midnight, midnight + 4), (std::vector<step>{{midnight, 5, 5}}));
    pyramid.settle();
    EXPECT_EQ(steps_of(pyramid, 1, midnight, midnight + 4), (std::vector<step>{{midnight, 5, 9}}));
}

TEST(ValuePyramid, WhatWasNotSettledYetMovesOnWhenAnEarlierSecondComes) {
    value_pyramid pyramid;
    pyramid.add(midnight + 5000, all(7));
    pyramid.add(midnight - 10'000, all(3));
    pyramid.settle();
    EXPECT_EQ(steps_of(pyramid, 2, midnight - 20'000, midnight + 20'000),
              (std::vector<step>{{midnight - 10'000, 3, 3}, {midnight + 4992, 7, 7}}));
}

TEST(ValuePyramid, TheLongestStepThatIsShortEnoughIsTaken) {
    EXPECT_EQ(value_pyramid::level_for(0.01), 0);
    EXPECT_EQ(value_pyramid::level_for(3.9), 0);
    EXPECT_EQ(value_pyramid::level_for(4), 1);
    EXPECT_EQ(value_pyramid::level_for(15.9), 1);
    EXPECT_EQ(value_pyramid::level_for(1e9), value_pyramid::levels - 1);
}

/// Seconds in any order, also before the first one, against a plain map.
TEST(ValuePyramid, IsOnEachLevelWhatThePlainSecondsAre) {
    std::mt19937 chance(1);
    for (int round = 0; round < 20; ++round) {
        value_pyramid pyramid;
        std::map<log_seconds, extremes> plain;
        log_seconds now = midnight + static_cast<log_seconds>(chance() % 10'000);
        for (int index = 0; index < 2000; ++index) {
            now += static_cast<log_seconds>(chance() % 8);
            if (chance() % 300 == 0) now -= static_cast<log_seconds>(chance() % 9000);
            const auto value = static_cast<std::uint16_t>(chance() % 5000);
            pyramid.add(now, all(value));
            plain[now].take(all(value));
            if (chance() % 100 == 0) pyramid.settle();
        }
        pyramid.settle();
        for (int level = 0; level < value_pyramid::levels; ++level) {
            std::map<log_seconds, extremes> joined;
            for (const auto& [second, values] : plain)
                joined[second - second % value_pyramid::step(level)].take(values);
            std::vector<step> expected;
            for (const auto& [first, values] : joined)
                expected.push_back({first, values.least[0], values.greatest[0]});
            EXPECT_EQ(steps_of(pyramid, level, midnight - 100'000, midnight + 100'000), expected)
                << "level " << level << " of round " << round;
        }
    }
}

} // namespace
} // namespace tyxo::xlg
