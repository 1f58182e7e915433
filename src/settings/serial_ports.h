#pragma once
// The list of serial ports for the port selectors.

#include "basics/types.h"

#include <optional>
#include <string>
#include <vector>

namespace tyxo::serial {

/// Numbers of the machine's ports in ascending order; none on a machine without ports, and no list at all
/// until it was built. Built once at start; a port plugged in later is listed at the next start.
inline std::optional<std::vector<i16>> serial_ports;

/// Builds `serial_ports`. When the machine's list cannot be read, it is left as it is, and the debug output
/// says why.
void get_serial_port();

} // namespace tyxo::serial

namespace tyxo::Registry {

/// The system's text for an error code, without line breaks.
[[nodiscard]] std::string win_error_text(int error_code);

} // namespace tyxo::Registry
