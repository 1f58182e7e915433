// The values per cylinder that the plant controller gets.

#include "gateway/modbus_calc.h"

#include "app/wiring.h"
#include "link/calls.h"
#include "link/cylinder_model.h"
#include "platform/simulation.h"
#include "settings/settings.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tyxo {
namespace {

using namespace cylinder_testing;
using namespace Modbus_calc;

class ModbusCalc : public testing::Test {
  protected:
    ModbusCalc() {
        simulation::fresh_world();
        sensor::state.zyl_speed_range = 1;
        sensor::state.adc_offset = 479;
        rec = in_line_engine();
        speeds() = flat_curve(704);
        thermo() = flat_curve(529);
    }
    ~ModbusCalc() override { simulation::fresh_world(); }

    static constexpr i16 channel = 2;
    channel_rec& rec = sensor::state.channels[channel];
    static sensor::curve& speeds() { return sensor::state.mb_angacc[channel]; }
    static sensor::curve& thermo() { return sensor::state.mb_thermo[channel]; }

    /// The speed of a count.
    static double rpm(double counts) { return 60 / (counts * 256 * 0.000000333); }

    void mark_all() {
        rec.mb_angacc_val.fill(-1);
        rec.mb_angacc_diff.fill(-1);
        rec.mb_thermo_val.fill(-1);
        rec.mb_thermo_diff.fill(-1);
    }
};

TEST_F(ModbusCalc, AThermosignalOf260PercentShows200AndItsDifferenceIsTakenFrom260) {
    for (const std::size_t slot : {41U, 42U, 43U})
        thermo()[slot] = 479 + 260;
    calc_thermo_cyl(channel);
    EXPECT_EQ(rec.mb_thermo_val[0], 200);
    EXPECT_EQ(rec.mb_thermo_diff[0], 260 - 52);
    EXPECT_EQ(rec.mb_thermo_val[1], 50);
    EXPECT_EQ(rec.mb_thermo_diff[1], 50 - 52);
}

TEST_F(ModbusCalc, ACylinderAbove4000ShowsTheNegativeMeanAsItsDifference) {
    for (const std::size_t slot : {41U, 42U, 43U})
        speeds()[slot] = 175; // 4021 rpm
    calc_angacc_cyl(channel);
    EXPECT_EQ(rec.mb_angacc_val[0], 4000);
    EXPECT_NEAR(rec.mb_angacc_diff[0], -rpm(698), 0.01);
    for (const std::size_t slot : {41U, 42U, 43U})
        speeds()[slot] = 176; // 3999 rpm
    calc_angacc_cyl(channel);
    EXPECT_EQ(rec.mb_angacc_val[0], 3999);
    EXPECT_NEAR(rec.mb_angacc_diff[0], rpm(176) - rpm(698), 0.02);
}

TEST_F(ModbusCalc, ElementsOfNoCylinderStayAsTheyAre) {
    mark_all();
    calc_angacc_cyl(channel);
    calc_thermo_cyl(channel);
    EXPECT_EQ(rec.mb_angacc_diff[5], 0);
    EXPECT_EQ(rec.mb_thermo_diff[5], 0);
    for (std::size_t slot = 6; slot < cylinder_max; ++slot) {
        EXPECT_EQ(rec.mb_angacc_val[slot], -1);
        EXPECT_EQ(rec.mb_angacc_diff[slot], -1);
        EXPECT_EQ(rec.mb_thermo_val[slot], -1);
        EXPECT_EQ(rec.mb_thermo_diff[slot], -1);
    }
    EXPECT_EQ(rec.bar_angacc_val, (std::array<i32, cylinder_max>{})) << "the bars' arrays are not its own";
    EXPECT_EQ(rec.bar_thermo_val, (std::array<i32, cylinder_max>{}));
}

TEST_F(ModbusCalc, TheOrderOfTheBarsIsNotItsOrder) {
    speeds()[84] = speeds()[85] = speeds()[86] = 600; // cylinder 5 fires second
    for (const int mode : {0, 1}) {
        settings.speedbar_mode = static_cast<i16>(mode);
        rec.mb_angacc_val.fill(0);
        calc_angacc_cyl(channel);
        EXPECT_EQ(rec.mb_angacc_val[4], 1173) << mode;
        EXPECT_EQ(rec.mb_angacc_val[1], 1000) << mode;
    }
}

TEST_F(ModbusCalc, AgreesWithThePlainModelOnRandomEngines) {
    std::mt19937 random(4711);
    for (int round = 0; round < 200; ++round) {
        rec = random_engine(random);
        sensor::state.zyl_speed_range = static_cast<i16>(1 + round % 20);
        sensor::state.adc_offset = static_cast<i16>(460 + round % 61);
        speeds() = random_curve(random, 1, 65535);
        thermo() = random_curve(random, 300, 900);
        calc_angacc_cyl(channel);
        calc_thermo_cyl(channel);
        const model_values speed = model_speeds(rec, speeds(), sensor::state.zyl_speed_range, false);
        const model_values signal = model_thermosignals(rec, thermo(), sensor::state.zyl_speed_range,
                                                        sensor::state.adc_offset, false);
        for (std::size_t slot = 0; slot < speed.value.size(); ++slot) {
            ASSERT_EQ(rec.mb_angacc_val[slot], speed.value[slot]) << round;
            ASSERT_EQ(rec.mb_angacc_diff[slot], speed.difference[slot]) << round;
            ASSERT_EQ(rec.mb_thermo_val[slot], signal.value[slot]) << round;
            ASSERT_EQ(rec.mb_thermo_diff[slot], signal.difference[slot]) << round;
        }
    }
}

/// Both calculations fail, and go on with the next curve when the cause is gone.
struct bad_curve {
    const char* name;
    void (*spoil)(channel_rec& rec, sensor::curve& speeds);
    bool speed_fails;
    bool thermo_fails;
};

TEST_F(ModbusCalc, BadInputIsAFailureAndTheNextCurveIsCalculatedAgain) {
    const channel_rec good = rec;
    const bad_curve rows[] = {
        {"zeros", [](channel_rec&, sensor::curve& curve) { curve.fill(0); }, true, false},
        {"25 cylinders", [](channel_rec& rec, sensor::curve&) { rec.numzyl = 25; }, true, true},
        {"beyond the cycle", [](channel_rec& rec, sensor::curve&) { rec.firingangle[0] = 130; }, true, true},
        {"alarm level 6", [](channel_rec& rec, sensor::curve&) { rec.alarmlevel = 6; }, false, true},
        {"percent 0", [](channel_rec& rec, sensor::curve&) { rec.dcpercent_valid = true; }, false, true},
    };
    for (const bad_curve& row : rows) {
        rec = good;
        mark_all();
        speeds() = flat_curve(704);
        row.spoil(rec, speeds());
        EXPECT_EQ(attempt([] { calc_angacc_cyl(channel); }).has_value(), row.speed_fails) << row.name;
        EXPECT_EQ(attempt([] { calc_thermo_cyl(channel); }).has_value(), row.thermo_fails) << row.name;
        EXPECT_EQ(rec.mb_angacc_diff[0] == -1, row.speed_fails) << row.name;
        EXPECT_EQ(rec.mb_thermo_diff[0] == -1, row.thermo_fails) << row.name;
        rec = good;
        speeds() = flat_curve(704);
        calc_angacc_cyl(channel);
        calc_thermo_cyl(channel);
        EXPECT_EQ(rec.mb_angacc_val[0], 1000) << row.name;
        EXPECT_EQ(rec.mb_thermo_val[0], 50) << row.name;
    }
}

TEST_F(ModbusCalc, APositionBeyondTheCurveLeavesTheCylindersBeforeIt) {
    rec.firingangle[5] = 200; // cylinder 4, the last to fire, passes 720 degrees
    mark_all();
    EXPECT_THROW(calc_angacc_cyl(channel), failure);
    EXPECT_THROW(calc_thermo_cyl(channel), failure);
    EXPECT_EQ(rec.mb_angacc_val[2], 1000);
    EXPECT_EQ(rec.mb_angacc_val[3], -1);
    EXPECT_EQ(rec.mb_thermo_val[2], 50);
    EXPECT_EQ(rec.mb_thermo_val[3], -1);
}

TEST_F(ModbusCalc, AMeanThatFailsLeavesTheValues) {
    rec.alarmlevel = 1;
    rec.dcpercent_valid = true;
    rec.dcalarmpercent = 1;
    thermo() = flat_curve(65535);
    mark_all();
    EXPECT_THROW(calc_thermo_cyl(channel), failure);
    EXPECT_EQ(rec.mb_thermo_val[0], 200);
    EXPECT_EQ(rec.mb_thermo_diff[0], -1);
}

TEST_F(ModbusCalc, AChannelThatDoesNotExistIsAFailure) {
    for (const i16 none : {i16{-1}, i16{4}}) {
        EXPECT_THROW(calc_angacc_cyl(none), failure);
        EXPECT_THROW(calc_thermo_cyl(none), failure);
    }
}

TEST_F(ModbusCalc, AProcessedCurveCallsIt) {
    wire();
    calls.calc_angacc_cyl(channel);
    calls.calc_thermo_cyl(channel);
    EXPECT_EQ(rec.mb_angacc_val[0], 1000);
    EXPECT_EQ(rec.mb_thermo_val[0], 50);
}

} // namespace
} // namespace tyxo
