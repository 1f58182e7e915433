#pragma once
// The text of a settings file: finding a key, and putting a key's value in its place. Pure functions.
//
// Section and key names are matched without regard to case; the first of duplicates counts; lines that begin
// with ";" are comments; CR LF and LF both end a line. Blanks around a key and its value do not count, nor
// does one pair of quotes around the value.

#include <string>
#include <string_view>

namespace tyxo::Ini {

/// The key's value, empty when there is no such key.
[[nodiscard]] std::string get_key(std::string_view text, std::string_view section, std::string_view key);

/// The text with the key's value replaced, or with the key added at the end of its section, or with the
/// section added at the end of the text. Every other line stays as it was. New lines end like the first line
/// of the text, with CR LF when it has none.
[[nodiscard]] std::string set_key(std::string_view text, std::string_view section, std::string_view key,
                                  std::string_view value);

} // namespace tyxo::Ini
