// Asks the session's screen saver, the login manager and the X server. Each of them may be missing, slow or
// hang, so they are asked on a thread of its own.

#include "platform/awake.h"

#include "platform/desktop/x_screen.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QDBusUnixFileDescriptor>
#include <QGuiApplication>
#include <QThread>

#include <memory>
#include <optional>

namespace tyxo {

namespace {

constexpr int answer_ms = 5000;
constexpr unsigned long patience_ms = 1000; ///< for an answer that is still awaited at the end

const QString who = "Tyxo Data Logger";
const QString why = "An engine is being measured";
const QString saver = "org.freedesktop.ScreenSaver";

QDBusMessage saver_call(const QString& method) {
    return QDBusMessage::createMethodCall(saver, "/org/freedesktop/ScreenSaver", saver, method);
}

/// Works on its own thread; made and destroyed there.
class sleepless : public QObject {
  public:
    explicit sleepless(bool x_server)
        : session_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, "tyxo_session")),
          system_(QDBusConnection::connectToBus(QDBusConnection::SystemBus, "tyxo_system")),
          restart_(saver, session_, QDBusServiceWatcher::WatchForRegistration) {
        if (x_server) screen_ = std::make_unique<desktop::x_screen>();
        connect(&restart_, &QDBusServiceWatcher::serviceRegistered, this, [this] {
            if (on_) ask_session(); // one that has started anew remembers nothing
        });
    }

    void keep(bool on) {
        on_ = on;
        if (screen_) screen_->suspend_saver(on);
        if (on) {
            ask_session();
            ask_system();
            return;
        }
        if (cookie_) session_.send(saver_call("UnInhibit") << *cookie_);
        cookie_.reset();
        lock_ = QDBusUnixFileDescriptor();
    }

    void wake() {
        if (screen_) screen_->wake();
        session_.send(saver_call("SimulateUserActivity"));
    }

  private:
    void ask_session() {
        const QDBusReply<uint> reply =
            session_.call(saver_call("Inhibit") << who << why, QDBus::Block, answer_ms);
        if (reply.isValid()) cookie_ = reply.value();
    }

    /// The lock holds as long as its descriptor is open.
    void ask_system() {
        QDBusMessage call = QDBusMessage::createMethodCall(
            "org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager", "Inhibit");
        call << "sleep:idle" << who << why << "block";
        const QDBusReply<QDBusUnixFileDescriptor> reply = system_.call(call, QDBus::Block, answer_ms);
        if (reply.isValid()) lock_ = reply.value();
    }

    QDBusConnection session_;
    QDBusConnection system_;
    QDBusServiceWatcher restart_;
    std::unique_ptr<desktop::x_screen> screen_;
    std::optional<uint> cookie_;
    QDBusUnixFileDescriptor lock_;
    bool on_ = false;
};

class awake_thread {
  public:
    awake_thread() {
        post_.moveToThread(&thread_);
        thread_.setObjectName("awake");
        thread_.start();
        const bool x_server = QGuiApplication::platformName() == "xcb";
        post([this, x_server] { sleepless_ = std::make_unique<sleepless>(x_server); });
    }

    void keep(bool on) {
        post([this, on] { sleepless_->keep(on); });
    }
    void wake() {
        post([this] { sleepless_->wake(); });
    }

    /// False when the thread hangs.
    bool end() {
        post([this] {
            sleepless_.reset();
            thread_.quit();
        });
        return thread_.wait(patience_ms);
    }

  private:
    template <class Work> void post(Work work) {
        QMetaObject::invokeMethod(&post_, work, Qt::QueuedConnection);
    }

    std::unique_ptr<sleepless> sleepless_; // the thread's alone
    QObject post_;                         // where the thread takes its work from
    QThread thread_;
};

awake_thread* thread = nullptr;

void end_thread() {
    if (thread->end()) delete thread; // one that hangs is left behind; the process takes it along
    thread = nullptr;
}

awake_thread& awake() {
    if (thread == nullptr) {
        thread = new awake_thread;
        qAddPostRoutine(end_thread);
    }
    return *thread;
}

} // namespace

void keep_awake(bool on) {
    static bool kept = false;
    if (on == kept) return;
    kept = on;
    awake().keep(on);
}

void wake_screen() {
    awake().wake();
}

} // namespace tyxo
