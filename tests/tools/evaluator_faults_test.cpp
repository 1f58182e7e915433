// Damage to frames of the simulated Evaluator.

#include "faults.h"
#include "frames.h"

#include <gtest/gtest.h>

using namespace tyxo::evaluator_sim;

namespace {

bool passes(const std::string& frame) {
    return check_passes(frame.substr(0, frame.size() - 2));
}

} // namespace

TEST(EvaluatorFaults, BadCheckKeepsTheFormOfTheFrame) {
    for (const char* body : {":00", ":08", ":01800000", ":8009"}) {
        const std::string good = close_frame(body);
        const std::string bad = with_bad_check(good);
        EXPECT_TRUE(passes(good));
        EXPECT_FALSE(passes(bad));
        EXPECT_EQ(bad.size(), good.size());
        EXPECT_TRUE(bad.ends_with("\r\n"));
    }
}

TEST(EvaluatorFaults, UpperCheckNeedsLetters) {
    EXPECT_TRUE(check_has_letters(close_frame(":00")));
    EXPECT_FALSE(check_has_letters(close_frame(":08")));
    EXPECT_EQ(with_upper_check(close_frame(":00")), ":00A0\r\n");
}

TEST(EvaluatorFaults, CutFrameHasNoCheckAndNoEnd) {
    Random random(1);
    const std::string frame = close_frame(":01820012D0");
    for (int i = 0; i < 200; ++i) {
        const std::string cut = cut_frame(frame, random);
        EXPECT_TRUE(frame.starts_with(cut));
        EXPECT_GE(cut.size(), 1U);
        EXPECT_LE(cut.size(), frame.size() - 4);
    }
}

TEST(EvaluatorFaults, NoiseNeverBeginsAFrame) {
    Random random(1);
    const std::string noise = noise_bytes(5000, random);
    EXPECT_EQ(noise.size(), 5000U);
    EXPECT_EQ(noise.find(':'), std::string::npos);
    EXPECT_NE(noise.find('\0'), std::string::npos);
}

TEST(EvaluatorFaults, PendingFaultStrikesAsOftenAsToldAndOnlyItself) {
    Faults faults;
    Random random(1);
    faults.add_pending(Fault::cut, 2);
    EXPECT_FALSE(faults.strikes(Fault::noise, random));
    EXPECT_TRUE(faults.strikes(Fault::cut, random));
    EXPECT_TRUE(faults.strikes(Fault::cut, random));
    EXPECT_FALSE(faults.strikes(Fault::cut, random));
}

TEST(EvaluatorFaults, ProbabilityIsKeptInTheLongRun) {
    Faults faults;
    Random random(1);
    faults.set_probability(Fault::badcheck, 0.1);
    int struck = 0;
    for (int i = 0; i < 10000; ++i)
        struck += faults.strikes(Fault::badcheck, random) ? 1 : 0;
    EXPECT_NEAR(struck, 1000, 150);
    faults.clear();
    EXPECT_FALSE(faults.strikes(Fault::badcheck, random));
}
