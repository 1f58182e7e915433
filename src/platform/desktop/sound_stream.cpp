#include "platform/desktop/sound_stream.h"

#include "basics/failure.h"

namespace tyxo::desktop {

namespace {

constexpr auto all = static_cast<std::uint32_t>(-1); // the server's own choice
constexpr pa_usec_t ahead_us = 200'000;              // what the device takes before it is heard

std::string description(int error) {
    if (error == PA_ERR_CONNECTIONREFUSED) return "no sound server";
    if (error == PA_ERR_NOENTITY) return "no sound device";
    return std::string("sound server: ") + pa_strerror(error);
}

} // namespace

sound_loop::sound_loop() : loop_(pa_mainloop_new(), &pa_mainloop_free) {
    if (loop_ == nullptr) throw failure("no sound: too many open files");
}

void sound_loop::turn(std::chrono::microseconds at_most) {
    pa_mainloop_prepare(loop_.get(), static_cast<int>(at_most.count()));
    if (woken_.exchange(false)) pa_mainloop_wakeup(loop_.get()); // the line above forgets who woke before it
    pa_mainloop_poll(loop_.get());
    pa_mainloop_dispatch(loop_.get());
}

void sound_loop::wake() {
    if (!woken_.exchange(true)) pa_mainloop_wakeup(loop_.get());
}

sound_stream::sound_stream(const sound_loop& loop)
    : context_(pa_context_new(loop.api(), "Tyxo Data Logger")) {
    if (context_ == nullptr) throw failure("no sound: no memory");
    pa_context_connect(context_, nullptr, PA_CONTEXT_NOFLAGS, nullptr); // `connected` tells what failed
}

sound_stream::~sound_stream() {
    if (drained_ != nullptr) pa_operation_unref(drained_);
    if (stream_ != nullptr) pa_stream_unref(stream_);
    pa_context_disconnect(context_); // the server stops what it still plays
    pa_context_unref(context_);
}

bool sound_stream::connected() const {
    const pa_context_state_t state = pa_context_get_state(context_);
    if (!PA_CONTEXT_IS_GOOD(state)) throw failure(description(pa_context_errno(context_)));
    return state == PA_CONTEXT_READY;
}

void sound_stream::open(const sound_samples& sound) {
    const pa_sample_spec form{PA_SAMPLE_FLOAT32NE, sound.rate, static_cast<std::uint8_t>(sound.channels)};
    if (sound.channels > PA_CHANNELS_MAX || pa_sample_spec_valid(&form) == 0)
        throw failure("the file cannot be played");
    stream_ = pa_stream_new(context_, "alarm", &form, nullptr);
    if (stream_ == nullptr) throw failure(description(pa_context_errno(context_)));
    const pa_buffer_attr buffer{.maxlength = all,
                                .tlength = static_cast<std::uint32_t>(pa_usec_to_bytes(ahead_us, &form)),
                                .prebuf = all,
                                .minreq = all,
                                .fragsize = all};
    pa_stream_connect_playback(stream_, nullptr, &buffer, PA_STREAM_NOFLAGS, nullptr, nullptr);
}

bool sound_stream::opened() const {
    const pa_stream_state_t state = pa_stream_get_state(stream_);
    if (!PA_STREAM_IS_GOOD(state)) throw failure(description(pa_context_errno(context_)));
    return state == PA_STREAM_READY;
}

void sound_stream::play(const sound_samples& sound) {
    const std::size_t bytes = sound.values.size() * sizeof(float);
    pa_stream_write(stream_, sound.values.data(), bytes, nullptr, 0, PA_SEEK_RELATIVE);
    drained_ = pa_stream_drain(stream_, nullptr, nullptr);
}

bool sound_stream::over() const {
    return drained_ == nullptr || pa_operation_get_state(drained_) != PA_OPERATION_RUNNING;
}

} // namespace tyxo::desktop
