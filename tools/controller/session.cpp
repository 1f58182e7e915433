#include "session.h"

namespace tyxo::controller_sim {

Session::Session(int port, std::size_t base, Say say)
    : base_(base), say_(std::move(say)), server_(port, {[this](const Answer& answer) { count(answer); },
                                                        [this](const auto& line) { say_(line); }}) {
    say_("listening on port " + std::to_string(server_.port()));
}

void Session::count(const Answer& answer) {
    if (answer.outcome == Outcome::refused)
        ++refused_;
    else if (answer.outcome == Outcome::read)
        ++reads_;
    else if (const auto place = place_of(answer.address, answer.count, base_))
        ++frames_.at(place->channel).at(place->block);
    else
        ++other_writes_;
}

void Session::report() {
    for (std::size_t channel = 0; channel < channels; ++channel) {
        std::string line = "channel " + std::to_string(channel + 1) + " frames";
        for (std::size_t i = 0; i < blocks.size(); ++i)
            line += " " + std::to_string(blocks[i].code) + "=" + std::to_string(frames_[channel][i]);
        say_(line);
        for (const std::string& words : channel_in_words(server_.image(), base_, channel, frames_[channel]))
            say_(words);
    }
    say_("others writes=" + std::to_string(other_writes_) + " reads=" + std::to_string(reads_) +
         " refused=" + std::to_string(refused_));
}

} // namespace tyxo::controller_sim
