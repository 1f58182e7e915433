#include "platform/files.h"

#include "basics/ansi.h"
#include "basics/failure.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tyxo {

namespace {

constexpr mode_t new_file_mode = 0666;
constexpr mode_t new_folder_mode = 0777;

[[noreturn]] void fail_with_system_text() {
    throw failure(std::generic_category().message(errno));
}

std::string system_path(std::string_view path) {
    std::string text = utf8_from_ansi(path);
    std::ranges::replace(text, '\\', '/');
    return text;
}

/// A file descriptor that closes itself.
class descriptor {
  public:
    explicit descriptor(int handle) : handle_(handle) {}
    ~descriptor() {
        if (handle_ >= 0) ::close(handle_);
    }
    descriptor(const descriptor&) = delete;
    descriptor& operator=(const descriptor&) = delete;
    [[nodiscard]] int get() const { return handle_; }
    [[nodiscard]] bool valid() const { return handle_ >= 0; }

  private:
    int handle_;
};

/// Writes all of it; false when the system does not take it, and `written` tells how much it took.
bool write_all(int handle, std::string_view content, std::size_t& written) {
    written = 0;
    while (written < content.size()) {
        const ssize_t step = ::write(handle, content.data() + written, content.size() - written);
        if (step < 0 && errno == EINTR) continue;
        if (step <= 0) return false;
        written += static_cast<std::size_t>(step);
    }
    return true;
}

/// Takes the piece of a line that did not fit on the disk off the file's end again.
void take_back(int handle, std::size_t written) {
    const int reason = errno;
    const off_t end = ::lseek(handle, 0, SEEK_END);
    if (written > 0 && end >= static_cast<off_t>(written)) {
        static_cast<void>(::ftruncate(handle, end - static_cast<off_t>(written)) == 0);
    }
    errno = reason;
}

int open_for_writing(std::string_view path, int how) {
    const int handle =
        ::open(system_path(path).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_APPEND | how, new_file_mode);
    if (handle < 0) fail_with_system_text();
    return handle;
}

/// The file itself when the path is a link to it, so that a replaced file stays where the link points.
std::string real_path(const std::string& path) {
    char* const found = ::realpath(path.c_str(), nullptr);
    if (found == nullptr) return path;
    std::string real(found);
    std::free(found);
    return real;
}

bool write_new_file(const std::string& path, std::string_view content, mode_t mode) {
    const descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode));
    std::size_t written = 0;
    return file.valid() && write_all(file.get(), content, written) && ::fchmod(file.get(), mode) == 0 &&
           ::fsync(file.get()) == 0;
}

void sync_folder_of(const std::string& path) {
    const auto slash = path.rfind('/');
    const std::string folder = slash == path.npos ? "." : path.substr(0, slash + 1);
    const descriptor handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.valid()) ::fsync(handle.get());
}

} // namespace

output_file::~output_file() {
    close();
}

void output_file::close() {
    if (is_open()) ::close(std::exchange(handle_, -1));
}

void output_file::create(std::string_view path) {
    close();
    handle_ = open_for_writing(path, O_TRUNC);
}

void output_file::append_to(std::string_view path) {
    close();
    handle_ = open_for_writing(path, 0);
}

void output_file::print(std::string_view line) {
    if (!is_open()) throw failure("The file is not open");
    buffer_.assign(line).append("\r\n");
    std::size_t written = 0;
    if (write_all(handle_, buffer_, written)) return;
    take_back(handle_, written);
    fail_with_system_text();
}

bool readable(std::string_view path) {
    return descriptor(::open(system_path(path).c_str(), O_RDONLY | O_CLOEXEC)).valid();
}

bool file_exists(std::string_view path) {
    struct stat status {};
    return ::stat(system_path(path).c_str(), &status) == 0 || errno != ENOENT;
}

std::optional<std::string> read_file(std::string_view path) {
    const descriptor file(::open(system_path(path).c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.valid()) return std::nullopt;
    std::string content;
    std::array<char, 4096> block{};
    for (;;) {
        const ssize_t step = ::read(file.get(), block.data(), block.size());
        if (step < 0 && errno == EINTR) continue;
        if (step < 0) return std::nullopt;
        if (step == 0) return content;
        content.append(block.data(), static_cast<std::size_t>(step));
    }
}

bool replace_file(std::string_view path, std::string_view content) {
    const std::string target = real_path(system_path(path));
    struct stat status {};
    const mode_t mask = ::umask(0);
    ::umask(mask);
    const mode_t mode =
        ::stat(target.c_str(), &status) == 0 ? status.st_mode & 07777U : new_file_mode & ~mask;
    const std::string fresh = target + ".new";
    if (!write_new_file(fresh, content, mode) || ::rename(fresh.c_str(), target.c_str()) != 0) {
        ::unlink(fresh.c_str());
        return false;
    }
    sync_folder_of(target);
    return true;
}

void make_folder(std::string_view path) {
    if (::mkdir(system_path(path).c_str(), new_folder_mode) != 0) fail_with_system_text();
}

} // namespace tyxo
