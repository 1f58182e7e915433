#pragma once
// The command line of the tool.

#include "xlg/plot_words.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo::xlg {

enum class command { none, check, summary, csv, mend, events, plot, view };

/// Which lines of a log `csv` writes.
enum class csv_lines { records, curves, comments };

struct arguments {
    command what = command::none;
    bool help = false;
    std::vector<std::string> files; ///< "-" is standard input
    std::size_t jobs = 0;           ///< files at a time; 0: as many as there are processors
    std::optional<int> gap_minutes;
    csv_lines lines = csv_lines::records;
    std::string output; ///< of `mend` and `plot`
    bool force = false; ///< over an existing file
    bool csv = false;   ///< of `events`
    plot_wishes plot;
};

/// The words behind the program's name. Failure: what they say cannot be done, in words for the user.
[[nodiscard]] arguments arguments_of(std::span<const std::string_view> words);

/// The page of a command, or that of the tool.
[[nodiscard]] std::string_view help_page(command what);

} // namespace tyxo::xlg
