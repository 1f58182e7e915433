// Gauges and digits at the borders of what can be drawn.

#include "controls/gauge_geometry.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

TEST(GaugeBorders, LabelsThatTouchDoNotOverlap) {
    const box_size size{10, 10};
    EXPECT_EQ(label_step(std::vector<label_box>{{0, 0, size}, {10, 0, size}, {20, 0, size}}), 1);
    EXPECT_EQ(label_step(std::vector<label_box>{{0, 0, size}, {0, 10, size}, {0, 20, size}}), 1);
    EXPECT_EQ(label_step(std::vector<label_box>{{0, 0, size}, {9.5, 9.5, size}, {19, 19, size}}), 2);
    EXPECT_EQ(label_step(std::vector<label_box>{{0, 0, size}, {9.9, 0, size}}), 0);
}

TEST(GaugeBorders, TwoLabelsStandTogetherWhereTheyHaveRoom) {
    const box_size size{10, 10};
    EXPECT_EQ(label_step(std::vector<label_box>{{0, 0, size}, {50, 0, size}}), 1);
}

TEST(GaugeBorders, EachStepThatFitsIsFoundBeforeTheEndsAlone) {
    const box_size size{10, 10};
    std::vector<label_box> labels;
    for (int index = 0; index < 6; ++index)
        labels.push_back({6.0 * index, 0, size});
    EXPECT_EQ(label_step(labels), 2);
    EXPECT_EQ(label_step(std::span(labels).first(4)), 2);
}

TEST(GaugeBorders, ANarrowScaleIsOneToo) {
    EXPECT_EQ(scale_share(0.25, {0, 0.5}), 0.5);
    EXPECT_EQ(scale_share(5, {2, 2}), 0);
}

TEST(GaugeBorders, TicksOfAScaleThatDoesNotBeginAtZero) {
    const auto ticks = tick_marks({100, 300}, 3, 0);
    ASSERT_EQ(ticks.size(), 3U);
    EXPECT_EQ(ticks[0].value, 100);
    EXPECT_EQ(ticks[1].value, 200);
    EXPECT_EQ(ticks[2].value, 300);
}

TEST(GaugeBorders, OneIsNoZero) {
    EXPECT_EQ(display_text(-1, 0), "-1");
    EXPECT_EQ(display_text(-0.1, 1), "-0.1");
    EXPECT_EQ(signed_display_text(1, 0, true), "+1");
}

TEST(GaugeBorders, ANegativeCountOfPlacesIsNone) {
    EXPECT_TRUE(digit_places("", -1).empty());
    EXPECT_TRUE(digit_places("", 0).empty());
}

TEST(GaugeBorders, WhatStandsBehindTheDigitsHasNoSegments) {
    EXPECT_EQ(segment_bits(':'), 0);
    EXPECT_EQ(segment_bits('/'), 0);
}

TEST(GaugeBorders, SegmentsHaveABitEach) {
    EXPECT_EQ(segment::top | segment::upper_right | segment::lower_right, 0x07);
    EXPECT_EQ(segment::bottom, 0x08);
    EXPECT_EQ(segment::lower_left, 0x10);
    EXPECT_EQ(segment::upper_left, 0x20);
    EXPECT_EQ(segment::middle, 0x40);
    EXPECT_EQ(segment::upright_of_plus, 0x80);
}

TEST(GaugeBorders, APitchOfNothingIsNothing) {
    EXPECT_EQ(digit_pitch(0, 100, 10), 8);
    EXPECT_EQ(digit_pitch(1, 5, 10), 5);
    EXPECT_EQ(digit_pitch(1, 100, 0), 0);
    EXPECT_EQ(digit_pitch(1, 100, -1), 0);
    EXPECT_EQ(digit_pitch(1, 0, 10), 0);
    EXPECT_EQ(digit_pitch(1, -1, 10), 0);
}

} // namespace
} // namespace tyxo
