#pragma once
// A TCP client socket.

#include "basics/types.h"

#include <functional>
#include <memory>
#include <string_view>

namespace tyxo {

/// Values of `Winsock::State`.
namespace socket_state {
inline constexpr i16 closed = 0;
inline constexpr i16 connecting = 6; ///< or looking up the host's name
inline constexpr i16 connected = 7;
inline constexpr i16 closing = 8; ///< the peer has closed
inline constexpr i16 error = 9;   ///< refused, unreachable, no such host, given up, broken
} // namespace socket_state

/// An attempt to connect that has not ended by then is given up, the look-up of the name included: whoever
/// asked has gone on meanwhile, and nothing may come of it later.
inline constexpr int attempt_limit = 900; // ms

/// Events come from the event loop, also inside a wait; none runs while events are held.
class Winsock {
  public:
    Winsock();
    ~Winsock();
    Winsock(const Winsock&) = delete;
    Winsock& operator=(const Winsock&) = delete;

    [[nodiscard]] i16 State() const;

    /// Host name or address, Windows-1252, and port of the next `Connect`.
    void RemoteHost(std::string_view host);
    void RemotePort(i32 port);

    /// Begins to connect and returns at once. A port outside 0 to 65535, an empty host, and no connection
    /// within `attempt_limit` end in the state `error`. Failure: the socket is not closed.
    void Connect();

    /// Closes at once; what was received and not taken is dropped. The state is `closed` afterwards.
    void Close();

    /// Hands bytes to the system. Failure: not connected.
    void SendData(std::string_view bytes);

    /// The next received byte. Failure: there is none.
    [[nodiscard]] u8 GetData();

    /// Bytes have arrived, `bytesTotal` of them are there to be taken. What a handler leaves is dropped.
    void on_data_arrival(std::function<void(i32 bytesTotal)> handler) { data_arrival_ = std::move(handler); }
    /// All that was given to `SendData` has been handed over; may come from within `SendData`.
    void on_send_complete(std::function<void()> handler) { send_complete_ = std::move(handler); }
    void on_error(std::function<void()> handler) { error_ = std::move(handler); }

    struct connection; ///< the platform's own

  private:
    std::function<void(i32)> data_arrival_;
    std::function<void()> send_complete_;
    std::function<void()> error_;
    std::unique_ptr<connection> connection_;
};

} // namespace tyxo
