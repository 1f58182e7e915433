// Where the parts of the painted instruments lie: dials, bars, digits.

#include "controls/gauge_geometry.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace tyxo {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr double huge = std::numeric_limits<double>::max();

TEST(ScaleShare, RunsFromZeroAtTheLeastToOneAtTheGreatest) {
    EXPECT_DOUBLE_EQ(scale_share(20, {20, 120}), 0);
    EXPECT_DOUBLE_EQ(scale_share(45, {20, 120}), 0.25);
    EXPECT_DOUBLE_EQ(scale_share(120, {20, 120}), 1);
    EXPECT_DOUBLE_EQ(scale_share(0, {-50, 50}), 0.5);
}

TEST(ScaleShare, ValuesBeyondTheScaleAreClamped) {
    EXPECT_EQ(scale_share(-1, {0, 1000}), 0);
    EXPECT_EQ(scale_share(1001, {0, 1000}), 1);
    EXPECT_EQ(scale_share(infinity, {0, 1000}), 1);
    EXPECT_EQ(scale_share(-infinity, {0, 1000}), 0);
}

TEST(ScaleShare, NoNumberRestsAtTheStart) {
    EXPECT_EQ(scale_share(not_a_number, {0, 1000}), 0);
}

TEST(ScaleShare, LimitsThatSpanNothingGiveTheStart) {
    EXPECT_EQ(scale_share(5, {5, 5}), 0);
    EXPECT_EQ(scale_share(7, {10, 0}), 0);
    EXPECT_EQ(scale_share(7, {0, infinity}), 0);
    EXPECT_EQ(scale_share(7, {not_a_number, 10}), 0);
}

TEST(ScaleShare, WidestPossibleScaleDoesNotOverflow) {
    EXPECT_DOUBLE_EQ(scale_share(0, {-huge, huge}), 0.5);
    EXPECT_DOUBLE_EQ(scale_share(huge, {-huge, huge}), 1);
}

TEST(ArcAngle, RunsClockwiseFromTheStart) {
    EXPECT_DOUBLE_EQ(arc_angle(0, 230, 280), 230);
    EXPECT_DOUBLE_EQ(arc_angle(0.5, 230, 280), 90);
    EXPECT_DOUBLE_EQ(arc_angle(1, 230, 280), -50);
}

TEST(ArcAngle, RangeOutsideOfACircleIsClamped) {
    EXPECT_DOUBLE_EQ(arc_angle(1, 90, 1000), 90 - 360);
    EXPECT_DOUBLE_EQ(arc_angle(1, 90, -10), 90);
    EXPECT_DOUBLE_EQ(arc_angle(0, 360 + 45, 280), 45);
}

TEST(LinePlace, RunsFromBeginToEnd) {
    EXPECT_DOUBLE_EQ(line_place(0, 200, 100), 200);
    EXPECT_DOUBLE_EQ(line_place(0.25, 200, 100), 175);
    EXPECT_DOUBLE_EQ(line_place(1, 200, 100), 100);
}

std::vector<section_range> sections(double first, double second, i32 count) {
    const std::array ends{first, second};
    return section_ranges({0, 1000}, ends, count);
}

TEST(SectionRanges, LastSectionEndsWithTheScale) {
    EXPECT_EQ(sections(600, 800, 3), (std::vector<section_range>{{0, 0.6, 0}, {0.6, 0.8, 1}, {0.8, 1, 2}}));
    EXPECT_EQ(sections(600, 800, 2), (std::vector<section_range>{{0, 0.6, 0}, {0.6, 1, 1}}));
    EXPECT_EQ(sections(600, 800, 1), (std::vector<section_range>{{0, 1, 0}}));
}

TEST(SectionRanges, EndsBeyondTheScaleAreClamped) {
    EXPECT_EQ(sections(600, 5000, 3), (std::vector<section_range>{{0, 0.6, 0}, {0.6, 1, 1}}));
    EXPECT_EQ(sections(1000, 1000, 3), (std::vector<section_range>{{0, 1, 0}}));
    EXPECT_EQ(sections(-5, 500, 3), (std::vector<section_range>{{0, 0.5, 1}, {0.5, 1, 2}}));
}

TEST(SectionRanges, SectionThatEndsBeforeItsBeginIsEmpty) {
    EXPECT_EQ(sections(800, 300, 3), (std::vector<section_range>{{0, 0.8, 0}, {0.8, 1, 2}}));
}

TEST(SectionRanges, CountIsCutToWhatHasAnEnd) {
    EXPECT_TRUE(sections(600, 800, 0).empty());
    EXPECT_TRUE(sections(600, 800, -3).empty());
    EXPECT_EQ(sections(600, 800, 99).size(), 3u);
}

TEST(SectionRanges, EndThatIsNoNumberMakesAnEmptySection) {
    EXPECT_EQ(sections(not_a_number, 800, 3), (std::vector<section_range>{{0, 0.8, 1}, {0.8, 1, 2}}));
}

TEST(TickMarks, MajorTicksSpreadEvenlyFromStartToEnd) {
    EXPECT_EQ(tick_marks({0, 100}, 5, 0),
              (std::vector<tick_mark>{{0, 0}, {0.25, 25}, {0.5, 50}, {0.75, 75}, {1, 100}}));
}

TEST(TickMarks, MinorTicksDivideEachInterval) {
    const std::vector<tick_mark> marks = tick_marks({0, 90}, 2, 2);
    ASSERT_EQ(marks.size(), 4u);
    EXPECT_TRUE(marks[0].major);
    EXPECT_FALSE(marks[1].major);
    EXPECT_FALSE(marks[2].major);
    EXPECT_TRUE(marks[3].major);
    EXPECT_NEAR(marks[1].value, 30, 1e-9);
}

TEST(TickMarks, SingleTickStandsAtTheStart) {
    EXPECT_EQ(tick_marks({10, 90}, 1, 4), (std::vector<tick_mark>{{0, 10}}));
}

TEST(TickMarks, CountsOutOfRangeAreCut) {
    constexpr i32 most = std::numeric_limits<i32>::max();
    EXPECT_TRUE(tick_marks({0, 100}, 0, 1).empty());
    EXPECT_TRUE(tick_marks({0, 100}, -1, 1).empty());
    EXPECT_EQ(tick_marks({0, 100}, 3, -7).size(), 3u);
    EXPECT_EQ(tick_marks({0, 100}, most, most).size(), 100u * 10 + 1);
}

TEST(TickText, HasTheDecimalsThatTheDistanceAsksFor) {
    EXPECT_EQ(tick_text(500, 100), "500");
    EXPECT_EQ(tick_text(2.5, 2.5), "2.5");
    EXPECT_EQ(tick_text(5, 2.5), "5.0");
    EXPECT_EQ(tick_text(0.1 + 0.2, 0.1), "0.3");
    EXPECT_EQ(tick_text(1.0 / 3, 1.0 / 3), "0.333");
    EXPECT_EQ(tick_text(7, not_a_number), "7");
}

TEST(ArcLabel, TouchesTheCircleFromWithin) {
    const label_box right = arc_label(0, 100, {20, 10});
    EXPECT_NEAR(right.x, 90, 1e-9);
    EXPECT_NEAR(right.y, 0, 1e-9);
    const label_box above = arc_label(90, 100, {20, 10});
    EXPECT_NEAR(above.x, 0, 1e-9);
    EXPECT_NEAR(above.y, -95, 1e-9);
}

std::vector<label_box> labels_every(double distance, int count) {
    std::vector<label_box> labels;
    for (int index = 0; index < count; ++index)
        labels.push_back({index * distance, 0, {10, 10}});
    return labels;
}

TEST(LabelStep, AllLabelsStandWhereNoneOverlap) {
    EXPECT_EQ(label_step(labels_every(10, 11)), 1);
    EXPECT_EQ(label_step(labels_every(9.9, 11)), 2);
}

TEST(LabelStep, StepThatShowsTheLastLabelGoesFirst) {
    EXPECT_EQ(label_step(labels_every(4, 11)), 5); // 3 is wide enough and would miss the last one
}

TEST(LabelStep, AnyStepIsBetterThanTheEndsAlone) {
    EXPECT_EQ(label_step(labels_every(4, 8)), 3); // seven intervals have no divisor
}

TEST(LabelStep, NoLabelsWhereNotEvenTwoStandTogether) {
    EXPECT_EQ(label_step(labels_every(4, 3)), 0);
    EXPECT_EQ(label_step(labels_every(0, 5)), 0);
    EXPECT_EQ(label_step({}), 0);
    EXPECT_EQ(label_step(labels_every(1, 1)), 1);
}

TEST(LabelStep, LabelsAboveEachOtherDoNotOverlap) {
    const std::array stacked{label_box{0, 0, {50, 10}}, label_box{0, 11, {50, 10}},
                             label_box{0, 22, {50, 10}}};
    EXPECT_EQ(label_step(stacked), 1);
}

TEST(DisplayText, RoundsAHalfToTheEvenDigit) {
    EXPECT_EQ(display_text(0.5, 0), "0");
    EXPECT_EQ(display_text(1.5, 0), "2");
    EXPECT_EQ(display_text(2.5, 0), "2");
    EXPECT_EQ(display_text(-2.5, 0), "-2");
    EXPECT_EQ(display_text(0.125, 2), "0.12");
    EXPECT_EQ(display_text(0.375, 2), "0.38");
}

TEST(DisplayText, HasExactlyItsDecimals) {
    EXPECT_EQ(display_text(12.34, 2), "12.34");
    EXPECT_EQ(display_text(12, 2), "12.00");
    EXPECT_EQ(display_text(1500, 0), "1500");
    EXPECT_EQ(display_text(1e15, 0), "1000000000000000");
}

TEST(DisplayText, ZeroHasNoSign) {
    EXPECT_EQ(display_text(-0.0, 0), "0");
    EXPECT_EQ(display_text(-0.004, 2), "0.00");
    EXPECT_EQ(display_text(-0.006, 2), "-0.01");
}

TEST(DisplayText, NoFiniteNumberIsDashes) {
    EXPECT_EQ(display_text(not_a_number, 2), "---");
    EXPECT_EQ(display_text(infinity, 0), "---");
    EXPECT_EQ(display_text(-infinity, 0), "---");
}

TEST(DisplayText, PrecisionOutOfRangeIsCut) {
    EXPECT_EQ(display_text(1.25, -4), "1");
    EXPECT_EQ(display_text(1.25, 400), "1.250000000");
    EXPECT_EQ(display_text(huge, 400).size(), 309u + 1 + 9);
}

TEST(SignedDisplayText, PlusOnlyBeforePositiveNumbersAndOnlyIfAsked) {
    EXPECT_EQ(signed_display_text(5, 0, true), "+5");
    EXPECT_EQ(signed_display_text(5, 0, false), "5");
    EXPECT_EQ(signed_display_text(-5, 0, true), "-5");
    EXPECT_EQ(signed_display_text(-5, 0, false), "-5");
    EXPECT_EQ(signed_display_text(0.004, 2, true), "0.00");
    EXPECT_EQ(signed_display_text(not_a_number, 0, true), "---");
}

TEST(DigitPlaces, PointBelongsToTheDigitBeforeIt) {
    EXPECT_EQ(digit_places("-1.25", 0),
              (std::vector<digit_place>{{'-', false}, {'1', true}, {'2', false}, {'5', false}}));
}

TEST(DigitPlaces, ShortNumberIsFilledWithBlanksFromTheLeft) {
    EXPECT_EQ(digit_places("7", 3), (std::vector<digit_place>{{' ', false}, {' ', false}, {'7', false}}));
}

TEST(DigitPlaces, LongNumberTakesMorePlaces) {
    EXPECT_EQ(digit_places("1500", 1).size(), 4u);
}

TEST(DigitPlaces, BlanksAreBounded) {
    EXPECT_EQ(digit_places("7", 2'000'000'000).size(), 40u);
    EXPECT_EQ(digit_places("7", -1).size(), 1u);
    EXPECT_EQ(digit_places(".", 0).size(), 1u);
}

TEST(SegmentBits, EveryDigitLightsItsOwnSegments) {
    using namespace segment;
    EXPECT_EQ(segment_bits('0'), 0x7F & ~middle);
    EXPECT_EQ(segment_bits('1'), upper_right | lower_right);
    EXPECT_EQ(segment_bits('2'), 0x7F & ~(upper_left | lower_right));
    EXPECT_EQ(segment_bits('3'), 0x7F & ~(upper_left | lower_left));
    EXPECT_EQ(segment_bits('4'), upper_left | middle | upper_right | lower_right);
    EXPECT_EQ(segment_bits('5'), 0x7F & ~(upper_right | lower_left));
    EXPECT_EQ(segment_bits('6'), 0x7F & ~upper_right);
    EXPECT_EQ(segment_bits('7'), top | upper_right | lower_right);
    EXPECT_EQ(segment_bits('8'), 0x7F);
    EXPECT_EQ(segment_bits('9'), 0x7F & ~lower_left);
}

TEST(SegmentBits, SignsLightTheMiddleAndBlanksNothing) {
    EXPECT_EQ(segment_bits('-'), segment::middle);
    EXPECT_EQ(segment_bits('+'), segment::middle | segment::upright_of_plus);
    EXPECT_EQ(segment_bits(' '), 0);
    EXPECT_EQ(segment_bits('E'), 0);
}

TEST(DigitPitch, FollowsTheHeightUntilTheWidthIsFull) {
    EXPECT_DOUBLE_EQ(digit_pitch(3, 1000, 20), 16);
    EXPECT_DOUBLE_EQ(digit_pitch(10, 100, 20), 10);
}

TEST(DigitPitch, NothingToFillIsNoFailure) {
    EXPECT_DOUBLE_EQ(digit_pitch(0, 100, 20), 16);
    EXPECT_DOUBLE_EQ(digit_pitch(4, -1, -1), 0);
}

} // namespace
} // namespace tyxo
