// Sound beside the windows' thread: they never wait for it.

#include "platform/sound.h"

#include "platform/debug_output.h"
#include "platform/desktop/sound_player.h"
#include "platform/desktop/text.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>

#include <memory>
#include <stdexcept>
#include <thread>

namespace tyxo {

namespace {

/// Made with the first sound and never ended: nobody waits for a player that hangs, the process takes it
/// along.
desktop::sound_player* player = nullptr;

/// Failure: the process has no more descriptors or threads.
void start_player() {
    auto made = std::make_unique<desktop::sound_player>();
    std::thread([made = made.get()] { made->run(); }).detach();
    player = made.release();
}

std::string_view without_blanks_at_end(std::string_view name) {
    return name.substr(0, name.find_last_not_of(' ') + 1);
}

} // namespace

void PlaySoundA(std::string_view name, i32 /*flags*/) {
    try {
        if (player == nullptr) start_player();
    } catch (const std::runtime_error& missing) {
        return debug_output(std::string("PlaySoundA: ") + missing.what());
    }
    player->play(QFile::encodeName(qt_text(without_blanks_at_end(name))).toStdString());
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
