// The TCP client socket in a simulation, at its other end the scripted controller.

#include "platform/winsock.h"

#include "basics/failure.h"
#include "platform/debug_output.h"
#include "platform/simulation.h"

#include <utility>

namespace tyxo {

struct Winsock::connection {
    Winsock& socket;
    std::string host;
    i32 port = 0;
    i16 state = socket_state::closed;
    int number = 0; ///< counts connections: what an earlier one had under way gets lost
    std::string received;

    void restart(i16 new_state) {
        state = new_state;
        ++number;
        received.clear();
    }

    /// Something happens to this connection, unless it is another one by then.
    void later(std::int64_t ms, std::function<void()> event) {
        simulation::after(ms, [this, which = number, event = std::move(event)] {
            if (which == number) event();
        });
    }

    /// A failed handler is given up, as on the desktop.
    template <class... Argument>
    static void fire(const std::function<void(Argument...)>& handler, Argument... argument) {
        if (!handler) return;
        if (const auto why = attempt([&] { handler(argument...); })) debug_output(*why);
    }

    void fail() {
        restart(socket_state::error);
        fire(socket.error_);
    }
    void handed_over() { fire(socket.send_complete_); }
    void arrive(std::string_view bytes) {
        if (state != socket_state::connected || bytes.empty()) return;
        received.assign(bytes.rbegin(), bytes.rend());
        fire(socket.data_arrival_, static_cast<i32>(bytes.size()));
        received.clear();
    }
    void peer_closes() {
        if (state == socket_state::connected) restart(socket_state::closing);
    }
    void breaks() {
        if (state == socket_state::connected) fail();
    }
};

namespace {

[[noreturn]] void wrong_state() {
    throw failure("Wrong protocol or connection state for the requested transaction or request");
}

/// The system has one socket.
Winsock::connection*& only_connection() {
    static Winsock::connection* the_connection = nullptr;
    return the_connection;
}

} // namespace

Winsock::Winsock() : connection_(new connection{*this, {}, 0, socket_state::closed, 0, {}}) {
    only_connection() = connection_.get();
}

Winsock::~Winsock() {
    only_connection() = nullptr;
}

i16 Winsock::State() const {
    return connection_->state;
}

void Winsock::RemoteHost(std::string_view host) {
    connection_->host = host;
}

void Winsock::RemotePort(i32 port) {
    connection_->port = port;
}

void Winsock::Connect() {
    using simulation::connecting;
    connection& line = *connection_;
    if (line.state != socket_state::closed) wrong_state();
    line.restart(socket_state::connecting);
    simulation::controller& peer = simulation::world().plant;
    peer.attempts.push_back({simulation::world().now_ms, line.host, line.port});
    line.later(attempt_limit, [&line] {
        if (line.state == socket_state::connecting) line.fail();
    });
    if (line.host.empty() || line.port < 0 || line.port > 65535)
        line.later(0, [&line] { line.fail(); });
    else if (peer.connects == connecting::accepted)
        line.later(peer.connect_ms, [&line] { line.state = socket_state::connected; });
    else if (peer.connects != connecting::unanswered)
        line.later(peer.connect_ms, [&line] { line.fail(); });
}

void Winsock::Close() {
    connection_->restart(socket_state::closed);
}

void Winsock::SendData(std::string_view bytes) {
    connection& line = *connection_;
    if (line.state != socket_state::connected) wrong_state();
    simulation::controller& peer = simulation::world().plant;
    if (peer.refuses_data) {
        line.restart(socket_state::error);
        throw failure("Connection is aborted due to timeout or other failure");
    }
    peer.frames.push_back({simulation::world().now_ms, std::string(bytes)});
    if (peer.handover_ms) line.later(*peer.handover_ms, [&line] { line.handed_over(); });
    const simulation::reply reply = peer.answers(peer.frames.back().bytes);
    std::int64_t ms = 0;
    for (const simulation::piece& piece : reply.pieces) {
        ms += piece.after_ms;
        line.later(ms, [&line, data = piece.bytes] { line.arrive(data); });
    }
    if (reply.closes) line.later(ms, [&line] { line.peer_closes(); });
}

u8 Winsock::GetData() {
    std::string& waiting = connection_->received; // the next byte is the last
    if (waiting.empty()) wrong_state();
    const char byte = waiting.back();
    waiting.pop_back();
    return static_cast<u8>(byte);
}

namespace simulation {

std::string right_answer(std::string_view frame) {
    std::string answer(frame.substr(0, 8));
    if (frame[7] == 16) {
        answer[5] = 6;
        answer += frame.substr(8, 4);
        return answer;
    }
    const int count = static_cast<u8>(frame[11]);
    answer[5] = static_cast<char>(3 + 2 * count);
    answer += static_cast<char>(2 * count);
    for (int value = 0; value < count; ++value) {
        answer += '\0';
        answer += static_cast<char>(value);
    }
    return answer;
}

reply answered(std::string_view frame, std::int64_t after_ms) {
    return {{{after_ms, right_answer(frame)}}, false};
}

void controller_sends(std::string_view bytes) {
    only_connection()->arrive(bytes);
}

void controller_closes() {
    only_connection()->peer_closes();
}

void connection_breaks() {
    only_connection()->breaks();
}

} // namespace simulation
} // namespace tyxo
