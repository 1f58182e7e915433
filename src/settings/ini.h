#pragma once
// The settings file: in the working directory, with the name of the program's own file and the extension
// ".ini"
// ("tyxo.ini"); its one section has that name too. There is no cache: every read goes to the file.

#include <string>
#include <string_view>

namespace tyxo::Ini {

inline constexpr std::size_t value_limit = 69; ///< characters of a value that a read gives

/// The key's value, cut to its first `value_limit` characters; empty when key or file are missing, or the
/// file cannot be read. Waits as long as the disk takes.
[[nodiscard]] std::string ini_read(std::string_view key);

/// Writes one key at once; file, section and key come into being as needed. A failed write is not noticed,
/// and leaves the file as it was. Waits as long as the disk takes to read, and 10 ms at most to write.
void ini_write(std::string_view key, std::string_view value);

/// While it lives, the keys that are written are kept together; its end puts them into the file as one
/// change, which a power cut either finds whole or not at all. A change inside another is a part of it.
class one_change {
  public:
    one_change();
    ~one_change();
    one_change(const one_change&) = delete;
    one_change& operator=(const one_change&) = delete;
};

} // namespace tyxo::Ini
