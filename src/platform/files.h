#pragma once
// Files and folders. Paths are the system's own texts in Windows-1252: "\" and "/" both separate folders, a
// relative path starts in the working directory.

#include <optional>
#include <string>
#include <string_view>

namespace tyxo {

/// A text file that lines are put at the end of. A line is with the operating system when `print` returns,
/// and a line that does not fit on the disk leaves no piece of itself behind.
class output_file {
  public:
    output_file() = default;
    ~output_file();
    output_file(const output_file&) = delete;
    output_file& operator=(const output_file&) = delete;

    /// Opens a new file, or an existing one emptied; a file that was open before is closed. Failure: the path
    /// cannot be written.
    void create(std::string_view path);
    /// The same, with the lines that the file has kept.
    void append_to(std::string_view path);
    /// Writes the text and CR LF. Failure: no file is open, or the system does not take the line.
    void print(std::string_view line);
    void close();
    [[nodiscard]] bool is_open() const { return handle_ >= 0; }

  private:
    int handle_ = -1;
    std::string buffer_;
};

/// True if the file exists and can be opened for reading.
[[nodiscard]] bool readable(std::string_view path);

/// True if there is such a file, readable or not.
[[nodiscard]] bool file_exists(std::string_view path);

/// The whole file, or nothing when it cannot be read.
[[nodiscard]] std::optional<std::string> read_file(std::string_view path);

/// Puts `content` in the place of the file in one step: whatever happens, the file holds its old or its new
/// content. False if that could not be done.
bool replace_file(std::string_view path, std::string_view content);

/// Creates one folder; the folder above it must exist. Failure: it exists already, or cannot be made.
void make_folder(std::string_view path);

} // namespace tyxo
