#include "platform/desktop/standard_output.h"

#include "basics/ansi.h"
#include "platform/debug_output.h"

#include <QCoreApplication>
#include <QString>
#include <QTimer>

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <mutex>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tyxo {

namespace {

constexpr int watch_ms = 1000; ///< between two looks whether lost lines can be told

void (*on_display_lost)() = nullptr;

/// How much of `text` was written, at once; nothing when it would have to wait.
std::size_t write_at_once(std::string_view text) {
    pollfd output{STDERR_FILENO, POLLOUT, 0}; // a pipe of another user cannot be opened anew
    if (::poll(&output, 1, 0) != 1) return 0;
    ssize_t written = ::send(STDERR_FILENO, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (written < 0 && errno == ENOTSOCK) written = ::write(STDERR_FILENO, text.data(), text.size());
    return written < 0 ? 0 : static_cast<std::size_t>(written);
}

/// The lines on their way, of all threads. A line that does not go out at once is lost and counted.
class line_writer {
  public:
    void put(std::string_view line) {
        const std::lock_guard lock(mutex_);
        if (tell_lost() && begin(line)) return;
        ++lost_;
        if (watched_ || QCoreApplication::instance() == nullptr) return;
        watched_ = true;
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [this] { watch(); }, Qt::QueuedConnection);
    }

  private:
    /// Looks from time to time whether the loss can be told: the next line may be hours away.
    void watch() {
        QTimer::singleShot(watch_ms, QCoreApplication::instance(), [this] {
            const std::lock_guard lock(mutex_);
            watched_ = !tell_lost();
            if (watched_) watch();
        });
    }

    /// False while lines are lost that could not be told yet.
    bool tell_lost() {
        if (lost_ == 0) return true;
        if (!begin("debug output: " + std::to_string(lost_) + " lines were lost\n")) return false;
        lost_ = 0;
        return true;
    }

    /// Writes a line or its front. False if nothing of it went out.
    bool begin(std::string_view line) {
        rest_.erase(0, write_at_once(rest_));
        if (!rest_.empty()) return false;
        const std::size_t written = write_at_once(line);
        if (written > 0) rest_ = line.substr(written);
        return written > 0;
    }

    std::mutex mutex_;
    std::string rest_; // of the last line, when the output took only its front
    std::uint64_t lost_ = 0;
    bool watched_ = false;
};

line_writer& writer() {
    static auto& the_writer = *new line_writer; // the last words are said after `main`
    return the_writer;
}

void open_if_closed(int descriptor) {
    // The lowest free number is given: the descriptors are opened in their order.
    if (::fcntl(descriptor, F_GETFD) < 0) static_cast<void>(::open("/dev/null", O_RDWR));
}

/// Those who share a pipe or a terminal with this process go on waiting for it as they wish.
void never_wait(int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !(S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode))) return;
    const std::string path = "/proc/self/fd/" + std::to_string(descriptor);
    const int own = ::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (own < 0) return;
    ::dup2(own, descriptor);
    ::close(own);
}

void take_message(QtMsgType /*type*/, const QMessageLogContext& /*where*/, const QString& text) {
    writer().put(text.toStdString() + '\n');
    if (on_display_lost != nullptr && text.startsWith("The Wayland connection ")) on_display_lost();
}

} // namespace

void debug_output(std::string_view message) {
    if (message.ends_with("\r\n")) message.remove_suffix(2);
    writer().put(utf8_from_ansi(message) + '\n');
}

void desktop::prepare_standard_descriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        open_if_closed(descriptor);
    never_wait(STDOUT_FILENO);
    never_wait(STDERR_FILENO);
}

void desktop::take_qt_messages(void (*display_lost)()) {
    on_display_lost = display_lost;
    qInstallMessageHandler(take_message);
}

} // namespace tyxo
