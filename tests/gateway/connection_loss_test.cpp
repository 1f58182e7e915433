// What happens on a lost connection, case by case, over an hour.

#include "gateway/gateway_world.h"
#include "link/main_timers.h"

#include <algorithm>

namespace tyxo::gateway_testing {
namespace {

constexpr std::int64_t hour = 3'600'000;

class ConnectionLoss : public gateway_world {
  protected:
    /// The program with the automatic on, all options, slow.
    static void start() {
        automatic(1, 1, 1);
        start_gateway();
    }

    /// Every text of the status box in an hour, each once, in the order of its coming.
    static std::vector<std::string> texts_of(std::int64_t milliseconds) {
        std::vector<std::string> texts;
        const std::int64_t end = world().now_ms + milliseconds;
        while (world().now_ms < end) {
            advance(1);
            if (std::ranges::find(texts, status().Text) == texts.end()) texts.push_back(status().Text);
        }
        return texts;
    }
};

TEST_F(ConnectionLoss, AFailedStartStaysSilentUntilTheOperatorActs) {
    plant().connects = connecting::refused;
    start();
    EXPECT_EQ(status().Text, "Can't connect to 10.1.2.3  State: 9");
    plant().connects = connecting::accepted;
    const FrmSetupTCP::window before = FrmSetupTCP::state;
    advance(hour);
    EXPECT_EQ(FrmSetupTCP::state, before);
    EXPECT_EQ(plant().attempts.size(), 1U);
    EXPECT_FALSE(gateway.Timer_reconnect.Enabled());
    EXPECT_TRUE(mainfrm::timers.Timer_TCP.Enabled());
    connect();
    advance(600);
    EXPECT_EQ(status(), written);
}

TEST_F(ConnectionLoss, AClosedConnectionIsMadeAnewBehind40SecondsAndTheCycleGoesOn) {
    start();
    advance(3000);
    ASSERT_EQ(target(last_frame()), "1006x3") << "the fifth tick";
    simulation::controller_closes();
    const std::size_t before = frames();
    advance(600);
    EXPECT_EQ(status(), refused);
    EXPECT_TRUE(tcp.tcp_connected) << "nobody watches the close";
    EXPECT_TRUE(gateway.Timer_reconnect.Enabled());
    const std::int64_t refused_at = world().now_ms;
    advance(39'000);
    EXPECT_EQ(frames(), before);
    advance(5000);
    ASSERT_EQ(plant().attempts.size(), 2U);
    EXPECT_NEAR(static_cast<double>(plant().attempts[1].ms - refused_at), 40'000, 600);
    EXPECT_FALSE(gateway.Timer_reconnect.Enabled());
    EXPECT_GT(frames(), before);
    // A refused tick counts as done, so the cycle has gone on meanwhile.
    const auto anew = std::ranges::find_if(
        plant().frames, [](const auto& frame) { return frame.ms > plant().attempts[1].ms; });
    ASSERT_NE(anew, plant().frames.end());
    const std::string first_target = target(anew->bytes);
    const std::int64_t ticks = (anew->ms - 3000) / 600;
    const auto same_place = static_cast<std::size_t>((4 + ticks) % 16);
    advance(9600);
    const char* const cycle[] = {"1000x6",  "1110x6",  "1220x6",  "1330x6",  "1006x3",  "1116x3",
                                 "1226x3",  "1336x3",  "1010x50", "1120x50", "1230x50", "1340x50",
                                 "1060x50", "1170x50", "1280x50", "1390x50"};
    EXPECT_EQ(first_target, cycle[same_place]);
}

TEST_F(ConnectionLoss, ABrokenConnectionIsTriedEvery40SecondsWithoutEnd) {
    for (const auto end : {connecting::refused, connecting::unanswered}) {
        TCP_disconnect();
        plant() = {};
        tcp = {};
        start();
        advance(3000);
        plant().connects = end;
        simulation::connection_breaks();
        const std::size_t before = frames();
        advance(hour);
        EXPECT_EQ(plant().attempts.size(), 90U) << "the first one and 89 in an hour";
        for (std::size_t index = 2; index < plant().attempts.size(); ++index)
            EXPECT_EQ(plant().attempts[index].ms - plant().attempts[index - 1].ms, 40'000);
        EXPECT_EQ(frames(), before);
        EXPECT_FALSE(tcp.tcp_connected);
        plant().connects = connecting::accepted;
        advance(41'200);
        EXPECT_GT(frames(), before);
        EXPECT_EQ(status(), written);
        EXPECT_FALSE(gateway.Timer_reconnect.Enabled());
    }
}

TEST_F(ConnectionLoss, ASilentControllerIsRefusedEveryWriteForAnHourThoughItComesBack) {
    start();
    advance(3000);
    be_silent();
    advance(800);
    EXPECT_EQ(status(), timed_out);
    const std::size_t before = frames();
    plant().answers = [](const std::string& frame) { return simulation::answered(frame); };
    EXPECT_EQ(texts_of(hour), (std::vector<std::string>{"Modbus Time Out", "Error writting registers",
                                                        "TCP IP connection auto reset!"}));
    EXPECT_EQ(frames(), before);
    EXPECT_EQ(plant().attempts.size(), 1U) << "connected: the reset finds nothing to do";
    EXPECT_TRUE(modbus.mb_timed_out);
    EXPECT_TRUE(gateway.Timer_reconnect.Enabled());
}

TEST_F(ConnectionLoss, ASilentControllerThatClosesIsConnectedAgain) {
    start();
    be_silent();
    advance(100'000);
    ASSERT_TRUE(modbus.mb_timed_out);
    be_right();
    simulation::controller_closes();
    advance(41'200);
    EXPECT_EQ(status(), written);
    EXPECT_FALSE(modbus.mb_timed_out);
}

TEST_F(ConnectionLoss, ASilentControllerIsConnectedAgainByHand) {
    start();
    be_silent();
    advance(100'000);
    be_right();
    TCP_disconnect();
    connect();
    advance(600);
    EXPECT_EQ(status(), written);
}

TEST_F(ConnectionLoss, TheLockStopsTheDirectAttemptsOnly) {
    plant().connects = connecting::refused;
    start();
    TCP_connect(1);
    TCP_connect(1);
    ASSERT_TRUE(tcp.tcp_locked);
    plant().connects = connecting::accepted;
    for (int minute = 0; minute < 60; ++minute) {
        advance(60'000);
        TCP_connect(1);
        EXPECT_EQ(status(), locked);
    }
    EXPECT_EQ(plant().attempts.size(), 3U);
    gateway.Timer_reconnect.Enabled(true);
    advance(40'010);
    EXPECT_TRUE(tcp.tcp_connected);
}

TEST_F(ConnectionLoss, AHealthyHourIsWrittenWithoutAGap) {
    start();
    advance(hour + 600);
    EXPECT_EQ(plant().attempts.size(), 1U);
    EXPECT_NEAR(static_cast<double>(frames()), 6000, 2);
    for (std::size_t index = 1; index < frames(); ++index)
        ASSERT_EQ(plant().frames[index].ms - plant().frames[index - 1].ms, 600);
    EXPECT_EQ(status(), written);
}

} // namespace
} // namespace tyxo::gateway_testing
