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

namespace {

/// Lines of a log are brought to the disk within this time.
constexpr std::int64_t soon_ms = 5000;
/// So is the name of a file that was replaced.
constexpr std::int64_t rename_ms = 5000;

void told(disk_act act, const std::string& path, std::string_view text = {}) {
    if (world().on_disk) world().on_disk(act, path, text);
}

/// What syncs have come back with is on the disk.
void settle(at_risk& risk) {
    std::erase_if(risk.syncs, [&risk](const sync_under_way& sync) {
        if (world().now_ms < sync.due) return false;
        risk.durable = std::max(risk.durable, sync.size);
        risk.named = true;
        return true;
    });
}

} // namespace

void lose_power(const std::function<std::size_t(std::size_t most)>& kept) {
    machine& machine = world();
    for (auto& [path, risk] : machine.risks) {
        const auto found = machine.files.find(path);
        if (found == machine.files.end()) continue;
        std::string& content = found->second;
        settle(risk);
        if (risk.before && machine.now_ms - risk.replaced_ms < rename_ms) {
            if (kept(1) == 0) content = *risk.before;
            continue;
        }
        if (risk.before) continue;
        const bool nameless = !risk.named && kept(1) == 0;
        content.resize(risk.durable + kept(content.size() - risk.durable));
        if (nameless) machine.files.erase(found);
    }
    machine.risks.clear();
}

std::string take_file_away(std::string_view path) {
    const std::string name = normalised(path);
    ++world().generations[name];
    world().risks.erase(name);
    told(disk_act::taken_away, name);
    auto node = world().files.extract(name);
    return node.empty() ? std::string() : node.mapped();
}

} // namespace simulation

namespace {

using namespace simulation;

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

/// A file that is on the disk as it stands.
at_risk at_rest(const std::string& content) {
    at_risk risk;
    risk.durable = content.size();
    risk.named = true;
    return risk;
}

/// An empty file, whose name is not on the disk yet.
void create(const std::string& path) {
    if (!world().files.try_emplace(path).second) return;
    world().risks[path] = {};
    told(disk_act::created, path);
}

} // namespace

/// Which file of the disk a handle means: the path, and which of the files that stood there one after
/// another.
struct disk_file::state {
    std::string path;
    bool open = false;
    int generation = 0;
    bool unsynced = false;
    bool unnamed = false; ///< comes to its path with what is appended first

    [[nodiscard]] simulation::at_risk& risk() const { return simulation::world().risks[path]; }
};

disk_file::disk_file() : state_(std::make_unique<state>()) {}
disk_file::~disk_file() = default;

bool disk_file::is_open() const {
    return state_->open;
}

void disk_file::close() {
    if (std::exchange(state_->unnamed, false)) create(state_->path);
    state_->open = false;
}

bool disk_file::open(std::string_view path, bool text_follows) {
    close();
    const std::string name = normalised(path);
    if (!can_write(name)) {
        told(disk_act::refused, name);
        throw failure("Path not found");
    }
    const bool fresh = !world().files.contains(name);
    world().opened.push_back(name);
    if (fresh && !text_follows) create(name);
    if (!fresh && !world().risks.contains(name)) world().risks[name] = at_rest(file(name));
    if (world().during_open) world().during_open();
    state_->path = name;
    state_->generation = world().generations[name];
    state_->open = true;
    state_->unnamed = fresh && text_follows;
    state_->unsynced = fresh;
    return fresh;
}

bool disk_file::in_place() const {
    return state_->unnamed ||
           (world().files.contains(state_->path) && world().generations[state_->path] == state_->generation);
}

bool disk_file::empty() const {
    return simulation::file(state_->path).empty();
}

void disk_file::append(std::string_view text) {
    const auto refuse = [&](const char* why) {
        told(disk_act::refused, state_->path, text);
        throw failure(why);
    };
    const bool first = std::exchange(state_->unnamed, false);
    if (first) create(state_->path);
    if (world().unwritable.contains(state_->path)) refuse("Device I/O error");
    if (world().refused_writes > 0) {
        --world().refused_writes;
        refuse("Device I/O error");
    }
    if (!in_place()) return; // into a file that nobody can find any more
    std::string& content = world().files[state_->path];
    std::string_view end;
    if (!content.empty() && !content.ends_with("\r\n")) end = content.ends_with('\r') ? "\n" : "\r\n";
    if (!take_space(end.size() + text.size())) refuse("Disk full");
    content.append(end).append(text);
    state_->unsynced = true;
    if (!end.empty()) told(disk_act::appended, state_->path, end);
    told(disk_act::appended, state_->path, text);
    if (first) state_->risk() = at_rest(content); // it got its name behind a sync
}

void disk_file::sync(sync_time when) {
    if (!state_->unsynced) return;
    if (in_place()) {
        at_risk& risk = state_->risk();
        const std::int64_t due = world().now_ms + (when == sync_time::soon ? soon_ms : world().sync_ms);
        const std::size_t size = world().files[state_->path].size();
        if (risk.syncs.empty() || risk.syncs.back().due != due) risk.syncs.push_back({due, size});
        risk.syncs.back().size = size;
        settle(risk);
    }
    if (when == sync_time::soon) return;
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
    at_risk& risk = world().risks[name];
    if (world().now_ms - risk.replaced_ms >= rename_ms || !risk.before) risk.before = file(name);
    risk.replaced_ms = world().now_ms;
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
