#include "xlg/ordered_output.h"

#include "basics/failure.h"

#include <utility>

namespace tyxo::xlg {

namespace {

constexpr std::size_t most_waiting = 8 << 20;

} // namespace

ordered_output::ordered_output(std::size_t files, text_sink to)
    : to_(std::move(to)), waiting_(files), finished_(files) {}

void ordered_output::say(std::size_t file, std::string_view text) {
    std::unique_lock lock(mutex_);
    turn_.wait(lock, [&] {
        return !failed_.empty() || file == first_ || waiting_bytes_ + text.size() <= most_waiting;
    });
    if (!failed_.empty()) throw failure(failed_);
    if (file != first_) {
        waiting_[file] += text;
        waiting_bytes_ += text.size();
        return;
    }
    pass_on_waiting(file);
    pass_on(text);
}

void ordered_output::finish(std::size_t file) {
    const std::lock_guard lock(mutex_);
    finished_[file] = true;
    while (first_ < finished_.size() && finished_[first_]) {
        if (failed_.empty()) pass_on_waiting(first_);
        ++first_;
    }
    turn_.notify_all();
}

void ordered_output::pass_on_waiting(std::size_t file) {
    const std::string text = std::exchange(waiting_[file], {});
    waiting_bytes_ -= text.size();
    pass_on(text);
}

void ordered_output::pass_on(std::string_view text) {
    if (text.empty()) return;
    try {
        to_(text);
    } catch (const failure& why) {
        failed_ = why.what();
        turn_.notify_all();
        throw;
    }
}

} // namespace tyxo::xlg
