#pragma once
// Modbus TCP frames and transactions with the plant controller: function 16 writes, function 3 reads by hand.
// At most one transaction is open.

#include "basics/types.h"
#include "platform/timer.h"
#include "platform/winsock.h"

#include <array>
#include <string>

namespace tyxo {

inline constexpr i32 most_registers = 123; ///< of one frame

/// The gateway's only socket, and the clocks of a transaction and of the reconnection.
struct gateway_controls {
    Winsock Winsock_A;
    Timer Timer1;          ///< counts the ticks of an open transaction
    Timer Timer_reconnect; ///< runs from a refused write or a time-out to the next successful connection
};

inline gateway_controls gateway;

struct modbus_state {
    std::array<u8, 12> mb_tx{};    ///< the read request
    std::array<u8, 256> mb_rx{};   ///< received bytes from index 1 on; kept between answers
    std::array<i32, 256> mb_reg{}; ///< values of the next write, index 0 first
    bool mb_read_active = false;   ///< an answer is that of a read
    bool mb_write_active = false;  ///< an answer is that of a write
    bool mb_send_done = false;     ///< the socket has handed the frame over
    bool mb_read_pending = false;  ///< written, tested by nothing
    bool mb_write_pending = false; ///< a write is unanswered
    bool mb_waiting = false;       ///< a write waits for its end
    i32 mb_tick_count = 0;         ///< ticks of the open transaction
    bool mb_timed_out = false;     ///< writes are refused until the next successful connection
    bool tcp_sock_error = false;   ///< recorded, tested by nothing
    bool operator==(const modbus_state&) const = default;
};

inline modbus_state modbus;

/// True from the sending of a frame to its answer or its time-out.
[[nodiscard]] bool transaction_open();

/// Sends `mb_reg`(0 to `count` - 1) to the holding registers from `address` and waits for the answer while
/// the event loop goes on, until the time-out of `Timer1` at most, 1.6 s. Without a connection, or behind a
/// time-out, nothing is sent and the status box says so. Failure, with nothing sent: a value above 65535, an
/// address outside 0 to 65535, more than 124 registers, whose length has one byte only; a full socket.
void FC16MB_write(i32 address, i16 count);

/// The request for `count` holding registers from `address`; the answer comes as an event, nobody waits for
/// it. Failure, with nothing sent: no connection; a number outside 0 to 65535.
void FC3MB_read(i32 address, i16 count);

/// Waits until the open write has ended, by its answer or its time-out, while the event loop goes on.
void WaitForWinsock();

namespace FrmSetupTCP {

/// The 101st tick of a transaction gives it up: no more writes until the next successful connection.
void Timer1_tick();
/// Failure: more than 255 bytes; an answer whose byte count runs past the array.
void Winsock_A_DataArrival(i32 bytesTotal);

} // namespace FrmSetupTCP

} // namespace tyxo
