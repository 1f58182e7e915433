#include "faults.h"

#include <algorithm>
#include <cctype>

namespace tyxo::evaluator_sim {

namespace {

constexpr size_t tail = 4; // check digits and CR LF

} // namespace

void Faults::clear() {
    probability_.fill(0);
    pending_.fill(0);
}

bool Faults::strikes(Fault fault, Random& random) {
    int& pending = pending_.at(index(fault));
    if (pending > 0) {
        --pending;
        return true;
    }
    const double probability = probability_.at(index(fault));
    return probability > 0 && random.share() < probability;
}

std::string noise_bytes(size_t count, Random& random) {
    std::string bytes;
    while (bytes.size() < count) {
        const char byte = static_cast<char>(static_cast<unsigned char>(random.between(0, 255)));
        if (byte != ':') bytes += byte;
    }
    return bytes;
}

std::string with_bad_check(std::string frame) {
    char& digit = frame.at(frame.size() - tail + 1);
    digit = digit == '0' ? '1' : '0';
    return frame;
}

bool check_has_letters(std::string_view frame) {
    const std::string_view check = frame.substr(frame.size() - tail, 2);
    return std::any_of(check.begin(), check.end(), [](char c) { return c >= 'a' && c <= 'f'; });
}

std::string with_upper_check(std::string frame) {
    for (size_t i = frame.size() - tail; i < frame.size() - tail + 2; ++i)
        frame[i] = static_cast<char>(std::toupper(static_cast<unsigned char>(frame[i])));
    return frame;
}

std::string cut_frame(const std::string& frame, Random& random) {
    return frame.substr(0, random.between(1, frame.size() - tail));
}

} // namespace tyxo::evaluator_sim
