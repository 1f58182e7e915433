#pragma once
// A TCP server on this machine and a socket of the system, both with a memory.

#include "platform/winsock.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

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

/// A port that nobody listens on.
inline quint16 closed_port() {
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

} // namespace tyxo
