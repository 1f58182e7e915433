#pragma once
// A file of lines that outlives full disks, torn lines, and the removal of its file or folder.

#include "platform/disk_file.h"
#include "platform/files.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tyxo {

class line_file {
  public:
    /// Makes the folder, opens the file, and writes the header into a new one. A header that the disk does
    /// not take is tried again before each line. Failure: the file cannot be opened.
    void open(file_place place);
    /// Writes the text and CR LF. Once a second it is looked whether the file still stands at its path, and
    /// if not, it is opened anew; so it is after a failed write, once a second too. Failure: no place was
    /// opened, or the disk does not take the line, which then leaves no piece of itself.
    void print(std::string_view line);
    /// Does what `print` does if that is one write and nothing else; false if there is more to it, or the
    /// write fails.
    [[nodiscard]] bool print_at_once(std::string_view line);
    void close();

    [[nodiscard]] disk_file& on_disk() { return disk_; }

  private:
    void begin(std::int64_t now);
    void begin_anew(std::int64_t now);
    void write_header();
    void write(std::string_view line);

    file_place place_;
    disk_file disk_;
    bool header_due_ = false;
    std::int64_t begun_ = 0;  ///< `running_ms` of the last opening
    std::int64_t looked_ = 0; ///< and of the last look at the path
    std::string buffer_;
};

} // namespace tyxo
