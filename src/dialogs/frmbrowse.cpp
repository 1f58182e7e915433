#include "dialogs/frmbrowse.h"

#include <utility>

namespace tyxo {

void browse(std::function<void()> chosen) {
    frmbrowse.chosen = std::move(chosen);
    frmbrowse.form.show();
}

void frmbrowse_Ok_click(std::string_view path) {
    frmbrowse.result = path;
    const bool closed = path.ends_with('/') || path.ends_with('\\');
    if (!closed) frmbrowse.result += '/';
    const auto chosen = std::exchange(frmbrowse.chosen, nullptr);
    frmbrowse_unload();
    if (chosen) chosen();
}

void frmbrowse_unload() {
    frmbrowse.chosen = nullptr;
    frmbrowse.form.unload();
}

} // namespace tyxo
