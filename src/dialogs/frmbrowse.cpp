#include "dialogs/frmbrowse.h"

#include <utility>

namespace tyxo::frmbrowse {

void browse(std::function<void()> chosen) {
    state.chosen = std::move(chosen);
    state.form.show();
}

void Ok_click(std::string_view path) {
    state.result = path;
    const bool closed = path.ends_with('/') || path.ends_with('\\');
    if (!closed) state.result += '/';
    const auto chosen = std::exchange(state.chosen, nullptr);
    unload();
    if (chosen) chosen();
}

void unload() {
    state.chosen = nullptr;
    state.form.unload();
}

} // namespace tyxo::frmbrowse
