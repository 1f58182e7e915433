#pragma once
// The plant controller of a simulated machine: it does with connections and frames what the test wants, and
// remembers what it saw. All on the machine's virtual clock.

#include "basics/types.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo::simulation {

/// What becomes of a connection.
enum class connecting {
    accepted,
    refused,
    unanswered,   ///< nobody says a word until the socket gives up
    unknown_host, ///< the name cannot be found
};

/// Bytes that arrive as one event.
struct piece {
    std::int64_t after_ms = 0; ///< from the frame, or from the piece before
    std::string bytes;
};

/// What the controller does about a frame.
struct reply {
    std::vector<piece> pieces;
    bool closes = false; ///< behind the last piece
};

/// A frame that the system sent.
struct sent_frame {
    std::int64_t ms = 0;
    std::string bytes;
};

/// An attempt of the system to connect.
struct attempt_seen {
    std::int64_t ms = 0;
    std::string host;
    i32 port = 0;
};

/// The answer to a frame as it should be: a confirmed write, or registers that hold 0, 1, 2, ...
[[nodiscard]] std::string right_answer(std::string_view frame);

/// That answer after some time.
[[nodiscard]] reply answered(std::string_view frame, std::int64_t after_ms = 5);

struct controller {
    connecting connects = connecting::accepted;
    std::int64_t connect_ms = 5; ///< from the attempt to its end
    std::function<reply(const std::string& frame)> answers = [](const std::string& frame) {
        return answered(frame);
    };
    std::optional<std::int64_t> handover_ms = 0; ///< from a frame to its "sent"; nothing: that never comes
    bool refuses_data = false;                   ///< the socket breaks while it is given a frame

    std::vector<attempt_seen> attempts;
    std::vector<sent_frame> frames;
};

/// Bytes arrive that answer nothing; without a connection they are lost.
void controller_sends(std::string_view bytes);

/// The controller closes the connection.
void controller_closes();

/// The connection breaks, as when a switch loses its power and the system notices.
void connection_breaks();

} // namespace tyxo::simulation
