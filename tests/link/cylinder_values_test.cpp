// The arithmetic from a curve to the values per cylinder.

#include "link/cylinder_values.h"

#include "link/cylinder_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string_view>
#include <vector>

namespace tyxo {
namespace {

using namespace cylinder_testing;
using namespace cylinder_values;

constexpr double count_time = 3.33e-07;

/// Neighbours differ, so that every window has a mean of its own.
sensor::curve distinct_curve() {
    sensor::curve curve{};
    for (i32 sample = 0; sample < curve_samples; ++sample)
        curve[static_cast<std::size_t>(sample)] = 1000 + sample * sample % 997;
    return curve;
}

double speed_of_samples(const std::vector<i32>& samples) {
    const sensor::curve curve = distinct_curve();
    double sum = 0;
    for (const i32 sample : samples)
        sum += at(curve, sample);
    return 60 / (rounded(sum / static_cast<double>(samples.size())) * 256 * count_time);
}

std::vector<i32> from_to(i32 first, i32 last) {
    std::vector<i32> samples;
    for (i32 sample = first; sample <= last; ++sample)
        samples.push_back(sample);
    return samples;
}

TEST(CylinderValues, TheWindowWrapsAtTheLowerEndAndIsOneSampleAtTheUpperEnd) {
    const sensor::curve curve = distinct_curve();
    struct window_row {
        i32 index;
        i32 half_width;
        std::vector<i32> samples;
    };
    std::vector<i32> wide = from_to(241, 255);
    for (const i32 sample : from_to(0, 25))
        wide.push_back(sample);
    const std::vector<window_row> rows{
        {0, 1, {255, 0, 1}}, {1, 1, {0, 1, 2}}, {100, 1, {99, 100, 101}},     {254, 1, {253, 254, 255}},
        {255, 1, {255}},     {236, 20, {236}},  {235, 20, from_to(215, 255)}, {20, 20, from_to(0, 40)},
        {5, 20, wide},       {17, 0, {17}},
    };
    for (const window_row& row : rows) {
        EXPECT_EQ(window_speed(curve, row.index, row.half_width, count_time), speed_of_samples(row.samples))
            << row.index << " +- " << row.half_width;
    }
}

TEST(CylinderValues, TheWindowOfTheThermosignalIsThatOfTheSpeed) {
    std::mt19937 random(7);
    const sensor::curve curve = random_curve(random, 0, 4095);
    const channel_rec rec = in_line_engine();
    for (const i32 half_width : {1, 2, 20}) {
        for (i32 index = 0; index < curve_samples; ++index) {
            double sum = 0;
            const std::vector<int> window = model_window(index, half_width);
            for (const int sample : window)
                sum += rounded(model_percent(rec, at(curve, sample), 479));
            EXPECT_EQ(window_thermosignal(curve, index, half_width, thermo_scale_of(rec, 479)),
                      rounded(sum / static_cast<double>(window.size())))
                << index << " +- " << half_width;
        }
    }
}

TEST(CylinderValues, AnIndexOutsideTheCurveIsASubscriptFailure) {
    const sensor::curve curve = flat_curve(700);
    for (const i32 index : {-1, 256, -300, std::numeric_limits<i32>::max()}) {
        EXPECT_THROW((void)window_speed(curve, index, 0, count_time), failure) << index;
        EXPECT_THROW((void)window_thermosignal(curve, index, 0, {479, 100}), failure) << index;
    }
    EXPECT_NO_THROW((void)window_speed(curve, 255, 20, count_time));
    EXPECT_THROW((void)window_speed(curve, 100, 200, count_time), failure) << "a window beyond both ends";
}

TEST(CylinderValues, TheSecondCharacterOfTheFirmwareVersionTellsTheStepTime) {
    channel_rec rec;
    for (const std::string_view version : {"", "2", "V", "V1.22", "2122V", "Vx", "V 2", "V3"}) {
        rec.fwvers = version;
        EXPECT_EQ(step_time(rec), 0.000000333) << version;
    }
    for (const std::string_view version : {"V2", "V2.01", "22222"}) {
        rec.fwvers = version;
        EXPECT_EQ(step_time(rec), 0.0000004) << version;
    }
}

TEST(CylinderValues, EachAlarmLevelHasItsDivisorAndOthersFail) {
    constexpr std::array<double, 6> divisors{999, 25, 50, 100, 225, 450};
    channel_rec rec = in_line_engine();
    for (i32 level = 0; level < 6; ++level) {
        rec.alarmlevel = level;
        rec.dcpercent_valid = false;
        rec.dcalarmpercent = 0;
        EXPECT_EQ(thermo_scale_of(rec, 479).divisor, at(divisors, level));
        rec.dcpercent_valid = true;
        rec.dcalarmpercent = 50;
        EXPECT_EQ(thermo_scale_of(rec, 479).divisor, at(divisors, level) / 2);
    }
    for (const i32 level : {-1, 6, 65535}) {
        rec.alarmlevel = level;
        EXPECT_THROW((void)thermo_scale_of(rec, 479), failure) << level;
    }
}

TEST(CylinderValues, APercentageOf0IsADivisionByZero) {
    channel_rec rec = in_line_engine();
    rec.dcpercent_valid = true;
    for (const i32 sample : {479, 500}) {
        const auto why = attempt(
            [&] { (void)window_thermosignal(flat_curve(sample), 100, 1, thermo_scale_of(rec, 479)); });
        EXPECT_EQ(why, "Division by zero") << sample;
    }
}

TEST(CylinderValues, ASignalBelowTheZeroPointCountsWithItsMagnitude) {
    for (const i32 zero : {460, 520}) {
        EXPECT_EQ(window_thermosignal(flat_curve(zero - 60), 100, 1, {zero, 100}), 60);
        EXPECT_EQ(window_thermosignal(flat_curve(zero + 60), 100, 1, {zero, 100}), 60);
    }
    EXPECT_EQ(window_thermosignal(flat_curve(0), 100, 1, {520, 100}), 520);
}

TEST(CylinderValues, EverySampleIsRoundedBeforeTheWindowIs) {
    sensor::curve curve = flat_curve(0);
    curve[10] = curve[11] = 1; // 0.5 % each at a divisor of 200: to even, 0
    curve[12] = 7;             // 3.5 %: 4
    EXPECT_EQ(window_thermosignal(curve, 11, 1, {0, 200}), 1) << "4 / 3; samples not rounded make 4.5 / 3";
}

struct written {
    std::array<i32, cylinder_max> value{};
    std::array<double, cylinder_max> difference{};
    outputs out{value, difference};
};

TEST(CylinderValues, TheMeanThermosignalIsRoundedWithEverySample) {
    channel_rec rec = in_line_engine(1);
    rec.dcpercent_valid = true;
    rec.dcalarmpercent = 200; // a sample is 0.5 %
    written kept;
    sensor::curve curve = flat_curve(1);
    curve[0] = 256;
    write_thermosignals(rec, crank_angles{}, curve, 0, 0, mean_order::behind_values, kept.out);
    EXPECT_EQ(kept.value[0], 128);
    EXPECT_EQ(kept.difference[0], 128) << "128 + 0.5 stays 128; a sum not rounded would reach 255.5";
    curve = flat_curve(0);
    curve[0] = 254;
    curve[1] = 1;
    curve[2] = 2;
    write_thermosignals(rec, crank_angles{}, curve, 0, 0, mean_order::behind_values, kept.out);
    EXPECT_EQ(kept.difference[0], 126) << "127, 127.5 to 128, 129; samples rounded first would reach 128";
}

TEST(CylinderValues, AgreeWithThePlainModelOnRandomEngines) {
    std::mt19937 random(20260702);
    for (int round = 0; round < 400; ++round) {
        const channel_rec rec = random_engine(random);
        const i32 half_width = 1 + round % 20;
        const i32 zero = 460 + round % 61;
        const sensor::curve counts = random_curve(random, 1, round % 3 == 0 ? 400 : 65535);
        const sensor::curve samples = random_curve(random, 0, round % 2 == 0 ? 65535 : 700);
        for (const bool firing : {false, true}) {
            const crank_angles angles = firing ? angles_by_firing_place(rec) : angles_by_cylinder(rec);
            written speed;
            write_speeds(rec, angles, counts, half_width, speed.out);
            const model_values speeds = model_speeds(rec, counts, half_width, firing);
            written thermo;
            const mean_order order = firing ? mean_order::before_values : mean_order::behind_values;
            write_thermosignals(rec, angles, samples, half_width, zero, order, thermo.out);
            const model_values signals = model_thermosignals(rec, samples, half_width, zero, firing);
            for (std::size_t cylinder = 0; cylinder < signals.value.size(); ++cylinder) {
                ASSERT_EQ(speed.value[cylinder], speeds.value[cylinder]) << round;
                ASSERT_EQ(speed.difference[cylinder], speeds.difference[cylinder]) << round;
                ASSERT_EQ(thermo.value[cylinder], signals.value[cylinder]) << round;
                ASSERT_EQ(thermo.difference[cylinder], signals.difference[cylinder]) << round;
            }
        }
    }
}

TEST(CylinderValues, SamplesOf0And65535InTurnHaveTheirMeanInAWindow) {
    sensor::curve curve{};
    for (std::size_t sample = 0; sample < 256; sample += 2)
        curve[sample] = 65535;
    const channel_rec rec = in_line_engine(1);
    written speed;
    write_speeds(rec, crank_angles{2}, curve, 1, speed.out);
    EXPECT_EQ(speed.value[0], 16) << "a third of 65535";
    EXPECT_EQ(speed.difference[0], (1611 - 2148) / 100.0);
}

TEST(CylinderValues, AWindowOfZerosDividesByZeroAndLeavesWhatWasWritten) {
    const channel_rec rec = in_line_engine(3); // indices 85, 170, 255
    sensor::curve curve = flat_curve(700);
    std::fill(curve.begin() + 169, curve.begin() + 172, 0);
    written kept;
    kept.value.fill(77);
    kept.difference.fill(7.5);
    EXPECT_THROW(write_speeds(rec, angles_by_cylinder(rec), curve, 1, kept.out), failure);
    EXPECT_EQ(kept.value[0], 1005);
    EXPECT_EQ(kept.value[1], 77);
    EXPECT_EQ(kept.value[2], 77);
    EXPECT_EQ(kept.difference[0], 7.5);
}

TEST(CylinderValues, AMeanCountOf0LeavesTheValuesAndNoDifference) {
    const channel_rec rec = in_line_engine(1);
    sensor::curve curve{};
    curve[42] = 128; // 128 / 256 rounds to the even 0
    written kept;
    kept.difference.fill(7.5);
    EXPECT_THROW(write_speeds(rec, crank_angles{120}, curve, 0, kept.out), failure);
    EXPECT_EQ(kept.value[0], 4000);
    EXPECT_EQ(kept.difference[0], 7.5);
    curve[42] = 129;
    EXPECT_NO_THROW(write_speeds(rec, crank_angles{120}, curve, 0, kept.out));
}

TEST(CylinderValues, AMeanThatOverflowsLeavesTheValuesOnlyWhenItIsFormedBehindThem) {
    channel_rec rec = in_line_engine(1);
    rec.alarmlevel = 1;
    rec.dcpercent_valid = true;
    rec.dcalarmpercent = 1;
    for (const mean_order order : {mean_order::before_values, mean_order::behind_values}) {
        written kept;
        kept.value.fill(77);
        kept.difference.fill(7.5);
        EXPECT_THROW(write_thermosignals(rec, crank_angles{}, flat_curve(65535), 1, 479, order, kept.out),
                     failure);
        EXPECT_EQ(kept.value[0], order == mean_order::before_values ? 77 : 200);
        EXPECT_EQ(kept.difference[0], 7.5);
    }
}

TEST(CylinderValues, WithoutCylindersTheMeanIsFormedAllTheSame) {
    channel_rec none = in_line_engine(1);
    none.numzyl = 0;
    written kept;
    kept.value.fill(77);
    EXPECT_NO_THROW(write_speeds(none, crank_angles{}, flat_curve(700), 1, kept.out));
    EXPECT_EQ(kept.value[0], 77);
    EXPECT_THROW(write_speeds(none, crank_angles{}, flat_curve(0), 1, kept.out), failure);
}

} // namespace
} // namespace tyxo
