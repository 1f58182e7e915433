#include "platform/files.h"

#include "platform/debug_output.h"
#include "platform/desktop/descriptor.h"
#include "platform/desktop/output_file.h"
#include "platform/desktop/replace_file.h"

#include <cerrno>
#include <map>
#include <mutex>
#include <sys/stat.h>
#include <system_error>

namespace tyxo {

namespace {

using namespace desktop;

constexpr mode_t new_folder_mode = 0777;

/// Replacements that are under way: what a file holds although the disk does not show it yet.
struct replacements {
    struct content {
        std::string text;
        int under_way = 0;
    };
    std::mutex guard;
    std::map<std::string, content> by_path;
    step_thread steps;
};

replacements& all_replacements() {
    static auto* const one = new replacements; // its thread lives as long as the process
    return *one;
}

} // namespace

bool file_exists(std::string_view path) {
    struct stat status {};
    return ::stat(system_path(path).c_str(), &status) == 0 || errno != ENOENT;
}

std::optional<std::string> read_file(std::string_view path) {
    const std::string name = system_path(path);
    {
        replacements& all = all_replacements();
        const std::lock_guard lock(all.guard);
        const auto found = all.by_path.find(name);
        if (found != all.by_path.end()) return found->second.text;
    }
    return read_system_file(name);
}

void replace_file(std::string_view path, std::string_view content) {
    replacements& all = all_replacements();
    const std::string name = system_path(path);
    const auto now = step_thread::clock::now();
    const bool idle = all.steps.finish(now);
    {
        const std::lock_guard lock(all.guard);
        replacements::content& latest = all.by_path[name];
        latest.text = content;
        ++latest.under_way;
    }
    const auto step = [&all, name, text = std::string(content)] {
        if (!replace_system_file(name, text)) {
            debug_output("cannot write " + name + " : " + std::generic_category().message(errno));
        }
        const std::lock_guard lock(all.guard);
        if (--all.by_path[name].under_way == 0) all.by_path.erase(name);
    };
    all.steps.run(step, idle ? now + longest_disk_wait : now);
}

bool desktop::finish_replacements(step_thread::clock::time_point until) {
    return all_replacements().steps.finish(until);
}

void make_folder(std::string_view path) {
    if (::mkdir(system_path(path).c_str(), new_folder_mode) != 0) fail_with_system_text();
}

} // namespace tyxo
