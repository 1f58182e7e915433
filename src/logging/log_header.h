#pragma once
// The header of a log file.

#include "basics/types.h"
#include "platform/program.h"

#include <string>
#include <string_view>

namespace tyxo::log {

inline constexpr std::string_view version = program_version;
inline constexpr std::string_view version_date = "02.07.2026";

/// All lines up to and including "<LOG>", each with its CR LF. With more cylinders than the firing tables
/// have entries the text ends in front of them.
[[nodiscard]] std::string log_header(i16 channel);

} // namespace tyxo::log
