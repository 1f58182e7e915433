#include "platform/desktop/process.h"

#include "basics/ansi.h"
#include "platform/debug_output.h"
#include "platform/desktop/session_bus.h"
#include "platform/program.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/eventfd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tyxo {

namespace {

int signal_arrived = -1; ///< an eventfd

/// What a signal handler may do: one write.
void note_signal(int /*signal*/) {
    const int reason = errno;
    const std::uint64_t one = 1;
    static_cast<void>(::write(signal_arrived, &one, sizeof one) < 0);
    errno = reason;
}

void catch_signal(int signal) {
    struct sigaction action {};
    ::sigaction(signal, nullptr, &action);
    if (action.sa_handler == SIG_IGN) return; // started by nohup, or behind a shell script
    action = {};
    action.sa_handler = note_signal;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

/// The process that holds the lock on a folder, as the kernel's list of locks tells it; 0 when it does not.
long holder_of(ino_t folder) {
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
        std::istringstream fields(line);
        std::string number, kind, strength, access, place;
        long process = 0;
        fields >> number >> kind >> strength >> access >> process >> place;
        if (kind == "FLOCK" && place.ends_with(':' + std::to_string(folder))) return process;
    }
    return 0;
}

} // namespace

std::optional<std::string> folder_holder() {
    // The folder itself is locked: no file is left behind, and a folder without the right to write is no
    // obstacle. The kernel takes the lock back when the process ends, however it ends.
    const int folder = ::open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0 && ::flock(folder, LOCK_EX | LOCK_NB) == 0) return std::nullopt;
    if (errno != EWOULDBLOCK) {
        debug_output("The working folder cannot be locked: " + std::string(std::strerror(errno)));
        return std::nullopt;
    }
    struct stat status {};
    const long process = ::fstat(folder, &status) == 0 ? holder_of(status.st_ino) : 0;
    ::close(folder);
    return process > 0 ? "process " + std::to_string(process) : "a process of another user";
}

std::string executable_name() {
    std::error_code error;
    // Read once: a program that is replaced while it runs has another name in there.
    static const std::string name = std::filesystem::read_symlink("/proc/self/exe", error).stem().string();
    return ansi_from_utf8(name);
}

void desktop::start_no_session_bus() {
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    const std::string usual = runtime == nullptr ? std::string() : std::string(runtime) + "/bus";
    std::string address;
    if (const char* const given = std::getenv("DBUS_SESSION_BUS_ADDRESS")) {
        address = given;
    } else if (!usual.empty() && ::access(usual.c_str(), F_OK) == 0) {
        address = "unix:path=" + usual;
    }
    const bool hangs = bus_hangs(address);
    if (hangs) debug_output("The session bus does not answer, and is done without");
    if (hangs || address.empty()) ::setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
}

void desktop::on_end_signal(void (*end)()) {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    signal_arrived = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    auto* const notifier =
        new QSocketNotifier(signal_arrived, QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [end] {
        std::uint64_t arrived = 0;
        if (::read(signal_arrived, &arrived, sizeof arrived) > 0) end();
    });
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        catch_signal(signal);
}

} // namespace tyxo
