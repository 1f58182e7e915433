#pragma once
// Serial port numbers and the device nodes behind them.
//
// Number n is the link "ports/COM<n>" in the working directory, the operator's own map; else "/dev/COM<n>", a
// udev rule's; else the kernel's node: ttyS0.. are 1 to 64, ttyUSB0.. are 65 to 128, ttyACM0.. are 129 and
// above.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo::desktop {

/// The number of a kernel's node name such as "ttyUSB0", or nothing for any other name.
[[nodiscard]] std::optional<int> number_of_node(std::string_view name);

/// The kernel's node for a number; an empty text for numbers below 1.
[[nodiscard]] std::string node_of_number(int number);

/// Where a number leads to a device: the first such link, or the kernel's node. Nothing when there is none.
[[nodiscard]] std::optional<std::string> path_of(int number);

/// The device behind a path, links followed, or nothing when there is none now.
[[nodiscard]] std::optional<std::string> device_of(const std::string& path);

/// Why this user may not open the device, and which group has the right; nothing without such an obstacle.
[[nodiscard]] std::optional<std::string> missing_right(int number, const std::string& device);

/// Which lock file keeps the device for another process, and what to do when that process has ended without
/// removing it; nothing when there is no lock file.
[[nodiscard]] std::optional<std::string> lock_in_the_way(int number, const std::string& device);

} // namespace tyxo::desktop
