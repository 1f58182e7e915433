#include "platform/desktop/serial_device.h"

#include "basics/number_text.h"
#include "platform/desktop/port_nodes.h"

#include <QThread>

#include <algorithm>
#include <array>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>

namespace tyxo::desktop {

namespace {

std::string_view field(std::string_view text, int index) {
    for (; index > 0; --index)
        text.remove_prefix(std::min(text.find(',') + 1, text.size()));
    return text.substr(0, text.find(','));
}

/// Bytes that the system has taken and the device has not.
int waiting_bytes(QSerialPort& port) {
    int waiting = 0;
    return ::ioctl(port.handle(), TIOCOUTQ, &waiting) == 0 ? waiting : 0;
}

} // namespace

void apply_settings(QSerialPort& port, std::string_view text) {
    constexpr std::string_view parities = "neoms";
    constexpr std::array<QSerialPort::Parity, 5> parity{QSerialPort::NoParity, QSerialPort::EvenParity,
                                                        QSerialPort::OddParity, QSerialPort::MarkParity,
                                                        QSerialPort::SpaceParity};
    const auto letter = parities.find(field(text, 1));
    port.setBaudRate(static_cast<qint32>(leading_number(field(text, 0))));
    if (letter < parity.size()) port.setParity(parity[letter]);
    port.setDataBits(static_cast<QSerialPort::DataBits>(leading_number(field(text, 2))));
    port.setStopBits(static_cast<QSerialPort::StopBits>(leading_number(field(text, 3))));
}

std::optional<refusal> open_device(QSerialPort& port, int number, const std::string& device) {
    if (const auto line = missing_right(number, device)) return refusal{"Permission denied", *line};
    port.setPortName(QString::fromStdString(device));
    if (port.open(QIODevice::ReadWrite)) return std::nullopt;
    const std::string why = port.errorString().toStdString();
    if (const auto line = lock_in_the_way(number, device)) return refusal{why, *line};
    return refusal{why, "COM" + std::to_string(number) + " (" + device + "): " + why};
}

bool drain(QSerialPort& port, const QDeadlineTimer& end) {
    while (port.bytesToWrite() > 0) {
        if (!port.waitForBytesWritten(static_cast<int>(end.remainingTime()))) break;
    }
    // tcdrain alone would wait for a line that takes nothing without an end.
    while (waiting_bytes(port) > 0 && !end.hasExpired())
        QThread::msleep(1);
    if (port.bytesToWrite() > 0 || waiting_bytes(port) > 0) {
        ::tcflush(port.handle(), TCOFLUSH);
        return false;
    }
    ::tcdrain(port.handle()); // what is left stands in the UART and goes out by itself
    return true;
}

bool stands_on(QSerialPort& port, const std::string& device) {
    struct stat own {};
    struct stat other {};
    return ::fstat(port.handle(), &own) == 0 && ::stat(device.c_str(), &other) == 0 &&
           own.st_rdev == other.st_rdev;
}

} // namespace tyxo::desktop
