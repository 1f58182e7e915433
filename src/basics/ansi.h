#pragma once
// Windows-1252, the character set of the serial line, the settings file and every log, beside UTF-8, the
// character set of file names and of the debug output.

#include <string>
#include <string_view>

namespace tyxo {

/// UTF-8 of a Windows-1252 text; the five bytes without a character become U+FFFD.
[[nodiscard]] std::string utf8_from_ansi(std::string_view ansi);

/// Windows-1252 of a UTF-8 text; what Windows-1252 does not have becomes "?".
[[nodiscard]] std::string ansi_from_utf8(std::string_view utf8);

} // namespace tyxo
