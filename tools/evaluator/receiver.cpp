#include "receiver.h"

namespace tyxo::evaluator_sim {

std::vector<std::string> Receiver::take(std::string_view bytes) {
    std::vector<std::string> frames;
    for (const char c : bytes) {
        if (c == ':') {
            frame_.assign(1, ':');
            open_ = true;
            cr_seen_ = false;
        } else if (!open_) {
            continue;
        } else if (c == '\r') {
            cr_seen_ = true;
        } else if (c == '\n') {
            if (!cr_seen_) continue;
            frames.push_back(std::move(frame_));
            frame_.clear();
            open_ = false;
        } else {
            frame_ += c;
            open_ = frame_.size() <= longest_frame;
        }
    }
    return frames;
}

} // namespace tyxo::evaluator_sim
