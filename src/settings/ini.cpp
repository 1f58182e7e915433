#include "settings/ini.h"

#include "platform/files.h"
#include "platform/program.h"
#include "settings/ini_text.h"

namespace tyxo::Ini {

namespace {

std::string file_path() {
    return ".\\" + executable_name() + ".ini";
}

} // namespace

std::string ini_read(std::string_view key) {
    return get_key(read_file(file_path()).value_or(""), executable_name(), key).substr(0, value_limit);
}

void ini_write(std::string_view key, std::string_view value) {
    const auto text = read_file(file_path());
    if (!text && file_exists(file_path())) return; // a file that cannot be read now keeps its other keys
    replace_file(file_path(), set_key(text.value_or(""), executable_name(), key, value));
}

} // namespace tyxo::Ini
