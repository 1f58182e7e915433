#pragma once
// A command on several files at a time.

#include "xlg/arguments.h"
#include "xlg/progress.h"
#include "xlg/words.h"

namespace tyxo::xlg {

/// What the tool ends with.
namespace exit_codes {
inline constexpr int fine = 0;
inline constexpr int wrong = 1;  ///< something was found
inline constexpr int failed = 2; ///< a file could not be read or written
} // namespace exit_codes

/// Runs the command on every file, and says what it has to say to `out` in the order of the files. What
/// cannot be done is said to `errors`, from whichever thread, and the other files go on. The result is the
/// worst of the exit codes.
[[nodiscard]] int run_files(const arguments& wanted, const text_sink& out, const text_sink& errors,
                            progress& shown);

} // namespace tyxo::xlg
