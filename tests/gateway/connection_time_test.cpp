// How long an attempt to connect may take: in time, too late, given up, and what a clock that jumps does to
// it.

#include "gateway/gateway_world.h"

namespace tyxo::gateway_testing {
namespace {

const local_time before_midnight{2026, 7, 2, 23, 59, 59};

class ConnectionTime : public gateway_world {
  protected:
    static status_box cannot(int state) {
        return {"Can't connect to 10.1.2.3  State: " + std::to_string(state), 255};
    }
    static std::int64_t attempt_lasts() {
        return lasting([] { TCP_connect(1); });
    }
    /// An attempt that begins 0.3 s before midnight.
    static std::int64_t attempt_over_midnight_lasts() {
        simulation::set_local(before_midnight);
        advance(700);
        return attempt_lasts();
    }
    /// An attempt that fails, and its connection that is made all the same.
    static void connect_late() {
        plant().connect_ms = 600;
        TCP_connect(1);
        ASSERT_EQ(status(), cannot(6));
        advance(200);
        ASSERT_EQ(gateway.Winsock_A.State(), socket_state::connected);
        plant().connect_ms = 5;
    }
};

TEST_F(ConnectionTime, InTimeIsASuccess) {
    plant().connect_ms = 490;
    TCP_connect(1);
    EXPECT_EQ(status(), connected);
}

TEST_F(ConnectionTime, BehindTheHalfSecondIsAFailureThatStays) {
    connect_late();
    EXPECT_FALSE(tcp.tcp_connected);
    EXPECT_EQ(tcp.tcp_fail_count, 1);
    automatic(1, 1, 1);
    advance(2000);
    EXPECT_EQ(status(), cannot(6));
    EXPECT_EQ(frames(), 0U);
}

TEST_F(ConnectionTime, ALateConnectionGivesWayToTheNextAttempt) {
    connect_late();
    TCP_connect(1);
    EXPECT_EQ(status(), connected);
    EXPECT_EQ(plant().attempts.size(), 2U) << "a connection of its own";
    automatic(1, 1, 1);
    advance(700);
    EXPECT_EQ(status(), written);
}

TEST_F(ConnectionTime, ALateConnectionGivesWayToTheReconnection) {
    connect();
    automatic(1, 1, 1);
    simulation::controller_closes();
    plant().connect_ms = 600;
    advance(60'000);
    ASSERT_EQ(gateway.Winsock_A.State(), socket_state::connected);
    ASSERT_EQ(status(), cannot(6));
    plant().connect_ms = 5;
    advance(41'000);
    EXPECT_EQ(status(), written);
    EXPECT_EQ(plant().attempts.size(), 3U);
}

TEST_F(ConnectionTime, ALateConnectionIsNotTakenForTheTargetThatWasTypedSince) {
    connect_late();
    FrmSetupTCP::state.Txt_IPadr = "10.9.9.9";
    TCP_connect(1);
    EXPECT_EQ(plant().attempts.back().host, "10.9.9.9");
    EXPECT_TRUE(tcp.tcp_connected);
}

TEST_F(ConnectionTime, TheSocketGivesAnAttemptUp) {
    for (const auto& [end, ms] : {std::pair{connecting::unanswered, 0}, {connecting::accepted, 950}}) {
        plant().connects = end;
        plant().connect_ms = ms;
        tcp = {};
        TCP_connect(1);
        EXPECT_EQ(status(), cannot(6));
        advance(plant().attempts.back().ms + 899 - world().now_ms);
        EXPECT_EQ(gateway.Winsock_A.State(), socket_state::connecting);
        advance(1);
        EXPECT_EQ(gateway.Winsock_A.State(), socket_state::error);
        advance(60'000);
        EXPECT_EQ(gateway.Winsock_A.State(), socket_state::error) << "nothing comes of it later";
    }
}

TEST_F(ConnectionTime, AnAttemptThatEndsBeforeMidnightEndsByItsTime) {
    plant().connects = connecting::unanswered;
    simulation::set_local(before_midnight);
    advance(400);
    EXPECT_LT(lasting([] { TCP_connect(1); }), 520);
    EXPECT_EQ(status(), cannot(6));
}

TEST_F(ConnectionTime, OverMidnightNoHalfSecondEndsIt) {
    plant().connect_ms = 800;
    EXPECT_EQ(attempt_over_midnight_lasts(), 800);
    EXPECT_EQ(status(), connected);
    EXPECT_EQ(tcp.tcp_fail_count, 0);
}

TEST_F(ConnectionTime, OverMidnightItFailsBehind5SecondsAtTheLatest) {
    for (const auto end : {connecting::unanswered, connecting::refused}) {
        plant().connects = end;
        tcp = {};
        EXPECT_EQ(attempt_over_midnight_lasts(), 5000);
        EXPECT_EQ(status(), cannot(9));
        EXPECT_FALSE(tcp.tcp_connected);
        EXPECT_EQ(tcp.tcp_fail_count, 1);
    }
}

TEST_F(ConnectionTime, WhoseClockIsSetBackFailsBehind5SecondsAtTheLatest) {
    plant().connects = connecting::unanswered;
    after(200, [] { simulation::set_local({2026, 7, 2, 3, 0, 0}); });
    EXPECT_EQ(attempt_lasts(), 5000);
    EXPECT_EQ(status(), cannot(9));
}

TEST_F(ConnectionTime, AReconnectionOverMidnightGoesOnEvery40Seconds) {
    connect();
    automatic(1, 1, 1);
    plant().connects = connecting::unanswered;
    simulation::controller_closes();
    advance(600);
    ASSERT_EQ(status(), refused);
    simulation::set_local({2026, 7, 2, 23, 59, 19});
    advance(100'000);
    EXPECT_EQ(plant().attempts.size(), 3U);
    plant().connects = connecting::accepted;
    advance(41'000);
    EXPECT_EQ(status(), written);
}

} // namespace
} // namespace tyxo::gateway_testing
