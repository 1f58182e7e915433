// Sound beside the windows' thread: they never wait for it.

#include "platform/sound.h"

#include "platform/debug_output.h"
#include "platform/desktop/sound_player.h"
#include "platform/desktop/text.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>

#include <future>
#include <stdexcept>

namespace tyxo {

namespace {

constexpr std::chrono::seconds patience{1}; ///< for a player that hangs at the end of the program

class sound_thread {
  public:
    void play(std::string path) { player_.play(std::move(path)); }

    /// False when the thread hangs.
    bool end() {
        player_.end();
        return over_.wait_for(patience) == std::future_status::ready;
    }

  private:
    desktop::sound_player player_;
    std::future<void> over_ = std::async(std::launch::async, [this] { player_.run(); });
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
        try {
            sounds = new sound_thread;
        } catch (const std::runtime_error& missing) { // descriptors or threads of the process
            debug_output(std::string("PlaySoundA: ") + missing.what());
            return;
        }
        qAddPostRoutine(end_sounds);
    }
    sounds->play(QFile::encodeName(qt_text(without_blanks_at_end(name))).toStdString());
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
