#include "platform/desktop/descriptor.h"

#include "basics/ansi.h"
#include "basics/failure.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace tyxo::desktop {

descriptor::~descriptor() {
    if (handle_ >= 0) ::close(handle_);
}

std::string system_path(std::string_view path) {
    std::string text = utf8_from_ansi(path);
    std::ranges::replace(text, '\\', '/');
    return text;
}

std::string folder_of(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == path.npos ? "." : path.substr(0, slash + 1);
}

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

std::optional<std::string> read_system_file(const std::string& path) {
    const descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
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

void sync_folder(const std::string& folder) {
    const descriptor handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.valid()) ::fsync(handle.get());
}

void fail_with_system_text() {
    throw failure(std::generic_category().message(errno));
}

} // namespace tyxo::desktop
