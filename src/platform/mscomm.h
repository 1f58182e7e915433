#pragma once
// A serial port.

#include "basics/types.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace tyxo {

/// What `CommEvent` says of the event that `on_comm` is called for.
namespace comm_event {
inline constexpr i32 send_buffer_low = 1;
inline constexpr i32 receive = 2;
} // namespace comm_event

/// A serial port as the link uses it. Ports deliver one event at a time, never one inside the handler of
/// another, and none while events are held. A device that vanishes leaves the port open and silent; when it
/// stands under the same name again, data goes on to arrive.
///
/// Every operation that the machine refuses is a failure with its description.
class MSComm {
  public:
    MSComm();
    ~MSComm();
    MSComm(const MSComm&) = delete;
    MSComm& operator=(const MSComm&) = delete;

    [[nodiscard]] bool PortOpen() const;
    /// Opens or closes. Opening does not wait. Closing waits until everything sent has left the machine, a
    /// second at most; a line that does not take it in this time loses the rest. Whoever wants no events
    /// meanwhile switches them off before.
    void PortOpen(bool open);

    /// The number of the port, above 0; it cannot change while the port is open.
    void CommPort(i16 number);
    /// "38400,n,8,1" and the like: baud rate, parity, data bits, stop bits.
    void Settings(std::string_view text);

    void InBufferCount(i32 zero);  ///< 0 empties the receive buffer
    void OutBufferCount(i32 zero); ///< 0 empties the send buffer
    void InputMode(i32 mode);      ///< 1: bytes as they come
    void RTSEnable(bool on);       ///< no failure on a port without modem lines
    void RThreshold(i32 bytes);    ///< 1: an event for every received byte or group of bytes
    void SThreshold(i32 bytes);    ///< 1: an event when the send buffer has emptied
    void Handshaking(i32 kind);    ///< 0: none

    /// Sends the text, one byte per character, without waiting for the line. Failure: the port is not open,
    /// its device has vanished or does not take the text.
    void Output(std::string_view text);
    /// Takes all received bytes; `chunk` keeps its capacity. Failure: the port is not open.
    void Input(std::string& chunk);

    /// The event being handled; any other number than those of `comm_event` is a line state or an error.
    [[nodiscard]] i32 CommEvent() const;
    void on_comm(std::function<void()> handler);

    struct state; ///< the platform's own

  private:
    std::unique_ptr<state> state_;
};

} // namespace tyxo
