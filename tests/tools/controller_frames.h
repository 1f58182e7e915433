// Frames for the tests of the simulated controller.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tyxo::controller_sim {

inline std::string word(unsigned value) {
    return {static_cast<char>(value / 256 % 256), static_cast<char>(value % 256)};
}

inline std::string bytes(const std::vector<int>& values) {
    std::string text;
    for (const int value : values)
        text += static_cast<char>(value);
    return text;
}

/// A function 16 request with the transaction identifier 0 and the unit identifier 1.
inline std::string write_frame(unsigned address, const std::vector<unsigned>& values) {
    const auto count = static_cast<unsigned>(values.size());
    std::string frame = bytes({0, 0, 0, 0}) + word(7 + 2 * count) + bytes({1, 16}) + word(address) +
                        word(count) + bytes({static_cast<int>(2 * count)});
    for (const unsigned value : values)
        frame += word(value);
    return frame;
}

inline std::string read_frame(unsigned address, unsigned count) {
    return bytes({0, 0, 0, 0, 0, 6, 1, 3}) + word(address) + word(count);
}

} // namespace tyxo::controller_sim
