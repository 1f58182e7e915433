#pragma once
// The replacement of a whole file, step by step.

#include "platform/desktop/step_thread.h"

#include <string>
#include <string_view>

namespace tyxo::desktop {

/// What tyxo::replace_file promises, waiting for the disk as long as it takes; `target` is the system's own
/// path. False, with `errno` set: the file has its old content.
bool replace_system_file(const std::string& target, std::string_view content);

/// Waits until no replacement is under way; false when `until` comes first.
[[nodiscard]] bool finish_replacements(step_thread::clock::time_point until);

} // namespace tyxo::desktop
