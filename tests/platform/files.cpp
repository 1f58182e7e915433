#include "platform/files.h"

#include "basics/failure.h"
#include "platform/line_file.h"
#include "platform/simulation.h"

#include <algorithm>
#include <utility>

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

std::string take_file_away(std::string_view path) {
    const std::string name = normalised(path);
    ++world().generations[name];
    auto node = world().files.extract(name);
    return node.empty() ? std::string() : node.mapped();
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

/// Takes the bytes from what is left on the disk; false when they do not fit.
bool take_space(std::size_t bytes) {
    auto& space = world().disk_space;
    if (!space) return true;
    if (*space < bytes) return false;
    *space -= bytes;
    return true;
}

} // namespace

/// Which file of the disk a handle means: the path, and which of the files that stood there one after
/// another.
struct disk_file::state {
    std::string path;
    bool open = false;
    int generation = 0;
    bool unsynced = false;
};

disk_file::disk_file() : state_(std::make_unique<state>()) {}
disk_file::~disk_file() = default;

bool disk_file::is_open() const {
    return state_->open;
}

void disk_file::close() {
    state_->open = false;
}

bool disk_file::open(std::string_view path) {
    close();
    const std::string name = normalised(path);
    if (!can_write(name)) throw failure("Path not found");
    const bool created = world().files.try_emplace(name).second;
    world().opened.push_back(name);
    if (world().during_open) world().during_open();
    state_->path = name;
    state_->generation = world().generations[name];
    state_->open = true;
    state_->unsynced = created;
    return created;
}

bool disk_file::in_place() const {
    return world().files.contains(state_->path) && world().generations[state_->path] == state_->generation;
}

bool disk_file::empty() const {
    return simulation::file(state_->path).empty();
}

void disk_file::append(std::string_view text) {
    if (world().unwritable.contains(state_->path)) throw failure("Device I/O error");
    if (world().refused_writes > 0) {
        --world().refused_writes;
        throw failure("Device I/O error");
    }
    if (!in_place()) return; // into a file that nobody can find any more
    std::string& content = world().files[state_->path];
    std::string_view end;
    if (!content.empty() && !content.ends_with("\r\n")) end = content.ends_with('\r') ? "\n" : "\r\n";
    if (!take_space(end.size() + text.size())) throw failure("Disk full");
    content.append(end).append(text);
    state_->unsynced = true;
}

void disk_file::sync(sync_time when) {
    if (when == sync_time::soon || !state_->unsynced) return;
    world().synced.push_back(state_->path);
    state_->unsynced = false;
}

struct output_file::lane {
    line_file file;
};

output_file::output_file() : lane_(std::make_shared<lane>()) {}
output_file::~output_file() = default;

void output_file::open(file_place place) {
    open_ = true;
    lane_->file.open(std::move(place));
}

void output_file::print(std::string_view line) {
    lane_->file.print(line);
}

bool output_file::failed_late() {
    return std::exchange(world().late_failure, false);
}

void output_file::close() {
    open_ = false;
    lane_->file.close();
}

bool file_exists(std::string_view path) {
    return world().files.contains(normalised(path));
}

std::optional<std::string> read_file(std::string_view path) {
    const std::string name = normalised(path);
    if (!world().files.contains(name) || world().unreadable.contains(name)) return std::nullopt;
    return simulation::file(path);
}

void replace_file(std::string_view path, std::string_view content) {
    const std::string name = normalised(path);
    if (!can_write(name) || !take_space(content.size())) return;
    world().files[name] = content;
    ++world().replacements;
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
