#include "controls/text_box.h"

namespace tyxo {

void text_box::append(std::string_view line) {
    buffer_ += line;
    appended_ += line.size();
}

void text_box::keep_last(std::size_t characters) {
    if (size() <= characters) return;
    front_ = buffer_.size() - characters;
    // Moving the text up only when half of the buffer is waste makes a cut as cheap as an append.
    if (front_ > buffer_.size() / 2) {
        buffer_.erase(0, front_);
        front_ = 0;
    }
}

} // namespace tyxo
