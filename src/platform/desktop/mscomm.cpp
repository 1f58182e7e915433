#include "platform/mscomm.h"

#include "basics/failure.h"
#include "basics/number_text.h"
#include "platform/debug_output.h"
#include "platform/desktop/handlers.h"
#include "platform/desktop/open_ports.h"
#include "platform/desktop/port_nodes.h"
#include "platform/desktop/serial_device.h"

#include <QDeadlineTimer>
#include <QSerialPort>
#include <QTimer>

#include <algorithm>
#include <vector>

namespace tyxo {

namespace {

constexpr qint64 receive_buffer =
    65536;                          // bytes that wait at most while nobody takes them: 17 s of a full line
constexpr int close_wait = 1000;    // ms for bytes that still wait when ports close
constexpr int look_interval = 1000; // ms between two looks for a vanished device
constexpr int looks_at_return = 10; // so many seconds without another error, and a return is told

std::vector<MSComm::state*>& all_ports() {
    static auto* const ports = new std::vector<MSComm::state*>; // outlives the ports, which are global too
    return *ports;
}

} // namespace

struct MSComm::state {
    std::unique_ptr<QSerialPort> port; // made at first use, when the application exists
    std::unique_ptr<QTimer> watch;     // looks for a vanished device, and for a while after its return
    bool open = false;                 // as the system sees it
    bool dead = false;                 // the device vanished while the port was open
    i16 number = 0;
    std::string path; // the link or node through which the port was opened
    std::string settings;
    bool rts = true;
    bool receive_events = false;
    bool send_events = false;
    i32 event = 0;
    std::function<void()> handler;
    int looks = 0;       // since the device came back; its return is not told while it may be gone again
    std::string refused; // what was told last of a device that is back and does not open

    [[nodiscard]] QSerialPort& device() {
        if (!port) make_device();
        return *port;
    }

    void make_device() {
        port = std::make_unique<QSerialPort>();
        port->setReadBufferSize(receive_buffer);
        QObject::connect(port.get(), &QSerialPort::readyRead, [this] { receive(); });
        QObject::connect(port.get(), &QSerialPort::bytesWritten, [this] {
            if (send_events && port->bytesToWrite() == 0) fire(comm_event::send_buffer_low);
        });
        QObject::connect(port.get(), &QSerialPort::errorOccurred, [this](QSerialPort::SerialPortError error) {
            if (error == QSerialPort::ResourceError || error == QSerialPort::ReadError) give_up();
        });
        watch = std::make_unique<QTimer>();
        QObject::connect(watch.get(), &QTimer::timeout, [this] { look(); });
    }

    [[nodiscard]] std::string name() const { return "COM" + plain(number); }

    /// The device is gone. Its end-of-file would be reported without end, so nobody listens to it any more.
    void give_up() {
        if (!open || dead) return;
        dead = true;
        if (!watch->isActive()) debug_output(name() + ": device vanished");
        watch->start(look_interval);
        QTimer::singleShot(0, port.get(), [this] {
            if (dead && port->isOpen()) port->close();
        });
    }

    void look() {
        if (dead) {
            look_for_return();
        } else if (++looks == looks_at_return) {
            watch->stop();
            debug_output(name() + ": device is back");
        }
    }

    /// Opens the device again when it stands where it stood. For the system the port was open all the time.
    void look_for_return() {
        const auto found = desktop::device_of(path);
        if (!found || held_by_another(*found)) return;
        if (const auto no = desktop::open_device(*port, number, *found)) {
            if (no->line != refused) debug_output(no->line);
            refused = no->line;
            return;
        }
        port->clear();
        port->setRequestToSend(rts);
        dead = false;
        looks = 0;
        refused.clear();
    }

    /// A name may lead elsewhere than before: two channels never share a device.
    [[nodiscard]] bool held_by_another(const std::string& found) const {
        return std::ranges::any_of(all_ports(), [&](const state* other) {
            return other != this && other->open && !other->dead && desktop::stands_on(*other->port, found);
        });
    }

    void receive() {
        if (receive_events && !dead && port->bytesAvailable() > 0) fire(comm_event::receive);
    }

    void fire(i32 kind) {
        if (!open || desktop::events_held() || !handler) return;
        static bool serving = false; // one event at a time, of all ports
        if (serving) {
            QTimer::singleShot(0, port.get(), [this, kind] { fire_again(kind); });
            return;
        }
        serving = true;
        event = kind;
        desktop::run_handler(desktop::source::port, handler);
        serving = false;
    }

    void fire_again(i32 kind) {
        if (kind == comm_event::receive) {
            receive();
        } else {
            fire(kind);
        }
    }

    void open_device() {
        const auto found = desktop::path_of(number);
        const auto target = found ? desktop::device_of(*found) : std::nullopt;
        if (!target) throw failure(name() + ": no such device");
        desktop::apply_settings(device(), settings);
        if (const auto no = desktop::open_device(device(), number, *target)) {
            debug_output(no->line);
            throw failure(no->why);
        }
        path = *found;
        refused.clear();
        dead = false;
        open = true;
    }

    void close_device(const QDeadlineTimer& end) {
        open = false; // no event from here on, though the line goes on
        watch->stop();
        if (!port->isOpen()) return;
        if (!dead && !desktop::drain(*port, end))
            debug_output(name() + ": the line does not take what is sent");
        port->close();
    }

    void require_open() const {
        if (!open) throw failure("The port is not open");
    }
    void require_device() const {
        require_open();
        if (dead) throw failure("Device unavailable");
    }
};

MSComm::MSComm() : state_(std::make_unique<state>()) {
    all_ports().push_back(state_.get());
}
MSComm::~MSComm() {
    state_->open = false; // its device has nothing more to say
    std::erase(all_ports(), state_.get());
}

bool MSComm::PortOpen() const {
    return state_->open;
}

void MSComm::PortOpen(bool open) {
    if (open == state_->open) return;
    if (open) {
        state_->open_device();
    } else {
        state_->close_device(QDeadlineTimer(close_wait));
    }
}

void MSComm::CommPort(i16 number) {
    if (number <= 0) throw failure("Invalid port number");
    if (state_->open) throw failure("The port is open");
    state_->number = number;
}

void MSComm::Settings(std::string_view text) {
    state_->settings = text;
}

void MSComm::InBufferCount(i32 /*zero*/) {
    state_->require_device();
    state_->port->clear(QSerialPort::Input);
}

void MSComm::OutBufferCount(i32 /*zero*/) {
    state_->require_device();
    state_->port->clear(QSerialPort::Output);
}

void MSComm::InputMode(i32 /*mode*/) {} // bytes always come as they are

void MSComm::RTSEnable(bool on) {
    state_->rts = on;
    // The answer does not matter: pseudo-terminals and some adapters have no modem lines.
    if (state_->open && !state_->dead) state_->port->setRequestToSend(on);
}

void MSComm::RThreshold(i32 bytes) {
    state_->receive_events = bytes > 0;
}
void MSComm::SThreshold(i32 bytes) {
    state_->send_events = bytes > 0;
}

void MSComm::Handshaking(i32 kind) {
    state_->require_device();
    state_->port->setFlowControl(kind == 0 ? QSerialPort::NoFlowControl : QSerialPort::HardwareControl);
}

void MSComm::Output(std::string_view text) {
    state_->require_device();
    const auto length = static_cast<qint64>(text.size());
    if (state_->port->write(text.data(), length) != length)
        throw failure(state_->port->errorString().toStdString());
}

void MSComm::Input(std::string& chunk) {
    state_->require_open();
    chunk.resize(static_cast<std::size_t>(std::max<qint64>(0, state_->port->bytesAvailable())));
    const qint64 taken = state_->port->read(chunk.data(), static_cast<qint64>(chunk.size()));
    chunk.resize(static_cast<std::size_t>(std::max<qint64>(0, taken)));
}

i32 MSComm::CommEvent() const {
    return state_->event;
}
void MSComm::on_comm(std::function<void()> handler) {
    state_->handler = std::move(handler);
}

void desktop::deliver_waiting_bytes() {
    for (MSComm::state* port : all_ports()) {
        if (port->open) port->receive();
    }
}

void desktop::close_ports() {
    const QDeadlineTimer end(close_wait);
    for (MSComm::state* port : all_ports()) {
        if (port->open) port->close_device(end);
    }
}

} // namespace tyxo
