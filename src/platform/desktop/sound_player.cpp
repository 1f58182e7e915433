#include "platform/desktop/sound_player.h"

#include "basics/failure.h"
#include "platform/debug_output.h"

#include <exception>
#include <utility>

namespace tyxo::desktop {

namespace {

/// An alert starts its sound every 1.2 s. What starts after a longer pause belongs to another alarm.
constexpr std::chrono::seconds longest_pause{2};

/// For a server that hangs. Then nothing is heard, and the next start looks for the server anew.
constexpr std::chrono::seconds patience{3};

constexpr std::chrono::minutes a_while{1}; ///< between two looks when nothing happens

} // namespace

void sound_player::play(std::string path) {
    {
        const std::lock_guard lock(mutex_);
        const auto now = clock::now();
        if (now - wanted_at_ > longest_pause) new_alarm_ = true;
        wanted_at_ = now;
        wanted_ = std::move(path);
    }
    loop_.wake();
}

void sound_player::run() {
    for (;;) {
        if (const auto path = take()) start(*path);
        if (stream_ && stream_->over()) stream_.reset();
        loop_.turn(a_while);
    }
}

std::optional<std::string> sound_player::take() {
    const std::lock_guard lock(mutex_);
    if (std::exchange(new_alarm_, false)) complaint_.clear();
    return std::exchange(wanted_, std::nullopt);
}

void sound_player::start(const std::string& path) {
    try {
        hear(path);
        complaint_.clear();
    } catch (const std::exception& missing) {
        stream_.reset();
        complain(std::string("PlaySoundA: ") + missing.what());
    }
}

/// Each start has a connection of its own: whatever became of the server since the last one, it is found when
/// it is there.
void sound_player::hear(const std::string& path) {
    stream_.reset();
    if (path.empty()) throw failure("no such file");
    stream_.emplace(loop_);
    wait_until([this] { return stream_->connected(); });
    const sound_samples sound = read_sound(path);
    stream_->open(sound);
    wait_until([this] { return stream_->opened(); });
    stream_->play(sound);
    const std::lock_guard lock(mutex_);
    if (wanted_ == path) wanted_.reset(); // asked for again while the server took its time: this is it
}

template <class condition> void sound_player::wait_until(condition holds) {
    const auto limit = clock::now() + patience;
    while (!holds()) {
        const auto left = std::chrono::ceil<std::chrono::microseconds>(limit - clock::now());
        if (left.count() <= 0) throw failure("the sound server does not answer");
        loop_.turn(left);
    }
}

void sound_player::complain(const std::string& why) {
    if (complaint_ != why) debug_output(why);
    complaint_ = why;
}

} // namespace tyxo::desktop
