#pragma once
// Log times in words of the window.

#include <QString>

#include <cstdint>

namespace tyxo::view {

/// "13:05:09" of a log time in ms.
[[nodiscard]] QString clock_text(std::int64_t ms);
/// "2026-07-02 13:05:09".
[[nodiscard]] QString moment_text(std::int64_t ms);
/// "2 days 3 h", "15 min 3 s", "0.5 s", for a length of time in ms.
[[nodiscard]] QString length_text(std::int64_t ms);

} // namespace tyxo::view
