// The physics of the simulated engine.

#include "engine.h"
#include "unit.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numeric>

using namespace tyxo::evaluator_sim;

namespace {

const std::string_view presets[] = {"inline1-4", "inline6-4", "inline9-4", "inline5-2", "inline12-2",
                                    "v8-4",      "v12-4",     "v16-4",     "v24-4"};

double mean(const Curve& curve) {
    return std::accumulate(curve.begin(), curve.end(), 0.0) / static_cast<double>(curve.size());
}

} // namespace

TEST(EvaluatorRamp, GoesStraightAndStays) {
    const Ramp ramp = Ramp{20, 20, 0, 0}.toward(40, 10, 4);
    EXPECT_DOUBLE_EQ(ramp.at(5), 20);
    EXPECT_DOUBLE_EQ(ramp.at(11), 25);
    EXPECT_DOUBLE_EQ(ramp.at(14), 40);
    EXPECT_DOUBLE_EQ(ramp.at(1000), 40);
    EXPECT_DOUBLE_EQ(ramp.toward(0, 12, 0).at(12), 0);
}

TEST(EvaluatorPresets, EveryEngineFiresEachCylinderOnceWithinOneCycle) {
    for (const auto name : presets) {
        const auto engine = engine_preset(name);
        ASSERT_TRUE(engine) << name;
        auto order = engine->firingorder;
        const auto end = order.begin() + engine->numzyl;
        std::sort(order.begin(), end);
        EXPECT_EQ(std::adjacent_find(order.begin(), end), end) << name;
        EXPECT_TRUE(std::all_of(end, order.end(), [](int v) { return v == 0; })) << name;
        const int sum = std::accumulate(engine->firingangle.begin(), engine->firingangle.end(), 0);
        EXPECT_LT(sum, engine->enginetype == 2 ? 360 : 720) << name;
        EXPECT_GT(engine->overspeed, engine->ratedspeed) << name;
    }
    EXPECT_FALSE(engine_preset("steam"));
}

TEST(EvaluatorPresets, PlainEngineSpreadsWholeDegreesOverTheCycle) {
    const Parameters engine = plain_engine(true, 14, 4, 500, 575);
    EXPECT_EQ(engine.firingorder[0], 101);
    EXPECT_EQ(engine.firingorder[13], 207);
    EXPECT_EQ(std::accumulate(engine.firingangle.begin(), engine.firingangle.end(), 0), 720 * 13 / 14);
}

TEST(EvaluatorEngine, SameSeedGivesTheSameValuesAnotherSeedOthers) {
    Unit one(7);
    Unit same(7);
    Unit other(8);
    EXPECT_EQ(one.values_body(12.3), same.values_body(12.3));
    EXPECT_EQ(one.curve(3, 12.3), same.curve(3, 12.3));
    EXPECT_NE(one.values_body(12.3), other.values_body(12.3));
}

TEST(EvaluatorEngine, WarmCylinderShowsInTheSignalAndAtItsPlaceInTheCurve) {
    Unit unit(1);
    unit.set_engine(*engine_preset("v16-4"), 0);
    unit.engine.steady = true;
    warm_cylinder(unit.engine, 10, 120, 0, 0); // bank B, cylinder 5: the last to fire
    const Geometry geometry(unit.parameters);
    const Values values = measure(unit.engine, geometry, unit.parameters, ParameterForm::percent, 1);
    EXPECT_NEAR(values.tsignal, 120, 3);
    EXPECT_LT(values.effective_dc, 60);
    const Curve curve = unit.curve(3, 1);
    EXPECT_NEAR(curve[690 * 256 / 720], 479 + 120, 3);
    EXPECT_EQ(std::count_if(curve.begin(), curve.end(), [](int counts) { return counts > 479 + 80; }), 16);
}

TEST(EvaluatorEngine, CycleOfATwoStrokeEngineIsOneTurn) {
    Unit unit(1);
    unit.set_engine(*engine_preset("inline5-2"), 0);
    unit.engine.steady = true;
    warm_cylinder(unit.engine, 5, 120, 0, 0); // the last to fire, at 288 of 360 degrees
    EXPECT_NEAR(unit.curve(3, 1)[288 * 256 / 360], 479 + 120, 3);
}

TEST(EvaluatorEngine, HottestCylinderReachesTheTargetWithEverySeed) {
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        EngineState state = running_engine({}, seed);
        warm_all(state, 90, 0, 0);
        double hottest = 0;
        for (const Ramp& level : state.level)
            hottest = std::max(hottest, level.at(1));
        EXPECT_DOUBLE_EQ(hottest, 90);
    }
}

TEST(EvaluatorEngine, WarmAllBringsTheHottestCylinderToTheTarget) {
    Unit unit(3);
    unit.engine.steady = true;
    warm_all(unit.engine, 140, 0, 20);
    unit.update(10);
    const Geometry geometry(unit.parameters);
    EXPECT_NEAR(measure(unit.engine, geometry, unit.parameters, ParameterForm::percent, 10).tsignal, 90, 1.5);
    EXPECT_NEAR(measure(unit.engine, geometry, unit.parameters, ParameterForm::percent, 20).tsignal, 140,
                1.5);
}

TEST(EvaluatorEngine, ThermoCurveFollowsTheAlarmLevel) {
    std::array<double, 256> percent{};
    percent.fill(100);
    Parameters p;
    p.alarmlevel = 5;
    EXPECT_EQ(thermo_curve(percent, dc_gain(p, ParameterForm::base))[0], 479 + 450);
    p.dcalarmpercent = 50;
    EXPECT_EQ(thermo_curve(percent, dc_gain(p, ParameterForm::percent))[0], 479 + 225);
    EXPECT_EQ(thermo_curve(percent, dc_gain(p, ParameterForm::inhibit))[0], 479 + 450);
}

TEST(EvaluatorEngine, AccelerationCurveHoldsTheTimeOfOneStep) {
    for (const auto name : presets) {
        Unit unit(1);
        unit.set_engine(*engine_preset(name), 0);
        unit.engine.steady = true;
        for (const std::string firmware : {"V4.31", "V2.10"}) {
            unit.firmware = firmware;
            const Curve curve = unit.curve(4, 1);
            const double tick = firmware == "V2.10" ? 4e-7 : 3.33e-7;
            const double rpm = 60 / (mean(curve) * 256 * tick);
            EXPECT_NEAR(rpm / unit.parameters.ratedspeed, 1, 0.01) << name;
            EXPECT_NE(*std::min_element(curve.begin(), curve.end()),
                      *std::max_element(curve.begin(), curve.end()));
        }
    }
}

TEST(EvaluatorEngine, WeakCylinderIsSlowerAtItsPlace) {
    Unit unit(1);
    unit.engine.steady = true;
    unit.engine.power.fill(1);
    unit.engine.power[4] = 0; // cylinder 5 fires second, at 120 degrees
    const Curve curve = unit.curve(4, 1);
    EXPECT_GT(curve[43], curve[0] + 5);
    EXPECT_NEAR(curve[85], curve[0], 2);
}

TEST(EvaluatorEngine, StandingEngineHasFiniteValues) {
    Unit unit(1);
    unit.engine.speed = {0, 0, 0, 0};
    EXPECT_EQ(unit.curve(4, 1)[7], 65535);
    EXPECT_EQ(unit.values_body(1).substr(0, 11), ":0180000000");
}

TEST(EvaluatorEngine, OddParametersDoNoHarm) {
    for (const int cylinders : {0, 25, 65535}) {
        Unit unit(1);
        unit.parameters.numzyl = cylinders;
        unit.parameters.firingangle.fill(65535);
        unit.parameters.firingorder.fill(255);
        unit.parameters.alarmlevel = 9;
        unit.parameters.enginetype = 7;
        unit.parameters.ratedspeed = 0;
        EXPECT_EQ(unit.values_body(1).size(), 27U);
        EXPECT_GT(mean(unit.curve(3, 1)), 0);
        EXPECT_GT(mean(unit.curve(4, 1)), 0);
    }
}
