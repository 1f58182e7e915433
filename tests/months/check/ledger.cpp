#include "ledger.h"

#include "header.h"

#include <algorithm>

namespace months::check {

namespace {

constexpr std::int64_t unsynced_ms = 5500; ///< so long a line may wait for its sync
constexpr std::int64_t anew_ms = 1100;     ///< so long a log that was moved away may take to begin anew
constexpr std::string_view closing = " Measure Stopped -->\r\n";

std::string_view first_line(std::string_view text) {
    const auto end = text.find('\n');
    return end == text.npos ? text : text.substr(0, end + 1);
}

/// What ends the torn line.
std::string_view torn_end(const ledger_file& file) {
    return file.last_byte == '\r' ? "\n" : "\r\n";
}

} // namespace

ledger_file* ledger::known(std::string_view path) {
    if (const auto name = names_.find(path); name != names_.end()) return name->second;
    const auto file = files_.find(plain_path(path));
    if (file == files_.end()) return nullptr;
    names_.emplace(path, file->second.get());
    return file->second.get();
}

ledger_file& ledger::at(std::string_view path) {
    if (ledger_file* const file = known(path)) return *file;
    auto made = std::make_unique<ledger_file>();
    made->path = plain_path(path);
    ledger_file& file = *made;
    files_.emplace(file.path, std::move(made));
    return file;
}

void ledger::touch(ledger_file& file) {
    if (!file.dirty) dirty_.push_back(&file);
    file.dirty = true;
}

void ledger::opens(ledger_file& file, std::string header) {
    ++file.open;
    // Of two channels with one name the first one writes the header.
    if (file.exists || !file.header_due) file.header = std::move(header);
    file.lossy = false;
    if (!file.exists) {
        file.asked = file.header_due = true;
        file.header_may_miss = false;
    } else if (file.whole.length == 0) { // it waits for room since an earlier run, or it is somebody's
        file.header_due = file.header_may_miss = true;
    }
    touch(file);
}

void ledger::closes(ledger_file& file) {
    if (--file.open == 0) file.lossy = file.lossy || file.header_due;
}

void ledger::demand(ledger_file& file, std::string_view line) {
    file.due += line;
    touch(file);
}

void ledger::forget_demands(ledger_file& file) {
    file.may_skip = false;
    file.due.clear();
    file.due_from = 0;
}

void ledger::created(ledger_file& file) {
    if (file.exists) book_.add("a file that exists was created: " + file.path);
    if (!file.asked && file.gone_at < 0 && !file.lossy) {
        book_.add("a file was created that nobody asked for: " + file.path);
    }
    if (file.gone_at >= 0 && !file.header.empty()) {
        file.header_due = true;
        file.header_may_miss = false;
    }
    file.exists = true;
    file.asked = false;
    file.gone_at = -1;
    file.whole = file.sure = {};
    file.tail.clear();
    file.pieces.clear();
    file.torn = false;
    file.last_byte = '\n';
    touch(file);
}

bool ledger::fits(const ledger_file& file, std::string_view text) const {
    if (file.torn && text.starts_with(torn_end(file))) text.remove_prefix(torn_end(file).size());
    if (file.header_due) text.remove_prefix(header_length(text, file.header));
    return file.due_lines().starts_with(text) || text == file.last_refused;
}

void ledger::forget_synced(ledger_file& file) const {
    std::size_t old = 0;
    while (!file.pieces.empty() && file.pieces.front().sure_from <= now_.ms) {
        old += file.pieces.front().length;
        file.pieces.pop_front();
    }
    file.sure.add(std::string_view(file.tail).substr(0, old));
    file.tail.erase(0, old);
}

void ledger::write(ledger_file& file, std::string_view text, std::int64_t sure_from) {
    if (text.empty()) return;
    file.whole.add(text);
    file.last_byte = text.back();
    // Seldom, as what is left has to be moved.
    if (!file.pieces.empty() && file.pieces.front().sure_from < now_.ms - unsynced_ms) forget_synced(file);
    file.tail += text;
    file.pieces.push_back({sure_from, text.size()});
    // A sync brings all to the disk that was written before it.
    for (auto& piece : file.pieces)
        piece.sure_from = std::min(piece.sure_from, sure_from);
    if (sure_from <= now_.ms) forget_synced(file);
}

std::size_t ledger::take_header(ledger_file& file, std::string_view text) {
    const std::size_t length = header_length(text, file.header);
    if (!file.header_due) {
        if (length == 0) return 0;
        book_.add("a second header in " + file.path);
        return length;
    }
    file.header_due = false;
    if (length == 0) {
        if (!file.header_may_miss)
            book_.add("no header in front of " + shown(first_line(text)) + " in " + file.path);
        return 0;
    }
    if (const auto what = header_difference(text.substr(0, length), file.header)) {
        book_.add(*what + " in " + file.path);
    }
    return length;
}

void ledger::take_line(ledger_file& file, std::string_view line) {
    const std::string_view due = file.due_lines();
    if (due.starts_with(line) && line.ends_with('\n')) {
        file.due_from += line.size();
        return;
    }
    if (line == file.last_refused) return; // tried once more
    const std::string_view wanted = first_line(due);
    if (wanted.empty()) {
        book_.add("a line too many in " + file.path + ": " + shown(line));
        return;
    }
    auto later = due.find(line);
    if (later == due.npos || (later > 0 && due[later - 1] != '\n')) later = 0;
    if (later == 0 || !file.may_skip) {
        book_.add("the next line in " + file.path + " should be " + shown(wanted) + ", is " + shown(line));
    }
    file.due_from += later > 0 ? later + line.size() : wanted.size();
}

void ledger::appended(ledger_file& file, std::string_view text) {
    if (text.empty()) return;
    if (!file.exists) {
        book_.add("written into a file that does not exist: " + file.path + ": " + shown(text));
        file.exists = true;
    }
    std::string_view rest = text;
    file.may_skip = file.may_skip || file.lossy;
    if (file.torn) {
        const std::string_view end = torn_end(file);
        if (rest.starts_with(end)) {
            rest.remove_prefix(end.size());
        } else {
            book_.add("a torn line was not ended before " + shown(rest) + " in " + file.path);
        }
        file.torn = false;
    }
    std::size_t headed = 0;                                ///< so much got its name behind a sync
    std::size_t hard = file.channel < 0 ? text.size() : 0; ///< a sync of so much was asked for at once
    if (!rest.empty() && (file.header_due || rest.starts_with("<?xml"))) {
        const std::size_t length = take_header(file, rest);
        rest.remove_prefix(length);
        if (length > 0) headed = text.size() - rest.size();
    }
    while (!rest.empty()) {
        const std::string_view line = first_line(rest);
        take_line(file, line);
        rest.remove_prefix(line.size());
        if (line.ends_with(closing)) hard = std::max(hard, text.size() - rest.size());
    }
    file.lossy = false;
    file.gone_at = -1;
    write(file, text.substr(0, headed), now_.ms);
    hard = std::max(hard, headed);
    write(file, text.substr(headed, hard - headed), now_.ms + sync_ms_);
    write(file, text.substr(hard), now_.ms + unsynced_ms);
}

void ledger::refused(ledger_file& file, std::string_view text) {
    if (text.empty()) {
        file.lossy = true;
        return;
    }
    if (file.torn && text.starts_with(torn_end(file))) text.remove_prefix(torn_end(file).size());
    const std::size_t header = file.header_due ? header_length(text, file.header) : 0;
    if (header > 0) file.lossy = true;
    for (text.remove_prefix(header); !text.empty(); text.remove_prefix(first_line(text).size())) {
        if (file.lossy && !file.due_lines().starts_with(first_line(text))) continue;
        take_line(file, first_line(text));
        file.last_refused = first_line(text);
    }
}

void ledger::gone(ledger_file& file) {
    file.exists = false;
    file.header_due = file.torn = file.found = false;
    file.may_miss = ledger_file::loss::none;
    if (file.open > 0) file.gone_at = now_.ms;
    if (file.open > 0) return;
    // Of thousands of old logs nothing is kept but their names.
    for (std::string* const text : {&file.header, &file.due, &file.tail})
        std::string().swap(*text);
    file.pieces = {};
}

void ledger::check_rest(ledger_file& file) {
    const std::string_view due = file.due_lines();
    const bool just_gone = file.gone_at >= 0 && now_.ms - file.gone_at <= anew_ms;
    const bool excused = file.lossy || just_gone;
    if (!excused && file.asked && !file.exists) book_.add("a file was not begun: " + file.path);
    if (!excused && file.exists && file.header_due && !file.header_may_miss) {
        book_.add("a file has no header: " + file.path);
        file.header_due = false;
    }
    for (std::string_view rest = due; !excused && !rest.empty();
         rest.remove_prefix(first_line(rest).size())) {
        if (book_.full()) break;
        book_.add("missing in " + file.path + ": " + shown(first_line(rest)));
    }
    if (!excused) file.asked = false;
    forget_demands(file);
}

void ledger::handler_ended() {
    for (ledger_file* const file : dirty_) {
        file->dirty = false;
        if (file->due_from < file->due.size() || file->asked || file->header_due) {
            check_rest(*file);
        } else {
            forget_demands(*file);
        }
    }
    dirty_.clear();
}

void ledger::program_gone(ledger_file::loss may_miss) {
    for (auto& [path, file] : files_) {
        file->open = 0;
        file->gone_at = -1;
        file->header_due = file->asked = file->lossy = false;
        file->header.clear();
        file->header.shrink_to_fit();
        file->may_miss = may_miss;
        file->found = false;
        forget_demands(*file);
        forget_synced(*file);
    }
}

void ledger::found(ledger_file& file, std::string_view content, bool at_first) {
    byte_sum sum;
    const bool whole = content.size() == file.whole.length;
    const bool taken_over = at_first || file.gone_at >= 0;
    if (taken_over) {
        sum.add(content);
    } else if (whole || file.may_miss == ledger_file::loss::none) {
        sum.add(content);
        if (sum != file.whole) {
            book_.add("the content of " + file.path + " is not what was written: " +
                      std::to_string(content.size()) + " characters of " + std::to_string(file.whole.length));
        }
    } else {
        const std::size_t last = file.pieces.empty() ? 0 : file.pieces.back().length;
        const bool torn_only = file.may_miss == ledger_file::loss::torn_line;
        const std::uint64_t least = torn_only ? file.whole.length - last : file.sure.length;
        sum.add(content.substr(0, file.sure.length));
        const std::string_view rest = content.substr(std::min(content.size(), file.sure.length));
        if (content.size() < least) {
            book_.add("lines are lost in " + file.path + " that were on the disk: " +
                      std::to_string(content.size()) + " characters, " + std::to_string(least) + " were");
        } else if (sum != file.sure || !std::string_view(file.tail).starts_with(rest)) {
            book_.add("the content of " + file.path + " is not what was written, up to its loss");
        }
        sum.add(content.substr(static_cast<std::size_t>(sum.length)));
    }
    file.exists = true;
    file.asked = false;
    if (file.open == 0) file.gone_at = -1; // a log does not find it at once
    file.whole = file.sure = sum;
    file.tail.clear();
    file.pieces.clear();
    file.torn = !content.empty() && !content.ends_with("\r\n");
    file.last_byte = content.empty() ? '\n' : content.back();
    file.may_miss = ledger_file::loss::none;
    file.found = true;
    if (!content.empty()) file.header_due = false;
}

void ledger::all_found() {
    for (auto& [path, file] : files_) {
        // A power cut may take a file with its name, of which nothing was sure.
        if (file->exists && !file->found) {
            if (file->sure.length > 0) book_.add("a file is missing: " + path);
            file->exists = false;
        }
        file->found = false;
    }
}

} // namespace months::check
