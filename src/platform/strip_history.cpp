#include "platform/strip_history.h"

namespace tyxo {

void strip_window::append(const strip_row& row) {
    newest_ = row.time;
    ++rows_;
}

void strip_window::points(std::size_t /*curve*/, i32 /*columns*/, std::vector<strip_point>& points) const {
    points.clear();
}

i32 strip_history::append(const strip_row& row) {
    for (strip_window& window : windows_)
        window.append(row);
    return windows_.front().rows() - 1;
}

void strip_history::clear() {
    for (strip_window& window : windows_)
        window = strip_window(window.span());
}

const strip_window& strip_history::window(std::int64_t span) const {
    for (const strip_window& window : windows_)
        if (window.span() >= span) return window;
    return windows_.back();
}

} // namespace tyxo
