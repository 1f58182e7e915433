#include "pseudo_terminal.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <termios.h>
#include <unistd.h>

namespace tyxo::evaluator_sim {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const std::string& what) {
    throw std::runtime_error(what + ": " + std::strerror(errno));
}

void place_link(const std::string& link, const std::string& device) {
    const fs::path path(link);
    std::error_code error;
    if (path.has_parent_path()) fs::create_directories(path.parent_path(), error);
    const fs::file_status status = fs::symlink_status(path, error);
    if (fs::exists(status) && !fs::is_symlink(status))
        throw std::runtime_error(link + " exists and is no link");
    // Renamed into place, so that no program ever finds the name missing.
    const std::string temporary = link + ".new";
    ::unlink(temporary.c_str());
    if (::symlink(device.c_str(), temporary.c_str()) != 0 || ::rename(temporary.c_str(), link.c_str()) != 0)
        fail("cannot make the link " + link);
}

} // namespace

void PseudoTerminal::open(const std::string& link) {
    close();
    try {
        master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        char name[128];
        if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0 ||
            ::ptsname_r(master_, name, sizeof name) != 0)
            fail("cannot make a pseudo-terminal");
        device_ = name;
        if (!freshen()) fail("cannot open " + device_);
        place_link(link, device_);
    } catch (...) {
        close();
        throw;
    }
    link_ = link;
}

void PseudoTerminal::close() {
    if (!link_.empty()) {
        std::error_code error;
        if (fs::read_symlink(link_, error) == device_ && !error) ::unlink(link_.c_str());
        link_.clear();
    }
    if (master_ >= 0) ::close(master_);
    master_ = -1;
    listened_ = false;
    device_.clear();
}

/// Opens the program's side for a moment: sets the raw mode, throws away what nobody read, and leaves the
/// pair in the state "was open, is closed", in which our side can tell that nobody is there.
bool PseudoTerminal::freshen() {
    const int slave = ::open(device_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (slave < 0) return false;
    termios mode{};
    if (::tcgetattr(slave, &mode) == 0) {
        ::cfmakeraw(&mode);
        ::cfsetspeed(&mode, B38400);
        ::tcsetattr(slave, TCSANOW, &mode);
    }
    ::tcflush(slave, TCIFLUSH);
    ::close(slave);
    return true;
}

std::string PseudoTerminal::read() {
    std::string bytes;
    if (master_ < 0) return bytes;
    for (;;) {
        char buffer[4096];
        const ssize_t count = ::read(master_, buffer, sizeof buffer);
        if (count > 0) {
            bytes.append(buffer, static_cast<size_t>(count));
            continue;
        }
        if (count < 0 && errno == EINTR) continue;
        const bool here = count < 0 && errno == EAGAIN;
        const bool gone = listened_ && !here;
        listened_ = here;
        // A program that was killed can leave the device locked for its own use; then only a new pair helps.
        if (gone && !freshen()) open(std::string(link_));
        return bytes;
    }
}

size_t PseudoTerminal::write(std::string_view bytes) {
    if (master_ < 0 || !listened_ || bytes.empty()) return 0;
    const ssize_t count = ::write(master_, bytes.data(), bytes.size());
    return count > 0 ? static_cast<size_t>(count) : 0;
}

} // namespace tyxo::evaluator_sim
