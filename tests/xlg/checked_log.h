#pragma once
// What `check` says of a log whose file is called F.

#include "xlg/check.h"

#include "xlg/log_texts.h"

namespace tyxo::xlg {

using text_lines = std::vector<std::string>;

/// What `check` says of a log.
struct verdict {
    bool fine = false;
    text_lines told; ///< the last line left out
    std::string figures;
};

inline verdict checked(const std::string& log, std::optional<int> gap_minutes = {},
                       const std::string& name = "20260702Qu_Engine 1.xlg") {
    std::string told;
    verdict result;
    result.fine =
        check_log(name, source_of(log), gap_minutes, [&told](std::string_view text) { told += text; });
    result.told = lines_of(told);
    EXPECT_FALSE(result.told.empty());
    if (result.told.empty()) return result;
    result.figures = result.told.back();
    result.told.pop_back();
    for (std::string& line : result.told)
        line = changed(line, name, "F");
    return result;
}

/// A log with something wrong, and the lines that tell it.
struct damaged_log {
    const char* what;
    std::string log;
    text_lines told;
};

inline void expect_told(const std::vector<damaged_log>& table) {
    for (const damaged_log& row : table) {
        const verdict found = checked(row.log);
        EXPECT_EQ(found.told, row.told) << row.what;
        EXPECT_FALSE(found.fine) << row.what;
    }
}

/// The 107th line of the golden log.
inline constexpr const char* first_record = "<REC1> 13:05:09 51 1480 1234 48 7 </REC1>\r\n";

} // namespace tyxo::xlg
