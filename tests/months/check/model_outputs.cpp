// What the program does, against what it has to do.

#include "model.h"

#include <algorithm>

namespace months::check {

namespace {

/// What a port may say of its line, at any time.
constexpr std::string_view port_texts[] = {"Break empfangen",
                                           "CD-Zeit\xFC"
                                           "berschreitung",
                                           "CTS-Zeit\xFC"
                                           "berschreitung",
                                           "Fehler bei DCB-Abfrage",
                                           "DSR-Zeit\xFC"
                                           "berschreitung",
                                           "Frame-Fehler",
                                           "\xDC"
                                           "berlauffehler",
                                           "Empfangspuffer\xFC"
                                           "berlauf",
                                           "Parit\xE4tsfehler",
                                           "Sendepuffer voll",
                                           "Fehler oder Ereignis unbekannt"};
/// What does not belong to what the checker is told of.
constexpr std::string_view other_messages[] = {"Resolution is actual", "No sensor configurated",
                                               "       Parameters not loaded from Evaluator",
                                               "New password inputs different"};
constexpr std::string_view event_file_failed =
    "Directory for Eventfile doesn't exist, start setup Installation !";

} // namespace

void checker::model::program_starts(std::string_view settings) {
    runs = ever_started = true;
    plant = read_settings(settings);
    channel = {};
    for (int index = 0; index < channels; ++index)
        channel[index].chart_is_set_up = index < plant.max_sensors;
    cycle.restart();
    events_failed = chart_on = alert_open = false;
    log_period = 0;
    box.clear();
    box_end = box_length = 0;
    expect_debug("Programmstart");
    if (plant.event_file) events = &files.at(plant.event_path);
    event("", "Tyxo Logger software started !", "");
}

void checker::model::program_gone(ledger_file::loss may_miss) {
    files.handler_ended();
    files.program_gone(may_miss);
    runs = chart_on = alert_open = false;
    channel = {};
    debug.clear();
    messages.clear();
}

void checker::model::appended(std::string_view path, std::string_view text) {
    ledger_file* file = files.known(path);
    while ((file == nullptr || !files.fits(*file, text)) && settle())
        file = files.known(path);
    if (file == nullptr) file = &files.at(path);
    const bool late = file->header_due && (file->gone_at >= 0 || file->lossy || files_disturbed);
    if (late && file->channel >= 0 &&
        header_difference(text.substr(0, header_length(text, file->header)), file->header)) {
        file->header = new_header(file->channel, file->path.substr(file->path.rfind('/') + 1));
    }
    files.appended(*file, text);
}

void checker::model::refused(std::string_view path, std::string_view text) {
    ledger_file* file = files.known(path);
    while ((file == nullptr || !files.fits(*file, text)) && settle())
        file = files.known(path);
    if (file == nullptr) file = &files.at(path);
    // A log is opened anew for a line only: if none is due yet, it is that of a timer.
    if (text.empty() && file->channel >= 0 && file->due_lines().empty()) {
        const channel_model& c = channel[file->channel];
        if (c.running && c.connected && c.silent_at <= now.ms) link_lost(file->channel);
    }
    files_disturbed = true;
    if (file != events) {
        files.refused(*file, text);
        return;
    }
    events_failed = true;
    events->asked = false;
    files.forget_demands(*events);
    messages.emplace_back(event_file_failed);
}

void checker::model::to_line(int index, std::string_view bytes) {
    channel_model& c = channel[index];
    if (!c.reset_due || bytes != ":80092f\r\n") {
        book.add("channel " + std::to_string(index + 1) + ": nobody asked for " + shown(bytes) +
                 " on its line");
        return;
    }
    c.reset_due = false;
    const std::string& location = plant.channel[index].location;
    tell("KVD", location, " ## Restart Alarm Inhibit Time");
    log_comment(index, "KVD " + location + " ## Restart Alarm Inhibit Time");
    event("KVD", location, " ## Restart Alarm Inhibit Time");
}

void checker::model::to_controller(std::string_view frame) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(frame[at]); };
    if (frame.size() == 12 && byte(7) == 3) return; // read by hand
    if (frame.size() < 13 || !frame.starts_with(std::string_view("\0\0\0\0\0", 5)) || byte(6) != 1 ||
        byte(7) != 16 || byte(10) != 0) {
        book.add("not a frame that writes registers: " + std::to_string(frame.size()) + " bytes");
        return;
    }
    const int address = byte(8) * 256 + byte(9);
    const auto block = block_at(address, plant.register_base);
    if (!block) {
        book.add("no block begins at the register " + std::to_string(address));
        return;
    }
    const std::string name =
        "block " + std::to_string(block->code) + " of channel " + std::to_string(block->channel + 1) + ": ";
    auto wrong = block_difference(frame, *block, channel[block->channel].record);
    while (wrong && settle())
        wrong = block_difference(frame, *block, channel[block->channel].record);
    if (wrong) book.add(name + *wrong);
    if (const auto turn = cycle.sent(*block, plant, now)) book.add(name + *turn);
}

bool checker::model::tolerated(std::string_view text) const {
    if (std::ranges::find(port_texts, text) != std::end(port_texts)) return true;
    if (text.find("cannot write") != text.npos || text.starts_with(" COM")) return true; // " COM1": a port
    if (!files_disturbed) return false;
    return text.starts_with("mscomm: ") || text.find("log opened anew") != text.npos;
}

void checker::model::debug_output(std::string_view text) {
    while (text.ends_with('\n') || text.ends_with('\r'))
        text.remove_suffix(1);
    if (text == "createlog : Path exists") {
        while (folders_made == 0 && settle()) {
        }
        if (folders_made == 0) book.add("the debug output tells of a log that nobody began");
        folders_made -= folders_made > 0 ? 1 : 0;
        return;
    }
    const auto fits = [&](const debug_line& d) {
        return d.goes_on ? text.starts_with(d.text) : text == d.text;
    };
    while (!debug.empty() && debug[0].may_miss && !fits(debug[0]))
        debug.erase(debug.begin());
    if (!debug.empty() && fits(debug[0])) {
        debug.erase(debug.begin());
        return;
    }
    if (tolerated(text)) return;
    book.add("the debug output should " + (debug.empty() ? "say nothing" : "say " + shown(debug[0].text)) +
             ", says " + shown(text));
    if (!debug.empty()) debug.erase(debug.begin());
}

void checker::model::message(std::string_view text) {
    const auto wanted = std::ranges::find(messages, text);
    if (wanted != messages.end()) {
        messages.erase(wanted);
        return;
    }
    for (const std::string_view other : other_messages)
        if (text.starts_with(other)) return;
    book.add("a message that nothing asked for: " + shown(text));
}

void checker::model::found(std::string_view path, std::string_view content) {
    ledger_file* file = files.known(path);
    if (file == nullptr && ever_started && plain_path(path).ends_with(".xlg")) {
        book.add("a log that nobody wrote: " + std::string(path));
    }
    if (file == nullptr) file = &files.at(path);
    if (runs) files_disturbed = true;
    files.found(*file, content, !file->exists);
}

} // namespace months::check
