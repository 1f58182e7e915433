// The line of the simulated Evaluator: pace, queues, schedule, reception.

#include "receiver.h"
#include "schedule.h"
#include "transmitter.h"

#include <gtest/gtest.h>

using namespace tyxo::evaluator_sim;

TEST(EvaluatorPacer, LetsThroughTheCharactersOfTheBaudRate) {
    Pacer pacer(characters_per_second(38400));
    size_t sum = 0;
    for (int i = 1; i <= 1250; ++i) {
        const size_t count = pacer.allowance(0.008 * i);
        EXPECT_LE(count, 31U);
        sum += count;
    }
    EXPECT_NEAR(static_cast<double>(sum), 38400, 1);
}

TEST(EvaluatorPacer, IdleLineSavesNothingUp) {
    Pacer pacer(3840);
    pacer.idle(5);
    EXPECT_EQ(pacer.allowance(5.01), 38U);
}

TEST(EvaluatorPacer, LongGapDoesNotEndInABurst) {
    Pacer pacer(3840);
    EXPECT_EQ(pacer.allowance(100), 384U);
    EXPECT_EQ(pacer.allowance(99), 0U);
}

TEST(EvaluatorTransmitter, CurvesWaitBehindValuesButNoFrameIsInterrupted) {
    Transmitter line;
    line.put_curve({"AAAA", "03"});
    line.put_curve({"BBBB", "03"});
    EXPECT_EQ(line.take(2), "AA");
    line.settle(2);
    line.put({"11", "01"});
    EXPECT_EQ(line.waiting_bytes(), 8U);
    EXPECT_EQ(line.take(100), "AA11BBBB");
    EXPECT_EQ(line.settle(8).size(), 3U);
    EXPECT_TRUE(line.empty());
}

TEST(EvaluatorTransmitter, FrameThatLostAByteDoesNotCountAsSent) {
    Transmitter line;
    line.put({"AAAA", "01"});
    line.put({"BBBB", "06"});
    line.put({"CCCC", "08"});
    line.take(6);
    const auto first = line.settle(5); // the second byte of B is lost
    ASSERT_EQ(first.size(), 1U);
    EXPECT_EQ(first[0].code, "01");
    line.take(6);
    const auto rest = line.settle(6);
    ASSERT_EQ(rest.size(), 1U);
    EXPECT_EQ(rest[0].code, "08");
    EXPECT_EQ(line.lost_items(), 1U);
}

TEST(EvaluatorTransmitter, KnowsWhatWaits) {
    Transmitter line;
    line.put({"AAAA", "01"});
    EXPECT_TRUE(line.waiting("01"));
    EXPECT_FALSE(line.waiting("06"));
    line.take(1);
    EXPECT_FALSE(line.waiting("01"));
    EXPECT_FALSE(line.empty());
    line.clear();
    EXPECT_TRUE(line.empty());
    EXPECT_EQ(line.take(10), "");
}

TEST(EvaluatorSchedule, BeginsWithIdentificationParametersStatusAndValues) {
    Schedule schedule;
    EXPECT_EQ(schedule.due(0), (std::vector<int>{0, 6, 8, 1, 3}));
    EXPECT_TRUE(schedule.due(0.05).empty());
}

TEST(EvaluatorSchedule, CurvesTakeTurnsAlsoAfterANewStart) {
    Schedule schedule;
    schedule.set_pace(Pace::normal, 10);
    EXPECT_EQ(schedule.due(10), (std::vector<int>{0, 6, 8, 1, 3}));
    EXPECT_EQ(schedule.due(11), (std::vector<int>{8, 1, 4}));
}

TEST(EvaluatorSchedule, SendsEachCodeAtItsPeriod) {
    Schedule schedule;
    std::array<int, 9> counts{};
    for (int i = 0; i < 1000; ++i)
        for (const int code : schedule.due(0.01 * i))
            ++counts.at(static_cast<size_t>(code));
    EXPECT_EQ(counts, (std::array<int, 9>{1, 100, 0, 5, 5, 0, 2, 0, 10}));
}

TEST(EvaluatorSchedule, LateCodeIsDueOnce) {
    Schedule schedule;
    schedule.due(0);
    EXPECT_EQ(schedule.due(3), (std::vector<int>{8, 1, 3, 4}));
    EXPECT_TRUE(schedule.due(3.05).empty());
}

TEST(EvaluatorSchedule, OffAndPauseSendNothing) {
    Schedule schedule;
    schedule.set_pace(Pace::off, 0);
    EXPECT_TRUE(schedule.due(10).empty());
    schedule.set_pace(Pace::normal, 10);
    schedule.pause();
    EXPECT_TRUE(schedule.due(20).empty());
    schedule.resume(20);
    EXPECT_FALSE(schedule.due(20).empty());
}

TEST(EvaluatorSchedule, FullPaceLeavesValuesAndCurvesToTheGaps) {
    Schedule schedule;
    EXPECT_FALSE(schedule.fills_gaps());
    schedule.set_pace(Pace::full, 0);
    EXPECT_EQ(schedule.due(0), (std::vector<int>{0, 6, 8}));
    EXPECT_TRUE(schedule.fills_gaps());
    schedule.pause();
    EXPECT_FALSE(schedule.fills_gaps());
}

TEST(EvaluatorSchedule, PeriodZeroStopsACode) {
    Schedule schedule;
    schedule.set_period(6, 0, 0);
    schedule.set_period(1, 0, 0);
    EXPECT_EQ(schedule.due(0), (std::vector<int>{0, 8, 3}));
}

TEST(EvaluatorReceiver, PutsFramesTogetherFromAnyPortions) {
    Receiver receiver;
    EXPECT_TRUE(receiver.take("xx\r\n:80").empty());
    EXPECT_TRUE(receiver.take("092f\r").empty());
    EXPECT_EQ(receiver.take("\n:00:06"), std::vector<std::string>{":80092f"});
    EXPECT_EQ(receiver.take("9a\r\n:08\n98\r\n"), (std::vector<std::string>{":069a", ":0898"}));
}

TEST(EvaluatorReceiver, GivesUpAFrameWithoutEnd) {
    Receiver receiver;
    EXPECT_TRUE(receiver.take(":" + std::string(5000, '0') + "\r\n").empty());
    EXPECT_EQ(receiver.take(":00a0\r\n").size(), 1U);
}
