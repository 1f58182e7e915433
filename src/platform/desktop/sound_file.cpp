#include "platform/desktop/sound_file.h"

#include "basics/failure.h"

#include <algorithm>
#include <memory>
#include <sndfile.h>

namespace tyxo::desktop {

namespace {

constexpr sf_count_t most_values = 1'000'000; // the sound server keeps 4 MB of a sound and drops the rest

} // namespace

sound_samples read_sound(const std::string& path) {
    SF_INFO form{};
    const std::unique_ptr<SNDFILE, decltype(&sf_close)> file(sf_open(path.c_str(), SFM_READ, &form),
                                                             &sf_close);
    if (file == nullptr || form.channels < 1) throw failure("the file cannot be played");
    const sf_count_t most_frames = std::min(form.frames, most_values / form.channels);
    sound_samples sound{static_cast<unsigned>(form.samplerate), static_cast<unsigned>(form.channels), {}};
    sound.values.resize(static_cast<std::size_t>(most_frames * form.channels));
    const sf_count_t frames = sf_readf_float(file.get(), sound.values.data(), most_frames);
    if (frames < 1) throw failure("the file cannot be played");
    sound.values.resize(static_cast<std::size_t>(frames * form.channels));
    return sound;
}

} // namespace tyxo::desktop
