#include "gateway/connection.h"

#include "basics/failure.h"
#include "basics/number.h"
#include "basics/number_text.h"
#include "gateway/frmsetuptcp.h"
#include "gateway/modbus.h"
#include "gateway/register_image.h"
#include "link/main_timers.h"
#include "platform/clock.h"
#include "platform/debug_output.h"
#include "platform/program.h"
#include "settings/settings.h"

#include <array>

namespace tyxo {

namespace {

constexpr u8 connect_command = 1;
constexpr u8 idle_command = 2;
constexpr float patience = 0.5F;         // s
constexpr int longest_wait = 5000;       // ms
constexpr int connection_wait_step = 10; // ms; whatever happens ends a step at once
constexpr i16 failures_to_lock = 3;

bool socket_connected() {
    return gateway.Winsock_A.State() == socket_state::connected;
}

/// Looks like a mistake and stays: the limit is a time of day, which is not reached behind midnight, or when
/// the clock is set back meanwhile (ConnectionTime.OverMidnightNoHalfSecondEndsIt). The clock that never
/// jumps ends the wait then: what the operator asks for waits with it.
void wait_for_connection() {
    const float limit = static_cast<float>(seconds_of_day()) + patience;
    const std::int64_t longest = running_ms() + longest_wait;
    while (!socket_connected() && static_cast<float>(seconds_of_day()) < limit && running_ms() < longest)
        wait_events(connection_wait_step);
}

/// Connected in time. A connection that was made behind the end of its attempt is one that nobody uses.
bool connection_in_use() {
    return socket_connected() && tcp.tcp_connected;
}

/// Looks like a mistake and stays: the count of failures goes on behind a success
/// (Connection.ASuccessBehindTwoFailuresLeavesTheCountAndTheNextFailureLocks).
void connection_made() {
    tcp.tcp_connected = true;
    FrmSetupTCP::show_tcp_status("Connected", status_colour::green);
    modbus.mb_timed_out = false;
    gateway.Timer_reconnect.Enabled(false);
}

/// The socket stays as it is. It may still connect; the next attempt closes that connection and makes its
/// own.
void connection_failed() {
    tcp.tcp_connected = false;
    FrmSetupTCP::show_tcp_status("Can't connect to " + FrmSetupTCP::state.Txt_IPadr +
                                     "  State: " + plain(gateway.Winsock_A.State()),
                                 status_colour::red);
    if (++tcp.tcp_fail_count < failures_to_lock) return;
    tcp.tcp_locked = true;
    tcp.tcp_fail_count = 0;
}

bool linear_data() {
    return settings.IPenaTRS == 1;
}
bool system_status() {
    return settings.IPsysstat == 1;
}
bool differential_data() {
    return settings.IPpolar == 1;
}

struct cycle_step {
    i16 block;
    bool (*wanted)();
    i16 next; ///< step when the last channel is done
    i16 skip; ///< step when the block is not wanted
};

constexpr std::array<cycle_step, 4> cycle{{
    {1, linear_data, 1, 1},
    {8, system_status, 2, 2},
    {3, differential_data, 3, 0},
    {4, differential_data, 0, 0},
}};

/// One block of one channel, or one step that is not wanted. A block with a value that no register can hold
/// is left out in this pass.
void run_cycle() {
    const cycle_step& step = at(cycle, tcp.tcp_step);
    tcp.tcp_block = step.block;
    if (!step.wanted()) {
        tcp.tcp_step = step.skip;
        return;
    }
    // Looks like a mistake and stays: a call without effect (Connection.AnyCommandBut1DoesNothingInAnyState).
    TCP_connect(idle_command);
    if (!tcp.tcp_connected) return;
    const auto why = attempt([] { TCP_send(tcp.tcp_channel, tcp.tcp_block); });
    if (why)
        debug_output("error: Modbus channel " + plain(tcp.tcp_channel + 1) + " block " +
                     plain(tcp.tcp_block) + ' ' + *why);
    if (++tcp.tcp_channel < sensor::state.max_sensors) return;
    tcp.tcp_channel = 0;
    tcp.tcp_step = step.next;
}

void set_send_interval() {
    if (settings.IPRefresh < send_intervals.size())
        mainfrm::timers.Timer_TCP.Interval(send_intervals[settings.IPRefresh]);
}

} // namespace

void TCP_connect(u8 command) {
    if (command != connect_command || connection_in_use()) return;
    if (tcp.tcp_locked) {
        FrmSetupTCP::show_tcp_status("Connection locked", status_colour::yellow);
        return;
    }
    if (gateway.Winsock_A.State() != socket_state::closed) gateway.Winsock_A.Close();
    gateway.Winsock_A.RemoteHost(FrmSetupTCP::state.Txt_IPadr);
    gateway.Winsock_A.RemotePort(round_even<i32>(leading_number(FrmSetupTCP::state.Txt_IPport)));
    gateway.Winsock_A.Connect();
    wait_for_connection();
    if (socket_connected())
        connection_made();
    else
        connection_failed();
}

/// Looks like a mistake and stays: a reconnection that is under way goes on, and connects again
/// (Connection.DisconnectingLeavesTheReconnectionWhichConnectsWithin40Seconds).
void TCP_disconnect() {
    if (gateway.Winsock_A.State() != socket_state::closed) gateway.Winsock_A.Close();
    while (gateway.Winsock_A.State() > socket_state::closed)
        wait_events(connection_wait_step);
    tcp.tcp_connected = false;
    FrmSetupTCP::show_tcp_status("Disconnected", status_colour::red);
}

/// Looks like a mistake and stays: a controller that is connected and silent is not left, so that its
/// time-out lasts (ConnectionLoss.ASilentControllerIsRefusedEveryWriteForAnHourThoughItComesBack).
void FrmSetupTCP::Timer_reconnect_tick() {
    tcp.tcp_locked = false;
    FrmSetupTCP::show_tcp_status("TCP IP connection auto reset!", status_colour::green);
    TCP_connect(connect_command);
}

void mainfrm::Timer_TCP_tick() {
    if (settings.IPAutoC != 1) return;
    if (!transaction_open()) run_cycle();
    do_events();
}

void start_gateway() {
    mainfrm::timers.Timer_TCP.Interval(300);
    mainfrm::timers.Timer_TCP.Enabled(true);
    gateway.Timer_reconnect.Interval(40'000);
    gateway.Timer_reconnect.Enabled(false);
    gateway.Timer1.Interval(1);
    gateway.Timer1.Enabled(false);
    set_send_interval();
    if (settings.IPAutoC != 1) {
        mainfrm::timers.Timer_TCP.Enabled(false);
        return;
    }
    FrmSetupTCP::load();
    // Looks like a mistake and stays: when this fails, nothing tries again
    // (ConnectionLoss.AFailedStartStaysSilentUntilTheOperatorActs).
    TCP_connect(connect_command);
}

} // namespace tyxo
