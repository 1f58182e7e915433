#pragma once
// A log, line by line: what each line is, what it holds, and what is wrong with it.

#include "xlg/line_reader.h"
#include "xlg/log_header.h"
#include "xlg/record_form.h"

#include <string>
#include <string_view>
#include <vector>

namespace tyxo::xlg {

enum class line_kind {
    header,  ///< up to <LOG>
    record,  ///< also one of a kind that is unknown
    comment, ///< "<!-- 13:05:09 KVD Prealarm ON -->"
    note,    ///< "<#-- 13:05:09 Testsignal1 ON -->"
    foreign  ///< none of these
};

/// From the least to the worst.
enum class damage {
    none,
    unended,  ///< whole, but for the CR LF behind it
    doubtful, ///< whole, with a value or a byte that no log has
    broken    ///< not to be read
};

struct entry {
    line at;
    line_kind kind = line_kind::foreign;
    damage state = damage::none;
    const record_form* form = nullptr; ///< of a record of a known kind
    int seconds = -1;                  ///< since midnight, 0 to 86,399; -1: it has no time that can be read
    std::string_view body;           ///< values of a record between blanks, text of a comment; not if broken
    std::vector<std::string> faults; ///< of the line
    std::vector<std::string> faults_of_log; ///< of its header, found at this line
    std::vector<std::string> remarks;       ///< what is worth knowing and no damage

    /// Its content can be used.
    [[nodiscard]] bool sound() const { return state <= damage::unended; }
    /// The first line of a header behind the first one; the other lines of it are told nowhere.
    bool second_header = false;
};

class log_reader {
  public:
    explicit log_reader(byte_source source);

    /// Puts the next line into `found`; false at the end. Failure: that of the source.
    bool next(entry& found);

    /// What is wrong with the file as a whole, once all lines are read; empty if nothing is.
    [[nodiscard]] const std::string& fault_of_file() const { return fault_of_file_; }
    /// Likewise what is worth knowing and no damage.
    [[nodiscard]] const std::string& remark_of_file() const { return remark_of_file_; }
    /// As far as it was read.
    [[nodiscard]] const header_lines& header() const { return header_; }
    [[nodiscard]] std::int64_t bytes() const { return lines_.bytes(); }
    [[nodiscard]] std::int64_t lines() const { return line_number_; }

  private:
    enum class stretch { begin, header, log, second_header };

    void read_stretch(entry& found);
    void read_header_line(entry& found);
    void end_header(entry& found);

    line_reader lines_;
    header_lines header_;
    stretch stretch_ = stretch::begin;
    std::int64_t line_number_ = 0;
    bool all_zero_ = false; ///< the header's values, and no record stands behind it
    std::string fault_of_file_;
    std::string remark_of_file_;
};

/// What a line behind <LOG> is and holds; `found.at` is given, the rest is new.
void read_log_line(entry& found);

} // namespace tyxo::xlg
