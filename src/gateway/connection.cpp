#include "gateway/connection.h"

#include "basics/number.h"
#include "basics/number_text.h"
#include "gateway/frmsetuptcp.h"
#include "gateway/modbus.h"
#include "gateway/register_image.h"
#include "platform/clock.h"
#include "platform/program.h"
#include "settings/settings.h"

#include <array>

namespace tyxo {

namespace {

constexpr u8 connect_command = 1;
constexpr u8 idle_command = 2;
constexpr float patience = 0.5F; // s
constexpr int wait_step = 10;    // ms; whatever happens ends a step at once
constexpr i16 failures_to_lock = 3;

bool socket_connected() {
    return Winsock_A.State() == socket_state::connected;
}

/// The limit is a time of day: behind midnight it is not reached, and only a connection ends the wait. This
/// is required.
void wait_for_connection() {
    const float limit = static_cast<float>(seconds_of_day()) + patience;
    while (!socket_connected() && static_cast<float>(seconds_of_day()) < limit)
        wait_events(wait_step);
}

void connection_made() {
    tcp.tcp_connected = true;
    show_tcp_status("Connected", status_colour::green);
    modbus.mb_timed_out = false;
    Timer_reconnect.Enabled(false);
}

/// The socket stays as it is, so that it may still connect.
void connection_failed() {
    tcp.tcp_connected = false;
    show_tcp_status("Can't connect to " + FrmSetupTCP.Txt_IPadr + "  State: " + plain(Winsock_A.State()),
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

/// One block of one channel, or one step that is not wanted.
void run_cycle() {
    const cycle_step& step = at(cycle, tcp.tcp_step);
    tcp.tcp_block = step.block;
    if (!step.wanted()) {
        tcp.tcp_step = step.skip;
        return;
    }
    TCP_connect(idle_command); // without effect, as it is required
    if (!tcp.tcp_connected) return;
    TCP_send(tcp.tcp_channel, tcp.tcp_block);
    if (++tcp.tcp_channel < sensor::max_sensors) return;
    tcp.tcp_channel = 0;
    tcp.tcp_step = step.next;
}

void set_send_interval() {
    if (settings.IPRefresh < send_intervals.size())
        mainfrm::Timer_TCP.Interval(send_intervals[settings.IPRefresh]);
}

} // namespace

void TCP_connect(u8 command) {
    if (command != connect_command || socket_connected()) return;
    if (tcp.tcp_locked) {
        show_tcp_status("Connection locked", status_colour::yellow);
        return;
    }
    if (Winsock_A.State() != socket_state::closed) Winsock_A.Close();
    Winsock_A.RemoteHost(FrmSetupTCP.Txt_IPadr);
    Winsock_A.RemotePort(round_even<i32>(leading_number(FrmSetupTCP.Txt_IPport)));
    Winsock_A.Connect();
    wait_for_connection();
    if (socket_connected())
        connection_made();
    else
        connection_failed();
}

void TCP_disconnect() {
    if (Winsock_A.State() != socket_state::closed) Winsock_A.Close();
    while (Winsock_A.State() > socket_state::closed)
        wait_events(wait_step);
    tcp.tcp_connected = false;
    show_tcp_status("Disconnected", status_colour::red);
}

void Timer_reconnect_tick() {
    tcp.tcp_locked = false;
    show_tcp_status("TCP IP connection auto reset!", status_colour::green);
    TCP_connect(connect_command);
}

void Timer_TCP_tick() {
    if (settings.IPAutoC != 1) return;
    if (!transaction_open()) run_cycle();
    do_events();
}

void start_gateway() {
    mainfrm::Timer_TCP.Interval(300);
    mainfrm::Timer_TCP.Enabled(true);
    Timer_reconnect.Interval(40'000);
    Timer_reconnect.Enabled(false);
    Timer1.Interval(1);
    Timer1.Enabled(false);
    set_send_interval();
    if (settings.IPAutoC != 1) {
        mainfrm::Timer_TCP.Enabled(false);
        return;
    }
    load_frmsetuptcp();
    TCP_connect(connect_command);
}

} // namespace tyxo
