#pragma once
// A file descriptor that closes itself, and the system's own form of a path.

#include <optional>
#include <string>
#include <string_view>

namespace tyxo::desktop {

class descriptor {
  public:
    explicit descriptor(int handle) : handle_(handle) {}
    ~descriptor();
    descriptor(const descriptor&) = delete;
    descriptor& operator=(const descriptor&) = delete;
    [[nodiscard]] int get() const { return handle_; }
    [[nodiscard]] bool valid() const { return handle_ >= 0; }

  private:
    int handle_;
};

/// The path in UTF-8, with "/" between folders.
[[nodiscard]] std::string system_path(std::string_view path);

/// "." when the path names no folder.
[[nodiscard]] std::string folder_of(const std::string& path);

// These three take as long as the disk takes.

/// Writes all of it; false when the system does not take it, and `written` tells how much it took.
bool write_all(int handle, std::string_view content, std::size_t& written);

/// The whole file, or nothing when it cannot be read.
[[nodiscard]] std::optional<std::string> read_system_file(const std::string& path);

/// Brings the folder's own entries to the disk; a disk that refuses is not told.
void sync_folder(const std::string& folder);

/// Throws the failure that `errno` stands for.
[[noreturn]] void fail_with_system_text();

} // namespace tyxo::desktop
