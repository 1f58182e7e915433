#pragma once
// The settings file: "tyxo.ini" in the working directory, section "tyxo". There is no cache: every read goes
// to the file.

#include <string>
#include <string_view>

namespace tyxo::Ini {

inline constexpr std::string_view program_name = "tyxo"; ///< the file's name and its section's
inline constexpr std::size_t value_limit = 69;           ///< characters of a value that a read gives

/// The key's value, cut to its first `value_limit` characters; empty when key or file are missing.
[[nodiscard]] std::string ini_read(std::string_view key);

/// Writes one key at once; file, section and key come into being as needed. A failed write is not noticed,
/// and leaves the file as it was.
void ini_write(std::string_view key, std::string_view value);

} // namespace tyxo::Ini
