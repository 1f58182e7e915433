#pragma once
// Writing beside the measurement: how long it may be held up, and what the program's end has to do.

#include <chrono>

namespace tyxo::desktop {

/// The longest time that the measurement waits for a disk. A test of what stands on it waits longer.
inline std::chrono::milliseconds longest_disk_wait{10};

/// Gives lines and settings that wait for a disk this long to come there. True if nothing is left.
bool finish_files(std::chrono::milliseconds patience);

} // namespace tyxo::desktop
