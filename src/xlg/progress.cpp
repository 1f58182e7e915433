#include "xlg/progress.h"

#include <algorithm>
#include <array>

namespace tyxo::xlg {

namespace {

constexpr int bar_width = 20;
constexpr std::chrono::milliseconds between_showings{200};

std::string bytes_text(double bytes) {
    std::array<char, 32> text{};
    const bool large = bytes >= 1e9;
    std::snprintf(text.data(), text.size(), large ? "%.1f GB" : "%.0f MB", bytes / (large ? 1e9 : 1e6));
    return text.data();
}

} // namespace

std::string progress_text(std::int64_t done, std::int64_t total, double seconds) {
    const double part = total > 0 ? std::min(1.0, static_cast<double>(done) / static_cast<double>(total)) : 0;
    const auto marks = static_cast<std::size_t>(part * bar_width);
    std::string text = "[" + std::string(marks, '#') + std::string(bar_width - marks, ' ') + "] " +
                       std::to_string(static_cast<int>(part * 100)) + " % of " +
                       bytes_text(static_cast<double>(total));
    if (seconds > 0) text += ", " + bytes_text(static_cast<double>(done) / seconds) + "/s";
    return text;
}

void progress::add(std::size_t bytes) {
    if (stream_ == nullptr) return;
    const std::lock_guard lock(mutex_);
    done_ += static_cast<std::int64_t>(bytes);
    const auto now = clock::now();
    if (now - shown_at_ < between_showings) return;
    shown_at_ = now;
    shown_ = true;
    const double seconds = std::chrono::duration<double>(now - begin_).count();
    std::fprintf(stream_, "\r%s\033[K", progress_text(done_, total_, seconds).c_str());
    std::fflush(stream_);
}

void progress::hide() {
    const std::lock_guard lock(mutex_);
    if (!shown_) return;
    std::fputs("\r\033[K", stream_);
    std::fflush(stream_);
    shown_ = false;
}

} // namespace tyxo::xlg
