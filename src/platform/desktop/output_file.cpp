// Output files that nobody has to wait for. Each has a thread for its steps, and one for its syncs
// (flusher.h). One thread for all files would let a share that does not answer hold up the files of other
// disks. Only the write of a line is done without the thread, and only while all is well: no step and no sync
// is under way, and the last look at the path, at most a second ago, was answered.

#include "platform/desktop/output_file.h"

#include "basics/failure.h"
#include "platform/desktop/disk_file.h"
#include "platform/desktop/replace_file.h"
#include "platform/desktop/step_thread.h"
#include "platform/files.h"
#include "platform/line_file.h"

#include <utility>
#include <vector>

namespace tyxo {

namespace {

using clock = desktop::step_thread::clock;

/// Steps that may wait for a disk. At the pace of a serial line they come in a quarter of an hour or more,
/// and they take 15 MB at most.
constexpr std::size_t most_waiting = 10'000;

} // namespace

struct output_file::lane {
    line_file file; ///< the steps' own while any is under way, but for its flusher
    desktop::step_thread steps;

    bool each_line = false; ///< of the place

    /// Writes the line here and now if nothing is in its way; then its sync is waited for like that of a
    /// step.
    [[nodiscard]] bool write_at_once(std::string_view line);
    [[nodiscard]] desktop::flusher& syncs() { return file.on_disk().own().flusher; }
};

bool output_file::lane::write_at_once(std::string_view line) {
    if (!steps.idle() || !file.on_disk().own().local) return false;
    const auto until = each_line ? clock::now() + desktop::longest_disk_wait : clock::time_point();
    {
        const auto no_sync = syncs().pause();
        if (!no_sync || !file.print_at_once(line)) return false;
    }
    if (each_line) static_cast<void>(syncs().wait(until));
    return true;
}

namespace {

using lane_ref = std::shared_ptr<output_file::lane>;

/// The lanes of all output files; never destroyed, since files may live as long as the process.
std::vector<std::weak_ptr<output_file::lane>>& all_lanes() {
    static auto* const lanes = new std::vector<std::weak_ptr<output_file::lane>>;
    return *lanes;
}

/// Hands the step over. Where no other is under way it ends soon, and it is waited for; so is its sync, if
/// none was under way before. Behind a step that hangs nobody waits.
template <class Step> void run(const lane_ref& lane, Step step) {
    const auto now = clock::now();
    const auto until = lane->steps.finish(now) ? now + desktop::longest_disk_wait : now;
    const bool synced = lane->syncs().wait(now);
    const bool ended = lane->steps.run([lane, step = std::move(step)] { step(lane->file); }, until);
    if (ended && synced) static_cast<void>(lane->syncs().wait(until));
}

} // namespace

output_file::output_file() : lane_(std::make_shared<lane>()) {
    std::erase_if(all_lanes(), [](const auto& known) { return known.expired(); });
    all_lanes().push_back(lane_);
}

output_file::~output_file() {
    close();
}

void output_file::open(file_place place) {
    open_ = true;
    lane_->each_line = place.each_line;
    run(lane_, [place = std::move(place)](line_file& file) { file.open(place); });
}

void output_file::print(std::string_view line) {
    if (!open_) throw failure("The file is not open");
    if (lane_->write_at_once(line)) return;
    if (lane_->steps.waiting() >= most_waiting) throw failure("The disk does not answer");
    run(lane_, [line = std::string(line)](line_file& file) { file.print(line); });
}

void output_file::close() {
    if (std::exchange(open_, false)) run(lane_, [](line_file& file) { file.close(); });
}

bool output_file::failed_late() {
    return lane_->steps.failed_late();
}

bool desktop::finish_files(std::chrono::milliseconds patience) {
    const auto until = clock::now() + patience;
    bool finished = finish_replacements(until);
    for (const auto& known : all_lanes()) {
        const auto lane = known.lock();
        if (lane == nullptr) continue;
        if (!lane->steps.finish(until)) finished = false;
        lane->syncs().hurry();
        if (!lane->syncs().wait(until)) finished = false;
    }
    return finished;
}

} // namespace tyxo
