#pragma once
// Plays sound files. It lives on a thread of its own, since a sound server may be slow or hang.

#include <QSoundEffect>
#include <QString>

#include <memory>
#include <string>

namespace tyxo::desktop {

class sound_player {
  public:
    /// Starts a file from its beginning; an empty path stands for a file that does not exist. What is the
    /// matter when nothing is heard goes to the debug output, once until it changes.
    void play(const QString& path);

    /// Lets go of the sound server; on the thread that has played.
    void end() { effect_.reset(); }

  private:
    void status_changed();
    void complain(const std::string& why);

    std::unique_ptr<QSoundEffect> effect_;
    std::string complaint_; // said last, while it holds
};

} // namespace tyxo::desktop
