#pragma once
// The connection to the plant controller, and the cycle that sends one block of one channel per tick.

#include "basics/types.h"
#include "platform/timer.h"

#include <array>

namespace tyxo {

/// Its interval in ms by `IPRefresh`; any other value leaves the design's.
inline constexpr std::array<int, 3> send_intervals{600, 450, 300};

struct connection_state {
    bool tcp_connected = false; ///< the last attempt succeeded; a connection that breaks leaves it
    bool tcp_locked = false;    ///< after three failed attempts
    i16 tcp_fail_count = 0;     ///< failed attempts since the last lock; a success leaves it
    i16 tcp_step = 0;           ///< of the cycle, 0 to 3
    i16 tcp_block = 0;          ///< code of the block at work
    i16 tcp_channel = 0;
    bool operator==(const connection_state&) const = default;
};

inline connection_state tcp;

/// Command 1 connects and waits half a second for it, while the event loop goes on; over midnight, or when
/// the clock is set back meanwhile, five seconds at most. Any other command does nothing. A connection that
/// is not made is told in the status box. Failure: the port's number in its box is beyond 32 bits.
void TCP_connect(u8 command);
/// Closes the connection, without waiting for the controller.
void TCP_disconnect();

/// The start: timers as designed, `Timer_TCP` by `IPRefresh`, and the connection if the settings want it,
/// which is waited for as `TCP_connect` does.
void start_gateway();

namespace mainfrm {

/// One step of the cycle; a block waits for its answer as `FC16MB_write` does. A block that fails is told in
/// the debug output and left out.
void Timer_TCP_tick();

} // namespace mainfrm

namespace FrmSetupTCP {

/// Unlocks the connection and waits for it as `TCP_connect` does.
void Timer_reconnect_tick();

} // namespace FrmSetupTCP

} // namespace tyxo
