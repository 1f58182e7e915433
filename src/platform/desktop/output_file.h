#pragma once
// What the end of the program has to do with files.

#include <chrono>

namespace tyxo::desktop {

/// Gives lines that wait for a disk, and disks that wait for a sync, this long to come to their end. True if
/// nothing is left.
bool finish_files(std::chrono::milliseconds patience);

} // namespace tyxo::desktop
