#include "platform/mscomm.h"

#include "basics/failure.h"
#include "basics/number_text.h"
#include "platform/debug_output.h"
#include "platform/desktop/handlers.h"
#include "platform/desktop/port_nodes.h"

#include <QSerialPort>
#include <QTimer>

#include <algorithm>
#include <vector>

namespace tyxo {

namespace {

constexpr qint64 receive_buffer =
    65536;                       // bytes that wait at most while nobody takes them: 17 s of a full line
constexpr int close_wait = 1000; // ms for bytes that still wait when the port closes

std::vector<MSComm::state*>& all_ports() {
    static auto* const ports = new std::vector<MSComm::state*>; // outlives the ports, which are global too
    return *ports;
}

std::string_view field(std::string_view text, int index) {
    for (; index > 0; --index)
        text.remove_prefix(std::min(text.find(',') + 1, text.size()));
    return text.substr(0, text.find(','));
}

} // namespace

struct MSComm::state {
    std::unique_ptr<QSerialPort> port; // made at first use, when the application exists
    bool open = false;                 // as the system sees it
    bool dead = false;                 // the device vanished while the port was open
    i16 number = 0;
    std::string settings;
    bool receive_events = false;
    bool send_events = false;
    i32 event = 0;
    std::function<void()> handler;

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
    }

    /// The device is gone. Its end-of-file would be reported without end, so nobody listens to it any more.
    void give_up() {
        if (!open || dead) return;
        dead = true;
        debug_output("COM" + plain(number) + ": device vanished");
        QTimer::singleShot(0, port.get(), [this] {
            if (dead) port->close();
        });
    }

    void receive() {
        if (open && receive_events && !dead && port->bytesAvailable() > 0) fire(comm_event::receive);
    }

    void fire(i32 kind) {
        if (desktop::events_held() || !handler) return;
        static bool serving = false; // one event at a time, of all ports
        if (serving) {
            QTimer::singleShot(0, port.get(), [this, kind] { fire_again(kind); });
            return;
        }
        serving = true;
        event = kind;
        desktop::run_handler(desktop::source::device, handler);
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
        const auto path = desktop::device_of(number);
        if (!path) throw failure("COM" + plain(number) + ": no such device");
        if (const auto why = desktop::missing_right(number, *path)) {
            debug_output(*why);
            throw failure("Permission denied");
        }
        apply_settings();
        device().setPortName(QString::fromStdString(*path));
        if (!device().open(QIODevice::ReadWrite)) {
            const std::string why = device().errorString().toStdString();
            debug_output("COM" + plain(number) + " (" + *path + "): " + why);
            throw failure(why);
        }
        dead = false;
        open = true;
    }

    void apply_settings() {
        constexpr std::string_view parities = "neoms";
        constexpr std::array<QSerialPort::Parity, 5> parity{QSerialPort::NoParity, QSerialPort::EvenParity,
                                                            QSerialPort::OddParity, QSerialPort::MarkParity,
                                                            QSerialPort::SpaceParity};
        const auto letter = parities.find(field(settings, 1));
        device().setBaudRate(static_cast<qint32>(leading_number(field(settings, 0))));
        if (letter < parity.size()) device().setParity(parity[letter]);
        device().setDataBits(static_cast<QSerialPort::DataBits>(leading_number(field(settings, 2))));
        device().setStopBits(static_cast<QSerialPort::StopBits>(leading_number(field(settings, 3))));
    }

    void close_device() {
        if (!dead && port->bytesToWrite() > 0) port->waitForBytesWritten(close_wait);
        open = false;
        if (port->isOpen()) port->close();
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
        state_->close_device();
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

} // namespace tyxo
