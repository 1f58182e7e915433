// Logs and an event file of any content that a program finds at its start, and goes on behind.

#include "fuzz/machine.h"
#include "fuzz/targets.h"

#include "link/channel_rec.h"
#include "link/start_stop.h"
#include "platform/simulation.h"

#include <algorithm>
#include <vector>

namespace tyxo::fuzzing {

namespace {

constexpr std::string_view log_path = "C:/logs/Engine 1/20260702Qu_Engine 1.xlg";
constexpr std::string_view events_path = "C:/logs/TY_all_events.txt";

/// What stands behind the content that was found, line by line. A line that a broken run has left without its
/// end has got one, and that is all that happens to it.
std::vector<std::string_view> lines_behind(std::string_view found, std::string_view content) {
    expect(content.starts_with(found), "what was there stays as it is");
    content.remove_prefix(found.size());
    if (!found.empty() && !content.empty() && !found.ends_with("\r\n")) {
        const std::string_view end = found.ends_with('\r') ? "\n" : "\r\n";
        expect(content.starts_with(end), "a torn line is ended");
        content.remove_prefix(end.size());
    }
    std::vector<std::string_view> lines;
    while (!content.empty()) {
        const auto end = content.find("\r\n");
        expect(end != content.npos, "new lines are whole");
        lines.push_back(content.substr(0, end));
        content.remove_prefix(end + 2);
    }
    return lines;
}

/// The machine does to the files what the input says, and nobody may notice.
void disturb(input& in) {
    simulation::machine& machine = simulation::world();
    switch (in.byte() % 8) {
    case 0:
        machine.refused_writes = in.below(4);
        break;
    case 1:
        machine.disk_space = in.raw<std::uint16_t>();
        break;
    case 2:
        machine.disk_space.reset();
        break;
    default:
        simulation::advance(in.byte() * 10);
    }
}

} // namespace

void files_found(input in) {
    const u8 choice = in.byte();
    const bool disturbed = (choice & 1U) != 0;
    const std::string script(disturbed ? in.text(in.byte() % 16) : "");
    const std::string events(in.text(in.raw<std::uint16_t>() % 2048));
    const std::string log(in.rest());
    const bool found_log = (choice & 2U) == 0;
    const bool found_events = (choice & 4U) == 0;
    start_plant([&](settings_rec&) {
        sensor::state.upd_periode = 0; // charts take longer than all else
        simulation::world().folders.insert("C:/logs/Engine 1");
        if (found_log) simulation::put_file(log_path, log);
        if (found_events) simulation::put_file(events_path, events);
    });
    input steps(reinterpret_cast<const u8*>(script.data()), script.size());
    receive_parameters(0);
    do {
        receive_frame(0, ":0180FF0FFF000080FF00FF00FF");
        if ((choice & 8U) != 0) receive_curve(0, "03", 480, 1);
        disturb(steps);
    } while (!steps.empty());
    receive_frame(0, ":08V2.072082000000000000000000");
    stop_log();

    const std::string now = simulation::file(log_path);
    const auto lines = lines_behind(found_log ? log : "", now);
    const std::string told = simulation::file(events_path);
    for (const std::string_view line : lines_behind(found_events ? events : "", told))
        expect(line.starts_with("##;"), "every new event has its mark");
    if (disturbed) return;
    expect(found_log || now.starts_with("<?xml"), "a new log has its header");
    expect(lines.back().ends_with(" Measure Stopped -->"), "the last line tells the end");
    const auto first = found_log ? lines.begin() : std::ranges::find(lines, "<LOG>") + 1;
    for (auto line = first; line != lines.end(); ++line)
        expect(line->starts_with('<') && line->ends_with('>'), "every new line is a record or a comment");
}

} // namespace tyxo::fuzzing
