// The TCP client socket on Qt.
//
// Every connection has a QTcpSocket of its own. `Close` takes it out of use and leaves its deletion to the
// event loop, so that a handler may close, and connect again, inside an event of the old one, and no late
// event of the old one reaches the new one.

#include "platform/winsock.h"

#include "basics/failure.h"
#include "platform/desktop/handlers.h"
#include "platform/desktop/text.h"

#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>
#include <array>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <string>
#include <sys/socket.h>

namespace tyxo {

namespace {

constexpr i32 greatest_port = 65535;

// A peer that sends without end is slowed down to this by TCP itself: what is not read fills its window.
constexpr qint64 socket_receive_buffer = 16384; // bytes
constexpr int burst = 16;                       // data events that may follow each other at once,
constexpr int burst_time = 250;                 // and the ms in which there may be no more of them

constexpr qint64 send_limit = 65536; // bytes that wait at most while the peer takes none

constexpr int held_wait = 20; // ms until held events are tried again

// A peer that vanished without a word is noticed within two minutes, whether the line was quiet or data was
// on its way to it.
constexpr int silence = 60;        // s before the first probe
constexpr int probe_distance = 10; // s
constexpr int probes = 6;
constexpr int unacknowledged = 120'000; // ms

void set_option(qintptr node, int option, int value) {
    // A system without the option has its own times.
    static_cast<void>(::setsockopt(static_cast<int>(node), IPPROTO_TCP, option, &value, sizeof value));
}

/// Gives the system what it takes at once, past the socket's buffer, which would ask for an event and be
/// woken by it. An error is left for the socket to find.
qint64 sent_at_once(QTcpSocket& socket, std::string_view bytes) {
    if (socket.bytesToWrite() > 0) return 0;
    const auto node = static_cast<int>(socket.socketDescriptor());
    return std::max<qint64>(::send(node, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT), 0);
}

} // namespace

struct Winsock::connection {
    explicit connection(Winsock& winsock) : owner(winsock) {}

    Winsock& owner;
    std::unique_ptr<QTcpSocket> socket; // from `Connect` to `Close`
    i16 state = socket_state::closed;
    std::string host;
    i32 port = 0;
    std::string inbox; // what the running data event may take
    std::size_t taken = 0;
    bool delivering = false; // a data event runs
    bool resting = false;    // the next data event waits for its time
    int events = 0;          // data events since `burst_start`
    QElapsedTimer burst_start;

    void open() {
        socket = std::make_unique<QTcpSocket>();
        socket->setProxy(QNetworkProxy::NoProxy);
        socket->setReadBufferSize(socket_receive_buffer);
        const auto on = [this](auto signal, auto action) {
            QObject::connect(socket.get(), signal, socket.get(), action);
        };
        on(&QTcpSocket::connected, [this] { connected(); });
        on(&QTcpSocket::readyRead, [this] { deliver(); });
        on(&QTcpSocket::bytesWritten, [this] {
            if (socket->bytesToWrite() == 0) fire(owner.send_complete_);
        });
        on(&QTcpSocket::errorOccurred, [this](QAbstractSocket::SocketError why) { failed(why); });
        const QString name = qt_text(host).trimmed();
        state = socket_state::connecting;
        if (name.isEmpty() || port < 0 || port > greatest_port) {
            give_up();
            return;
        }
        socket->connectToHost(name, static_cast<quint16>(port));
        later(attempt_limit, [this] {
            if (state != socket_state::connecting) return;
            socket->abort();
            give_up();
        });
    }

    void close() {
        state = socket_state::closed;
        inbox.clear();
        taken = 0;
        resting = false;
        if (!socket) return;
        QTcpSocket* const old = socket.release();
        old->disconnect();
        old->abort();
        old->deleteLater();
    }

    void connected() {
        state = socket_state::connected;
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        socket->setSocketOption(QAbstractSocket::KeepAliveOption, 1);
        set_option(socket->socketDescriptor(), TCP_KEEPIDLE, silence);
        set_option(socket->socketDescriptor(), TCP_KEEPINTVL, probe_distance);
        set_option(socket->socketDescriptor(), TCP_KEEPCNT, probes);
        set_option(socket->socketDescriptor(), TCP_USER_TIMEOUT, unacknowledged);
    }

    void failed(QAbstractSocket::SocketError why) {
        if (why == QAbstractSocket::RemoteHostClosedError) {
            state = socket_state::closing; // no error; what it sent before is still delivered
        } else if (state == socket_state::connecting || state == socket_state::connected) {
            give_up();
        }
    }

    void give_up() {
        state = socket_state::error;
        later(0, [this] { fire(owner.error_); });
    }

    /// Runs an action from the event loop unless the connection has been closed by then.
    template <class Action> void later(int milliseconds, Action action) {
        // The socket outlives its closing by a while.
        QTcpSocket* const mine = socket.get();
        QTimer::singleShot(milliseconds, mine, [this, mine, action] {
            if (socket.get() == mine) action();
        });
    }

    /// An event of the socket. It waits while events are held.
    void fire(const std::function<void()>& handler) {
        if (!handler) return;
        if (desktop::events_held()) {
            later(held_wait, [this, &handler] { fire(handler); });
            return;
        }
        desktop::run_handler(desktop::source::device, handler);
    }

    /// How many ms the next data event has to wait, so that a flood leaves time for everything else.
    [[nodiscard]] int rest() {
        if (desktop::events_held()) return held_wait;
        const qint64 passed = burst_start.isValid() ? burst_start.elapsed() : burst_time;
        if (passed >= burst_time) {
            burst_start.start();
            events = 0;
        }
        return events < burst ? 0 : burst_time - static_cast<int>(passed);
    }

    void deliver() {
        if (delivering || resting || socket->bytesAvailable() == 0) return;
        if (const int wait = rest(); wait > 0) {
            resting = true;
            later(wait, [this] {
                resting = false;
                deliver();
            });
            return;
        }
        ++events;
        run_data_event();
        // What arrived while the event ran got no event of its own.
        if (socket && socket->bytesAvailable() > 0) later(0, [this] { deliver(); });
    }

    void run_data_event() {
        inbox = socket->readAll().toStdString();
        taken = 0;
        delivering = true;
        const auto length = static_cast<i32>(inbox.size()); // bounded by the buffer
        if (owner.data_arrival_)
            desktop::run_handler(desktop::source::device, [this, length] { owner.data_arrival_(length); });
        delivering = false;
        inbox.clear();
        taken = 0;
    }
};

Winsock::Winsock() : connection_(std::make_unique<connection>(*this)) {}
Winsock::~Winsock() = default;

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
    if (State() != socket_state::closed) throw failure("Invalid operation at current state");
    connection_->open();
}

void Winsock::Close() {
    connection_->close();
}

void Winsock::SendData(std::string_view bytes) {
    if (State() != socket_state::connected)
        throw failure("Wrong protocol or connection state for the requested transaction or request");
    QTcpSocket& socket = *connection_->socket;
    const auto length = static_cast<qint64>(bytes.size());
    if (socket.bytesToWrite() + length > send_limit) throw failure("No buffer space is available");
    connection_->events = 0; // answers to what was asked are no flood
    const qint64 sent = sent_at_once(socket, bytes);
    if (sent == length) {
        connection_->fire(send_complete_);
    } else if (socket.write(bytes.data() + sent, length - sent) != length - sent) {
        throw failure(socket.errorString().toStdString());
    }
}

u8 Winsock::GetData() {
    connection& from = *connection_;
    if (from.taken >= from.inbox.size()) throw failure("There is no data to be taken");
    return static_cast<u8>(from.inbox[from.taken++]);
}

} // namespace tyxo
