#include "platform/desktop/disk_file.h"

#include "basics/failure.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>
#include <utility>

namespace tyxo {

namespace {

using namespace desktop;

constexpr mode_t new_file_mode = 0666;

/// A second before a line is 5 s old: the sync takes its time as well.
constexpr std::chrono::seconds longest_unsynced{4};

/// File systems on disks of this machine; others may have to ask another machine or process for every write.
bool is_local(int handle) {
    struct statfs system {};
    if (::fstatfs(handle, &system) != 0) return false;
    switch (system.f_type) {
    case EXT4_SUPER_MAGIC: // and its elders
    case XFS_SUPER_MAGIC:
    case BTRFS_SUPER_MAGIC:
    case F2FS_SUPER_MAGIC:
    case TMPFS_MAGIC:
    case OVERLAYFS_SUPER_MAGIC:
        return true;
    default:
        return false;
    }
}

/// A new file that has no name yet, where there is nothing at the path and the file system has such files: a
/// program that is killed right behind it leaves no empty log, which would never get its header.
int open_unnamed(const std::string& path) {
    struct stat status {};
    if (path.empty() || path.ends_with('/') || ::lstat(path.c_str(), &status) == 0) return -1;
    return ::open(folder_of(path).c_str(), O_RDWR | O_APPEND | O_CLOEXEC | O_TMPFILE, new_file_mode);
}

/// False where the file cannot have its name, or another one has it meanwhile. The name follows the content
/// to the disk: a power cut leaves no empty log either.
bool give_name(int handle, const std::string& path) {
    ::fdatasync(handle);
    const std::string here = "/proc/self/fd/" + std::to_string(handle);
    return ::linkat(AT_FDCWD, here.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

/// For reading too where that is allowed: the file's last characters are looked at.
int open_existing(const std::string& path, int how) {
    const int handle = ::open(path.c_str(), O_RDWR | O_APPEND | O_CLOEXEC | how, new_file_mode);
    if (handle >= 0 || errno == ENOENT) return handle;
    return ::open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | how, new_file_mode);
}

/// What the last line needs to be whole; nothing when that cannot be known.
std::string missing_end(int handle) {
    struct stat status {};
    if (::fstat(handle, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size == 0) return {};
    std::array<char, 2> last{};
    const off_t place = status.st_size > 1 ? status.st_size - 2 : 0;
    const ssize_t count = ::pread(handle, last.data(), last.size(), place);
    if (count <= 0 || (count == 2 && last[0] == '\r' && last[1] == '\n')) return {};
    return last[static_cast<std::size_t>(count) - 1] == '\r' ? "\n" : "\r\n";
}

/// Takes the piece that did fit off the file's end again. False if it stays.
bool take_back(int handle, std::size_t written) {
    if (written == 0) return true;
    const off_t end = ::lseek(handle, 0, SEEK_END);
    return end >= static_cast<off_t>(written) && ::ftruncate(handle, end - static_cast<off_t>(written)) == 0;
}

/// Does without the file that got no name.
void open_by_name(disk_file::state& state) {
    const int handle = open_existing(state.path, O_CREAT);
    if (handle < 0) fail_with_system_text();
    state.file = std::make_shared<const descriptor>(handle);
    state.end = missing_end(handle);
}

} // namespace

disk_file::disk_file() : state_(std::make_unique<state>()) {}
disk_file::~disk_file() = default;

bool disk_file::is_open() const {
    return state_->file != nullptr;
}

void disk_file::close() {
    if (state_->unnamed) give_name(state_->file->get(), state_->path);
    state_->unnamed = false;
    state_->file.reset();
    state_->created = state_->unsynced = false;
}

bool disk_file::open(std::string_view path, bool text_follows) {
    close();
    state_->path = system_path(path);
    int handle = text_follows ? open_unnamed(state_->path) : -1;
    const bool unnamed = handle >= 0;
    if (!unnamed) {
        handle =
            ::open(state_->path.c_str(), O_RDWR | O_APPEND | O_CLOEXEC | O_CREAT | O_EXCL, new_file_mode);
    }
    bool created = handle >= 0;
    if (handle < 0 && errno == EEXIST) {
        handle = open_existing(state_->path, 0);
        if (handle < 0 && errno == ENOENT) { // a link to a file that is not there yet
            handle = open_existing(state_->path, O_CREAT);
            created = handle >= 0;
        }
    }
    if (handle < 0) fail_with_system_text();
    state_->file = std::make_shared<const descriptor>(handle);
    state_->unnamed = unnamed;
    state_->local = is_local(handle);
    state_->created = state_->unsynced = created;
    state_->end = created ? std::string() : missing_end(handle);
    return created;
}

void disk_file::append(std::string_view text) {
    const int handle = state_->file->get();
    const bool nameless = std::exchange(state_->unnamed, false);
    std::string whole;
    if (!state_->end.empty()) {
        whole.assign(state_->end).append(text);
        text = whole;
    }
    std::size_t written = 0;
    if (!write_all(handle, text, written)) {
        const int reason = errno;
        if (!take_back(handle, written)) state_->end = missing_end(handle);
        if (nameless) give_name(handle, state_->path);
        errno = reason;
        fail_with_system_text();
    }
    if (nameless && !give_name(handle, state_->path)) {
        open_by_name(*state_);
        return append(text);
    }
    state_->end.clear();
    state_->unsynced = true;
}

bool disk_file::in_place() const {
    if (state_->unnamed) return true;
    struct stat there {};
    struct stat open {};
    if (::stat(state_->path.c_str(), &there) != 0) return errno != ENOENT && errno != ENOTDIR;
    return ::fstat(state_->file->get(), &open) == 0 && there.st_dev == open.st_dev &&
           there.st_ino == open.st_ino;
}

bool disk_file::empty() const {
    struct stat status {};
    return ::fstat(state_->file->get(), &status) == 0 && status.st_size == 0;
}

void disk_file::sync(sync_time when) {
    if (!state_->unsynced) return;
    // Of two syncs the one that was asked for first comes first.
    if (when == sync_time::soon && state_->flusher.waits(state_->file)) return;
    const auto now = flusher::clock::now();
    if (when == sync_time::soon) return state_->flusher.ask(state_->file, now + longest_unsynced);
    state_->flusher.ask(state_->file, now, state_->created ? folder_of(state_->path) : std::string());
    state_->created = state_->unsynced = false;
}

} // namespace tyxo
