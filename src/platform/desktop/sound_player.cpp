#include "platform/desktop/sound_player.h"

#include "platform/debug_output.h"

#include <QAudioDevice>
#include <QFileInfo>
#include <QLocalSocket>
#include <QMediaDevices>
#include <QUrl>

#include <optional>

namespace tyxo::desktop {

namespace {

constexpr int answer_ms = 500;

/// The local socket of the sound server; nothing when the server is elsewhere or its place is not known.
std::optional<QString> server_socket() {
    const QString server = qEnvironmentVariable("PULSE_SERVER");
    if (server.startsWith("unix:")) return server.mid(5);
    if (server.startsWith('/')) return server;
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!server.isEmpty() || folder.isEmpty()) return std::nullopt;
    return folder + "/pulse/native";
}

/// The sound library looks for the server once in a program's life and never again. It is therefore not woken
/// before there is a server: one that starts later than this program is still found.
bool server_present() {
    static bool seen = false;
    if (seen) return true;
    const auto path = server_socket();
    QLocalSocket socket;
    if (path) socket.connectToServer(*path);
    seen = !path || socket.waitForConnected(answer_ms);
    return seen;
}

} // namespace

void sound_player::play(const QString& path) {
    if (path.isEmpty()) return complain("PlaySoundA: no such file");
    if (!server_present()) return complain("PlaySoundA: no sound server");
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull()) {
        effect_.reset();
        return complain("PlaySoundA: no sound device");
    }
    // A new one each time: what the sound server still has to say about the last one would stop it.
    effect_ = std::make_unique<QSoundEffect>(device);
    QObject::connect(effect_.get(), &QSoundEffect::statusChanged, effect_.get(),
                     [this] { status_changed(); });
    effect_->setSource(QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()));
    effect_->play();
    status_changed();
}

void sound_player::status_changed() {
    if (effect_->status() == QSoundEffect::Ready) complaint_.clear();
    if (effect_->status() == QSoundEffect::Error) complain("PlaySoundA: the file cannot be played");
}

void sound_player::complain(const std::string& why) {
    if (complaint_ != why) debug_output(why);
    complaint_ = why;
}

} // namespace tyxo::desktop
