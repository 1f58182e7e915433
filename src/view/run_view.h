#pragma once
// "xlg view".

#include <string>
#include <vector>

namespace tyxo::view {

/// Shows the window with these files and folders until it is closed; the result is the exit code.
[[nodiscard]] int run_view(const std::vector<std::string>& names);

} // namespace tyxo::view
