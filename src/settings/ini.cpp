#include "settings/ini.h"

#include "platform/files.h"
#include "platform/program.h"
#include "settings/ini_text.h"

#include <optional>

namespace tyxo::Ini {

namespace {

std::string file_path() {
    return ".\\" + executable_name() + ".ini";
}

/// The text of the file with the keys that an open change has written.
struct open_change {
    int depth = 0;
    bool readable = false;
    bool changed = false;
    std::string text;
};
open_change change;

/// The file's text, empty when there is no file; nothing when there is one that cannot be read now.
std::optional<std::string> file_text() {
    auto text = read_file(file_path());
    if (!text && !file_exists(file_path())) text.emplace();
    return text;
}

} // namespace

std::string ini_read(std::string_view key) {
    const std::string text = change.changed ? change.text : read_file(file_path()).value_or("");
    return get_key(text, executable_name(), key).substr(0, value_limit);
}

void ini_write(std::string_view key, std::string_view value) {
    const one_change this_key;
    if (!change.readable) return; // it keeps its other keys
    change.text = set_key(change.text, executable_name(), key, value);
    change.changed = true;
}

one_change::one_change() {
    if (++change.depth > 1) return;
    const auto text = file_text();
    change.readable = text.has_value();
    change.text = text.value_or("");
}

one_change::~one_change() {
    if (--change.depth > 0) return;
    if (change.changed) replace_file(file_path(), change.text);
    change = {};
}

} // namespace tyxo::Ini
