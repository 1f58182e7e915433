#include "platform/files.h"

#include "basics/failure.h"
#include "platform/simulation.h"

#include <algorithm>

namespace tyxo {

namespace simulation {

std::string normalised(std::string_view path) {
    std::string text(path);
    std::ranges::replace(text, '\\', '/');
    while (text.starts_with("./"))
        text.erase(0, 2);
    for (auto twice = text.find("//"); twice != text.npos; twice = text.find("//"))
        text.erase(twice, 1);
    return text;
}

std::string file(std::string_view path) {
    const auto found = world().files.find(normalised(path));
    return found == world().files.end() ? std::string() : found->second;
}

void put_file(std::string_view path, std::string_view content) {
    world().files[normalised(path)] = content;
}

} // namespace simulation

namespace {

using simulation::normalised;
using simulation::world;

std::string folder_of(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == path.npos ? "." : path.substr(0, slash);
}

bool refused_name(const std::string& path) {
    return path.empty() || path.ends_with('/') || path.find('\0') != path.npos || path.find('?') != path.npos;
}

bool can_write(const std::string& path) {
    return !refused_name(path) && !world().unwritable.contains(path) &&
           !world().unwritable.contains(folder_of(path)) && world().folders.contains(folder_of(path));
}

/// The paths behind the handles of open files; a handle is never given twice in a test.
std::vector<std::string>& open_paths() {
    static std::vector<std::string> paths;
    return paths;
}

int open_handle(const std::string& path) {
    world().opened.push_back(path);
    open_paths().push_back(path);
    return static_cast<int>(open_paths().size()) - 1;
}

/// Takes the bytes from what is left on the disk; false when they do not fit.
bool take_space(std::size_t bytes) {
    auto& space = world().disk_space;
    if (!space) return true;
    if (*space < bytes) return false;
    *space -= bytes;
    return true;
}

} // namespace

output_file::~output_file() = default;

void output_file::close() {
    handle_ = -1;
}

void output_file::create(std::string_view path) {
    close();
    const std::string name = normalised(path);
    if (!can_write(name)) throw failure("Path not found");
    world().files[name].clear();
    handle_ = open_handle(name);
}

void output_file::append_to(std::string_view path) {
    close();
    const std::string name = normalised(path);
    if (!can_write(name)) throw failure("Path not found");
    world().files[name];
    handle_ = open_handle(name);
}

void output_file::print(std::string_view line) {
    if (!is_open()) throw failure("Bad file name or number");
    const std::string& name = open_paths()[static_cast<std::size_t>(handle_)];
    if (world().unwritable.contains(name)) throw failure("Device I/O error");
    if (!take_space(line.size() + 2)) throw failure("Disk full");
    world().files[name].append(line).append("\r\n");
}

bool readable(std::string_view path) {
    const std::string name = normalised(path);
    return world().files.contains(name) && !world().unreadable.contains(name);
}

bool file_exists(std::string_view path) {
    return world().files.contains(normalised(path));
}

std::optional<std::string> read_file(std::string_view path) {
    if (!readable(path)) return std::nullopt;
    return simulation::file(path);
}

bool replace_file(std::string_view path, std::string_view content) {
    const std::string name = normalised(path);
    if (!can_write(name) || !take_space(content.size())) return false;
    world().files[name] = content;
    return true;
}

void make_folder(std::string_view path) {
    const std::string name = normalised(path);
    if (world().folders.contains(name)) throw failure("Path/File access error");
    if (refused_name(name) || world().unwritable.contains(folder_of(name)) ||
        !world().folders.contains(folder_of(name))) {
        throw failure("Path not found");
    }
    world().folders.insert(name);
}

} // namespace tyxo
