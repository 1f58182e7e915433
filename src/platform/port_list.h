#pragma once
// The serial ports that the machine has.

#include <optional>
#include <string>
#include <vector>

namespace tyxo {

/// One entry of the machine's list: where it comes from, and a name of three letters and a number ("COM65").
struct port_name {
    std::string source;
    std::string name;
};

/// Every port that exists, in no particular order; nothing when the list itself cannot be read, and then
/// `error_code` is the system's.
[[nodiscard]] std::optional<std::vector<port_name>> list_ports(int& error_code);

/// The system's own text for an error code, or an empty text when it has none.
[[nodiscard]] std::string system_error_text(int error_code);

} // namespace tyxo
