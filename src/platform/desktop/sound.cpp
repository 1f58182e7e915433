// Sound beside the windows' thread: they never wait for it.

#include "platform/sound.h"

#include "platform/debug_output.h"
#include "platform/desktop/sound_player.h"
#include "platform/desktop/text.h"

#include <QApplication>
#include <QDir>
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

/// The plant's own file, in the working folder, or the one that was installed with the program. Nothing when
/// there is neither.
QString found_file(const QString& name) {
    const QDir installed(QApplication::applicationDirPath() + "/../share/tyxo");
    for (const QString& path : {name, QDir::cleanPath(installed.filePath(name))}) {
        if (QFileInfo(path).isFile()) return path;
    }
    return {};
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
    const std::string path = ansi_from_utf8(found_file(qt_text(name)).toStdString());
    if (path.size() <= buffer.size()) buffer.replace(0, path.size(), path);
}

void beep() {
    QApplication::beep();
}

} // namespace tyxo
