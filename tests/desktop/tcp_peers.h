#pragma once
// A TCP server on this machine and a socket of the system, both with a memory.

#include "platform/winsock.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string_view>
#include <vector>

namespace tyxo {

/// A server that keeps what it receives.
class controller {
  public:
    controller() {
        if (!server_.listen(QHostAddress::LocalHost)) qFatal("no port to listen on");
        QObject::connect(&server_, &QTcpServer::newConnection, [this] {
            while (QTcpSocket* const next = server_.nextPendingConnection())
                peers.push_back(next);
        });
    }

    [[nodiscard]] quint16 port() const { return server_.serverPort(); }
    [[nodiscard]] QTcpSocket& peer() const { return *peers.back(); }
    void stop_listening() { server_.close(); }

    std::vector<QTcpSocket*> peers; // they belong to the server

  private:
    QTcpServer server_;
};

/// A socket that keeps its events.
struct client {
    Winsock socket;
    QByteArrayList arrivals;
    int sent = 0;
    int errors = 0;
    bool takes = true;

    client() {
        socket.on_data_arrival([this](i32 bytes) {
            QByteArray taken;
            for (i32 index = 0; takes && index < bytes; ++index)
                taken += static_cast<char>(socket.GetData());
            arrivals << taken;
        });
        socket.on_send_complete([this] { ++sent; });
        socket.on_error([this] { ++errors; });
    }
    void dial(std::string_view host, i32 port) {
        socket.RemoteHost(host);
        socket.RemotePort(port);
        socket.Connect();
    }
    [[nodiscard]] QByteArray all() const { return arrivals.join(); }
};

/// A client that is connected to a controller.
struct conversation {
    controller server;
    client self;

    conversation() {
        self.dial("127.0.0.1", server.port());
        if (!QTest::qWaitFor(
                [this] { return self.socket.State() == socket_state::connected && !server.peers.empty(); }))
            qFatal("no connection");
    }
};

/// A port that takes no more connections and says nothing about it, like a host that is not there: its queue
/// is full.
class silent_host {
  public:
    silent_host() : node_(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0)) {
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof place;
        auto* const address = reinterpret_cast<sockaddr*>(&place);
        if (::bind(node_, address, length) != 0 || ::listen(node_, 0) != 0 ||
            ::getsockname(node_, address, &length) != 0)
            qFatal("no port to listen on");
        port_ = ntohs(place.sin_port);
        fill_.connectToHost(QHostAddress::LocalHost, port_);
        if (!fill_.waitForConnected()) qFatal("no connection to fill the queue with");
    }
    ~silent_host() { ::close(node_); }
    silent_host(const silent_host&) = delete;
    silent_host& operator=(const silent_host&) = delete;

    [[nodiscard]] quint16 port() const { return port_; }

    /// Takes the connections that wait, as a host does that comes back. How many there were.
    [[nodiscard]] int accept_all() const {
        int taken = 0;
        for (int peer = 0; (peer = ::accept4(node_, nullptr, nullptr, SOCK_NONBLOCK)) >= 0; ++taken)
            ::close(peer);
        return taken;
    }

  private:
    int node_;
    quint16 port_ = 0;
    QTcpSocket fill_;
};

/// A port that nobody listens on.
inline quint16 closed_port() {
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

} // namespace tyxo
