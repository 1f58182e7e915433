#include "shrink.h"

#include <algorithm>

namespace months {

history shrunk(history whole, const std::function<bool(const history&)>& fails, int most) {
    for (std::size_t piece = std::max<std::size_t>(1, whole.acts.size() / 2); most > 0;) {
        bool shorter = false;
        for (std::size_t begin = 0; begin < whole.acts.size() && most > 0;) {
            history tried = whole;
            const auto first = tried.acts.begin() + static_cast<std::ptrdiff_t>(begin);
            const std::size_t count = std::min(piece, whole.acts.size() - begin);
            tried.acts.erase(first, first + static_cast<std::ptrdiff_t>(count));
            --most;
            if (fails(tried)) {
                whole = std::move(tried);
                shorter = true;
            } else {
                begin += piece;
            }
        }
        if (piece == 1 && !shorter) break;
        piece = std::max<std::size_t>(1, piece / 2);
    }
    return whole;
}

} // namespace months
