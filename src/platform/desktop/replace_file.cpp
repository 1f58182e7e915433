#include "platform/desktop/replace_file.h"

#include "platform/desktop/descriptor.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tyxo::desktop {

namespace {

constexpr mode_t new_file_mode = 0666;
constexpr mode_t private_mode = 0600;
constexpr int most_names = 100; ///< tried for a temporary file

/// The file itself when the path is a link to it, so that a replaced file stays where the link points.
std::string real_path(const std::string& path) {
    char* const found = ::realpath(path.c_str(), nullptr);
    if (found == nullptr) return path;
    std::string real(found);
    std::free(found);
    return real;
}

/// A new file beside the target, under a name of this process that nothing else has. An empty name when
/// there can be none.
std::string create_beside(const std::string& target, mode_t mode, int& handle) {
    for (int attempt = 0; attempt < most_names; ++attempt) {
        std::string name = target + '.' + std::to_string(::getpid()) + '-' + std::to_string(attempt);
        handle = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (handle >= 0) return name;
        if (errno != EEXIST) break;
    }
    return {};
}

/// Gives the new file what the old one has. False where the system does not allow that.
bool keep_owner_and_mode(int fresh, const struct stat& old) {
    struct stat now {};
    if (::fstat(fresh, &now) != 0) return false;
    const bool same_owner = now.st_uid == old.st_uid && now.st_gid == old.st_gid;
    if (!same_owner && ::fchown(fresh, old.st_uid, old.st_gid) != 0) return false;
    return ::fchmod(fresh, old.st_mode & 07777U) == 0; // behind the owner, whose change takes bits away
}

enum class outcome { done, no_space, not_possible };

/// Writes the content beside the target and renames it.
outcome replace_by_name(const std::string& target, std::string_view content, const struct stat* old) {
    int handle = -1;
    // Nobody else reads it before it has the old file's mode.
    const std::string fresh = create_beside(target, old == nullptr ? new_file_mode : private_mode, handle);
    if (fresh.empty()) return errno == ENOSPC || errno == EDQUOT ? outcome::no_space : outcome::not_possible;
    const descriptor file(handle);
    std::size_t written = 0;
    outcome result = outcome::done;
    if (!write_all(handle, content, written) || ::fsync(handle) != 0) {
        result = outcome::no_space;
    } else if ((old != nullptr && !keep_owner_and_mode(handle, *old)) ||
               ::rename(fresh.c_str(), target.c_str()) != 0) {
        result = outcome::not_possible;
    }
    if (result != outcome::done) {
        const int reason = errno;
        ::unlink(fresh.c_str());
        errno = reason;
        return result;
    }
    sync_folder(folder_of(target));
    return result;
}

/// Writes the content over the old one. Where the disk does not take it, the old one is put back.
bool write_in_place(const std::string& target, std::string_view content) {
    const auto old = read_system_file(target);
    const descriptor file(::open(target.c_str(), O_WRONLY | O_CLOEXEC));
    if (!old || !file.valid()) return false;
    const auto overwrite = [&file](std::string_view text) {
        std::size_t written = 0;
        return ::lseek(file.get(), 0, SEEK_SET) == 0 && write_all(file.get(), text, written) &&
               ::ftruncate(file.get(), static_cast<off_t>(text.size())) == 0 && ::fsync(file.get()) == 0;
    };
    if (overwrite(content)) return true;
    const int reason = errno;
    static_cast<void>(overwrite(*old)); // its room is still there: nothing was cut off before
    errno = reason;
    return false;
}

} // namespace

bool replace_system_file(const std::string& path, std::string_view content) {
    const std::string target = real_path(path);
    struct stat old {};
    const bool exists = ::stat(target.c_str(), &old) == 0;
    if (exists && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) return false;
    const outcome result = replace_by_name(target, content, exists ? &old : nullptr);
    if (result == outcome::done) return true;
    return result == outcome::not_possible && exists && write_in_place(target, content);
}

} // namespace tyxo::desktop
