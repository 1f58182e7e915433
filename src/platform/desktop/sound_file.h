#pragma once
// What is in a sound file.

#include <string>
#include <vector>

namespace tyxo::desktop {

struct sound_samples {
    unsigned rate = 0; ///< a second, of each channel
    unsigned channels = 0;
    std::vector<float> values; ///< -1 to 1, of all channels in turns
};

/// Reads a sound file in any usual format. Of a long one it gives the beginning, at least some seconds.
/// Failure: it cannot be read as a sound.
[[nodiscard]] sound_samples read_sound(const std::string& path);

} // namespace tyxo::desktop
