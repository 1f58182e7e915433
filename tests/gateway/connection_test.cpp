// The connection: attempts, the lock, the reconnection, and the end.

#include "gateway/gateway_world.h"

#include "basics/failure.h"

namespace tyxo::gateway_testing {
namespace {

class Connection : public gateway_world {
  protected:
    static void fail_once() {
        plant().connects = connecting::refused;
        TCP_connect(1);
        ASSERT_NE(gateway.Winsock_A.State(), socket_state::connected);
    }
    static status_box cannot(int state) {
        return {"Can't connect to 10.1.2.3  State: " + std::to_string(state), 255};
    }
};

TEST_F(Connection, IsMadeWithTheTextsOfTheBoxes) {
    FrmSetupTCP::state.Txt_IPadr = "plc.plant.example";
    FrmSetupTCP::state.Txt_IPport = " 1502 or so";
    modbus.mb_timed_out = true;
    gateway.Timer_reconnect.Enabled(true);
    EXPECT_EQ(lasting([] { TCP_connect(1); }), 5) << "the wait ends with the connection";
    ASSERT_EQ(plant().attempts.size(), 1U);
    EXPECT_EQ(plant().attempts[0].host, "plc.plant.example");
    EXPECT_EQ(plant().attempts[0].port, 1502);
    EXPECT_EQ(status(), connected);
    EXPECT_TRUE(tcp.tcp_connected);
    EXPECT_FALSE(modbus.mb_timed_out);
    EXPECT_FALSE(gateway.Timer_reconnect.Enabled());
}

TEST_F(Connection, ThatIsThereIsLeftAlone) {
    connect();
    modbus.mb_timed_out = true;
    tcp.tcp_locked = true;
    FrmSetupTCP::show_tcp_status("as it was", 1);
    TCP_connect(1);
    EXPECT_EQ(status(), (status_box{"as it was", 1}));
    EXPECT_TRUE(modbus.mb_timed_out);
    EXPECT_EQ(plant().attempts.size(), 1U);
}

TEST_F(Connection, AnyCommandBut1DoesNothingInAnyState) {
    const auto nothing_happens = [] {
        const connection_state before = tcp;
        const FrmSetupTCP::window form = FrmSetupTCP::state;
        const i16 state = gateway.Winsock_A.State();
        for (const u8 command : {u8{2}, u8{0}, u8{3}, u8{255}})
            EXPECT_EQ(lasting([command] { TCP_connect(command); }), 0);
        EXPECT_EQ(tcp, before);
        EXPECT_EQ(FrmSetupTCP::state, form);
        EXPECT_EQ(gateway.Winsock_A.State(), state);
    };
    nothing_happens();
    connect();
    nothing_happens();
    simulation::controller_closes();
    nothing_happens();
    fail_once();
    nothing_happens();
    tcp.tcp_locked = true;
    nothing_happens();
}

TEST_F(Connection, ThatFailsShowsTheStateAsItsNumber) {
    const struct {
        connecting end;
        int state;
    } rows[] = {{connecting::refused, 9}, {connecting::unknown_host, 9}, {connecting::unanswered, 6}};
    for (const auto& row : rows) {
        tcp = {};
        tcp.tcp_connected = true;
        plant().connects = row.end;
        const std::int64_t lasts = lasting([] { TCP_connect(1); });
        EXPECT_GE(lasts, 500) << "a refusal too is waited out";
        EXPECT_LT(lasts, 520);
        EXPECT_EQ(status(), cannot(row.state));
        EXPECT_FALSE(tcp.tcp_connected);
        EXPECT_EQ(tcp.tcp_fail_count, 1);
        EXPECT_EQ(gateway.Winsock_A.State(), row.state) << "left as it is";
        EXPECT_FALSE(gateway.Timer_reconnect.Enabled());
    }
}

TEST_F(Connection, ThatWasNotClosedIsClosedFirst) {
    connect();
    simulation::controller_closes();
    ASSERT_EQ(gateway.Winsock_A.State(), socket_state::closing);
    TCP_connect(1);
    EXPECT_EQ(status(), connected);
    simulation::connection_breaks();
    TCP_connect(1);
    EXPECT_EQ(status(), connected);
}

TEST_F(Connection, IsLockedBehindThreeFailures) {
    for (int count = 1; count <= 2; ++count) {
        fail_once();
        EXPECT_EQ(tcp.tcp_fail_count, count);
        EXPECT_FALSE(tcp.tcp_locked);
    }
    fail_once();
    EXPECT_TRUE(tcp.tcp_locked);
    EXPECT_EQ(tcp.tcp_fail_count, 0);
    EXPECT_EQ(status(), cannot(9)) << "the lock shows with the next attempt";
    plant().connects = connecting::accepted;
    EXPECT_EQ(lasting([] { TCP_connect(1); }), 0);
    EXPECT_EQ(status(), locked);
    EXPECT_EQ(plant().attempts.size(), 3U);
}

TEST_F(Connection, ASuccessBehindTwoFailuresLeavesTheCountAndTheNextFailureLocks) {
    fail_once();
    fail_once();
    plant().connects = connecting::accepted;
    connect();
    EXPECT_EQ(tcp.tcp_fail_count, 2);
    TCP_disconnect();
    fail_once();
    EXPECT_TRUE(tcp.tcp_locked);
}

TEST_F(Connection, WithAPortOrHostOutOfRangeEndsInTheErrorState) {
    for (const char* port : {"65536", "-1", "2147483647"}) {
        FrmSetupTCP::state.Txt_IPport = port;
        tcp = {};
        TCP_connect(1);
        EXPECT_EQ(status(), cannot(9)) << port;
    }
    FrmSetupTCP::state.Txt_IPport = "502";
    FrmSetupTCP::state.Txt_IPadr = "";
    TCP_connect(1);
    EXPECT_EQ(status(), (status_box{"Can't connect to   State: 9", 255}));
}

TEST_F(Connection, TakesThePortAsARoundedNumberAndNoneAs0) {
    for (const auto& [text, port] : {std::pair{"502.5", 502}, {"503.5", 504}, {"none", 0}, {"", 0}}) {
        TCP_disconnect();
        FrmSetupTCP::state.Txt_IPport = text;
        TCP_connect(1);
        EXPECT_EQ(plant().attempts.back().port, port) << text;
    }
}

TEST_F(Connection, WithAPortBeyond32BitsIsAFailure) {
    for (const char* port : {"2147483648", "-3E9", "1e300", "1e999"}) {
        FrmSetupTCP::state.Txt_IPport = port;
        EXPECT_THROW(TCP_connect(1), failure) << port;
    }
    EXPECT_TRUE(plant().attempts.empty());
    EXPECT_FALSE(transaction_open());
}

TEST_F(Connection, DisconnectingClosesAndSaysSo) {
    connect();
    TCP_disconnect();
    EXPECT_EQ(gateway.Winsock_A.State(), socket_state::closed);
    EXPECT_FALSE(tcp.tcp_connected);
    EXPECT_EQ(status(), disconnected);
    FrmSetupTCP::show_tcp_status("", 0);
    TCP_disconnect();
    EXPECT_EQ(status(), disconnected) << "from the closed state too";
}

TEST_F(Connection, DisconnectingLeavesTheReconnectionWhichConnectsWithin40Seconds) {
    connect();
    simulation::controller_closes();
    write_one();
    ASSERT_TRUE(gateway.Timer_reconnect.Enabled());
    advance(10'000);
    TCP_disconnect();
    plant().connect_ms = 100;
    status_box during_the_attempt;
    after(30'050, [&] { during_the_attempt = status(); });
    advance(30'150);
    EXPECT_EQ(during_the_attempt, auto_reset);
    EXPECT_EQ(status(), connected);
    EXPECT_EQ(gateway.Winsock_A.State(), socket_state::connected);
    EXPECT_FALSE(gateway.Timer_reconnect.Enabled());
}

TEST_F(Connection, AReconnectionTickWhileConnectedChangesOnlyTheText) {
    connect();
    tcp.tcp_fail_count = 2;
    modbus.mb_timed_out = true;
    gateway.Timer_reconnect.Enabled(true);
    const connection_state before = tcp;
    const modbus_state transactions = modbus;
    FrmSetupTCP::window form = FrmSetupTCP::state;
    FrmSetupTCP::Timer_reconnect_tick();
    form.Text5 = auto_reset;
    EXPECT_EQ(FrmSetupTCP::state, form);
    EXPECT_EQ(tcp, before);
    EXPECT_EQ(modbus, transactions);
    EXPECT_TRUE(gateway.Timer_reconnect.Enabled());
    EXPECT_EQ(plant().attempts.size(), 1U);
}

TEST_F(Connection, AReconnectionTickClearsTheLock) {
    for (int count = 0; count < 3; ++count)
        fail_once();
    ASSERT_TRUE(tcp.tcp_locked);
    plant().connects = connecting::accepted;
    FrmSetupTCP::Timer_reconnect_tick();
    EXPECT_FALSE(tcp.tcp_locked);
    EXPECT_EQ(status(), connected);
}

TEST_F(Connection, TheReconnectionRunsThoughTheAutomaticIsOff) {
    settings.IPAutoC = 0;
    gateway.Timer_reconnect.Enabled(true);
    advance(41'000);
    EXPECT_EQ(status(), connected);
}

} // namespace
} // namespace tyxo::gateway_testing
