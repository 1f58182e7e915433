#pragma once
// The serial lines: characters become frames, frames go out, ports open and close.

#include "basics/per_channel.h"
#include "basics/types.h"
#include "platform/mscomm.h"

#include <string>
#include <string_view>

namespace tyxo::serial {

/// Baud rate, parity, data bits and stop bits of every Evaluator line.
inline constexpr std::string_view comm_settings = "38400,n,8,1";

struct serial_state {
    per_channel<MSComm> comm; ///< the ports

    // What a channel has received so far of an open frame. A frame has no limit in length and no time-out:
    // only the next ":" gives it up.
    per_channel<std::string> rx_chunk; ///< bytes of the last receive event
    per_channel<std::string> rx_frame; ///< from its ":" on, without CR and LF
    per_channel<bool> rx_start_seen{}; ///< a ":" was seen, the frame is open
    per_channel<bool> rx_cr_seen{};    ///< a CR was seen in the open frame
    per_channel<bool> rx_spare{};      ///< cleared with the others, tested by nothing
};

inline serial_state state;

/// Handles the event that the channel's port reports. A step that fails is skipped; "mscomm: " and the last
/// failure's description go to the debug output.
void on_comm(i16 channel);

/// Opens the channel's port with number `port`, a port that is open already anew. Every step is tried; True
/// if any failed. Closing waits as `port_close` does.
[[nodiscard]] bool port_open(i16 channel, i16 port);

/// Closes the channel's port if it is open. Waits until what was sent has left, a second at most.
void port_close(i16 channel);

/// Sends `body`, from ":" to the last data character, with its check and CR LF. A closed port is opened for
/// this one frame, with the channel's port number; its closing waits as `port_close` does. Failure: the port
/// cannot be opened or does not take the frame.
void frame_send(std::string_view body, i16 channel);

} // namespace tyxo::serial
