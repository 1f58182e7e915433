// A whole simulated Evaluator with its line, on a clock of its own.

#include "channel.h"

#include <gtest/gtest.h>

using namespace tyxo::evaluator_sim;

namespace {

/// Runs a channel from `begin` to `end` seconds; everything it sends reaches the device.
std::string run(Channel& channel, double begin, double end) {
    std::string bytes;
    for (int i = 1; begin + 0.008 * i <= end; ++i) {
        const std::string piece = channel.step(begin + 0.008 * i);
        channel.settle(piece.size());
        bytes += piece;
    }
    return bytes;
}

Channel quiet_channel() {
    Channel channel(1, 1);
    channel.schedule.set_pace(Pace::off, 0);
    return channel;
}

/// The frames of the bytes that pass the check, counted by code.
std::map<std::string, size_t> good_frames(const std::string& bytes) {
    Receiver receiver;
    std::map<std::string, size_t> counts;
    for (const std::string& frame : receiver.take(bytes))
        if (check_passes(frame)) ++counts[frame.substr(1, 2)];
    return counts;
}

} // namespace

TEST(EvaluatorChannel, ScheduleOffSendsNothing) {
    Channel channel = quiet_channel();
    EXPECT_EQ(run(channel, 0, 10), "");
}

TEST(EvaluatorChannel, CountersAgreeWithTheBytesOnTheLine) {
    Channel channel(1, 1);
    channel.faults.set_probability(Fault::badcheck, 0.05);
    channel.faults.set_probability(Fault::uppercheck, 0.05);
    channel.faults.set_probability(Fault::cut, 0.05);
    channel.faults.set_probability(Fault::noise, 0.05);
    const std::string bytes = run(channel, 0, 120);
    EXPECT_EQ(good_frames(bytes), channel.counters().frames);
    EXPECT_EQ(bytes.size(), channel.counters().sent_bytes);
    EXPECT_GT(channel.counters().faults[0], 20U);
    EXPECT_GT(channel.counters().faults[1], 20U);
    EXPECT_GT(channel.counters().faults[2], 20U);
    EXPECT_GT(channel.counters().faults[3], 20U);
}

TEST(EvaluatorChannel, ValuesKeepTheirRateWhileCurvesAreSent) {
    Channel channel(1, 1);
    const auto frames = good_frames(run(channel, 0, 60));
    EXPECT_NEAR(static_cast<double>(frames.at("01")), 600, 2);
    EXPECT_NEAR(static_cast<double>(frames.at("03")), 120, 4);
    EXPECT_NEAR(static_cast<double>(frames.at("04")), 120, 4);
    EXPECT_NEAR(static_cast<double>(frames.at("06")), 12, 1);
    EXPECT_NEAR(static_cast<double>(frames.at("08")), 60, 1);
}

TEST(EvaluatorChannel, FullPaceSaturatesTheLine) {
    Channel channel(1, 1);
    channel.schedule.set_pace(Pace::full, 0);
    EXPECT_NEAR(static_cast<double>(run(channel, 0, 100).size()), 384000, 4);
    EXPECT_GT(channel.counters().curves[0], 100U);
    EXPECT_GT(channel.counters().curves[1], 100U);
    EXPECT_GT(channel.counters().frames.at("08"), 90U);
}

TEST(EvaluatorChannel, TooSlowLineSkipsFramesInsteadOfQueueing) {
    Channel channel(1, 1);
    channel.set_baud(1200);
    run(channel, 0, 60);
    EXPECT_LT(channel.transmitter().waiting_bytes(), 3000U);
}

TEST(EvaluatorChannel, SilenceSendsNothingAndKeepsNothingForLater) {
    Channel channel = quiet_channel();
    channel.send_body(":99one");
    channel.silence(0, 5);
    channel.send_body(":99two");
    EXPECT_EQ(run(channel, 0, 4.99), "");
    channel.send_body(":99three");
    EXPECT_EQ(run(channel, 5, 6), close_frame(":99three"));
}

TEST(EvaluatorChannel, CommandsAppearByteForByteInTheirOrder) {
    Channel channel = quiet_channel();
    channel.send_raw("noise\r\n");
    channel.send_body(":0701");
    channel.send(4, 0);
    channel.send_body(":00");
    const Curve curve = channel.unit.curve(4, 0);
    std::string expected = "noise\r\n" + close_frame(":0701");
    for (int block = 1; block <= curve_blocks; ++block)
        expected += close_frame(curve_body(4, block, curve));
    EXPECT_EQ(run(channel, 0, 1), expected + ":00a0\r\n");
}

TEST(EvaluatorChannel, WrongBlockOrderCompletesNoCurve) {
    Channel channel = quiet_channel();
    channel.faults.add_pending(Fault::order, 1);
    channel.send(3, 0);
    channel.send(3, 0);
    run(channel, 0, 2);
    EXPECT_EQ(channel.counters().frames.at("03"), 8U);
    EXPECT_EQ(channel.counters().curves[0], 1U);
}

TEST(EvaluatorChannel, DamagedFrameIsNotCountedAsSent) {
    Channel channel = quiet_channel();
    channel.faults.add_pending(Fault::badcheck, 1);
    channel.send(8, 0);
    channel.send(8, 0);
    const std::string bytes = run(channel, 0, 1);
    EXPECT_EQ(bytes.size(), 72U);
    EXPECT_EQ(channel.counters().frames.at("08"), 1U);
}

TEST(EvaluatorChannel, UpperCheckWaitsForLetters) {
    Channel channel = quiet_channel();
    channel.faults.add_pending(Fault::uppercheck, 1);
    for (int i = 0; i < 20; ++i) {
        channel.unit.status_extension = i;
        channel.send(8, 0);
    }
    EXPECT_EQ(good_frames(run(channel, 0, 5)).at("08"), 19U);
}

TEST(EvaluatorChannel, InhibitCommandStartsTheTimeOfTheParameters) {
    Channel channel = quiet_channel();
    channel.unit.parameters.alminhibit_time = 90;
    EXPECT_EQ(channel.receive(":80092f\r\n", 10),
              std::vector<std::string>{"channel 1 received :80092f check ok"});
    EXPECT_EQ(channel.unit.inhibit.left(12), 88);
    EXPECT_EQ(run(channel, 10, 11), "");
}

TEST(EvaluatorChannel, BadCheckIsReportedAndNotObeyed) {
    Channel channel = quiet_channel();
    EXPECT_EQ(channel.receive(":80092F\r\n", 0),
              std::vector<std::string>{"channel 1 received :80092F check bad"});
    EXPECT_FALSE(channel.unit.inhibit.on(1));
}

TEST(EvaluatorChannel, ParameterWriteIsAnswered) {
    Channel channel = quiet_channel();
    const std::string body = ":07000501F4023F0006" + std::string(48, '0') + "0055";
    channel.receive(close_frame(body), 0);
    channel.receive(close_frame(body + "0"), 0);
    EXPECT_EQ(run(channel, 0, 1), close_frame(":0701") + close_frame(":0700"));
    EXPECT_EQ(channel.unit.parameters.alarmlevel, 5);
}

TEST(EvaluatorChannel, RequestIsAnsweredWithItsFrameUnlessAnswersAreOff) {
    Channel channel = quiet_channel();
    channel.receive(":00a0\r\n:0898\r\n", 0);
    EXPECT_EQ(good_frames(run(channel, 0, 1)), (std::map<std::string, size_t>{{"00", 1}, {"08", 1}}));
    channel.answers = false;
    channel.receive(":00a0\r\n", 1);
    EXPECT_EQ(run(channel, 1, 2), "");
}
