#pragma once
// A pseudo-terminal in the place of a serial line, and a port that listens to it.

#include "platform/mscomm.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <fcntl.h>
#include <stdlib.h>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace tyxo {

/// The far end of a line; its near end is linked as a port of the working directory.
class serial_line {
  public:
    explicit serial_line(int port_number)
        : port_number_(port_number), master_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
        if (::grantpt(master_) != 0 || ::unlockpt(master_) != 0) qFatal("no pseudo-terminal");
        link_as(port_number);
    }
    /// The link of a port leads to this line from now on.
    void link_as(int port_number) const {
        QDir().mkpath("ports");
        QFile::remove(link_of(port_number));
        QFile::link(::ptsname(master_), link_of(port_number));
    }
    ~serial_line() { vanish(); }
    serial_line(const serial_line&) = delete;
    serial_line& operator=(const serial_line&) = delete;

    void send(std::string_view bytes) const {
        QCOMPARE(::write(master_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    [[nodiscard]] std::string received() const {
        std::string bytes(1000, ' ');
        const ssize_t length = ::read(master_, bytes.data(), bytes.size());
        bytes.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
        return bytes;
    }
    /// Everything received since the line was made: what the other end sends comes a moment later.
    [[nodiscard]] const std::string& all_received() { return all_ += received(); }
    void vanish() {
        if (master_ < 0) return;
        QFile::remove(link_of(port_number_)); // first: the device's number may be somebody else's at once
        ::close(master_);
        master_ = -1;
    }

  private:
    static QString link_of(int port_number) { return QString("ports/COM%1").arg(port_number); }

    int port_number_;
    int master_;
    std::string all_;
};

/// An open port that keeps what it receives.
struct listener {
    MSComm port;
    std::string bytes;
    std::vector<i32> events;

    listener() {
        port.on_comm([this] {
            events.push_back(port.CommEvent());
            if (port.CommEvent() != comm_event::receive) return;
            std::string chunk;
            port.Input(chunk);
            bytes += chunk;
        });
    }
    void open(i16 number = 7) {
        port.CommPort(number);
        port.Settings("38400,n,8,1");
        port.PortOpen(true);
        port.InBufferCount(0);
        port.OutBufferCount(0);
        port.InputMode(1);
        port.RTSEnable(false);
        port.RThreshold(1);
        port.SThreshold(1);
        port.Handshaking(0);
    }
};

} // namespace tyxo
