#pragma once
// The header of a log file.

#include "basics/types.h"
#include "platform/files.h"
#include "platform/program.h"

#include <string_view>

namespace tyxo::log {

inline constexpr std::string_view version = program_version;
inline constexpr std::string_view version_date = "02.07.2026";

/// Writes all lines up to and including "<LOG>". Failure: the file does not take a line, or the channel has
/// more cylinders than the firing tables have entries; the header ends there.
void log_header(i16 channel, output_file& file);

} // namespace tyxo::log
