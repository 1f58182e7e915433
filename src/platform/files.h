#pragma once
// Files and folders. Paths are the system's own texts in Windows-1252: "\" and "/" both separate folders, a
// relative path starts in the working directory.

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tyxo {

/// A text file that lines are put at the end of, and what it begins with.
struct file_place {
    std::string path{};
    std::optional<std::string>
        folder{};            ///< made first when it is missing, one level of it; none: it has to be there
    std::string no_folder{}; ///< for the debug output when it was not made, most often because it is there
    std::string header{};    ///< a new file begins with it
    bool each_line = false;  ///< every line is brought to the disk at once, else after some seconds
};

/// The file of a place, for writers that must not wait for a disk. What a step does is that of `line_file`.
/// It is done when the call returns, and its failure is thrown, if the disk needs no more than 10 ms for it,
/// as is nearly always so. Otherwise this step and those behind it follow in their order, nobody waits for
/// them, and a failure of theirs is told in the debug output.
class output_file {
  public:
    output_file();
    ~output_file();
    output_file(const output_file&) = delete;
    output_file& operator=(const output_file&) = delete;

    /// Opens the place's file, and creates it when there is none; a file that was open before is closed.
    /// Failure: it cannot be opened. It counts as open nevertheless, and later lines try again.
    void open(file_place place);
    /// Writes the text and CR LF. Failure: no file is open, the system does not take the line, or more lines
    /// wait for the disk than memory is kept for.
    void print(std::string_view line);
    void close();
    /// True once if a step has failed that nobody waited for.
    [[nodiscard]] bool failed_late();
    /// True from `open` to `close`, whether the file could be opened or not.
    [[nodiscard]] bool is_open() const { return open_; }

    struct lane; ///< the platform's own

  private:
    std::shared_ptr<lane> lane_;
    bool open_ = false;
};

/// True if there is such a file, readable or not. Waits as long as the disk takes.
[[nodiscard]] bool file_exists(std::string_view path);

/// The whole file, or nothing when it cannot be read. Of a file that is being replaced it is the new content.
/// Waits as long as the disk takes.
[[nodiscard]] std::optional<std::string> read_file(std::string_view path);

/// Puts `content` in the place of the file in one step: whatever happens, the file holds its old or its new
/// content. Owner, group and mode stay. Where that cannot be done (foreign owner, folder without write
/// permission, a file that is a mount point) the file itself is written. A write-protected file is left
/// alone, and a file that cannot be written keeps its old content; the debug output says so. After 10 ms
/// nobody waits for the disk any more.
void replace_file(std::string_view path, std::string_view content);

/// Creates one folder; the folder above it must exist. Failure: it exists already, or cannot be made.
void make_folder(std::string_view path);

} // namespace tyxo
