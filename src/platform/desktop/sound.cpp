// Sound on Qt. The windows never wait for it: the player has a thread of its own, and what the player has not
// taken yet is replaced, not queued.

#include "platform/sound.h"

#include "platform/desktop/sound_player.h"
#include "platform/desktop/text.h"

#include <QApplication>
#include <QFileInfo>
#include <QMutex>
#include <QThread>

namespace tyxo {

namespace {

constexpr unsigned long patience_ms = 1000; ///< for a player that hangs in its sound server

class sound_thread {
  public:
    sound_thread() {
        post_.moveToThread(&thread_);
        thread_.setObjectName("sound");
        thread_.start();
    }

    void play(const QString& path) {
        const QMutexLocker lock(&mutex_);
        wanted_ = path;
        if (posted_) return;
        posted_ = true;
        QMetaObject::invokeMethod(&post_, [this] { player_.play(take()); });
    }

    /// False when the thread hangs.
    bool end() {
        QMetaObject::invokeMethod(&post_, [this] {
            player_.end();
            thread_.quit();
        });
        return thread_.wait(patience_ms);
    }

  private:
    QString take() {
        const QMutexLocker lock(&mutex_);
        posted_ = false;
        return wanted_;
    }

    desktop::sound_player player_; // the thread's alone
    QMutex mutex_;
    QString wanted_;
    bool posted_ = false;
    QObject post_; // where the thread takes its work from
    QThread thread_;
};

sound_thread* sounds = nullptr;

void end_sounds() {
    if (sounds->end()) delete sounds; // one that hangs is left behind; the process takes it along
    sounds = nullptr;
}

std::string_view without_blanks_at_end(std::string_view name) {
    return name.substr(0, name.find_last_not_of(' ') + 1);
}

} // namespace

void PlaySoundA(std::string_view name, i32 /*flags*/) {
    if (sounds == nullptr) {
        sounds = new sound_thread;
        qAddPostRoutine(end_sounds);
    }
    sounds->play(qt_text(without_blanks_at_end(name)));
}

void GetShortPathNameA(std::string_view name, std::string& buffer) {
    // No file system here has short names: a path is its own short form.
    if (name.size() > buffer.size() || !QFileInfo(qt_text(name)).isFile()) return;
    buffer.replace(0, name.size(), name);
}

void beep() {
    QApplication::beep();
}

} // namespace tyxo
