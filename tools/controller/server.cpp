#include "server.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace tyxo::controller_sim {

namespace {

double now() {
    using namespace std::chrono;
    static const steady_clock::time_point start = steady_clock::now();
    return duration<double>(steady_clock::now() - start).count();
}

[[noreturn]] void cannot(const std::string& what) {
    throw std::runtime_error(what + ": " + std::strerror(errno));
}

timespec as_time(double seconds) {
    const auto whole = static_cast<time_t>(seconds);
    return {whole, static_cast<long>((seconds - static_cast<double>(whole)) * 1e9)};
}

sockaddr_in local_address(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

} // namespace

void Descriptor::close() {
    if (number_ >= 0) ::close(number_);
    number_ = -1;
}

Server::Server(int port, Events events) : events_(std::move(events)), port_(port), image_(registers) {
    listen();
}

bool Server::try_to_listen(int port) {
    Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!socket.open()) cannot("no socket");
    const int on = 1;
    ::setsockopt(socket.number(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    const sockaddr_in address = local_address(port);
    if (::bind(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(socket.number(), 16) != 0)
        return false;
    port_ = port;
    listener_ = std::move(socket);
    return true;
}

void Server::listen() {
    if (listener_.open()) return;
    if (port_ != 0) {
        if (!try_to_listen(port_)) cannot("cannot listen on port " + std::to_string(port_));
        return;
    }
    std::mt19937 dice{std::random_device{}()};
    std::uniform_int_distribution<int> any(lowest_free_port, highest_free_port);
    for (int attempt = 0; attempt < 1000; ++attempt)
        if (try_to_listen(any(dice))) return;
    cannot("no free port");
}

void Server::close_connections() {
    for (Connection& connection : connections_)
        connection.broken = true;
    drop_broken();
}

void Server::accept_connections() {
    for (;;) {
        Descriptor socket(::accept4(listener_.number(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
        if (!socket.open()) return;
        if (connections_.size() >= most_connections) {
            events_.say("error: too many connections, one turned away");
            continue;
        }
        const int on = 1;
        ::setsockopt(socket.number(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        connections_.push_back({std::move(socket), ++connections_so_far_, "", {}, false});
        events_.say("connection " + std::to_string(connections_so_far_) + " opened");
    }
}

void Server::take_requests(Connection& connection) {
    try {
        while (auto frame = take_frame(connection.received)) {
            std::vector<Piece> pieces;
            events_.request(answer_to(*frame, image_, behaviour_, chance_, pieces));
            double due = std::max(now(), connection.answers.empty() ? 0 : connection.answers.back().due);
            for (Piece& piece : pieces) {
                due += piece.delay;
                connection.answers.push_back({std::move(piece.bytes), due});
            }
        }
    } catch (const BrokenStream& broken) {
        events_.say("connection " + std::to_string(connection.number) + " sent " + broken.why);
        connection.broken = true;
    }
}

void Server::receive(Connection& connection) {
    char bytes[4096];
    const ssize_t count = ::recv(connection.socket.number(), bytes, sizeof bytes, 0);
    if (count > 0) {
        connection.received.append(bytes, static_cast<std::size_t>(count));
        take_requests(connection);
    } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
        connection.broken = true;
    }
    std::size_t unread = 0;
    for (const Waiting& answer : connection.answers)
        unread += answer.bytes.size();
    if (unread > longest_backlog) connection.broken = true;
}

void Server::send_due(Connection& connection, double time) {
    while (!connection.broken && !connection.answers.empty() && connection.answers.front().due <= time) {
        std::string& bytes = connection.answers.front().bytes;
        const ssize_t count = ::send(connection.socket.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
        if (count < 0)
            connection.broken = true;
        else if (static_cast<std::size_t>(count) < bytes.size())
            bytes.erase(0, static_cast<std::size_t>(count));
        else
            connection.answers.pop_front();
    }
}

void Server::drop_broken() {
    std::erase_if(connections_, [this](const Connection& connection) {
        if (connection.broken) events_.say("connection " + std::to_string(connection.number) + " closed");
        return connection.broken;
    });
}

double Server::next_answer(double time, double latest) const {
    for (const Connection& connection : connections_)
        if (!connection.answers.empty() && connection.answers.front().due > time)
            latest = std::min(latest, connection.answers.front().due);
    return latest;
}

bool Server::serve(double seconds, int input) {
    const double end = now() + seconds;
    for (;;) {
        double time = now();
        std::vector<pollfd> watched{{input, POLLIN, 0}, {listener_.number(), POLLIN, 0}};
        for (Connection& connection : connections_) {
            const bool stuck = !connection.answers.empty() && connection.answers.front().due <= time;
            watched.push_back(
                {connection.socket.number(), static_cast<short>(stuck ? POLLIN | POLLOUT : POLLIN), 0});
        }
        const timespec limit = as_time(std::max(0.0, next_answer(time, end) - time));
        const int ready = ::ppoll(watched.data(), watched.size(), &limit, nullptr);
        if (ready > 0)
            for (std::size_t i = 0; i < connections_.size(); ++i)
                if ((watched[i + 2].revents & ~POLLOUT) != 0) receive(connections_[i]);
        if (ready > 0 && watched[1].revents != 0) accept_connections();
        time = now();
        for (Connection& connection : connections_)
            send_due(connection, time);
        drop_broken();
        if (ready > 0 && watched[0].revents != 0) return true;
        if (time >= end || (ready < 0 && errno == EINTR)) return false;
    }
}

} // namespace tyxo::controller_sim
