// The alarm decisions of the simulated Evaluator.

#include "alarms.h"
#include "unit.h"

#include <gtest/gtest.h>

using namespace tyxo::evaluator_sim;

namespace {

AlarmInputs sound() {
    return {40, 20, true, 750, 860, 80};
}

unsigned word_for(const AlarmInputs& inputs, bool inhibited = false) {
    return alarm_word(compare({}, inputs), {}, inhibited);
}

} // namespace

TEST(EvaluatorAlarms, SoundEngineIsReadyAndNothingElse) {
    EXPECT_EQ(word_for(sound()), 0x0020U);
}

TEST(EvaluatorAlarms, DcSignalOverPrealarmLevelSetsPrealarmDcAndRelay) {
    AlarmInputs inputs = sound();
    inputs.dc = 80;
    EXPECT_EQ(word_for(inputs), 0x4061U);
}

TEST(EvaluatorAlarms, DcSignalOverAlarmLevelSetsBothAlarmsAndRelays) {
    AlarmInputs inputs = sound();
    inputs.dc = 100;
    EXPECT_EQ(word_for(inputs), 0xC0E3U);
}

TEST(EvaluatorAlarms, AcSignalSetsTheAcBits) {
    AlarmInputs inputs = sound();
    inputs.ac = 100;
    EXPECT_EQ(word_for(inputs), 0xC0ECU);
}

TEST(EvaluatorAlarms, UnitWithoutAcLevelsHasNoAcAlarm) {
    AlarmInputs inputs = sound();
    inputs.ac = 500;
    inputs.measures_ac = false;
    EXPECT_EQ(word_for(inputs), 0x0020U);
}

TEST(EvaluatorAlarms, SpeedOverLimitSetsOverspeedOnly) {
    AlarmInputs inputs = sound();
    inputs.speed = 861;
    EXPECT_EQ(word_for(inputs), 0x2020U);
    inputs.overspeed = 0;
    EXPECT_EQ(word_for(inputs), 0x0020U);
}

TEST(EvaluatorAlarms, InhibitedAlarmShowsButDoesNotCloseARelay) {
    AlarmInputs inputs = sound();
    inputs.dc = 100;
    EXPECT_EQ(word_for(inputs, true), 0xC023U);
}

TEST(EvaluatorAlarms, AlarmGoesOffOnlySomeWayBelowItsLevel) {
    AlarmInputs inputs = sound();
    inputs.dc = 100;
    AlarmLatches latches = compare({}, inputs);
    inputs.dc = 98;
    latches = compare(latches, inputs);
    EXPECT_TRUE(latches.main_dc);
    inputs.dc = 96.9;
    latches = compare(latches, inputs);
    EXPECT_FALSE(latches.main_dc);
    EXPECT_TRUE(latches.pre_dc);
}

TEST(EvaluatorAlarms, ErrorSetsMainErrorAndTakesReadyAway) {
    AlarmSettings settings;
    settings.errors = 0x0004;
    EXPECT_EQ(alarm_word({}, settings, false), 0x0100U);
    settings.ready = Switch::on;
    EXPECT_EQ(alarm_word({}, settings, false), 0x0120U);
}

TEST(EvaluatorAlarms, CommandsOverruleTheSignals) {
    AlarmSettings settings;
    settings.main = Force::both;
    settings.overspeed = Switch::on;
    EXPECT_EQ(alarm_word({}, settings, false), 0xA0AAU);
    settings = {};
    settings.main = Force::off;
    settings.pre = Force::off;
    EXPECT_EQ(alarm_word({true, true, true, true, false}, settings, false), 0x0020U);
    settings.word = 0x1234;
    EXPECT_EQ(alarm_word({}, settings, false), 0x1234U);
}

TEST(EvaluatorInhibit, CountsDownWholeSeconds) {
    Inhibit inhibit;
    EXPECT_FALSE(inhibit.on(0));
    inhibit.start(10, 120);
    EXPECT_EQ(inhibit.left(10), 120);
    EXPECT_EQ(inhibit.left(10.5), 120);
    EXPECT_EQ(inhibit.left(11), 119);
    EXPECT_EQ(inhibit.left(129.5), 1);
    EXPECT_TRUE(inhibit.on(129.9));
    EXPECT_FALSE(inhibit.on(130));
    EXPECT_EQ(inhibit.left(130), 0);
}

TEST(EvaluatorInhibit, RestartBeginsTheWholeTimeAnew) {
    Inhibit inhibit;
    inhibit.start(0, 30);
    inhibit.start(20, 30);
    EXPECT_EQ(inhibit.left(20), 30);
    inhibit.stop();
    EXPECT_FALSE(inhibit.on(21));
}

TEST(EvaluatorInhibit, StatusFrameCarriesTheTimeAndOpenRelays) {
    Unit unit(1);
    unit.alarms.main = Force::dc;
    unit.inhibit.start(5, 60);
    EXPECT_EQ(unit.status_body(10), ":08V4.3180220000000001000100370"
                                    "0");
    EXPECT_EQ(unit.status_body(70), ":08V4.3180A20000000001000000000"
                                    "0");
}
