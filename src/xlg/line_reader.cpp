#include "xlg/line_reader.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tyxo::xlg {

namespace {

constexpr std::size_t kept_of_long_lines = longest_line;

} // namespace

line_reader::line_reader(byte_source source, std::size_t block) : source_(std::move(source)) {
    block = std::max(block, 4 * kept_of_long_lines);
    memory_ = std::make_unique_for_overwrite<char[]>(block);
    block_ = {memory_.get(), block};
}

bool line_reader::next(line& found) {
    for (;;) {
        const char* const from = block_.data() + begin_;
        const std::size_t there = end_ - begin_;
        const void* const feed =
            there > searched_ ? std::memchr(from + searched_, '\n', there - searched_) : nullptr;
        if (feed != nullptr) {
            auto length = static_cast<std::size_t>(static_cast<const char*>(feed) - from);
            const std::size_t whole = length + 1;
            const bool return_too = length > 0 && from[length - 1] == '\r';
            if (return_too) --length;
            finish(found, length, return_too ? line_end::cr_lf : line_end::lf);
            begin_ += whole;
            return true;
        }
        searched_ = there;
        if (fill()) continue;
        const std::size_t rest = end_ - begin_; // at the front by now
        if (rest == 0) return false;
        const bool return_alone = block_[end_ - 1] == '\r';
        finish(found, rest - (return_alone ? 1 : 0), return_alone ? line_end::cr : line_end::none);
        begin_ = end_;
        return true;
    }
}

/// Moves the line that has begun to the front, and reads on behind it. Of a line that is too long only its
/// beginning stays, and its last byte, which may be the CR of its end.
bool line_reader::fill() {
    std::size_t there = end_ - begin_;
    char* const front = block_.data();
    if (there > 2 * kept_of_long_lines) {
        const std::size_t out = there - kept_of_long_lines - 1;
        block_[begin_ + kept_of_long_lines] = block_[end_ - 1];
        left_out_ += static_cast<std::int64_t>(out);
        there -= out;
        searched_ = there;
    }
    std::memmove(front, front + begin_, there);
    begin_ = 0;
    end_ = there;
    const std::size_t read = source_(block_.subspan(there));
    end_ += read;
    bytes_ += static_cast<std::int64_t>(read);
    return read > 0;
}

void line_reader::finish(line& found, std::size_t length, line_end end) {
    found.length = static_cast<std::int64_t>(length) + left_out_;
    found.text = {block_.data() + begin_, found.too_long() ? kept_of_long_lines : length};
    found.number = ++number_;
    found.end = end;
    left_out_ = 0;
    searched_ = 0;
}

} // namespace tyxo::xlg
