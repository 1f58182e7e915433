#include "view/log_loader.h"

#include "basics/failure.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>
#include <utility>

namespace tyxo::view {

namespace {

namespace fs = std::filesystem;

/// The folder of a plant has that of its logs, and this one folder for each engine.
constexpr int deepest_folder = 4;

/// Folders that cannot be read are passed over.
void add_logs_below(const std::string& folder, std::vector<std::string>& files) {
    std::error_code error;
    const auto options = fs::directory_options::skip_permission_denied;
    for (auto at = fs::recursive_directory_iterator(folder, options, error);
         !error && at != fs::recursive_directory_iterator(); at.increment(error)) {
        if (at.depth() >= deepest_folder) at.disable_recursion_pending();
        if (at->path().extension() == ".xlg" && !at->is_directory(error))
            files.push_back(at->path().string());
    }
}

} // namespace

std::vector<std::string> logs_named(const std::vector<std::string>& names) {
    std::vector<std::string> files;
    for (const std::string& name : names) {
        std::error_code error;
        if (fs::is_directory(name, error))
            add_logs_below(name, files);
        else
            files.push_back(name);
    }
    std::ranges::sort(files);
    files.erase(std::unique(files.begin(), files.end()), files.end());
    return files;
}

std::int64_t memory_of_logs(std::int64_t bytes) {
    constexpr std::int64_t bytes_of_log = 25; // at full pace, where a second has some 900
    return bytes / bytes_of_log;
}

std::int64_t free_memory() {
    std::ifstream machine("/proc/meminfo");
    std::string word;
    while (machine >> word) {
        std::int64_t kilobytes = 0;
        if (word == "MemAvailable:" && machine >> kilobytes) return kilobytes * 1024;
    }
    return std::numeric_limits<std::int64_t>::max();
}

log_loader::log_loader(std::vector<std::string> files)
    : files_(std::move(files)), logs_(files_.size()), left_(files_.size()) {
    for (const std::string& file : files_)
        total_ += xlg::size_of_file(file);
    const std::size_t jobs =
        std::min<std::size_t>(std::max(std::thread::hardware_concurrency(), 1U), files_.size());
    for (std::size_t job = 0; job < jobs; ++job)
        workers_.emplace_back([this] { work(); });
}

log_loader::~log_loader() {
    stop();
}

/// What was read so far; a failure if nothing more is wanted.
void log_loader::count(std::size_t bytes) {
    if (stopped_) throw failure("stopped");
    done_ += static_cast<std::int64_t>(bytes);
}

void log_loader::work() {
    for (std::size_t file = next_++; file < files_.size(); file = next_++) {
        const auto failed = attempt([&] {
            if (stopped_) return;
            auto log = std::make_shared<xlg::measured_log>(files_[file],
                                                           [this](std::size_t bytes) { count(bytes); });
            log->read_on();
            log->tell_reading_to({});
            logs_[file] = std::move(log);
        });
        if (failed && !stopped_) {
            const std::lock_guard lock(telling_);
            failures_.push_back(*failed);
        }
        --left_;
    }
}

log_list log_loader::take_logs() {
    workers_.clear();
    log_list opened;
    for (auto& log : logs_)
        if (log) opened.push_back(std::move(log));
    logs_.clear();
    return opened;
}

} // namespace tyxo::view
