#include "transmitter.h"

#include <algorithm>
#include <cmath>

namespace tyxo::evaluator_sim {

size_t Pacer::allowance(double time) {
    credit_ += per_second_ * std::clamp(time - last_, 0.0, longest_gap);
    last_ = time;
    const double whole = std::floor(credit_);
    credit_ -= whole;
    return static_cast<size_t>(whole);
}

void Pacer::idle(double time) {
    credit_ = 0;
    last_ = time;
}

bool Transmitter::waiting(const std::string& code) const {
    const auto has_code = [&](const Outgoing& item) { return item.code == code; };
    return std::any_of(urgent_.begin(), urgent_.end(), has_code) ||
           std::any_of(curves_.begin(), curves_.end(), has_code);
}

size_t Transmitter::waiting_bytes() const {
    size_t sum = current_.bytes.size() - position_;
    for (const auto* queue : {&urgent_, &curves_})
        for (const Outgoing& item : *queue)
            sum += item.bytes.size();
    return sum;
}

void Transmitter::clear() {
    urgent_.clear();
    curves_.clear();
    current_ = {};
    position_ = 0;
    current_damaged_ = false;
}

bool Transmitter::next_item() {
    auto& queue = urgent_.empty() ? curves_ : urgent_;
    if (queue.empty()) return false;
    current_ = std::move(queue.front());
    queue.pop_front();
    position_ = 0;
    return true;
}

std::string Transmitter::take(size_t count) {
    std::string bytes;
    finished_.clear();
    while (bytes.size() < count) {
        if (current_.bytes.empty() && !next_item()) break;
        const std::string piece = current_.bytes.substr(position_, count - bytes.size());
        bytes += piece;
        position_ += piece.size();
        if (position_ == current_.bytes.size()) {
            finished_.push_back({std::move(current_), bytes.size()});
            current_ = {};
            position_ = 0;
        }
    }
    taken_ = bytes.size();
    return bytes;
}

std::vector<Outgoing> Transmitter::settle(size_t sent) {
    std::vector<Outgoing> complete;
    for (Finished& done : finished_) {
        if (current_damaged_ || done.end > sent)
            ++lost_items_;
        else
            complete.push_back(std::move(done.item));
        current_damaged_ = false; // it was about the first one only
    }
    finished_.clear();
    if (sent < taken_ && !current_.bytes.empty()) current_damaged_ = true;
    return complete;
}

} // namespace tyxo::evaluator_sim
