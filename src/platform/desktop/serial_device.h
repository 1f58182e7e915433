#pragma once
// What a serial port does with its device: open it, say why it does not open, send the rest, tell it from
// others.

#include <QDeadlineTimer>
#include <QSerialPort>

#include <optional>
#include <string>
#include <string_view>

namespace tyxo::desktop {

/// "38400,n,8,1" and the like; an open port changes at once.
void apply_settings(QSerialPort& port, std::string_view text);

/// Why a device does not open.
struct refusal {
    std::string why;  ///< the machine's description
    std::string line; ///< for the debug output: the port, the device, and what to do about it
};

/// Opens the device of a port number with what was applied to `port`; nothing when that worked. Never waits.
[[nodiscard]] std::optional<refusal> open_device(QSerialPort& port, int number, const std::string& device);

/// Waits until everything sent has left the machine, the UART included. False if the line has not taken it by
/// `end`: the rest is dropped then, since closing would wait for it.
[[nodiscard]] bool drain(QSerialPort& port, const QDeadlineTimer& end);

/// True if the open port stands on this device, by whatever name it was opened.
[[nodiscard]] bool stands_on(QSerialPort& port, const std::string& device);

} // namespace tyxo::desktop
