#include "dialogs/frmbrowse.h"

#include <utility>

namespace tyxo {

void browse(std::function<void()> done) {
    frmbrowse.done = std::move(done);
    frmbrowse.form.show();
}

void frmbrowse_Ok_click(std::string_view path) {
    frmbrowse.result = path;
    const bool closed = path.ends_with('/') || path.ends_with('\\');
    if (!closed) frmbrowse.result += '/';
    frmbrowse_unload();
}

void frmbrowse_unload() {
    frmbrowse.form.unload();
    if (const auto done = std::exchange(frmbrowse.done, nullptr)) done();
}

} // namespace tyxo
